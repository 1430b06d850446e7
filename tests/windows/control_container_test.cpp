// What passes between the control and its container beside properties, windows and pictures.

#include "tests/windows/control_view_fixture.h"
#include "tests/windows/counting_sink.h"
#include "tests/windows/notify_sink.h"
#include "tests/windows/script_host.h"
#include "tests/windows/view_sink.h"

#include <olectl.h>

namespace cvlog::tests {
namespace {

/// What a container hands over when it activates a control in one call.
class QuickSink final : public IAdviseSinkEx {
public:
    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
        const bool known = id == IID_IUnknown || id == IID_IAdviseSink || id == IID_IAdviseSinkEx;
        *result = known ? this : nullptr;
        return known ? (AddRef(), S_OK) : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }
    STDMETHODIMP_(void) OnDataChange(FORMATETC*, STGMEDIUM*) override {}
    STDMETHODIMP_(void) OnViewChange(DWORD, LONG) override {}
    STDMETHODIMP_(void) OnRename(IMoniker*) override {}
    STDMETHODIMP_(void) OnSave() override {}
    STDMETHODIMP_(void) OnClose() override {}
    STDMETHODIMP_(void) OnViewStatusChange(DWORD) override {}

    ULONG references = 1;
};

class ControlContainer : public ControlViewTest {
protected:
    void change() { EXPECT_EQ(putMember(control_.Get(), L"BackColor", Variant(0x112233)), S_OK); }
    bool isDirty() { return as<IPersistStreamInit>(IID_IPersistStreamInit)->IsDirty() == S_OK; }
};

TEST_F(ControlContainer, ClosingSavesWhatChangedUnlessTheContainerWantsNothingSaved) {
    ViewSink sink;
    DWORD connection = 0;
    ASSERT_EQ(object_->Advise(&sink, &connection), S_OK);
    EXPECT_EQ(object_->Close(OLECLOSE_SAVEIFDIRTY), S_OK);
    EXPECT_EQ(site_.saves, 0) << "nothing changed";
    EXPECT_EQ(sink.closes, 1);
    change();
    EXPECT_EQ(object_->Close(OLECLOSE_NOSAVE), S_OK);
    EXPECT_EQ(site_.saves, 0);
    EXPECT_TRUE(isDirty());
    EXPECT_EQ(object_->Close(OLECLOSE_SAVEIFDIRTY), S_OK);
    EXPECT_EQ(site_.saves, 1);
    EXPECT_EQ(sink.saves, 1);
    EXPECT_EQ(object_->Close(OLECLOSE_PROMPTSAVE), S_OK);
    EXPECT_EQ(site_.saves, 2) << "the site did not store it, and the control asks nobody";
    site_.saveAnswer = E_FAIL;
    EXPECT_EQ(object_->Close(OLECLOSE_SAVEIFDIRTY), S_OK);
    EXPECT_EQ(site_.saves, 3);
    EXPECT_EQ(sink.saves, 2) << "it was not saved";
    EXPECT_EQ(sink.closes, 5);
    EXPECT_EQ(object_->Unadvise(connection), S_OK);
    EXPECT_EQ(sink.references, 1U);
}

TEST_F(ControlContainer, ClosingDeactivatesFirst) {
    ASSERT_EQ(run(OLEIVERB_UIACTIVATE), S_OK);
    change();
    EXPECT_EQ(object_->Close(OLECLOSE_SAVEIFDIRTY), S_OK);
    EXPECT_EQ(site_.deactivations, 1);
    EXPECT_FALSE(IsChild(window_, list()));
}

TEST_F(ControlContainer, FrozenEventsAreNoneOfTheLogs) {
    const ProjectFolder project;
    const ComPtr<IDispatch> workspace = com::adopt<IDispatch>(makeWorkspace(project.path()));
    const ComPtr<IDispatch> log = create(L"CVLog3.CVLog");
    ASSERT_TRUE(openDb(log.Get(), workspace.Get()));
    CountingSink events;
    ComPtr<IConnectionPointContainer> container;
    ComPtr<IConnectionPoint> point;
    DWORD cookie = 0;
    ASSERT_EQ(log.As(&container), S_OK);
    ASSERT_EQ(container->FindConnectionPoint(com::kLogEvents, &point), S_OK);
    ASSERT_EQ(point->Advise(&events, &cookie), S_OK);
    NotifySink properties;
    ComPtr<IConnectionPoint> changes;
    DWORD changesCookie = 0;
    ASSERT_EQ(as<IConnectionPointContainer>(IID_IConnectionPointContainer)
                  ->FindConnectionPoint(IID_IPropertyNotifySink, &changes),
              S_OK);
    ASSERT_EQ(changes->Advise(&properties, &changesCookie), S_OK);

    const auto control = as<IOleControl>(IID_IOleControl);
    EXPECT_EQ(control->FreezeEvents(TRUE), S_OK);
    EXPECT_EQ(run(OLEIVERB_UIACTIVATE), S_OK);
    change();
    EXPECT_EQ(events.ids, std::vector<DISPID>{2}) << "GotFocus, for who listens to the log";
    EXPECT_EQ(properties.changed, std::vector<DISPID>{DISPID_BACKCOLOR});
    EXPECT_EQ(control->FreezeEvents(FALSE), S_OK);
    EXPECT_EQ(events.ids.size(), 1U) << "nothing was held back";

    EXPECT_EQ(changes->Unadvise(changesCookie), S_OK);
    EXPECT_EQ(point->Unadvise(cookie), S_OK);
    EXPECT_EQ(callByName(log.Get(), L"CloseDB", DISPATCH_METHOD, {}), S_OK);
}

TEST_F(ControlContainer, ActivatesInOneCall) {
    object_->SetClientSite(nullptr);
    Variant design;
    design.vt = VT_BOOL;
    VariantCopy(&site_.ambients[DISPID_AMBIENT_USERMODE], &design);
    QuickSink view;
    NotifySink properties;
    QACONTAINER container{};
    container.cbSize = sizeof container;
    container.pClientSite = &site_;
    container.pAdviseSink = &view;
    container.pPropertyNotifySink = &properties;
    QACONTROL told{};
    told.cbSize = sizeof told;
    const auto quick = as<IQuickActivate>(IID_IQuickActivate);
    EXPECT_EQ(quick->QuickActivate(&container, &told), S_OK);
    EXPECT_EQ(told.cbSize, sizeof told);
    DWORD status = 0;
    EXPECT_EQ(object_->GetMiscStatus(DVASPECT_CONTENT, &status), S_OK);
    EXPECT_EQ(told.dwMiscStatus, status);
    EXPECT_EQ(told.dwViewStatus, static_cast<DWORD>(VIEWSTATUS_OPAQUE));
    EXPECT_EQ(told.dwEventCookie, 0U) << "it has no events of its own";
    constexpr HRESULT kSetNotPermitted = static_cast<HRESULT>(0x800A0183);
    EXPECT_EQ(callByName(control_.Get(), L"hwnd", DISPATCH_PROPERTYPUT, {Variant(1)}), kSetNotPermitted)
        << "the site says that its user designs";
    change();
    EXPECT_EQ(properties.changed, std::vector<DISPID>{DISPID_BACKCOLOR});
    ComPtr<IAdviseSink> known;
    EXPECT_EQ(view_->GetAdvise(nullptr, nullptr, &known), S_OK);
    EXPECT_EQ(known.Get(), &view);
    ComPtr<IOleClientSite> site;
    EXPECT_EQ(object_->GetClientSite(&site), S_OK);
    EXPECT_EQ(site.Get(), &site_);
    EXPECT_EQ(run(OLEIVERB_INPLACEACTIVATE), S_OK);

    SIZEL extent = {4321, 1234};
    EXPECT_EQ(quick->SetContentExtent(&extent), S_OK);
    SIZEL got = {};
    EXPECT_EQ(quick->GetContentExtent(&got), S_OK);
    EXPECT_EQ(got.cx, 4321);
    EXPECT_EQ(quick->QuickActivate(nullptr, &told), E_POINTER);

    known.Reset();
    view_->SetAdvise(DVASPECT_CONTENT, 0, nullptr);
    EXPECT_EQ(view.references, 1U);
    ComPtr<IConnectionPoint> changes;
    ASSERT_EQ(as<IConnectionPointContainer>(IID_IConnectionPointContainer)
                  ->FindConnectionPoint(IID_IPropertyNotifySink, &changes),
              S_OK);
    EXPECT_EQ(changes->Unadvise(told.dwPropNotifyCookie), S_OK);
    EXPECT_EQ(properties.references, 1U);
}

TEST_F(ControlContainer, TheStatusIsOfTheAspectThatIsShown) {
    DWORD status = 0;
    EXPECT_EQ(object_->GetMiscStatus(DVASPECT_CONTENT, &status), S_OK);
    EXPECT_EQ(status,
              static_cast<DWORD>(OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE | OLEMISC_INSIDEOUT |
                                 OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_SETCLIENTSITEFIRST));
    EXPECT_EQ(object_->GetMiscStatus(DVASPECT_ICON, &status), S_OK);
    EXPECT_EQ(status, 0U);
}

} // namespace
} // namespace cvlog::tests
