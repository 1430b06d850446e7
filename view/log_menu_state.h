#pragma once

#include "core/globals.h"
#include "hostapi/log_face.h"

namespace cvlog::view {

/// What a row of a log list stands for.
struct RowFacts {
    bool isChild = false;
    /// Of an entry its own identifier, of a child row the entry's object.
    std::u16string objectId;
    /// There is an errors file: of an entry its own, of a child row the entry's.
    bool hasErrorsFile = false;
};

/// Reads a row of any list. A cell that the row lacks counts as one without a tag.
RowFacts ReadRow(const hostapi::RowFace& row);

/// The host's repository knows the object. Failures and an empty identifier: it does not.
bool IsObjectKnown(const core::Globals& globals, std::u16string_view id) noexcept;

/// Brings the menu items in line with the list, its selected row and the log, and empties the pending command. Failures
/// of the host hide what depends on it; those of the list and its menu reach the caller.
void PrepareLogMenu(core::Globals& globals, const hostapi::LogFace& log);

} // namespace cvlog::view
