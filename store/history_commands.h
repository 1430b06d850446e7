#pragma once

#include "core/globals.h"

// What the user does in the history window: all act on its list, two on the records as well. A failure reaches the
// caller; caption and pointer are as before by then.

namespace cvlog::store {

/// Removes the selected rows with their records, from the last to the first, each row before its record: one whose
/// record cannot be deleted ends it. With the focus on the separator the rows above that are taken off the list
/// instead, and all records stay.
void DeleteHistoryRecords(core::Globals& globals, FrmLogHistory& window);

/// Deletes all records; the separator is left.
void ClearLogHistory(core::Globals& globals, FrmLogHistory& window);

/// Puts the texts of the selected rows on the clipboard, a line a row.
void CopyHistoryRecords(core::Globals& globals, FrmLogHistory& window);

/// Has a report made of the list.
void ReportHistory(core::Globals& globals, FrmLogHistory& window);

/// Closes the window and has the host show the errors of the selected record's object.
void ShowHistoryErrors(core::Globals& globals, FrmLogHistory& window);

} // namespace cvlog::store
