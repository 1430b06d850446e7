#pragma once

#include <memory>
#include <string>

#include "workbench/control_site.h"
#include "workbench/variant.h"

namespace workbench {

/// Hosts one ActiveX control in a window: creates it, activates it in place, moves it, shows it, gives it focus and
/// keys. Areas are in pixels of the window's client area.
class ControlContainer {
public:
    /// The control is hidden at first. Throws Failure when it cannot be created or activated.
    static std::shared_ptr<ControlContainer> create(HWND window, const wchar_t* progId,
                                                    const std::wstring& name, const RECT& area);
    ~ControlContainer() { close(); }
    ControlContainer(const ControlContainer&) = delete;
    ControlContainer& operator=(const ControlContainer&) = delete;

    const std::wstring& name() const { return name_; }
    /// The control's members and the container's in one object (control_object.h), the same object each time.
    const ComPtr<IDispatch>& object() const { return extended_; }
    /// The control's window; null when the control is closed.
    HWND controlWindow() const;

    void place(const RECT& area);
    const RECT& area() const { return site_->area(); }
    void show(bool visible);
    bool visible() const { return visible_; }
    void bringToFront();
    void sendToBack();
    /// Gives the focus to a visible control.
    void focus();
    /// Offers a key to the control when it has the focus; true when the control has used it.
    bool translate(MSG& message);

    /// Ends the control; a closed one stays usable as far as nothing happens any more.
    void close();

private:
    ControlContainer(HWND window, std::wstring name);
    void createControl(const wchar_t* progId);
    void activate(LONG verb);

    HWND window_;
    std::wstring name_;
    ComPtr<ControlFrame> frame_;
    ComPtr<ControlSite> site_;
    ComPtr<IOleObject> object_;
    ComPtr<IOleInPlaceObject> inPlace_;
    ComPtr<IDispatch> extended_;
    bool visible_ = false;
};

} // namespace workbench
