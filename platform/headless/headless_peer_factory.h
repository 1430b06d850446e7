#pragma once

#include "platform/headless/headless_form_peer.h"
#include "platform/headless/headless_list_view_peer.h"
#include "platform/headless/headless_popup_menu.h"
#include "platform/headless/headless_timer_peer.h"
#include "widgets/peer_factory.h"

namespace cvlog::platform::headless {

class HeadlessPeerFactory : public widgets::PeerFactory {
public:
    explicit HeadlessPeerFactory(const CallGate& gate) : gate_(gate) {}

    std::unique_ptr<widgets::ListViewPeer> makeListView(widgets::ListView& list) override;
    std::unique_ptr<widgets::FormPeer> makeForm(widgets::Form& form) override;
    std::unique_ptr<widgets::TimerPeer> makeTimer(widgets::Timer& timer) override;
    std::unique_ptr<widgets::PopupMenuPeer> makePopupMenu(const widgets::MenuItem& menu,
                                                          const widgets::MenuItem* defaultItem) override;

    PeerBook book;
    FormBook forms;
    TimerBook timers;
    MenuBook menus;
    bool mirrored = true;

private:
    const CallGate& gate_;
};

} // namespace cvlog::platform::headless
