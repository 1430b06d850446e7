#pragma once

#include "platform/win32/windows_headers.h"
#include "widgets/list_view.h"

#include <memory>
#include <optional>

namespace cvlog::platform::win32 {

/// Calls an owner from a window. A handler may do anything, also destroy the list; its failures end here.
class OwnerCalls {
public:
    explicit OwnerCalls(const widgets::ListView& model) noexcept : model_(model) {}
    /// False when the list is gone now: nothing of it may be touched any more.
    template <class Call>
    bool operator()(Call&& call) const noexcept {
        const std::weak_ptr<const bool> alive = alive_;
        try {
            if (widgets::ListViewOwner* owner = model_.owner()) call(*owner);
        } catch (...) { // a handler's failure is the handler's
        }
        return !alive.expired();
    }

private:
    const widgets::ListView& model_;
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

/// Keys and mouse buttons of a list window, forwarded to the owner.
class ListInput {
public:
    explicit ListInput(const OwnerCalls& owner) noexcept : owner_(owner) {}

    static bool isInput(UINT message) noexcept;
    /// A mouse button goes down.
    static bool isPress(UINT message) noexcept;
    /// True when the list must not see the message. The list may be gone afterwards.
    bool before(UINT message, WPARAM& wParam);
    /// The list may be gone afterwards.
    void after(UINT message);
    /// The list says that a click is complete: it may have swallowed the message of the button's release.
    void clicked() noexcept { clicked_ = true; }

private:
    bool keyDown(WPARAM& wParam);
    void released(widgets::MouseButton button);

    const OwnerCalls& owner_;
    bool swallowCharacter_ = false;
    bool menuClosed_ = false; // since the last key was pressed
    bool clicked_ = false;
    std::optional<widgets::MouseButton> pressed_; // its release was not reported yet
};

} // namespace cvlog::platform::win32
