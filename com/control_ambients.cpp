// What the container says of its surroundings, at first and whenever it changes.

#include "base/failure.h"
#include "com/control_shell.h"
#include "com/variants.h"
#include "hostapi/font_object.h"

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
bool isDesigning(const automation::Value& userMode) {
    if (userMode.isNothing()) return false;
    return base::valueOr(false, [&userMode] { return !automation::toBoolean(userMode); });
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
        control().setDesignMode(isDesigning(ambient(site.Get(), DISPID_AMBIENT_USERMODE)));
    if (all || property == DISPID_AMBIENT_FONT)
        control().setAmbientFont(fontOf(ambient(site.Get(), DISPID_AMBIENT_FONT)));
}

} // namespace cvlog::com
