#pragma once

#include <ole2.h>

#include <comdef.h>

#include <algorithm>
#include <vector>

_COM_SMARTPTR_TYPEDEF(IDispatch, __uuidof(IDispatch)); // IDispatchPtr

/// Calls a member by its name. A call that fails throws _com_error.
inline _variant_t call(IDispatch* object, const wchar_t* name, std::vector<_variant_t> arguments = {}) {
    auto* member = const_cast<wchar_t*>(name);
    DISPID id = DISPID_UNKNOWN;
    _com_util::CheckError(object->GetIDsOfNames(IID_NULL, &member, 1, LOCALE_USER_DEFAULT, &id));
    std::reverse(arguments.begin(), arguments.end()); // the last one comes first
    DISPPARAMS given{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    _variant_t result;
    _com_util::CheckError(object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &given, &result,
                                         nullptr, nullptr));
    return result;
}
