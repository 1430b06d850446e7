#pragma once

#include "automation/object.h"

#include <oaidl.h>

// The two ways across the border: a foreign IDispatch becomes an Object, one of our Objects becomes an IDispatch. A
// round trip gives back what went in.

namespace cvlog::com {

/// Null for null. The object holds a reference.
automation::ObjectRef toObject(IDispatch* dispatch);

/// A new reference that the caller releases; null for null.
IDispatch* toDispatch(const automation::ObjectRef& object);

} // namespace cvlog::com
