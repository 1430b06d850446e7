#include "workbench/com_call.h"

#include <algorithm>
#include <vector>

#include "workbench/failure.h"

namespace workbench {

namespace {

DISPID memberId(IDispatch* object, const wchar_t* name) {
    if (!object) {
        throw Failure(std::wstring(L"There is no object to ask for ") + name, E_POINTER);
    }
    LPOLESTR names = const_cast<LPOLESTR>(name);
    DISPID id = DISPID_UNKNOWN;
    const HRESULT result = object->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
    if (result == DISP_E_UNKNOWNNAME) {
        throw Failure(std::wstring(L"There is no member named ") + name, result);
    }
    check(result, (std::wstring(L"Looking for the member ") + name).c_str());
    return id;
}

std::wstring describe(EXCEPINFO& exception, const wchar_t* name, HRESULT result) {
    if (result == DISP_E_EXCEPTION && exception.pfnDeferredFillIn) {
        exception.pfnDeferredFillIn(&exception);
    }
    std::wstring text = std::wstring(name) + L": ";
    if (exception.bstrDescription) {
        text += exception.bstrDescription;
    } else {
        const HRESULT code = result == DISP_E_EXCEPTION && FAILED(exception.scode) ? exception.scode : result;
        wchar_t number[40];
        wsprintfW(number, L"the call failed (0x%08lX)", code);
        text += number;
    }
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
    return text;
}

Variant invoke(IDispatch* object, DISPID id, const wchar_t* name, WORD flags,
               std::initializer_list<Variant> arguments) {
    // Invoke takes the arguments last one first; they stay owned by `arguments`.
    std::vector<VARIANT> reversed;
    std::transform(std::rbegin(arguments), std::rend(arguments), std::back_inserter(reversed),
                   [](const Variant& argument) { return argument.raw(); });
    DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    DISPID putId = DISPID_PROPERTYPUT;
    const bool writes = flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF);
    if (writes) {
        parameters.rgdispidNamedArgs = &putId;
        parameters.cNamedArgs = 1;
    }
    Variant result;
    EXCEPINFO exception{};
    const HRESULT code = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                        writes ? nullptr : result.receive(), &exception, nullptr);
    if (FAILED(code)) {
        throw Failure(describe(exception, name, code), code);
    }
    return result;
}

} // namespace

Variant call(IDispatch* object, const wchar_t* method, std::initializer_list<Variant> arguments) {
    return invoke(object, memberId(object, method), method, DISPATCH_METHOD, arguments);
}

Variant get(IDispatch* object, const wchar_t* property, std::initializer_list<Variant> arguments) {
    // As scripts do: a member that takes arguments may be either kind, and the callee knows which.
    const WORD flags = arguments.size() ? DISPATCH_PROPERTYGET | DISPATCH_METHOD : DISPATCH_PROPERTYGET;
    return invoke(object, memberId(object, property), property, flags, arguments);
}

void put(IDispatch* object, const wchar_t* property, const Variant& value) {
    invoke(object, memberId(object, property), property, DISPATCH_PROPERTYPUT, {value});
}

void putReference(IDispatch* object, const wchar_t* property, IDispatch* value) {
    invoke(object, memberId(object, property), property, DISPATCH_PROPERTYPUTREF, {Variant(value)});
}

Variant item(IDispatch* collection, const Variant& key) {
    if (!collection) {
        throw Failure(L"There is no object to ask for an item", DISP_E_TYPEMISMATCH);
    }
    return invoke(collection, DISPID_VALUE, L"Item", DISPATCH_PROPERTYGET | DISPATCH_METHOD, {key});
}

ComPtr<IUnknown> createObject(const wchar_t* progId) {
    const std::wstring doing = std::wstring(L"Creating ") + progId;
    CLSID classId;
    check(CLSIDFromProgID(progId, &classId), doing.c_str());
    ComPtr<IUnknown> object;
    check(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                           reinterpret_cast<void**>(object.GetAddressOf())),
          doing.c_str());
    return object;
}

} // namespace workbench
