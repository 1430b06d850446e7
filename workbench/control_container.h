#pragma once

#include "workbench/control_site.h"
#include "workbench/variant.h"

namespace workbench {

/// Hosts one ActiveX control in a window, from construction to destruction: creates it, activates it in
/// place, moves it, shows it, gives it focus and keys.
class ControlContainer {
public:
    /// Throws Failure when the control cannot be created or activated.
    ControlContainer(HWND window, const wchar_t* progId, const RECT& area);
    ~ControlContainer();
    ControlContainer(const ControlContainer&) = delete;
    ControlContainer& operator=(const ControlContainer&) = delete;

    /// The control's own automation object; null when it has none.
    const ComPtr<IDispatch>& control() const { return dispatch_; }

    /// Moves the control to a rectangle of the window's client area.
    void place(const RECT& area);
    void show(bool visible);
    bool visible() const { return visible_; }
    void bringToFront();
    void focus();
    /// Offers a message to the active control; true when the control has used it.
    bool translate(MSG& message);

private:
    void create(const wchar_t* progId);
    void activate(LONG verb);
    HWND controlWindow() const;

    HWND window_;
    ComPtr<ControlFrame> frame_;
    ComPtr<ControlSite> site_;
    ComPtr<IOleObject> object_;
    ComPtr<IOleInPlaceObject> inPlace_;
    ComPtr<IDispatch> dispatch_;
    bool visible_ = true;
};

} // namespace workbench
