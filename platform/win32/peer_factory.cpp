#include "platform/win32/peer_factory.h"

#include "platform/win32/form_window.h"
#include "platform/win32/list_view_window.h"
#include "platform/win32/popup_menu.h"
#include "platform/win32/timer_window.h"

namespace cvlog::platform::win32 {

std::unique_ptr<widgets::ListViewPeer> PeerFactory::makeListView(widgets::ListView& list) {
    return std::make_unique<ListViewWindow>(list, host_);
}

std::unique_ptr<widgets::FormPeer> PeerFactory::makeForm(widgets::Form& form) {
    return std::make_unique<FormWindow>(form, host_);
}

std::unique_ptr<widgets::TimerPeer> PeerFactory::makeTimer(widgets::Timer& timer) {
    return std::make_unique<TimerWindow>(timer, host_);
}

std::unique_ptr<widgets::PopupMenuPeer> PeerFactory::makePopupMenu(const widgets::MenuItem& menu,
                                                                   const widgets::MenuItem* defaultItem) {
    return std::make_unique<PopupMenu>(menu, defaultItem, host_);
}

} // namespace cvlog::platform::win32
