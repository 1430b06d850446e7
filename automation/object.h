#pragma once

#include "automation/value.h"

#include <span>
#include <string_view>

namespace cvlog::automation {

/// Receives the events of an object. Arguments are by reference: what the handler writes reaches the object.
class EventSink {
public:
    virtual ~EventSink() = default;
    virtual void onEvent(std::int32_t id, std::span<Value> arguments) = 0;
};

/// A live connection of a sink to an object; ends when it is destroyed.
class Connection {
public:
    virtual ~Connection() = default;
};

/// A late-bound object. Members are found by name, without regard to case, at each call. A failing call throws
/// AutomationError. An empty name means the default member.
class Object : public std::enable_shared_from_this<Object> {
public:
    virtual ~Object() = default;

    /// Calls a method, or reads a property that takes arguments. What one of our objects takes by reference is written
    /// back; a host's object gets its arguments by value.
    virtual Value call(std::u16string_view member, std::span<Value> arguments) = 0;
    /// Like call(), with every argument passed by reference: what the object writes into them comes back.
    virtual Value callByReference(std::u16string_view member, std::span<Value> arguments) {
        return call(member, arguments);
    }
    virtual Value get(std::u16string_view member) = 0;
    virtual void put(std::u16string_view member, const Value& value) = 0;

    /// Connects a sink to the object's default events.
    virtual std::unique_ptr<Connection> connect(std::shared_ptr<EventSink> sink);

    /// Equal for two references to the same object, also when each came by its own road.
    virtual const void* identity() const noexcept { return this; }

    /// call() with arguments as they come: object->invoke(u"FindObject", type, name, u"").
    template <class... Arguments>
    Value invoke(std::u16string_view member, Arguments&&... arguments) {
        Value values[sizeof...(Arguments) + 1] = {Value(std::forward<Arguments>(arguments))..., Value()};
        return call(member, std::span<Value>(values, sizeof...(Arguments)));
    }
};

bool sameObject(const ObjectRef& left, const ObjectRef& right) noexcept;

} // namespace cvlog::automation
