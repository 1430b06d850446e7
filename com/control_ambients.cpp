// What the container says of its surroundings, at first and whenever it changes.

#include "base/failure.h"
#include "com/control_shell.h"
#include "com/variants.h"
#include "hostapi/font_object.h"
#include "platform/win32/list_view_window.h"

#include <olectl.h>

namespace cvlog::com {

namespace {

// Nothing when the container does not say.
automation::Value ambient(IOleClientSite* site, DISPID id) {
    ComPtr<IDispatch> properties;
    if (!site || FAILED(site->QueryInterface(IID_IDispatch, &properties))) return {};
    VARIANT value;
    VariantInit(&value);
    const base::ScopeExit clear([&value] { VariantClear(&value); });
    DISPPARAMS none = {};
    const HRESULT result = properties->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                                              &value, nullptr, nullptr);
    if (FAILED(result)) return {};
    return base::valueOr(automation::Value(), [&value] { return fromVariant(value); });
}

// A container that says nonsense is as one that says nothing.
bool truthOf(const automation::Value& value, bool otherwise) {
    if (value.isNothing()) return otherwise;
    return base::valueOr(otherwise, [&value] { return automation::toBoolean(value); });
}

std::optional<base::Font> fontOf(const automation::Value& font) {
    return base::valueOr(std::optional<base::Font>(), [&font] {
        return std::optional(hostapi::FontObject(automation::toObject(font)).read());
    });
}

} // namespace

void ControlShell::readAmbients(DISPID property) {
    const ComPtr<IOleClientSite> site = site_;
    const bool all = property == DISPID_UNKNOWN;
    if (all || property == DISPID_AMBIENT_USERMODE)
        control().setDesignMode(!truthOf(ambient(site.Get(), DISPID_AMBIENT_USERMODE), true));
    if (all || property == DISPID_AMBIENT_UIDEAD) {
        const bool isDead = truthOf(ambient(site.Get(), DISPID_AMBIENT_UIDEAD), false);
        if (isDead) giveFocusBack();
        if (window()) EnableWindow(window()->frame(), !isDead); // the list itself stays as its property says
    }
    if (all || property == DISPID_AMBIENT_FONT)
        control().setAmbientFont(fontOf(ambient(site.Get(), DISPID_AMBIENT_FONT)));
}

LCID ControlShell::ambientLocale() const {
    const automation::Value locale = ambient(site_.Get(), DISPID_AMBIENT_LOCALEID);
    if (locale.isNothing()) return GetUserDefaultLCID();
    return base::valueOr(GetUserDefaultLCID(),
                         [&locale] { return static_cast<LCID>(automation::toInt32(locale)); });
}

} // namespace cvlog::com
