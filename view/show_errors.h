#pragma once

#include "core/globals.h"
#include "hostapi/log_face.h"

namespace cvlog::view {

/// Raises "ShowErrors" on the log for a row: of an entry for all errors of its object, of a child row for that error.
/// Nothing happens without an open log.
void ShowErrors(core::Globals& globals, const hostapi::RowFace& row);

} // namespace cvlog::view
