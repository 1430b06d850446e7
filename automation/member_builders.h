#pragma once

#include "automation/dispatch_table.h"

#include <utility>

// Short forms for the rows of a dispatch table.

namespace cvlog::automation {

/// A property that is read without arguments: handler(target).
template <class Target, class Handler>
Member readable(std::u16string_view name, std::int32_t id, Type type, Handler handler) {
    return {name, id, MemberKind::PropertyGet,
            type, {}, on<Target>([handler](Target& target, std::span<Value>) {
                return handler(target); })};
}

/// A property that is put without arguments: handler(target, value), the value converted to the type.
template <class Target, class Handler>
Member settable(std::u16string_view name, std::int32_t id, Type type, Handler handler) {
    return {name,
            id,
            MemberKind::PropertyPut,
            Type::Nothing,
            {{name, type}},
            on<Target>([handler](Target& target, std::span<Value> values) { handler(target, values[0]); })};
}

/// A method: handler(target, arguments).
template <class Target, class Handler>
Member method(std::u16string_view name, std::int32_t id, Type result, std::vector<Parameter> parameters,
              Handler handler) {
    return {name, id, MemberKind::Method, result, std::move(parameters), on<Target>(handler)};
}

/// A property that is read with arguments: handler(target, arguments).
template <class Target, class Handler>
Member indexed(std::u16string_view name, std::int32_t id, Type type, std::vector<Parameter> parameters,
               Handler handler) {
    return {name, id, MemberKind::PropertyGet, type, std::move(parameters), on<Target>(handler)};
}

inline Parameter optional(std::u16string_view name, Type type) {
    return {.name = name, .type = type, .optional = true};
}

} // namespace cvlog::automation
