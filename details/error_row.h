#pragma once

#include "core/globals.h"
#include "details/error_line.h"
#include "details/host_answers.h"
#include "details/row_models.h"

#include <span>
#include <string>
#include <string_view>

namespace cvlog::details {

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
    bool isHidden(std::string_view code);
    widgets::OwnText messageOf(const ErrorLine& line);

    core::Globals& globals_;
    HostAnswers host_;
    RowModels models_;
    std::u16string code_;
    std::u16string message_;
};

} // namespace cvlog::details
