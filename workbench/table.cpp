#include "workbench/table.h"

#include "workbench/failure.h"
#include "workbench/text.h"

namespace workbench {

namespace {

std::vector<std::wstring> split(std::wstring_view text, wchar_t separator) {
    std::vector<std::wstring> parts;
    for (size_t start = 0;;) {
        const size_t end = text.find(separator, start);
        parts.emplace_back(text.substr(start, end == text.npos ? text.npos : end - start));
        if (end == text.npos) {
            return parts;
        }
        start = end + 1;
    }
}

std::wstring readText(const std::wstring& path) {
    std::string bytes = readFile(path);
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        bytes.erase(0, 3);
    }
    try {
        return fromUtf8(bytes);
    } catch (const Failure&) {
        throw Failure(path + L": the file is not UTF-8");
    }
}

} // namespace

std::string readFile(const std::wstring& path) {
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        throw Failure(path + L": the file is missing or cannot be read");
    }
    std::string bytes;
    char block[16384];
    DWORD got = 0;
    BOOL read = FALSE;
    while ((read = ReadFile(file, block, sizeof block, &got, nullptr)) && got > 0) {
        bytes.append(block, got);
    }
    CloseHandle(file);
    if (!read) {
        throw Failure(path + L": the file cannot be read");
    }
    return bytes;
}

Table::Table(const std::wstring& path) : path_(path) {
    size_t number = 0;
    for (std::wstring& line : split(readText(path), L'\n')) {
        ++number;
        if (line.ends_with(L'\r')) {
            line.pop_back();
        }
        if (line.empty()) {
            continue;
        }
        if (columns_.empty()) {
            columns_ = split(line, L'\t');
        } else {
            lines_.push_back({number, split(line, L'\t')});
        }
    }
    if (columns_.empty()) {
        throw Failure(path + L": the file is empty; its first line must name the columns");
    }
}

void Table::requireColumns(std::initializer_list<const wchar_t*> columns) const {
    for (const wchar_t* wanted : columns) {
        bool found = false;
        for (const std::wstring& column : columns_) {
            found = found || sameName(column, wanted);
        }
        if (!found) {
            throw Failure(path_ + L": column " + wanted + L" is missing");
        }
    }
}

const std::wstring& Table::Row::text(std::wstring_view column) const {
    static const std::wstring empty;
    const auto& cells = table_.lines_[index_].cells;
    for (size_t i = 0; i < table_.columns_.size() && i < cells.size(); ++i) {
        if (sameName(table_.columns_[i], column)) {
            return cells[i];
        }
    }
    return empty;
}

const std::wstring& Table::Row::required(std::wstring_view column) const {
    const std::wstring& cell = text(column);
    if (cell.empty()) {
        fail(std::wstring(column) + L" is empty");
    }
    return cell;
}

long Table::Row::number(std::wstring_view column) const {
    long value = 0;
    if (!parseNumber(text(column), value)) {
        fail(std::wstring(column) + L" is not a whole number: \"" + text(column) + L"\"");
    }
    return value;
}

void Table::Row::fail(const std::wstring& problem) const {
    throw Failure(table_.path_ + L", line " + std::to_wstring(table_.lines_[index_].number) + L": " +
                  problem);
}

} // namespace workbench
