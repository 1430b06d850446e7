#include "automation/value.h"

#include "automation/error.h"
#include "automation/object.h"
#include "base/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

namespace cvlog::automation {

namespace {

[[noreturn]] void mismatch() { throw AutomationError(code::kTypeMismatch, u"Type mismatch"); }

[[noreturn]] void overflow() { throw AutomationError(code::kOverflow, u"Overflow"); }

std::optional<double> parseNumber(std::u16string_view text) {
    const std::string narrow = base::toUtf8(base::trimBlanks(text));
    const char* first = narrow.data();
    const char* last = first + narrow.size();
    if (last - first > 1 && *first == '+' && first[1] != '-') ++first;
    double number = 0;
    const auto [end, problem] = std::from_chars(first, last, number);
    // Too large and too small are reported alike; a negative exponent tells which.
    if (problem == std::errc::result_out_of_range) {
        if (narrow.find("e-") != std::string::npos || narrow.find("E-") != std::string::npos) return 0.0;
        overflow();
    }
    if (problem != std::errc{} || end != last || first == last || !std::isfinite(number)) return std::nullopt;
    return number;
}

std::optional<bool> parseBoolean(std::u16string_view text) {
    if (base::equalsIgnoringCase(text, u"True") || base::equalsIgnoringCase(text, u"#TRUE#")) return true;
    if (base::equalsIgnoringCase(text, u"False") || base::equalsIgnoringCase(text, u"#FALSE#")) return false;
    return std::nullopt;
}

std::u16string shortestText(double number, int digits) {
    char buffer[64];
    const auto [end, problem] =
        std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::general, digits);
    if (problem != std::errc{}) return {};
    std::u16string text(buffer, end);
    std::replace(text.begin(), text.end(), u'e', u'E');
    return text;
}

// An object stands for its default value where a plain value is wanted.
Value defaultValue(const ObjectRef& object) {
    if (!object) throw AutomationError(code::kObjectRequired, u"Object required");
    Value value = object->get(u"");
    if (value.is<ObjectRef>()) mismatch();
    return value;
}

struct NumberOf {
    double operator()(Empty) const { return 0; }
    double operator()(bool value) const { return value ? -1 : 0; }
    double operator()(std::int16_t value) const { return value; }
    double operator()(std::int32_t value) const { return value; }
    double operator()(std::int64_t value) const { return static_cast<double>(value); }
    double operator()(float value) const { return value; }
    double operator()(double value) const { return value; }
    double operator()(Date value) const { return value.days; }
    double operator()(const std::u16string& value) const {
        if (const auto truth = parseBoolean(value)) return *truth ? -1 : 0;
        const auto number = parseNumber(value);
        if (!number) mismatch();
        return *number;
    }
    double operator()(const ObjectRef& value) const { return toDouble(defaultValue(value)); }
    double operator()(Missing) const {
        throw AutomationError(code::kParameterNotOptional, u"Parameter not optional");
    }
    double operator()(Null) const { mismatch(); }
    double operator()(ErrorCode) const { mismatch(); }
};

// Half to even, as automation rounds, whatever rounding mode the host has set.
double roundHalfEven(double number) {
    const double below = std::floor(number);
    const double rest = number - below;
    if (rest != 0.5) return rest < 0.5 ? below : below + 1;
    return std::fmod(below, 2) == 0 ? below : below + 1;
}

// A whole number between the least of one type and the greatest of another.
template <class Least, class Greatest = Least>
std::int64_t toWhole(const Value& value) {
    const double number = roundHalfEven(toDouble(value));
    if (std::isnan(number) || number < static_cast<double>(std::numeric_limits<Least>::min()) ||
        number > static_cast<double>(std::numeric_limits<Greatest>::max()))
        overflow();
    return static_cast<std::int64_t>(number);
}

struct TextOf {
    std::u16string operator()(Empty) const { return {}; }
    std::u16string operator()(bool value) const { return value ? u"True" : u"False"; }
    std::u16string operator()(std::int16_t value) const { return base::decimal(value); }
    std::u16string operator()(std::int32_t value) const { return base::decimal(value); }
    std::u16string operator()(std::int64_t value) const { return base::decimal(value); }
    std::u16string operator()(float value) const { return shortestText(static_cast<double>(value), 7); }
    std::u16string operator()(double value) const { return shortestText(value, 15); }
    std::u16string operator()(Date value) const { return shortestText(value.days, 15); }
    std::u16string operator()(const std::u16string& value) const { return value; }
    std::u16string operator()(const ObjectRef& value) const { return toText(defaultValue(value)); }
    std::u16string operator()(Missing) const {
        throw AutomationError(code::kParameterNotOptional, u"Parameter not optional");
    }
    std::u16string operator()(Null) const { mismatch(); }
    std::u16string operator()(ErrorCode) const { mismatch(); }
};

} // namespace

std::u16string& Value::makeText() {
    if (auto* text = std::get_if<std::u16string>(&storage_)) return *text;
    return storage_.emplace<std::u16string>();
}

bool Value::isNothing() const noexcept {
    if (const auto* object = std::get_if<ObjectRef>(&storage_)) return *object == nullptr;
    return is<Empty>() || is<Null>();
}

std::int16_t toInt16(const Value& value) { return static_cast<std::int16_t>(toWhole<std::int16_t>(value)); }

std::int32_t toInt32(const Value& value) {
    if (const auto* number = std::get_if<std::int32_t>(&value.storage())) return *number;
    return static_cast<std::int32_t>(toWhole<std::int32_t>(value));
}

std::int32_t toColour(const Value& value) {
    return static_cast<std::int32_t>(toWhole<std::int32_t, std::uint32_t>(value));
}

double toDouble(const Value& value) { return std::visit(NumberOf{}, value.storage()); }

float toSingle(const Value& value) {
    const double number = toDouble(value);
    if (std::isfinite(number) && std::abs(number) > static_cast<double>(std::numeric_limits<float>::max()))
        overflow();
    return static_cast<float>(number);
}

bool toBoolean(const Value& value) { return toDouble(value) != 0; }

std::u16string toText(const Value& value) { return std::visit(TextOf{}, value.storage()); }

std::u16string toText(Value&& value) {
    return value.is<std::u16string>() ? std::move(value.makeText()) : toText(std::as_const(value));
}

ObjectRef toObject(const Value& value) {
    if (value.is<ObjectRef>()) return value.as<ObjectRef>();
    if (value.is<Missing>()) throw AutomationError(code::kParameterNotOptional, u"Parameter not optional");
    if (!value.isNothing()) mismatch();
    return nullptr;
}

Value convert(const Value& value, Type type) {
    switch (type) {
    case Type::Boolean:
        return toBoolean(value);
    case Type::Int16:
        return toInt16(value);
    case Type::Int32:
        return toInt32(value);
    case Type::Colour:
        return toColour(value);
    case Type::Single:
        return toSingle(value);
    case Type::Double:
        return toDouble(value);
    case Type::Text:
        return toText(value);
    case Type::Object:
        return toObject(value);
    case Type::Nothing:
        return {};
    case Type::Any:
        break;
    }
    return value;
}

} // namespace cvlog::automation
