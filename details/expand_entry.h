#pragma once

#include "core/globals.h"
#include "widgets/form_peer.h"

namespace cvlog::details {

/// Shows the messages of the entry's errors file as child rows below it, in every list, and gives the list the focus;
/// `Leave`: the focus stays where it is. An entry whose file is gone loses its reference to it, in this list. Dropped
/// while another expansion or a collapse runs.
///
/// A long file lets other code run: the window of the log takes no input meanwhile, a strip over the list offers to
/// stop, and `ExpansionBusy` is set. When the entry or the list goes on the way, nothing more happens. A failure of the
/// list, and of the host's text for a code, reaches the caller; the rows up to there stay.
void ExpandEntry(core::Globals& globals, const core::LogViews::ListRef& view, int position,
                 widgets::Activation focus = widgets::Activation::Take);

} // namespace cvlog::details
