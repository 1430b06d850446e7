#pragma once

#include "core/globals.h"
#include "details/error_line.h"
#include "details/host_answers.h"
#include "details/row_models.h"

#include <limits>
#include <span>
#include <string>
#include <string_view>

namespace cvlog::details {

/// The number of a row in decimal digits. Rows mostly come one after another, each with the next number.
class RowNumber {
public:
    /// Good until the next call.
    std::string_view digitsOf(int number) noexcept;

private:
    bool stepUp() noexcept;

    int number_ = -1;
    std::size_t count_ = 0;
    char digits_[std::numeric_limits<int>::digits10 + 2]; // and the sign
};

/// Makes the child rows of one expansion. What the host says about a type, an object or a code is asked once until
/// `forget`, as the host's code may change it whenever it runs.
class ErrorRows {
public:
    ErrorRows(core::Globals& globals, const ExpandedEntry& entry);

    /// Makes the row of a line that is not empty, as the n-th of its entry; nothing for a line of a hidden kind. May
    /// run foreign code of the host, whose failing look-ups leave cells empty. Throws when the host has no text for
    /// the code.
    widgets::RowPtr FillErrorRow(std::span<char> line, int n);

    /// The row that says that messages are hidden. It belongs to no object and has no number.
    widgets::RowPtr hiddenRecordsRow() const;

    /// The host may have changed what it said.
    void forget() noexcept { models_.forget(); }

private:
    bool isHiddenBeyondAscii(std::string_view code);
    widgets::OwnText messageOf(const ErrorLine& line);

    core::Globals& globals_;
    HostAnswers host_;
    RowModels models_;
    widgets::RowMemory memory_;
    RowNumber number_;
    std::u16string code_;
    std::u16string message_;
};

} // namespace cvlog::details
