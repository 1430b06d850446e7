#include "platform/win32/list_input.h"

namespace cvlog::platform::win32 {

namespace {

enum class Edge { Down, Up };
struct ButtonMessage {
    UINT message;
    widgets::MouseButton button;
    Edge edge;
};

constexpr ButtonMessage kButtonMessages[] = {
    {WM_LBUTTONDOWN, widgets::MouseButton::Left, Edge::Down},
    {WM_LBUTTONDBLCLK, widgets::MouseButton::Left, Edge::Down},
    {WM_LBUTTONUP, widgets::MouseButton::Left, Edge::Up},
    {WM_RBUTTONDOWN, widgets::MouseButton::Right, Edge::Down},
    {WM_RBUTTONDBLCLK, widgets::MouseButton::Right, Edge::Down},
    {WM_RBUTTONUP, widgets::MouseButton::Right, Edge::Up},
    {WM_MBUTTONDOWN, widgets::MouseButton::Middle, Edge::Down},
    {WM_MBUTTONDBLCLK, widgets::MouseButton::Middle, Edge::Down},
    {WM_MBUTTONUP, widgets::MouseButton::Middle, Edge::Up},
};

const ButtonMessage* buttonMessage(UINT message) noexcept {
    for (const ButtonMessage& known : kButtonMessages)
        if (known.message == message) return &known;
    return nullptr;
}

bool isDown(int key) noexcept { return GetKeyState(key) < 0; }

bool isDown(widgets::MouseButton button) noexcept {
    switch (button) {
    case widgets::MouseButton::Left:
        return isDown(VK_LBUTTON);
    case widgets::MouseButton::Right:
        return isDown(VK_RBUTTON);
    case widgets::MouseButton::Middle:
        return isDown(VK_MBUTTON);
    }
    return false;
}

widgets::KeyEvent keyEvent(WPARAM key) noexcept {
    const int shift = (isDown(VK_SHIFT) ? 1 : 0) | (isDown(VK_CONTROL) ? 2 : 0) | (isDown(VK_MENU) ? 4 : 0);
    return {static_cast<std::int16_t>(key), static_cast<std::int16_t>(shift)};
}

} // namespace

bool ListInput::isInput(UINT message) noexcept {
    return message == WM_KEYDOWN || message == WM_SYSKEYDOWN || message == WM_CHAR || buttonMessage(message);
}

bool ListInput::isPress(UINT message) noexcept {
    const ButtonMessage* known = buttonMessage(message);
    return known && known->edge == Edge::Down;
}

bool ListInput::before(UINT message, WPARAM& wParam) {
    switch (message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
        return keyDown(wParam);
    case WM_KEYUP:
    case WM_SYSKEYUP: {
        if (menuClosed_) return false; // of a key that chose in the menu
        widgets::KeyEvent event = keyEvent(wParam);
        const bool alive = owner_([&event](widgets::ListViewOwner& owner) { owner.keyReleased(event); });
        return !alive || event.code == 0;
    }
    case WM_EXITMENULOOP:
        menuClosed_ = true;
        return false;
    case WM_CHAR:
    case WM_SYSCHAR:
        return swallowCharacter_; // the character of a key that was consumed
    default:
        break;
    }
    if (isPress(message)) {
        pressed_ = buttonMessage(message)->button;
        clicked_ = false;
    }
    return false;
}

bool ListInput::keyDown(WPARAM& wParam) {
    menuClosed_ = false;
    widgets::KeyEvent event = keyEvent(wParam);
    const bool alive = owner_([&event](widgets::ListViewOwner& owner) { owner.keyPressed(event); });
    if (!alive) return true;
    swallowCharacter_ = event.code == 0;
    if (event.code != 0) wParam = static_cast<WPARAM>(static_cast<std::uint16_t>(event.code));
    return event.code == 0;
}

void ListInput::after(UINT message) {
    const ButtonMessage* known = buttonMessage(message);
    if (!known || pressed_ != known->button) return;
    // A list may follow the mouse in a loop of its own from the button's press to its release, which nobody
    // else gets to see then. So the release is reported when its message comes, or when the press is over and
    // the button is up.
    const bool swallowed = known->edge == Edge::Down && (clicked_ || !isDown(known->button));
    if (known->edge == Edge::Up || swallowed) released(known->button);
}

void ListInput::released(widgets::MouseButton button) {
    pressed_.reset();
    owner_([button](widgets::ListViewOwner& owner) { owner.mouseReleased(button); });
}

} // namespace cvlog::platform::win32
