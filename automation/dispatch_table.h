#pragma once

#include "automation/object.h"

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

// An object that others see declares its members once, in a table. Late-bound calls by name, dispatch by id and the
// type library are all held to that table.

namespace cvlog::automation {

enum class MemberKind { Method, PropertyGet, PropertyPut };

struct Parameter {
    std::u16string_view name;
    Type type = Type::Any;
    bool byReference = false;
    bool optional = false; // a missing one becomes the type's empty value
};

struct Member {
    std::u16string_view name;
    std::int32_t id;
    MemberKind kind;
    Type result;
    std::vector<Parameter> parameters;
    /// Gets one converted value a parameter; what it changes in by-reference ones goes back to the caller.
    std::function<Value(Object&, std::span<Value>)> handler;
};

class DispatchTable {
public:
    DispatchTable(std::initializer_list<Member> members);

    const std::vector<Member>& members() const noexcept { return members_; }
    /// The dispatch id of a name, without regard to case.
    std::optional<std::int32_t> idOf(std::u16string_view name) const noexcept;
    /// The id of a parameter of the named member: its position from 0.
    std::optional<std::int32_t> parameterIdOf(std::u16string_view member,
                                              std::u16string_view parameter) const noexcept;
    const Member* find(std::int32_t id, MemberKind kind) const noexcept;
    bool has(std::int32_t id) const noexcept;

private:
    std::vector<Member> members_;
};

/// An argument given by name: the parameter's position and the value.
struct NamedArgument {
    std::int32_t parameter;
    Value* value;
};

/// The arguments of one call as the caller gave them; the pointers allow by-reference ones to be written back.
struct CallArguments {
    std::vector<Value*> positional;
    std::vector<NamedArgument> named;
    /// What a property put assigns: it goes to the last parameter, whatever stands before it.
    Value* assigned = nullptr;
};

/// Converts the arguments for a member, runs it, and writes back the by-reference ones that the member has changed; the
/// others keep the value and the type that the caller gave them. Arguments for a property that takes none go to the
/// default member of its value: `form.Controls("x")` is `form.Controls.Item("x")`. Throws AutomationError: bad count,
/// unknown name, missing one that is not optional, type mismatch, overflow.
Value invokeMember(Object& target, const Member& member, const CallArguments& arguments);

/// An object whose members are those of a table.
class DispatchObject : public Object {
public:
    virtual const DispatchTable& dispatchTable() const = 0;
    /// The place of the first element, for a collection that is walked by `Count` and `Item`; none for other objects.
    virtual std::optional<std::int32_t> firstElement() const { return std::nullopt; }

    Value call(std::u16string_view member, std::span<Value> arguments) override;
    Value get(std::u16string_view member) override;
    void put(std::u16string_view member, const Value& value) override;
    /// Puts a property that takes arguments: `item.SubItems(2) = "x"`.
    void putIndexed(std::u16string_view member, std::span<Value> arguments, const Value& value);

private:
    const Member* findByName(std::u16string_view name, MemberKind kind) const;
};

/// Builds a handler that takes the object by its own class.
template <class Target, class Handler>
std::function<Value(Object&, std::span<Value>)> on(Handler handler) {
    return [handler](Object& object, std::span<Value> arguments) -> Value {
        if constexpr (std::is_void_v<std::invoke_result_t<Handler, Target&, std::span<Value>>>) {
            handler(static_cast<Target&>(object), arguments);
            return {};
        } else {
            return Value(handler(static_cast<Target&>(object), arguments));
        }
    };
}

} // namespace cvlog::automation
