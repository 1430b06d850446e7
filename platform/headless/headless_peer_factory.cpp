#include "platform/headless/headless_peer_factory.h"

namespace cvlog::platform::headless {

std::unique_ptr<widgets::ListViewPeer> HeadlessPeerFactory::makeListView(widgets::ListView& list) {
    gate_.pass("List.create");
    return std::make_unique<HeadlessListViewPeer>(list, gate_, book, mirrored);
}

std::unique_ptr<widgets::FormPeer> HeadlessPeerFactory::makeForm(widgets::Form& form) {
    return std::make_unique<HeadlessFormPeer>(form, gate_, forms, timers);
}

std::unique_ptr<widgets::TimerPeer> HeadlessPeerFactory::makeTimer(widgets::Timer& timer) {
    return std::make_unique<HeadlessTimerPeer>(timer, gate_, timers);
}

std::unique_ptr<widgets::PopupMenuPeer>
HeadlessPeerFactory::makePopupMenu(const widgets::MenuItem& menu, const widgets::MenuItem* defaultItem) {
    return std::make_unique<HeadlessPopupMenu>(menu, defaultItem, gate_, menus);
}

} // namespace cvlog::platform::headless
