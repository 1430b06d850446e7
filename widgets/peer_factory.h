#pragma once

#include <memory>

namespace cvlog::widgets {

class Form;
class FormPeer;
class ListView;
class ListViewPeer;
class PopupMenuPeer;
class Timer;
class TimerPeer;
struct MenuItem;

/// Makes the platform's side of what is on screen. A peer must not outlive its model. Every call throws when the system
/// has none left.
class PeerFactory {
public:
    virtual ~PeerFactory() = default;
    virtual std::unique_ptr<ListViewPeer> makeListView(ListView& list) = 0;
    virtual std::unique_ptr<FormPeer> makeForm(Form& form) = 0;
    virtual std::unique_ptr<TimerPeer> makeTimer(Timer& timer) = 0;
    /// The default item stands out from the others of the menu; null: none does. The peer keeps the items.
    virtual std::unique_ptr<PopupMenuPeer> makePopupMenu(const MenuItem& menu,
                                                         const MenuItem* defaultItem) = 0;
};

} // namespace cvlog::widgets
