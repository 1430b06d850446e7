#pragma once

#include "platform/headless/call_gate.h"
#include "platform/headless/headless_timer_peer.h"
#include "widgets/form.h"

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace cvlog::platform::headless {

class HeadlessFormPeer;

/// What all headless forms of one platform share.
struct FormBook {
    struct Showing {
        std::u16string caption;
        std::int32_t owner;
        bool modal;
        friend bool operator==(const Showing&, const Showing&) = default;
    };

    std::int32_t nextHandle = 0x7000;
    std::vector<HeadlessFormPeer*> live;
    std::set<std::int32_t> refusedOwners; // windows that can own nothing
    std::vector<Showing> shown;
    std::vector<std::u16string> broughtToFront;
    std::int32_t active = 0; // the window that has the user's input; any window's handle
    /// The user before a modal form. A form that is left open waits for its timers.
    std::function<void(HeadlessFormPeer&)> whileModal;
    /// What cannot be on a real screen: empty as long as forms behave.
    std::vector<std::string> faults;
};

/// A form that nobody sees.
class HeadlessFormPeer : public widgets::FormPeer {
public:
    /// What the frame takes of a window.
    static constexpr base::Area kFrame = {60, 450, 120, 510};

    HeadlessFormPeer(widgets::Form& form, const CallGate& gate, FormBook& book, TimerBook& timers);
    ~HeadlessFormPeer() override;

    std::int32_t windowHandle() const override { return handle_; }
    void captionChanged() override { gate_.pass("Form.captionChanged"); }
    void placementChanged() override;
    void clientSizeChanged() override { gate_.pass("Form.clientSizeChanged"); }
    void labelAdded(const widgets::Label&) override { gate_.pass("Form.labelAdded"); }
    void buttonAdded(const widgets::Button&) override { gate_.pass("Form.buttonAdded"); }
    void pictureBoxAdded(const widgets::PictureBox&) override { gate_.pass("Form.pictureBoxAdded"); }
    void buttonMoved(const widgets::Button&) override { gate_.pass("Form.buttonMoved"); }
    void pictureBoxMoved(const widgets::PictureBox&) override { gate_.pass("Form.pictureBoxMoved"); }
    void pictureChanged(const widgets::PictureBox&) override { gate_.pass("Form.pictureChanged"); }
    void focusButton(const widgets::Button& button) override;
    void enabledChanged() override { gate_.pass("Form.enabledChanged"); }
    void pointerChanged() override { gate_.pass("Form.pointerChanged"); }
    void listPlaced(widgets::ListView& list, const base::Area& area) override;
    void listTakenOff(widgets::ListView& list) noexcept override;
    void show(std::int32_t ownerWindow, widgets::Activation activation) override;
    void runModal(std::int32_t ownerWindow) override;
    void bringToFront(widgets::Activation activation) override;
    bool isActive() const override { return book_.active == handle_; }

    widgets::Form& form() const noexcept { return form_; }
    bool onScreen() const noexcept { return onScreen_; }
    /// Somebody who has the window's handle hides it.
    void hideByHandle() noexcept { onScreen_ = false; }

    // The user at the window. Each may end the peer.
    void userCloses() { form_.userCloses(); }
    /// By Tab or with the mouse.
    void userFocuses(std::size_t button) { focusButton(form_.buttons().at(button)); }
    /// Null while none has it.
    const widgets::Button* focusedButton() const noexcept { return focused_; }
    /// What Enter presses: the button with the focus, else the default one.
    void userPressesEnter();
    void userClicks(std::size_t button) { form_.userClicks(form_.buttons().at(button)); }
    void userMoves(const base::Area& placement);
    void userMaximises();

private:
    /// Lets other code run; false when that was the end of this peer.
    bool pass(std::string_view call);
    void tellClientSize();
    void comeUp(widgets::Activation activation) noexcept;

    widgets::Form& form_;
    const CallGate& gate_;
    FormBook& book_;
    TimerBook& timers_;
    std::int32_t handle_;
    bool onScreen_ = false;
    const widgets::Button* focused_ = nullptr;
};

} // namespace cvlog::platform::headless
