// The control in a container that activates it in place, with a site that does what it likes while it is told.

#include "tests/windows/com_test.h"

#include <ocidl.h>
#include <oleidl.h>

#include <functional>

namespace cvlog::tests {
namespace {

/// A container's site with a window of its own for the control.
class InPlaceSite final : public IOleClientSite, public IOleInPlaceSite {
public:
    explicit InPlaceSite(HWND window) : window_(window) {}

    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
        *result = nullptr;
        if (id == IID_IUnknown || id == IID_IOleClientSite) *result = static_cast<IOleClientSite*>(this);
        if (id == IID_IOleInPlaceSite || id == IID_IOleWindow) *result = static_cast<IOleInPlaceSite*>(this);
        return *result ? (AddRef(), S_OK) : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }

    STDMETHODIMP SaveObject() override { return E_NOTIMPL; }
    STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    STDMETHODIMP GetContainer(IOleContainer** container) override {
        *container = nullptr;
        return E_NOINTERFACE;
    }
    STDMETHODIMP ShowObject() override { return told(onShow); }
    STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
    STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }

    STDMETHODIMP GetWindow(HWND* window) override { return *window = window_, S_OK; }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return S_OK; }
    STDMETHODIMP CanInPlaceActivate() override { return S_OK; }
    STDMETHODIMP OnInPlaceActivate() override { return told(onActivate); }
    STDMETHODIMP OnUIActivate() override { return told(onUserInterface); }
    STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT position,
                                  LPRECT clip, LPOLEINPLACEFRAMEINFO) override {
        *frame = nullptr;
        *document = nullptr;
        *position = *clip = {10, 20, 210, 120};
        return S_OK;
    }
    STDMETHODIMP Scroll(SIZE) override { return E_NOTIMPL; }
    STDMETHODIMP OnUIDeactivate(BOOL) override { return S_OK; }
    STDMETHODIMP OnInPlaceDeactivate() override { return ++deactivations, S_OK; }
    STDMETHODIMP DiscardUndoState() override { return E_NOTIMPL; }
    STDMETHODIMP DeactivateAndUndo() override { return E_NOTIMPL; }
    STDMETHODIMP OnPosRectChange(LPCRECT) override { return S_OK; }

    std::function<void()> onActivate, onUserInterface, onShow;
    ULONG references = 1;
    int deactivations = 0;

private:
    static HRESULT told(const std::function<void()>& handler) {
        if (handler) handler();
        return S_OK;
    }
    HWND window_;
};

class ControlActivation : public ComTest {
protected:
    void SetUp() override {
        ComTest::SetUp();
        control_ = create(L"CVLog3.CVLogControl");
        ASSERT_EQ(control_.As(&object_), S_OK);
        ASSERT_EQ(control_.As(&inPlace_), S_OK);
        ASSERT_EQ(object_->SetClientSite(&site_), S_OK);
    }
    void TearDown() override {
        object_->SetClientSite(nullptr);
        inPlace_.Reset();
        object_.Reset();
        control_.Reset();
        EXPECT_EQ(site_.references, 1U);
        DestroyWindow(window_);
        ComTest::TearDown();
    }
    HRESULT run(LONG verb) { return object_->DoVerb(verb, nullptr, &site_, 0, window_, nullptr); }
    RECT listArea() {
        Variant handle;
        EXPECT_EQ(callByName(control_.Get(), L"hwnd", DISPATCH_PROPERTYGET, {}, &handle), S_OK);
        const HWND list = reinterpret_cast<HWND>(static_cast<LONG_PTR>(handle.lVal));
        RECT area = {};
        GetWindowRect(list, &area);
        MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&area), 2);
        return area;
    }
    void expectListAt(const RECT& area) {
        const RECT shown = listArea();
        EXPECT_TRUE(EqualRect(&shown, &area))
            << shown.left << "," << shown.top << " to " << shown.right << "," << shown.bottom;
    }

    HWND window_ = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 400, 300,
                                   nullptr, nullptr, nullptr, nullptr);
    InPlaceSite site_{window_};
    ComPtr<IDispatch> control_;
    ComPtr<IOleObject> object_;
    ComPtr<IOleInPlaceObject> inPlace_;
};

TEST_F(ControlActivation, PutsTheListWhereTheContainerSaysAlsoWhereThereIsNoRoom) {
    EXPECT_EQ(run(OLEIVERB_INPLACEACTIVATE), S_OK);
    expectListAt({10, 20, 210, 120});
    const RECT larger = {0, 0, 300, 250};
    EXPECT_EQ(inPlace_->SetObjectRects(&larger, &larger), S_OK);
    expectListAt(larger);
    for (const RECT& none : {RECT{5, 5, 5, 5}, RECT{50, 50, 20, 10}}) {
        EXPECT_EQ(inPlace_->SetObjectRects(&none, &none), S_OK);
        const RECT shown = listArea();
        EXPECT_EQ(shown.right, shown.left);
        EXPECT_EQ(shown.bottom, shown.top);
    }
    EXPECT_EQ(inPlace_->SetObjectRects(&larger, &larger), S_OK);
    expectListAt(larger);
}

TEST_F(ControlActivation, SurvivesASiteThatIsTakenBackMeanwhile) {
    const auto takeBack = [this] { object_->SetClientSite(nullptr); };
    for (std::function<void()>* moment : {&site_.onActivate, &site_.onUserInterface, &site_.onShow}) {
        site_.deactivations = 0;
        *moment = takeBack;
        run(OLEIVERB_UIACTIVATE);
        *moment = nullptr;
        Variant handle;
        EXPECT_EQ(callByName(control_.Get(), L"hwnd", DISPATCH_PROPERTYGET, {}, &handle), S_OK);
        EXPECT_NE(handle.lVal, 0);
        ASSERT_EQ(object_->SetClientSite(&site_), S_OK);
        EXPECT_EQ(run(OLEIVERB_UIACTIVATE), S_OK) << "the next activation starts anew";
        EXPECT_EQ(inPlace_->InPlaceDeactivate(), S_OK);
        EXPECT_GE(site_.deactivations, 1);
    }
}

} // namespace
} // namespace cvlog::tests
