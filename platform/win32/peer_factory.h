#pragma once

#include "platform/win32/host_window.h"
#include "widgets/peer_factory.h"

namespace cvlog::platform::win32 {

/// Makes the windows of lists and forms, and the system's timers and menus. The host outlives the factory and the peers.
class PeerFactory : public widgets::PeerFactory {
public:
    explicit PeerFactory(HostWindow& host) noexcept : host_(host) {}
    std::unique_ptr<widgets::ListViewPeer> makeListView(widgets::ListView& list) override;
    std::unique_ptr<widgets::FormPeer> makeForm(widgets::Form& form) override;
    std::unique_ptr<widgets::TimerPeer> makeTimer(widgets::Timer& timer) override;
    std::unique_ptr<widgets::PopupMenuPeer> makePopupMenu(const widgets::MenuItem& menu,
                                                          const widgets::MenuItem* defaultItem) override;

private:
    HostWindow& host_;
};

} // namespace cvlog::platform::win32
