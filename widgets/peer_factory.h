#pragma once

#include <memory>

namespace cvlog::widgets {

class Form;
class FormPeer;
class ListView;
class ListViewPeer;
class Timer;
class TimerPeer;

/// Makes the platform's side of what is on screen. A peer must not outlive its model. Every call throws when the system
/// has none left.
class PeerFactory {
public:
    virtual ~PeerFactory() = default;
    virtual std::unique_ptr<ListViewPeer> makeListView(ListView& list) = 0;
    virtual std::unique_ptr<FormPeer> makeForm(Form& form) = 0;
    virtual std::unique_ptr<TimerPeer> makeTimer(Timer& timer) = 0;
};

} // namespace cvlog::widgets
