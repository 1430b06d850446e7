#pragma once

#include "core/globals.h"

namespace cvlog::view {

/// Gives the list its seven columns, with captions in the user's language, all of them hidden.
void LocaliseColumns(const core::Globals& globals, widgets::ListView& list);

/// Shows and places the columns as the user's settings say; by default all of them in their natural order, each as
/// wide as its caption needs. Failures of the settings are ignored, column by column.
void SetUpColumns(core::Globals& globals, widgets::ListView& list);

} // namespace cvlog::view
