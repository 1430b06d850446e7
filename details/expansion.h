#pragma once

#include "core/globals.h"

// Entries are opened in place: their messages become child rows right below them, in every list, and go again. All of
// these take the list on which the user acted, and positions from 1. While one of them runs, `ExpansionBusy` refuses
// another collapse. Failures of the list reach the caller; those of the host's pointer are ignored. The host may run
// any code while its pointer is set, also what ends the list's control: the list is held for the time of the call.

namespace cvlog::details {

/// Every entry of the list, for CollapseEntry.
inline constexpr int kAllEntries = -1;

/// Opens the selected row if it is an entry that is not open.
void ExpandSelectedEntry(core::Globals& globals, core::LogViews::ListRef view);

/// Closes the entry at this place. From a child row it closes the row's entry and selects that.
void CollapseSelectedEntry(core::Globals& globals, core::LogViews::ListRef view, int position);

/// Removes the child rows of one entry, or of all, from every list. Dropped while another collapse or an expansion
/// runs.
void CollapseEntry(core::Globals& globals, core::LogViews::ListRef view, int position);

/// Removes a row from every list that has it; of an open entry its child rows first. An open entry stays while its
/// collapse is refused.
void RemoveLogRow(core::Globals& globals, core::LogViews::ListRef view, int position);

} // namespace cvlog::details
