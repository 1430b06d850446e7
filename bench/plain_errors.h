#pragma once

#include <istream>
#include <string>
#include <vector>

namespace cvlog::bench {

/// What a plain program keeps of a line of an errors file.
struct PlainError {
    std::u16string type;
    std::u16string object;
    std::u16string severity;
    std::u16string code;
    std::u16string message;
};

/// Reads an errors file the way one writes it without a thought of speed: a line at a time, its fields as texts. Lines
/// whose code begins with the hidden kind are left out.
class PlainReader {
public:
    PlainReader(std::istream& file, char hiddenKind) : file_(file), hiddenKind_(hiddenKind) {}
    /// False at the end of the file.
    bool next(PlainError& error);

private:
    std::istream& file_;
    char hiddenKind_;
    std::string line_;
};

/// All of them. Finds, inserts and measures nothing.
std::vector<PlainError> readPlainly(const std::string& path, char hiddenKind);

} // namespace cvlog::bench
