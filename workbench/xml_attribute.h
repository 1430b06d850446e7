#pragma once

#include "workbench/com_call.h"
#include "workbench/variant.h"

namespace workbench {

/// An attribute of an element as the system's XML parser gives it; empty where there is none.
inline std::wstring attribute(IDispatch* node, const wchar_t* name) {
    const Variant value = call(node, L"getAttribute", {name});
    return value.isEmptyResult() ? std::wstring() : value.text();
}

} // namespace workbench
