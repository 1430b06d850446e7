#include "platform/win32/peer_factory.h"

#include "platform/win32/list_view_window.h"

namespace cvlog::platform::win32 {

std::unique_ptr<widgets::ListViewPeer> PeerFactory::makeListView(widgets::ListView& list) {
    return std::make_unique<ListViewWindow>(list, host_);
}

} // namespace cvlog::platform::win32
