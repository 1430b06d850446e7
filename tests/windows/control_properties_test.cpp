// The control's properties as hosts put them, and what containers say and hear of them.

#include "tests/windows/control_site.h"
#include "tests/windows/font_objects.h"
#include "tests/windows/notify_sink.h"
#include "tests/windows/script_host.h"

#include <commctrl.h>

#include <functional>
#include <vector>

namespace cvlog::tests {
namespace {

constexpr HRESULT kSetNotPermitted = static_cast<HRESULT>(0x800A0183);
constexpr HRESULT kSetNotSupportedAtRunTime = static_cast<HRESULT>(0x800A017E);
constexpr WORD kPuts[] = {DISPATCH_PROPERTYPUT, DISPATCH_PROPERTYPUTREF};
constexpr HRESULT kObjectRequired = static_cast<HRESULT>(0x800A01A8);

class ControlPropertiesOverCom : public ComTest {
protected:
    void SetUp() override {
        ComTest::SetUp();
        control_ = create(L"CVLog3.CVLogControl");
        ASSERT_NE(control_.Get(), nullptr);
    }
    void TearDown() override {
        sink_.handler = nullptr;
        sink_.asking = nullptr;
        point_.Reset();
        if (control_) site_.attach(control_.Get(), false);
        control_.Reset();
        EXPECT_EQ(sink_.references, 1U) << "a reference to the container's sink is left";
        EXPECT_EQ(site_.references, 1U) << "a reference to the site is left";
        site_.ambients.clear();
        ComTest::TearDown();
    }
    void listen() {
        ComPtr<IConnectionPointContainer> container;
        ASSERT_EQ(control_.As(&container), S_OK);
        ASSERT_EQ(container->FindConnectionPoint(IID_IPropertyNotifySink, &point_), S_OK);
        ASSERT_EQ(point_->Advise(&sink_, &cookie_), S_OK);
    }
    /// The code with which a put ends, from the exception where there is one.
    HRESULT codeOfPut(const wchar_t* name, const Variant& value) {
        DISPID id = DISPID_UNKNOWN;
        auto* text = const_cast<OLECHAR*>(name);
        EXPECT_EQ(control_->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id), S_OK);
        Variant argument(value);
        DISPID put = DISPID_PROPERTYPUT;
        DISPPARAMS parameters = {&argument, &put, 1, 1};
        EXCEPINFO info = {};
        const HRESULT result = control_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT,
                                                &parameters, nullptr, &info, nullptr);
        EXPECT_EQ(result == DISP_E_EXCEPTION, SysStringLen(info.bstrDescription) > 0);
        SysFreeString(info.bstrSource);
        SysFreeString(info.bstrDescription);
        return result == DISP_E_EXCEPTION ? info.scode : result;
    }
    float textWidth() {
        Variant width;
        EXPECT_EQ(callByName(control_.Get(), L"TextWidth", DISPATCH_METHOD, {Variant(L"Activity")}, &width),
                  S_OK);
        EXPECT_EQ(width.vt, VT_R4);
        return width.fltVal;
    }
    /// The font that the list's window draws with.
    LOGFONTW shownFont() {
        const auto window =
            reinterpret_cast<HWND>(static_cast<LONG_PTR>(numberMember(control_.Get(), L"hwnd")));
        LOGFONTW shown = {};
        const auto font = reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
        EXPECT_EQ(GetObjectW(font, sizeof shown, &shown), static_cast<int>(sizeof shown));
        return shown;
    }

    ControlSite site_;
    NotifySink sink_;
    ComPtr<IDispatch> control_;
    ComPtr<IConnectionPoint> point_;
    DWORD cookie_ = 0;
};

TEST_F(ControlPropertiesOverCom, TheFontIsAFontOfTheSystemAndTheSameEachTime) {
    const ComPtr<IDispatch> font = objectMember(control_.Get(), L"Font");
    ComPtr<IFontDisp> asFont;
    EXPECT_EQ(font.As(&asFont), S_OK);
    EXPECT_EQ(objectMember(control_.Get(), L"Font").Get(), font.Get());
    EXPECT_EQ(numberMember(font.Get(), L"Size"), 8);
}

TEST_F(ControlPropertiesOverCom, AFontIsTakenByValueAndByReference) {
    for (const WORD kind : kPuts) {
        const ComPtr<IDispatch> font = makeSystemFont(L"Tahoma", 20);
        EXPECT_EQ(putMember(control_.Get(), L"Font", asVariant(font.Get()), kind), S_OK);
        EXPECT_EQ(objectMember(control_.Get(), L"Font").Get(), font.Get());
        EXPECT_STREQ(shownFont().lfFaceName, L"Tahoma");
    }
}

TEST_F(ControlPropertiesOverCom, AChangeInTheFontIsSeenInTheListAtOnce) {
    const float before = textWidth();
    const LONG height = shownFont().lfHeight;
    const ComPtr<IDispatch> font = objectMember(control_.Get(), L"Font");
    EXPECT_EQ(putMember(font.Get(), L"Size", Variant(24)), S_OK);
    EXPECT_GT(textWidth(), 2 * before);
    EXPECT_LT(shownFont().lfHeight, 2 * height) << "heights of fonts are negative";
    EXPECT_EQ(putMember(font.Get(), L"Bold", truth(true)), S_OK);
    EXPECT_EQ(shownFont().lfWeight, FW_BOLD);
}

TEST_F(ControlPropertiesOverCom, AReplacedFontAndTheControlsEndLeaveNoReference) {
    const ComPtr<IDispatch> first = makeSystemFont(L"Tahoma", 20);
    const ComPtr<IDispatch> second = makeSystemFont(L"Tahoma", 10);
    const ULONG references = referencesOf(first.Get());
    EXPECT_EQ(putMember(control_.Get(), L"Font", asVariant(first.Get())), S_OK);
    EXPECT_EQ(putMember(control_.Get(), L"Font", asVariant(second.Get())), S_OK);
    EXPECT_EQ(referencesOf(first.Get()), references);
    const float width = textWidth();
    EXPECT_EQ(putMember(first.Get(), L"Size", Variant(40)), S_OK);
    EXPECT_EQ(textWidth(), width);
    control_.Reset();
    EXPECT_EQ(referencesOf(second.Get()), references);
    EXPECT_EQ(putMember(second.Get(), L"Size", Variant(40)), S_OK);
}

TEST_F(ControlPropertiesOverCom, WhatIsNoFontIsRefusedAndTheFontStays) {
    const ComPtr<IDispatch> before = objectMember(control_.Get(), L"Font");
    const ComPtr<IDispatch> script = com::adopt<IDispatch>(ScriptedDispatch::make());
    EXPECT_EQ(codeOfPut(L"Font", asVariant(script.Get())), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(codeOfPut(L"Font", asVariant(control_.Get())), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(codeOfPut(L"Font", asVariant(nullptr)), kObjectRequired);
    EXPECT_EQ(codeOfPut(L"Font", Variant(12)), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(objectMember(control_.Get(), L"Font").Get(), before.Get());
}

TEST_F(ControlPropertiesOverCom, TheLogsFontIsSharedByAllLogsAndRestylesNoList) {
    const ComPtr<IDispatch> log = create(L"CVLog3.CVLog");
    const ComPtr<IDispatch> other = create(L"CVLog3.CVLog");
    const float before = textWidth();
    const ComPtr<IDispatch> initial = objectMember(log.Get(), L"Font");
    EXPECT_EQ(objectMember(other.Get(), L"Font").Get(), initial.Get());
    EXPECT_EQ(numberMember(initial.Get(), L"Size"), 8);
    for (const WORD kind : kPuts) {
        const ComPtr<IDispatch> font = makeSystemFont(L"Tahoma", 30);
        EXPECT_EQ(putMember(log.Get(), L"Font", asVariant(font.Get()), kind), S_OK);
        EXPECT_EQ(objectMember(other.Get(), L"Font").Get(), font.Get());
    }
    EXPECT_EQ(textWidth(), before);
    EXPECT_NE(putMember(log.Get(), L"Font", asVariant(log.Get())), S_OK);
}

TEST_F(ControlPropertiesOverCom, PutsAreAskedForAndTold) {
    listen();
    EXPECT_EQ(putMember(control_.Get(), L"BackColor", Variant(0x102030)), S_OK);
    EXPECT_EQ(putMember(control_.Get(), L"ForeColor", Variant(0x302010)), S_OK);
    EXPECT_EQ(putMember(control_.Get(), L"Enabled", truth(false)), S_OK);
    EXPECT_EQ(putMember(control_.Get(), L"Font", asVariant(makeSystemFont(L"Tahoma", 9).Get())), S_OK);
    const std::vector<DISPID> all = {DISPID_BACKCOLOR, DISPID_FORECOLOR, DISPID_ENABLED, DISPID_FONT};
    EXPECT_EQ(sink_.asked, all);
    EXPECT_EQ(sink_.changed, all);
    EXPECT_EQ(putMember(objectMember(control_.Get(), L"Font").Get(), L"Italic", truth(true)), S_OK);
    EXPECT_EQ(sink_.changed.back(), DISPID_FONT);
    EXPECT_EQ(sink_.changed.size(), 5U);
}

TEST_F(ControlPropertiesOverCom, ARefusedPutFailsAndChangesNothing) {
    listen();
    sink_.answer = S_FALSE;
    EXPECT_EQ(codeOfPut(L"BackColor", Variant(0x102030)), kSetNotPermitted);
    EXPECT_EQ(static_cast<DWORD>(numberMember(control_.Get(), L"BackColor")), 0x80000005U);
    EXPECT_TRUE(sink_.changed.empty());
    sink_.answer = E_NOTIMPL;
    EXPECT_EQ(codeOfPut(L"BackColor", Variant(0x102030)), S_OK) << "a sink that fails refuses nothing";
}

TEST_F(ControlPropertiesOverCom, ASinkMayLeaveWhenItIsAskedAndWhenItIsTold) {
    listen();
    sink_.asking = [&] { EXPECT_EQ(point_->Unadvise(cookie_), S_OK); };
    EXPECT_EQ(putMember(control_.Get(), L"BackColor", Variant(1)), S_OK);
    EXPECT_TRUE(sink_.changed.empty());
    EXPECT_EQ(point_->Unadvise(cookie_), CONNECT_E_NOCONNECTION);
    sink_.asking = nullptr;
    ASSERT_EQ(point_->Advise(&sink_, &cookie_), S_OK);
    sink_.handler = [&] { EXPECT_EQ(point_->Unadvise(cookie_), S_OK); };
    EXPECT_EQ(putMember(control_.Get(), L"BackColor", Variant(2)), S_OK);
    EXPECT_EQ(putMember(control_.Get(), L"BackColor", Variant(3)), S_OK);
    EXPECT_EQ(sink_.changed.size(), 1U);
}

TEST_F(ControlPropertiesOverCom, ASinkMayLetGoOfTheControlWhenItIsAskedOrTold) {
    for (const bool asked : {true, false}) {
        control_ = create(L"CVLog3.CVLogControl");
        listen();
        point_.Reset();
        (asked ? sink_.asking : sink_.handler) = [&] { control_.Reset(); };
        IDispatch* const raw = control_.Get(); // the sink's is the last reference
        Variant value(5);
        DISPID put = DISPID_PROPERTYPUT;
        DISPPARAMS parameters = {&value, &put, 1, 1};
        EXPECT_EQ(raw->Invoke(DISPID_BACKCOLOR, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT,
                              &parameters, nullptr, nullptr, nullptr),
                  S_OK);
        EXPECT_EQ(sink_.references, 1U);
        sink_.asking = nullptr;
        sink_.handler = nullptr;
    }
}

TEST_F(ControlPropertiesOverCom, AListenerOfAFontsChangeMayLetGoOfTheControl) {
    const ComPtr<IDispatch> font = makeSystemFont(L"Tahoma", 9);
    const ULONG references = referencesOf(font.Get());
    EXPECT_EQ(putMember(control_.Get(), L"Font", asVariant(font.Get())), S_OK);
    listen();
    point_.Reset();
    sink_.handler = [&] { control_.Reset(); };
    EXPECT_EQ(putMember(font.Get(), L"Size", Variant(20)), S_OK);
    EXPECT_EQ(control_.Get(), nullptr);
    EXPECT_EQ(referencesOf(font.Get()), references);
}

TEST_F(ControlPropertiesOverCom, TheOnlyConnectionPointIsTheOneOfPropertyChanges) {
    listen();
    ComPtr<IConnectionPointContainer> container;
    ComPtr<IConnectionPoint> unknown;
    ASSERT_EQ(control_.As(&container), S_OK);
    EXPECT_EQ(container->FindConnectionPoint(com::kLogEvents, &unknown), CONNECT_E_NOCONNECTION);
    ComPtr<IEnumConnectionPoints> all;
    ASSERT_EQ(container->EnumConnectionPoints(&all), S_OK);
    ComPtr<IConnectionPoint> first;
    ULONG got = 0;
    EXPECT_EQ(all->Next(1, &first, &got), S_OK);
    EXPECT_EQ(first.Get(), point_.Get());
    ComPtr<IEnumConnections> connections;
    ASSERT_EQ(point_->EnumConnections(&connections), S_OK);
    CONNECTDATA listener = {};
    EXPECT_EQ(connections->Next(1, &listener, nullptr), S_OK);
    ASSERT_NE(listener.pUnk, nullptr);
    listener.pUnk->Release();
    EXPECT_EQ(connections->Next(1, &listener, nullptr), S_FALSE) << "there is one listener";
    DWORD cookie = 7;
    EXPECT_EQ(point_->Advise(static_cast<IOleClientSite*>(&site_), &cookie), CONNECT_E_CANNOTCONNECT);
    EXPECT_EQ(cookie, 0U);
}

TEST_F(ControlPropertiesOverCom, TheWindowHandleIsRefusedInBothModesEachInItsOwnWay) {
    const LONG handle = numberMember(control_.Get(), L"hwnd");
    EXPECT_TRUE(IsWindow(reinterpret_cast<HWND>(static_cast<LONG_PTR>(handle))));
    EXPECT_EQ(codeOfPut(L"hwnd", Variant(1)), kSetNotSupportedAtRunTime) << "no container means run time";
    site_.set(DISPID_AMBIENT_USERMODE, truth(false));
    site_.attach(control_.Get());
    EXPECT_EQ(codeOfPut(L"hwnd", Variant(1)), kSetNotPermitted);
    site_.change(control_.Get(), DISPID_AMBIENT_USERMODE, truth(true));
    EXPECT_EQ(codeOfPut(L"hwnd", Variant(1)), kSetNotSupportedAtRunTime);
    site_.change(control_.Get(), DISPID_AMBIENT_USERMODE, truth(false));
    EXPECT_EQ(codeOfPut(L"hwnd", Variant(1)), kSetNotPermitted);
    EXPECT_EQ(numberMember(control_.Get(), L"hwnd"), handle);
}

TEST_F(ControlPropertiesOverCom, ASiteThatSaysNonsenseIsAsOneThatSaysNothing) {
    site_.set(DISPID_AMBIENT_USERMODE, Variant(L"perhaps"));
    site_.set(DISPID_AMBIENT_FONT, Variant(L"Tahoma"));
    const float before = textWidth();
    site_.attach(control_.Get());
    EXPECT_EQ(codeOfPut(L"hwnd", Variant(1)), kSetNotSupportedAtRunTime);
    EXPECT_EQ(textWidth(), before);
}

TEST_F(ControlPropertiesOverCom, TheContainersFontIsFollowedUntilAnotherIsPut) {
    const float before = textWidth();
    site_.set(DISPID_AMBIENT_FONT, asVariant(makeSystemFont(L"Tahoma", 24).Get()));
    site_.attach(control_.Get());
    EXPECT_GT(textWidth(), 2 * before);
    site_.change(control_.Get(), DISPID_AMBIENT_FONT, asVariant(makeSystemFont(L"Tahoma", 48).Get()));
    EXPECT_GT(textWidth(), 4 * before);
    EXPECT_EQ(numberMember(objectMember(control_.Get(), L"Font").Get(), L"Size"), 48);
    EXPECT_EQ(putMember(control_.Get(), L"Font", asVariant(makeSystemFont(L"Tahoma", 8).Get())), S_OK);
    site_.change(control_.Get(), DISPID_AMBIENT_FONT, asVariant(makeSystemFont(L"Tahoma", 24).Get()));
    EXPECT_LT(textWidth(), 2 * before);
}

TEST_F(ControlPropertiesOverCom, TheContainersFontIsNotChangedThroughTheControl) {
    const ComPtr<IDispatch> theirs = makeSystemFont(L"Tahoma", 24);
    site_.set(DISPID_AMBIENT_FONT, asVariant(theirs.Get()));
    site_.attach(control_.Get());
    EXPECT_EQ(putMember(objectMember(control_.Get(), L"Font").Get(), L"Size", Variant(10)), S_OK);
    EXPECT_EQ(numberMember(theirs.Get(), L"Size"), 24);
}

TEST_F(ControlPropertiesOverCom, TheContainersColoursAreNotFollowed) {
    site_.set(DISPID_AMBIENT_BACKCOLOR, Variant(0x0000FF));
    site_.set(DISPID_AMBIENT_FORECOLOR, Variant(0x00FF00));
    site_.attach(control_.Get());
    site_.change(control_.Get(), DISPID_AMBIENT_BACKCOLOR, Variant(0xFF0000));
    EXPECT_EQ(static_cast<DWORD>(numberMember(control_.Get(), L"BackColor")), 0x80000005U);
    EXPECT_EQ(static_cast<DWORD>(numberMember(control_.Get(), L"ForeColor")), 0x80000008U);
}

} // namespace
} // namespace cvlog::tests
