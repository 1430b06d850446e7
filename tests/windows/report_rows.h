#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <vector>

namespace cvlog::tests {

/// "missing" when there is no such file.
inline std::string pageIn(const std::wstring& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    return file.is_open() ? std::string(std::istreambuf_iterator<char>(file), {}) : "missing";
}

/// The rows of a report's table below its head, each as "class: cell|cell", with DATE for dates and times.
inline std::vector<std::string> rowsOfPage(const std::string& page) {
    static const std::regex kDate("[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}");
    static const std::regex kRow("<tr( class=\"([a-z ]*)\")?>(.*?)</tr>");
    static const std::regex kCell("<td[^>]*>(.*?)</td>");
    const std::string body = page.substr(std::min(page.find("<tbody>"), page.size()));
    std::vector<std::string> rows;
    for (std::sregex_iterator row(body.begin(), body.end(), kRow); row != std::sregex_iterator(); ++row) {
        const std::string cells = (*row)[3];
        std::string text = (*row)[2].str() + ": ";
        for (std::sregex_iterator cell(cells.begin(), cells.end(), kCell); cell != std::sregex_iterator();
             ++cell)
            text += (cell->position() == 0 ? "" : "|") + (*cell)[1].str();
        rows.push_back(std::regex_replace(text, kDate, "DATE"));
    }
    return rows;
}

/// What a report counts, as "3 Entries, 1 Success".
inline std::string countsOfPage(const std::string& page) {
    static const std::regex kCount("<b>([0-9]+)</b>([A-Za-z]+)</li>");
    std::string counts;
    for (std::sregex_iterator count(page.begin(), page.end(), kCount); count != std::sregex_iterator();
         ++count)
        counts += (counts.empty() ? "" : ", ") + (*count)[1].str() + " " + (*count)[2].str();
    return counts;
}

} // namespace cvlog::tests
