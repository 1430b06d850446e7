#include "platform/headless/headless_form_peer.h"

#include "widgets/list_view.h"

#include <algorithm>
#include <stdexcept>

namespace cvlog::platform::headless {

namespace {

constexpr base::Area kFirstPlace = {600, 600, 9'000, 4'500};
constexpr base::Area kWholeScreen = {0, 0, 19'200, 14'400};

} // namespace

HeadlessFormPeer::HeadlessFormPeer(widgets::Form& form, const CallGate& gate, FormBook& book,
                                   TimerBook& timers)
    : form_(form), gate_(gate), book_(book), timers_(timers) {
    gate_.pass("Form.create");
    handle_ = book_.nextHandle++;
    book_.live.push_back(this);
}

HeadlessFormPeer::~HeadlessFormPeer() {
    if (form_.list()) book_.faults.push_back("a window goes with a list on it");
    if (isActive()) book_.active = 0;
    std::erase(book_.live, this);
}

bool HeadlessFormPeer::pass(std::string_view call) {
    const FormBook& book = book_;
    const std::int32_t handle = handle_;
    gate_.pass(call);
    return std::ranges::find(book.live, handle, &HeadlessFormPeer::windowHandle) != book.live.end();
}

void HeadlessFormPeer::tellClientSize() {
    const base::Area window = form_.state() == widgets::WindowState::Maximised
                                  ? kWholeScreen
                                  : form_.placement().value_or(kFirstPlace);
    const base::Area frame = form_.border() == widgets::Border::Strip ? base::Area() : kFrame;
    form_.userResized(window.width - frame.width, window.height - frame.height);
}

void HeadlessFormPeer::placementChanged() {
    if (pass("Form.placementChanged")) tellClientSize();
}

void HeadlessFormPeer::focusButton(const widgets::Button& button) {
    if (!pass("Form.focusButton")) return;
    focused_ = &button;
    form_.userFocuses(button);
}

void HeadlessFormPeer::userPressesEnter() {
    const widgets::Button* pressed = focused_;
    for (const widgets::Button& button : form_.buttons())
        if (!pressed && button.isDefault) pressed = &button;
    if (pressed) form_.userClicks(*pressed);
}

void HeadlessFormPeer::listPlaced(widgets::ListView& list, const base::Area&) {
    if (pass("Form.listPlaced") && !list.peer()) book_.faults.push_back("a list without a window is placed");
}

void HeadlessFormPeer::listTakenOff(widgets::ListView& list) noexcept {
    if (!list.peer()) book_.faults.push_back("a list is taken off after its window went");
}

void HeadlessFormPeer::comeUp(widgets::Activation activation) noexcept {
    onScreen_ = true;
    if (activation == widgets::Activation::Take) book_.active = handle_;
}

void HeadlessFormPeer::show(std::int32_t ownerWindow, widgets::Activation activation) {
    if (!pass("Form.show")) return;
    if (book_.refusedOwners.contains(ownerWindow)) throw std::runtime_error("that window owns nothing");
    book_.shown.push_back({form_.caption(), ownerWindow, false});
    comeUp(activation);
    if (!form_.placement()) form_.userMoved(kFirstPlace, form_.state());
    tellClientSize();
}

void HeadlessFormPeer::runModal(std::int32_t ownerWindow) {
    if (!pass("Form.runModal")) return;
    FormBook& book = book_; // this peer goes while the form is run
    TimerBook& timers = timers_;
    const std::int32_t handle = handle_;
    const auto peer = [&book, handle]() -> HeadlessFormPeer* {
        const auto found = std::ranges::find(book.live, handle, &HeadlessFormPeer::windowHandle);
        return found == book.live.end() ? nullptr : *found;
    };
    book.shown.push_back({form_.caption(), ownerWindow, true});
    comeUp(widgets::Activation::Take);
    if (book.whileModal) book.whileModal(*this);
    while (peer() && timers.runNext()) {
    }
    if (HeadlessFormPeer* left = peer()) {
        book.faults.push_back("a modal form would wait for ever");
        left->userCloses();
    }
}

void HeadlessFormPeer::bringToFront(widgets::Activation activation) {
    if (!pass("Form.bringToFront")) return;
    book_.broughtToFront.push_back(form_.caption());
    if (form_.visible()) comeUp(activation);
}

void HeadlessFormPeer::userMoves(const base::Area& placement) {
    form_.userMoved(placement, widgets::WindowState::Normal);
    tellClientSize();
}

void HeadlessFormPeer::userMaximises() {
    form_.userMoved(form_.placement().value_or(kFirstPlace), widgets::WindowState::Maximised);
    tellClientSize();
}

} // namespace cvlog::platform::headless
