#pragma once

#include "com/com_ptr.h"
#include "tests/windows/com_test.h"

#include <windows.h>

#include <ocidl.h>
#include <olectl.h>

namespace cvlog::tests {

/// A font object of the system.
inline ComPtr<IDispatch> makeSystemFont(const wchar_t* face, int points) {
    FONTDESC description = {};
    description.cbSizeofstruct = sizeof description;
    description.lpstrName = const_cast<LPOLESTR>(face);
    description.cySize.int64 = points * 10'000LL;
    description.sWeight = FW_NORMAL;
    description.sCharset = DEFAULT_CHARSET;
    ComPtr<IDispatch> font;
    EXPECT_EQ(OleCreateFontIndirect(&description, IID_IFontDisp, &font), S_OK);
    return font;
}

inline Variant asVariant(IDispatch* object) {
    Variant value;
    value.vt = VT_DISPATCH;
    value.pdispVal = object;
    if (object) object->AddRef();
    return value;
}

/// Puts a member; the answer of the call.
inline HRESULT putMember(IDispatch* object, const wchar_t* name, const Variant& value,
                         WORD kind = DISPATCH_PROPERTYPUT) {
    return callByName(object, name, kind, {value});
}

/// A member that is an object; null and a failed test when it is none.
inline ComPtr<IDispatch> objectMember(IDispatch* object, const wchar_t* name) {
    Variant value;
    EXPECT_EQ(callByName(object, name, DISPATCH_PROPERTYGET, {}, &value), S_OK);
    EXPECT_EQ(value.vt, VT_DISPATCH);
    return value.vt == VT_DISPATCH ? ComPtr<IDispatch>(value.pdispVal) : nullptr;
}

inline LONG numberMember(IDispatch* object, const wchar_t* name) {
    Variant value;
    EXPECT_EQ(callByName(object, name, DISPATCH_PROPERTYGET, {}, &value), S_OK);
    EXPECT_EQ(VariantChangeType(&value, &value, 0, VT_I4), S_OK);
    return value.lVal;
}

inline ULONG referencesOf(IUnknown* object) {
    object->AddRef();
    return object->Release();
}

} // namespace cvlog::tests
