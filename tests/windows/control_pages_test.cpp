// The property pages of the control.

#include "tests/windows/control_view_fixture.h"

#include <olectl.h>

#include <string>

namespace cvlog::tests {
namespace {

/// A page of the system's, which not every system has. It shows nothing and closes its dialog at once.
class PageDouble final : public IPropertyPage, public IClassFactory {
public:
    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
        *result = nullptr;
        if (id == IID_IUnknown || id == IID_IPropertyPage) *result = static_cast<IPropertyPage*>(this);
        if (id == IID_IClassFactory) *result = static_cast<IClassFactory*>(this);
        return *result ? (AddRef(), S_OK) : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }

    STDMETHODIMP CreateInstance(IUnknown*, REFIID id, void** result) override {
        return QueryInterface(id, result);
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }

    STDMETHODIMP SetPageSite(IPropertyPageSite* site) override { return site_ = site, S_OK; }
    STDMETHODIMP Activate(HWND parent, LPCRECT, BOOL) override {
        ++activations;
        PostMessageW(GetParent(parent), WM_COMMAND, IDCANCEL, 0);
        return S_OK;
    }
    STDMETHODIMP Deactivate() override { return S_OK; }
    STDMETHODIMP GetPageInfo(PROPPAGEINFO* info) override {
        info->pszTitle = static_cast<LPOLESTR>(CoTaskMemAlloc(10 * sizeof(wchar_t)));
        wcscpy(info->pszTitle, L"Double");
        info->size = {100, 60};
        return S_OK;
    }
    STDMETHODIMP SetObjects(ULONG count, IUnknown** objects) override {
        shown = count > 0 ? objects[0] : nullptr;
        if (shown) everShown = shown.Get();
        return S_OK;
    }
    STDMETHODIMP Show(UINT) override { return S_OK; }
    STDMETHODIMP Move(LPCRECT) override { return S_OK; }
    STDMETHODIMP IsPageDirty() override { return S_FALSE; }
    STDMETHODIMP Apply() override { return S_OK; }
    STDMETHODIMP Help(LPCOLESTR) override { return E_NOTIMPL; }
    STDMETHODIMP TranslateAccelerator(MSG*) override { return S_FALSE; }

    ComPtr<IUnknown> shown;
    IUnknown* everShown = nullptr; // compared only
    int activations = 0;
    ULONG references = 1;

private:
    ComPtr<IPropertyPageSite> site_;
};

class ControlPages : public ControlViewTest {
protected:
    static bool systemHas(const CLSID& page) {
        ComPtr<IUnknown> factory;
        return SUCCEEDED(CoGetClassObject(page, CLSCTX_INPROC_SERVER, nullptr, IID_IUnknown,
                                          reinterpret_cast<void**>(factory.GetAddressOf())));
    }
};

TEST_F(ControlPages, AreTheSystemsForColoursAndFonts) {
    const auto pages = as<ISpecifyPropertyPages>(IID_ISpecifyPropertyPages);
    CAUUID named{};
    ASSERT_EQ(pages->GetPages(&named), S_OK);
    ASSERT_EQ(named.cElems, 2U);
    EXPECT_TRUE(named.pElems[0] == CLSID_CColorPropPage);
    EXPECT_TRUE(named.pElems[1] == CLSID_CFontPropPage);
    CoTaskMemFree(named.pElems);
    EXPECT_EQ(pages->GetPages(nullptr), E_POINTER);
}

TEST_F(ControlPages, AreNamedByThePropertiesTheyAreFor) {
    const auto browsing = as<IPerPropertyBrowsing>(IID_IPerPropertyBrowsing);
    CLSID page{};
    for (const DISPID colour : {DISPID_BACKCOLOR, DISPID_FORECOLOR}) {
        EXPECT_EQ(browsing->MapPropertyToPage(colour, &page), S_OK);
        EXPECT_TRUE(page == CLSID_CColorPropPage);
    }
    EXPECT_EQ(browsing->MapPropertyToPage(DISPID_FONT, &page), S_OK);
    EXPECT_TRUE(page == CLSID_CFontPropPage);
    EXPECT_EQ(browsing->MapPropertyToPage(DISPID_ENABLED, &page), PERPROP_E_NOPAGEAVAILABLE);
    EXPECT_TRUE(page == CLSID_NULL);
    BSTR text = SysAllocString(L"kept by the caller");
    BSTR shown = text;
    EXPECT_EQ(browsing->GetDisplayString(DISPID_BACKCOLOR, &shown), S_FALSE) << "the value says enough";
    EXPECT_EQ(shown, nullptr);
    SysFreeString(text);
    CALPOLESTR strings{3, nullptr};
    CADWORD cookies{3, nullptr};
    EXPECT_EQ(browsing->GetPredefinedStrings(DISPID_BACKCOLOR, &strings, &cookies), S_FALSE);
    EXPECT_EQ(strings.cElems, 0U);
    EXPECT_EQ(cookies.cElems, 0U);
}

TEST_F(ControlPages, TheVerbForThemIsListed) {
    ComPtr<IEnumOLEVERB> verbs;
    ASSERT_EQ(object_->EnumVerbs(&verbs), S_OK);
    OLEVERB verb{};
    ULONG fetched = 0;
    ASSERT_EQ(verbs->Next(1, &verb, &fetched), S_OK);
    EXPECT_EQ(verb.lVerb, OLEIVERB_PROPERTIES);
    EXPECT_STREQ(verb.lpszVerbName, L"&Properties...");
    EXPECT_EQ(verb.grfAttribs, static_cast<DWORD>(OLEVERBATTRIB_ONCONTAINERMENU));
    CoTaskMemFree(verb.lpszVerbName);
    EXPECT_EQ(verbs->Next(1, &verb, &fetched), S_FALSE);
    EXPECT_EQ(fetched, 0U);
}

TEST_F(ControlPages, AreTheContainersToShow) {
    EXPECT_EQ(run(OLEIVERB_PROPERTIES), S_OK);
    EXPECT_EQ(site_.propertyFrames, 1);
    EXPECT_EQ(site_.userInterfaces, 0) << "showing them activates nothing";
}

TEST_F(ControlPages, AreShownByTheControlWhereTheContainerDoesNotAndTheSystemHasThem) {
    site_.propertyFrameAnswer = E_NOTIMPL;
    if (!systemHas(CLSID_CColorPropPage) && !systemHas(CLSID_CFontPropPage)) {
        EXPECT_EQ(run(OLEIVERB_PROPERTIES), REGDB_E_CLASSNOTREG);
    }
    PageDouble page;
    DWORD registration = 0;
    ASSERT_EQ(CoRegisterClassObject(CLSID_CColorPropPage, static_cast<IPropertyPage*>(&page),
                                    CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &registration),
              S_OK);
    EXPECT_EQ(run(OLEIVERB_PROPERTIES), S_OK);
    EXPECT_EQ(CoRevokeClassObject(registration), S_OK);
    EXPECT_EQ(page.activations, 1);
    ComPtr<IUnknown> itself;
    EXPECT_EQ(control_.As(&itself), S_OK);
    EXPECT_EQ(page.everShown, itself.Get());
    page.shown.Reset();
    page.SetPageSite(nullptr);
    EXPECT_GE(site_.propertyFrames, 1) << "the container had the first word";
}

} // namespace
} // namespace cvlog::tests
