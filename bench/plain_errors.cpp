#include "bench/plain_errors.h"

#include <array>
#include <fstream>

namespace cvlog::bench {

namespace {

constexpr std::size_t kFields = 6;

struct Parts {
    std::array<std::string, kFields> fields;
    std::string message;
};

bool isBlank(char byte) { return byte == ' ' || byte == '\t' || byte == '\r'; }

Parts tokenize(const std::string& line) {
    Parts parts;
    if (line.empty() || line.front() != '"') {
        parts.message = line;
        return parts;
    }
    std::size_t at = 0;
    for (std::string& field : parts.fields) {
        while (at < line.size() && isBlank(line[at])) ++at;
        bool inQuotes = false;
        for (; at < line.size() && (inQuotes || !isBlank(line[at])); ++at) {
            if (line[at] == '"')
                inQuotes = !inQuotes;
            else
                field += line[at];
        }
    }
    while (at < line.size() && isBlank(line[at])) ++at;
    std::size_t end = line.size();
    while (end > at && isBlank(line[end - 1])) --end;
    parts.message = line.substr(at, end - at);
    for (char& byte : parts.message)
        if (byte == '\t') byte = ' ';
    return parts;
}

std::u16string wide(const std::string& text) { return {text.begin(), text.end()}; }

} // namespace

bool PlainReader::next(PlainError& error) {
    while (std::getline(file_, line_)) {
        const Parts parts = tokenize(line_);
        const std::string& code = parts.fields[5];
        if (!code.empty() && code.front() == hiddenKind_) continue;
        error = {wide(parts.fields[0]), wide(parts.fields[1]), wide(parts.fields[4]), wide(code),
                 wide(parts.message)};
        return true;
    }
    return false;
}

std::vector<PlainError> readPlainly(const std::string& path, char hiddenKind) {
    std::vector<PlainError> errors;
    std::ifstream file(path);
    PlainReader reader(file, hiddenKind);
    for (PlainError error; reader.next(error);) errors.push_back(std::move(error));
    return errors;
}

} // namespace cvlog::bench
