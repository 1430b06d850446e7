// How a container's user sees and changes the control's properties.

#include "com/control_shell.h"

#include "com/enumeration.h"
#include "com/firewall.h"
#include "view/log_control_ids.h"

#include <olectl.h>

#include <iterator>
#include <string_view>
#include <vector>

namespace cvlog::com {

namespace {

/// The system's own pages for colours and fonts. They look for the properties of these kinds themselves.
const CLSID* const kPages[] = {&CLSID_CColorPropPage, &CLSID_CFontPropPage};

constexpr wchar_t kFrameCaption[] = L"Activity log";

struct VerbEnumeration {
    using Interface = IEnumOLEVERB;
    using Element = OLEVERB;
    struct Item {
        LONG verb;
        std::wstring_view name;
    };
    static OLEVERB give(const Item& item) noexcept {
        OLEVERB verb = {item.verb, nullptr, MF_STRING, OLEVERBATTRIB_ONCONTAINERMENU};
        verb.lpszVerbName = static_cast<LPOLESTR>(CoTaskMemAlloc((item.name.size() + 1) * sizeof(wchar_t)));
        if (verb.lpszVerbName) *std::copy(item.name.begin(), item.name.end(), verb.lpszVerbName) = L'\0';
        return verb;
    }
};

/// Those that the system has; not all do.
std::vector<CLSID> pagesAtHand() {
    std::vector<CLSID> found;
    for (const CLSID* page : kPages) {
        ComPtr<IUnknown> factory;
        if (SUCCEEDED(CoGetClassObject(*page, CLSCTX_INPROC_SERVER, nullptr, IID_IUnknown,
                                       reinterpret_cast<void**>(factory.GetAddressOf()))))
            found.push_back(*page);
    }
    return found;
}

} // namespace

STDMETHODIMP ControlShell::EnumVerbs(IEnumOLEVERB** verbs) {
    return Enumeration<VerbEnumeration>::make({{OLEIVERB_PROPERTIES, L"&Properties..."}}, verbs);
}

STDMETHODIMP ControlShell::GetPages(CAUUID* pages) {
    if (!pages) return E_POINTER;
    pages->cElems = 0;
    pages->pElems = static_cast<GUID*>(CoTaskMemAlloc(sizeof(GUID) * std::size(kPages)));
    if (!pages->pElems) return E_OUTOFMEMORY;
    for (const CLSID* page : kPages) pages->pElems[pages->cElems++] = *page;
    return S_OK;
}

STDMETHODIMP ControlShell::GetDisplayString(DISPID, BSTR* text) {
    return text ? (*text = nullptr, S_FALSE) : E_POINTER; // the container shows the value
}

STDMETHODIMP ControlShell::MapPropertyToPage(DISPID property, CLSID* page) {
    if (!page) return E_POINTER;
    *page = CLSID_NULL;
    if (property == view::kBackColorId || property == view::kForeColorId) *page = CLSID_CColorPropPage;
    if (property == view::kFontId) *page = CLSID_CFontPropPage;
    return *page == CLSID_NULL ? PERPROP_E_NOPAGEAVAILABLE : S_OK;
}

STDMETHODIMP ControlShell::GetPredefinedStrings(DISPID, CALPOLESTR* strings, CADWORD* cookies) {
    if (!strings || !cookies) return E_POINTER;
    *strings = {};
    *cookies = {};
    return S_FALSE;
}

STDMETHODIMP ControlShell::GetPredefinedValue(DISPID, DWORD, VARIANT* value) {
    if (!value) return E_POINTER;
    VariantInit(value);
    return E_NOTIMPL;
}

// A container that shows properties itself has the first word.
HRESULT ControlShell::showProperties(HWND parent) {
    ComPtr<IOleControlSite> site;
    if (site_ && SUCCEEDED(site_.As(&site)) && site->ShowPropertyFrame() == S_OK) return S_OK;
    std::vector<CLSID> pages = pagesAtHand();
    if (pages.empty()) return REGDB_E_CLASSNOTREG;
    IUnknown* self = outer();
    return OleCreatePropertyFrame(parent, 0, 0, kFrameCaption, 1, &self, static_cast<ULONG>(pages.size()),
                                  pages.data(), ambientLocale(), 0, nullptr);
}

} // namespace cvlog::com
