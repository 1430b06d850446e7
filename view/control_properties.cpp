#include "view/control_properties.h"

#include "automation/error.h"

namespace cvlog::view {

namespace {

using automation::AutomationError;
using automation::Value;

constexpr std::u16string_view kBackColor = u"BackColor";
constexpr std::u16string_view kForeColor = u"ForeColor";
constexpr std::u16string_view kEnabled = u"Enabled";
constexpr std::u16string_view kFont = u"Font";

// Conversions take an empty value for 0 or none; in a bag it is damage.
void refuseEmpty(const Value& value) {
    if (value.is<automation::Empty>() || value.is<automation::Null>() || value.is<automation::Missing>())
        throw AutomationError(automation::code::kTypeMismatch, u"Type mismatch");
}

std::uint32_t toColour(const Value& value) { return static_cast<std::uint32_t>(automation::toColour(value)); }

template <class Result, class Convert>
Result readAs(PropertyBag& bag, std::u16string_view name, Result fallback, Convert convert) {
    const std::optional<Value> value = bag.read(name);
    if (!value) return fallback;
    refuseEmpty(*value);
    return convert(*value);
}

automation::ObjectRef toFont(const Value& value) {
    automation::ObjectRef font = automation::toObject(value);
    if (!font) throw AutomationError(automation::code::kObjectRequired, u"Object required");
    return font;
}

} // namespace

ControlProperties readProperties(PropertyBag& bag) {
    ControlProperties properties;
    properties.backColor = readAs(bag, kBackColor, properties.backColor, toColour);
    properties.foreColor = readAs(bag, kForeColor, properties.foreColor, toColour);
    properties.enabled = readAs(bag, kEnabled, properties.enabled, automation::toBoolean);
    properties.font = readAs(bag, kFont, properties.font, toFont);
    return properties;
}

void writeProperties(const ControlProperties& properties, PropertyBag& bag) {
    const ControlProperties defaults;
    const auto asNumber = [](std::uint32_t colour) { return static_cast<std::int32_t>(colour); };
    if (properties.backColor != defaults.backColor) bag.write(kBackColor, asNumber(properties.backColor));
    if (properties.foreColor != defaults.foreColor) bag.write(kForeColor, asNumber(properties.foreColor));
    if (properties.enabled != defaults.enabled) bag.write(kEnabled, properties.enabled);
    if (properties.font) bag.write(kFont, properties.font);
}

} // namespace cvlog::view
