#pragma once

#include "tests/windows/com_test.h"

#include <ocidl.h>
#include <oleidl.h>

#include <functional>
#include <map>
#include <vector>

namespace cvlog::tests {

/// The frame around a container's windows. It notes which object is active in it.
class InPlaceFrame final : public IOleInPlaceFrame {
public:
    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
        const bool known = id == IID_IUnknown || id == IID_IOleWindow || id == IID_IOleInPlaceUIWindow ||
                           id == IID_IOleInPlaceFrame;
        *result = known ? this : nullptr;
        return known ? (AddRef(), S_OK) : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }
    STDMETHODIMP GetWindow(HWND* window) override { return *window = nullptr, E_FAIL; }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return S_OK; }
    STDMETHODIMP GetBorder(LPRECT) override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP RequestBorderSpace(LPCBORDERWIDTHS) override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP SetBorderSpace(LPCBORDERWIDTHS widths) override {
        ++(widths ? borders : noBorders);
        return S_OK;
    }
    STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) override {
        active = object;
        return S_OK;
    }
    STDMETHODIMP InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return E_NOTIMPL; }
    STDMETHODIMP SetMenu(HMENU, HOLEMENU, HWND) override { return S_OK; }
    STDMETHODIMP RemoveMenus(HMENU) override { return S_OK; }
    STDMETHODIMP SetStatusText(LPCOLESTR) override { return S_OK; }
    STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }
    STDMETHODIMP TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

    ComPtr<IOleInPlaceActiveObject> active;
    int borders = 0;
    int noBorders = 0;
    ULONG references = 1;
};

/// A container's site with a window of its own for the control. It notes what the control tells it, and calls handlers
/// that may do anything.
class InPlaceSite final : public IOleClientSite,
                          public IOleInPlaceSite,
                          public IOleControlSite,
                          public IDispatch {
public:
    explicit InPlaceSite(HWND window) : window_(window) {}

    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
        *result = nullptr;
        if (id == IID_IUnknown || id == IID_IOleClientSite) *result = static_cast<IOleClientSite*>(this);
        if (id == IID_IOleInPlaceSite || id == IID_IOleWindow) *result = static_cast<IOleInPlaceSite*>(this);
        if (id == IID_IOleControlSite) *result = static_cast<IOleControlSite*>(this);
        if (id == IID_IDispatch) *result = static_cast<IDispatch*>(this);
        return *result ? (AddRef(), S_OK) : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }

    // IOleClientSite
    STDMETHODIMP SaveObject() override { return ++saves, saveAnswer; }
    STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    STDMETHODIMP GetContainer(IOleContainer** container) override {
        *container = nullptr;
        return E_NOINTERFACE;
    }
    STDMETHODIMP ShowObject() override { return told(onShow); }
    STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
    STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }

    // IOleInPlaceSite
    STDMETHODIMP GetWindow(HWND* window) override { return *window = window_, S_OK; }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return S_OK; }
    STDMETHODIMP CanInPlaceActivate() override { return S_OK; }
    STDMETHODIMP OnInPlaceActivate() override { return told(onActivate), activateAnswer; }
    STDMETHODIMP OnUIActivate() override { return ++userInterfaces, told(onUserInterface); }
    STDMETHODIMP GetWindowContext(IOleInPlaceFrame** around, IOleInPlaceUIWindow** inside, LPRECT position,
                                  LPRECT clip, LPOLEINPLACEFRAMEINFO) override {
        *around = frameThere ? &frame : nullptr;
        *inside = frameThere ? &document : nullptr;
        if (frameThere) {
            frame.AddRef();
            document.AddRef();
        }
        *position = area;
        *clip = visible;
        return S_OK;
    }
    STDMETHODIMP Scroll(SIZE) override { return E_NOTIMPL; }
    STDMETHODIMP OnUIDeactivate(BOOL) override { return ++userInterfaceEnds, S_OK; }
    STDMETHODIMP OnInPlaceDeactivate() override { return ++deactivations, S_OK; }
    STDMETHODIMP DiscardUndoState() override { return E_NOTIMPL; }
    STDMETHODIMP DeactivateAndUndo() override { return E_NOTIMPL; }
    STDMETHODIMP OnPosRectChange(LPCRECT) override { return S_OK; }

    // IOleControlSite
    STDMETHODIMP OnControlInfoChanged() override { return S_OK; }
    STDMETHODIMP LockInPlaceActive(BOOL) override { return S_OK; }
    STDMETHODIMP GetExtendedControl(IDispatch** control) override { return *control = nullptr, E_NOTIMPL; }
    STDMETHODIMP TransformCoords(POINTL*, POINTF*, DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP TranslateAccelerator(MSG* message, DWORD modifiers) override {
        offered.push_back({message->message, message->wParam, modifiers});
        return translateAnswer;
    }
    STDMETHODIMP OnFocus(BOOL got) override {
        focus.push_back(got != FALSE);
        return told(onFocus);
    }
    STDMETHODIMP ShowPropertyFrame() override { return ++propertyFrames, propertyFrameAnswer; }

    // IDispatch: the ambient properties
    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return DISP_E_UNKNOWNNAME; }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                        UINT*) override {
        const auto found = ambients.find(id);
        return found == ambients.end() ? DISP_E_MEMBERNOTFOUND : VariantCopy(result, &found->second);
    }

    struct OfferedKey {
        UINT message;
        WPARAM key;
        DWORD modifiers;
        friend bool operator==(const OfferedKey&, const OfferedKey&) = default;
    };

    std::function<void()> onActivate, onUserInterface, onShow, onFocus;
    std::map<DISPID, Variant> ambients;
    InPlaceFrame frame;
    InPlaceFrame document;
    bool frameThere = true;
    RECT area{10, 20, 210, 120};
    RECT visible{10, 20, 210, 120};
    std::vector<OfferedKey> offered;
    std::vector<bool> focus;
    HRESULT activateAnswer = S_OK;
    HRESULT translateAnswer = S_FALSE;
    HRESULT saveAnswer = S_OK;
    HRESULT propertyFrameAnswer = S_OK;
    int saves = 0;
    int propertyFrames = 0;
    int userInterfaces = 0;
    int userInterfaceEnds = 0;
    int deactivations = 0;
    ULONG references = 1;

private:
    static HRESULT told(const std::function<void()>& handler) {
        if (handler) handler();
        return S_OK;
    }
    HWND window_;
};

/// A control with such a site, in a window of the container's.
class InPlaceTest : public ComTest {
protected:
    void SetUp() override {
        ComTest::SetUp();
        control_ = create(L"CVLog3.CVLogControl");
        ASSERT_NE(control_.Get(), nullptr);
        ASSERT_EQ(control_.As(&object_), S_OK);
        ASSERT_EQ(control_.As(&inPlace_), S_OK);
        ASSERT_EQ(object_->SetClientSite(&site_), S_OK);
    }
    void TearDown() override {
        if (object_) object_->SetClientSite(nullptr);
        inPlace_.Reset();
        object_.Reset();
        control_.Reset();
        site_.ambients.clear();
        EXPECT_EQ(site_.references, 1U);
        for (InPlaceFrame* frame : {&site_.frame, &site_.document}) {
            EXPECT_EQ(frame->active.Get(), nullptr);
            EXPECT_EQ(frame->references, 1U);
        }
        DestroyWindow(window_);
        ComTest::TearDown();
    }
    HRESULT run(LONG verb) { return object_->DoVerb(verb, nullptr, &site_, 0, window_, nullptr); }
    HWND list() {
        Variant handle;
        EXPECT_EQ(callByName(control_.Get(), L"hwnd", DISPATCH_PROPERTYGET, {}, &handle), S_OK);
        return reinterpret_cast<HWND>(static_cast<LONG_PTR>(handle.lVal));
    }
    template <class Interface>
    ComPtr<Interface> as(REFIID id) {
        ComPtr<Interface> face;
        EXPECT_EQ(control_->QueryInterface(id, &face), S_OK);
        return face;
    }

    HWND window_ = CreateWindowExW(WS_EX_CONTROLPARENT, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0,
                                   0, 400, 300, nullptr, nullptr, nullptr, nullptr);
    InPlaceSite site_{window_};
    ComPtr<IDispatch> control_;
    ComPtr<IOleObject> object_;
    ComPtr<IOleInPlaceObject> inPlace_;
};

} // namespace cvlog::tests
