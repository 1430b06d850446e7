#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

namespace cvlog::automation {

class Object;
/// A shared reference to a late-bound object; null stands for "Nothing".
using ObjectRef = std::shared_ptr<Object>;

struct Empty {
    friend bool operator==(Empty, Empty) = default;
};
struct Null {
    friend bool operator==(Null, Null) = default;
};
/// An optional argument that the caller left out.
struct Missing {
    friend bool operator==(Missing, Missing) = default;
};
/// Days since 1899-12-30, the automation date.
struct Date {
    double days = 0;
    friend bool operator==(Date, Date) = default;
};
struct ErrorCode {
    std::int32_t code = 0;
    friend bool operator==(ErrorCode, ErrorCode) = default;
};

enum class Type { Any, Boolean, Int16, Int32, Colour, Single, Double, Text, Object, Nothing };

/// One late-bound value: what an argument or a result can be.
class Value {
public:
    using Storage = std::variant<Empty, Null, Missing, bool, std::int16_t, std::int32_t, std::int64_t, float,
                                 double, Date, ErrorCode, std::u16string, ObjectRef>;

    Value() = default;
    template <class T>
    requires(!std::is_same_v<T, Value> &&
             std::is_constructible_v<Storage, std::in_place_type_t<T>, T>) explicit(false) Value(T value)
        : storage_(std::in_place_type<T>, std::move(value)) {}
    Value(std::u16string_view text) : storage_(std::u16string(text)) {}
    Value(const char16_t* text) : storage_(std::u16string(text)) {}
    template <class T>
    requires(std::is_base_of_v<Object, T> && !std::is_same_v<Object, T>) Value(std::shared_ptr<T> object)
        : storage_(ObjectRef(std::move(object))) {}

    const Storage& storage() const noexcept { return storage_; }
    template <class T>
    bool is() const noexcept {
        return std::holds_alternative<T>(storage_);
    }
    template <class T>
    const T& as() const {
        return std::get<T>(storage_);
    }

    /// Makes it a text, to be written by the caller. The memory of a text that is there is used again.
    std::u16string& makeText();

    /// Empty, Null or an object reference to nothing: the answer of a look-up that found nothing.
    bool isNothing() const noexcept;

    friend bool operator==(const Value&, const Value&) = default;

private:
    Storage storage_;
};

// Conversions by the rules of automation, the same in every body of the component. They throw AutomationError:
// type mismatch, overflow, or parameter not optional for a missing value. Empty converts to 0, "" or nothing; Null
// converts to nothing but an object reference to nothing. Real numbers round half to even.
std::int16_t toInt16(const Value& value);
std::int32_t toInt32(const Value& value);
/// A colour's 32 bits, as an Int32 holds them. System colours have the highest bit set: some callers give them as
/// negative numbers, others as unsigned ones.
std::int32_t toColour(const Value& value);
double toDouble(const Value& value);
float toSingle(const Value& value);
bool toBoolean(const Value& value);
std::u16string toText(const Value& value);
std::u16string toText(Value&& value); // takes the text out of the value
ObjectRef toObject(const Value& value);

/// The value converted to a type; Type::Any leaves it as it is.
Value convert(const Value& value, Type type);

} // namespace cvlog::automation
