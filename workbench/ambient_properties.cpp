#include "workbench/ambient_properties.h"

#include <olectl.h>

namespace workbench {

namespace {

Variant ambientFont() {
    FONTDESC description{};
    description.cbSizeofstruct = sizeof description;
    description.lpstrName = const_cast<LPOLESTR>(L"MS Shell Dlg 2");
    description.cySize.int64 = 82500; // 8.25 points
    description.sWeight = FW_NORMAL;
    description.sCharset = DEFAULT_CHARSET;
    ComPtr<IDispatch> font;
    OleCreateFontIndirect(&description, IID_IDispatch, reinterpret_cast<void**>(font.GetAddressOf()));
    return font;
}

// A colour of the system as an OLE_COLOR.
Variant systemColor(int index) { return static_cast<long>(0x80000000u | static_cast<unsigned>(index)); }

} // namespace

HRESULT ambientProperty(DISPID id, Variant& value) {
    switch (id) {
    case DISPID_AMBIENT_USERMODE:
    case DISPID_AMBIENT_MESSAGEREFLECT:
        value = id == DISPID_AMBIENT_USERMODE;
        return S_OK;
    case DISPID_AMBIENT_UIDEAD:
    case DISPID_AMBIENT_SHOWGRABHANDLES:
    case DISPID_AMBIENT_SHOWHATCHING:
    case DISPID_AMBIENT_DISPLAYASDEFAULT:
        value = false;
        return S_OK;
    case DISPID_AMBIENT_SUPPORTSMNEMONICS:
        value = true;
        return S_OK;
    case DISPID_AMBIENT_FONT:
        value = ambientFont();
        return S_OK;
    case DISPID_AMBIENT_BACKCOLOR:
        value = systemColor(COLOR_WINDOW);
        return S_OK;
    case DISPID_AMBIENT_FORECOLOR:
        value = systemColor(COLOR_WINDOWTEXT);
        return S_OK;
    case DISPID_AMBIENT_LOCALEID:
        value = static_cast<long>(GetUserDefaultLCID());
        return S_OK;
    case DISPID_AMBIENT_DISPLAYNAME:
        value = L"LogView";
        return S_OK;
    default:
        return DISP_E_MEMBERNOTFOUND;
    }
}

} // namespace workbench
