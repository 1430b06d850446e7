#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "workbench/variant.h"

namespace workbench {

/// One line of an errors file (docs/project-format.md describes the fields).
struct ErrorMessage {
    std::wstring type;
    std::wstring object;
    std::wstring line;
    std::wstring column;
    std::wstring severity;
    std::wstring code;
    std::wstring text;
};

/// A line without its end. One that does not begin with a quote is a message as a whole.
ErrorMessage parseErrorMessage(std::wstring_view line);

/// The kinds of messages that the options hide, by the first letter of their names.
class HiddenKinds {
public:
    HiddenKinds() = default;
    /// What the options document says now.
    explicit HiddenKinds(IDispatch* options);

    /// As the log decides it: by the first letter of a code, by its last, and by the one before.
    bool hides(std::wstring_view code) const;

private:
    bool hidesKind(wchar_t kind) const;

    struct Kind {
        wchar_t letter;
        bool hidden;
    };
    std::vector<Kind> kinds_;
};

/// The messages of an errors file that the options do not hide, in the file's order: the n-th is what the log calls
/// error n. A message is taken apart when it is asked for, so that a file of millions costs its bytes.
class ErrorMessages {
public:
    ErrorMessages() = default;
    /// Throws Failure when the file cannot be read.
    ErrorMessages(const std::wstring& path, const HiddenKinds& hidden);

    size_t count() const { return lines_.size(); }
    /// From 0.
    ErrorMessage at(size_t index) const;
    size_t hiddenCount() const { return hiddenCount_; }
    size_t errorCount() const { return errorCount_; }
    size_t warningCount() const { return warningCount_; }

private:
    struct Line {
        size_t start;
        size_t length;
    };

    void take(size_t start, size_t end, const HiddenKinds& hidden);

    std::string bytes_;
    std::vector<Line> lines_;
    size_t hiddenCount_ = 0;
    size_t errorCount_ = 0;
    size_t warningCount_ = 0;
};

} // namespace workbench
