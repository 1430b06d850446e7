#pragma once

#include <initializer_list>

#include "workbench/variant.h"

namespace workbench {

/// Late-bound calls by member name. Each throws Failure, with the callee's own description, when the call
/// fails.
Variant call(IDispatch* object, const wchar_t* method, std::initializer_list<Variant> arguments = {});
Variant get(IDispatch* object, const wchar_t* property, std::initializer_list<Variant> arguments = {});
void put(IDispatch* object, const wchar_t* property, const Variant& value);
/// `Set object.property = value`, for properties that keep the object itself.
void putReference(IDispatch* object, const wchar_t* property, IDispatch* value);

/// `collection(key)`: the default member, as `collection.Item(key)`.
Variant item(IDispatch* collection, const Variant& key);

/// An object by its programmatic identifier, from the in-process server that the activation context names.
ComPtr<IUnknown> createObject(const wchar_t* progId);

} // namespace workbench
