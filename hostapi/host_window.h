#pragma once

#include "hostapi/late_bound.h"

#include <string_view>

namespace cvlog::hostapi {

/// A control in a window of the host: its own members and those that its container adds.
class HostControl : public LateBound {
public:
    using LateBound::LateBound;
    void setVisible(bool visible) const { required()->put(u"Visible", visible); }
    void setFont(const automation::ObjectRef& font) const { required()->put(u"Font", font); }
    void bringToFront() const { invoke(u"ZOrder", std::int32_t{0}); }
    void setFocus() const { invoke(u"SetFocus"); }
};

/// A window of the host that can hold the log.
class HostWindow : public LateBound {
public:
    using LateBound::LateBound;
    std::int32_t hwnd() const { return number(u"hwnd"); }
    /// Nothing when the window has no control of that name.
    HostControl control(std::u16string_view name) const {
        return HostControl(Collection(objectOf(u"Controls")).item(name));
    }
    HostControl addControl(std::u16string_view programId, std::u16string_view name,
                           const automation::ObjectRef& container) const {
        const automation::ObjectRef controls = objectOf(u"Controls");
        if (!controls)
            throw automation::AutomationError(automation::code::kObjectRequired, u"Object required");
        return HostControl(automation::toObject(controls->invoke(u"Add", programId, name, container)));
    }
    /// The host lays the window out with the log in it.
    void displayLog() const { invoke(u"DisplayLog"); }
    /// In twips; the host may change what it is given.
    void move(double left, double top, double width, double height) const {
        automation::Value values[] = {left, top, width, height};
        required()->callByReference(u"Move", values);
    }
    void setFocus() const { invoke(u"SetFocus"); }
    void setEnabled(bool enabled) const { required()->put(u"Enabled", enabled); }
    /// 0 the usual one, 11 the hourglass, 13 the arrow with the hourglass.
    void setMousePointer(std::int16_t pointer) const { required()->put(u"MousePointer", pointer); }
    /// It holds other windows; only such a one says so.
    bool isMdiForm() const { return automation::toBoolean(required()->get(u"IsMDIForm")); }
};

/// A tool of the host that runs.
class Tool : public LateBound {
public:
    using LateBound::LateBound;
    HostWindow window() const { return HostWindow(objectOf(u"CalvettaWindow")); }
};

} // namespace cvlog::hostapi
