#pragma once

#include "core/globals.h"

namespace cvlog::core {

/// Takes the host's document, reads the options and follows their changes. A document that raises no events is read
/// once.
void HoldOptions(Globals& globals, hostapi::OptionsDocument document);

/// Lets go of the document: nothing it raises is heard any more. The options keep their values.
void ReleaseOptions(Globals& globals);

/// The user's options were saved: they are in force from here on. What they change on screen follows a moment later,
/// outside of the host's event.
void UserOptions_Saved(Globals& globals);

/// Writes the docked state into the host's document and saves it. Failures are ignored.
void StoreDockedOption(Globals& globals, bool docked) noexcept;

/// Reads the options from the host's document. A query that fails and a node that is missing leave an option as it
/// was, but for the docked state: without its node it is false.
void LoadOptions(Globals& globals);

} // namespace cvlog::core
