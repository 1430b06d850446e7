// The control in a container that activates it in place, with a site that does what it likes while it is told.

#include "tests/windows/in_place_site.h"

#include <olectl.h>

#include <functional>

namespace cvlog::tests {
namespace {

class ControlActivation : public InPlaceTest {
protected:
    RECT listArea() {
        RECT area = {};
        GetWindowRect(list(), &area);
        MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&area), 2);
        return area;
    }
    void expectListAt(const RECT& area) {
        const RECT shown = listArea();
        EXPECT_TRUE(EqualRect(&shown, &area))
            << shown.left << "," << shown.top << " to " << shown.right << "," << shown.bottom;
    }
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

TEST_F(ControlActivation, AContainerThatRefusesIsNotHeld) {
    site_.activateAnswer = E_ACCESSDENIED;
    EXPECT_EQ(run(OLEIVERB_UIACTIVATE), E_ACCESSDENIED);
    EXPECT_FALSE(IsChild(window_, list()));
    EXPECT_EQ(site_.frame.references, 1U);
    EXPECT_EQ(site_.document.references, 1U);
    site_.activateAnswer = S_OK;
    EXPECT_EQ(run(OLEIVERB_UIACTIVATE), S_OK);
}

TEST_F(ControlActivation, ShowsOnlyWhatTheContainersClipLeaves) {
    const auto cut = [this](RECT* box) { return GetWindowRgnBox(GetParent(list()), box); };
    RECT box{};
    site_.visible = {0, 50, 100, 500};
    ASSERT_EQ(run(OLEIVERB_INPLACEACTIVATE), S_OK);
    expectListAt({10, 20, 210, 120});
    EXPECT_EQ(cut(&box), SIMPLEREGION);
    EXPECT_EQ(box.left, 0);
    EXPECT_EQ(box.top, 30);
    EXPECT_EQ(box.right, 90);
    EXPECT_EQ(box.bottom, 100);
    const RECT place{10, 20, 210, 120};
    const RECT elsewhere{300, 200, 310, 210};
    EXPECT_EQ(inPlace_->SetObjectRects(&place, &elsewhere), S_OK);
    EXPECT_EQ(cut(&box), NULLREGION) << "scrolled out of sight";
    const RECT everything{0, 0, 1000, 1000};
    const RECT nothing{};
    for (const RECT* clip : {&everything, &place, &nothing, static_cast<const RECT*>(nullptr)}) {
        EXPECT_EQ(inPlace_->SetObjectRects(&place, &elsewhere), S_OK);
        EXPECT_EQ(inPlace_->SetObjectRects(&place, clip), S_OK);
        EXPECT_EQ(cut(&box), ERROR) << "no region at all";
    }
    EXPECT_EQ(inPlace_->SetObjectRects(&place, &elsewhere), S_OK);
    EXPECT_EQ(inPlace_->InPlaceDeactivate(), S_OK);
    EXPECT_EQ(cut(&box), ERROR);
}

TEST_F(ControlActivation, TheFocusActivatesTheUserInterface) {
    ASSERT_EQ(run(OLEIVERB_INPLACEACTIVATE), S_OK);
    EXPECT_EQ(site_.userInterfaces, 0);
    EXPECT_EQ(site_.frame.active.Get(), nullptr);
    SetFocus(GetParent(list())); // a container knows this window
    EXPECT_EQ(GetFocus(), list());
    EXPECT_EQ(site_.userInterfaces, 1);
    const ComPtr<IOleInPlaceActiveObject> itself = as<IOleInPlaceActiveObject>(IID_IOleInPlaceActiveObject);
    EXPECT_EQ(site_.frame.active.Get(), itself.Get());
    EXPECT_EQ(site_.document.active.Get(), itself.Get());
    EXPECT_EQ(site_.frame.noBorders, 1) << "the container keeps its tools";
    EXPECT_EQ(site_.frame.borders, 0);
    EXPECT_EQ(site_.focus, std::vector<bool>{true});
    SetFocus(window_);
    EXPECT_EQ(site_.focus, (std::vector<bool>{true, false}));
    EXPECT_EQ(site_.frame.active.Get(), itself.Get()) << "it is the container that takes it away";
}

TEST_F(ControlActivation, AClickActivatesTheUserInterfaceAlsoWhereTheFocusAlreadyIs) {
    ASSERT_EQ(run(OLEIVERB_INPLACEACTIVATE), S_OK);
    const auto click = [this] {
        PostMessageW(list(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 60));
        PostMessageW(list(), WM_LBUTTONUP, 0, MAKELPARAM(20, 60));
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    };
    click();
    EXPECT_EQ(GetFocus(), list());
    EXPECT_EQ(site_.userInterfaces, 1);
    EXPECT_EQ(inPlace_->UIDeactivate(), S_OK);
    EXPECT_EQ(site_.userInterfaceEnds, 1);
    EXPECT_EQ(site_.frame.active.Get(), nullptr);
    EXPECT_EQ(site_.document.active.Get(), nullptr);
    EXPECT_EQ(GetFocus(), list());
    click();
    EXPECT_EQ(site_.userInterfaces, 2);
    EXPECT_NE(site_.frame.active.Get(), nullptr);
    click();
    EXPECT_EQ(site_.userInterfaces, 2);
}

TEST_F(ControlActivation, AClickMayEndTheControl) {
    ASSERT_EQ(run(OLEIVERB_UIACTIVATE), S_OK);
    ASSERT_EQ(inPlace_->UIDeactivate(), S_OK);
    const HWND before = list();
    site_.onUserInterface = [this] {
        object_->SetClientSite(nullptr);
        inPlace_.Reset();
        object_.Reset();
        control_.Reset();
    };
    SendMessageW(before, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 60));
    EXPECT_EQ(control_.Get(), nullptr);
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    EXPECT_FALSE(IsWindow(before));
    site_.onUserInterface = nullptr;
}

TEST_F(ControlActivation, DeactivationGivesTheFocusBackAndTellsOfIt) {
    ASSERT_EQ(run(OLEIVERB_UIACTIVATE), S_OK);
    EXPECT_EQ(GetFocus(), list());
    EXPECT_EQ(inPlace_->InPlaceDeactivate(), S_OK);
    EXPECT_EQ(GetFocus(), window_);
    EXPECT_EQ(site_.focus, (std::vector<bool>{true, false}));
    EXPECT_EQ(site_.userInterfaceEnds, 1);
    EXPECT_EQ(site_.deactivations, 1);
    EXPECT_FALSE(IsChild(window_, list()));
    EXPECT_EQ(inPlace_->InPlaceDeactivate(), S_OK);
    EXPECT_EQ(site_.deactivations, 1) << "once";
}

TEST_F(ControlActivation, AContainerMayDeactivateAgainWhileTheFocusGoes) {
    ASSERT_EQ(run(OLEIVERB_UIACTIVATE), S_OK);
    site_.onFocus = [this] { inPlace_->InPlaceDeactivate(); };
    EXPECT_EQ(inPlace_->InPlaceDeactivate(), S_OK);
    site_.onFocus = nullptr;
    EXPECT_EQ(site_.deactivations, 1);
    EXPECT_EQ(run(OLEIVERB_INPLACEACTIVATE), S_OK);
}

TEST_F(ControlActivation, ADeadUserInterfaceTakesNoInput) {
    ASSERT_EQ(run(OLEIVERB_UIACTIVATE), S_OK);
    const auto control = as<IOleControl>(IID_IOleControl);
    const auto say = [&](bool dead) {
        Variant value;
        value.vt = VT_BOOL;
        value.boolVal = dead ? VARIANT_TRUE : VARIANT_FALSE;
        VariantCopy(&site_.ambients[DISPID_AMBIENT_UIDEAD], &value);
        EXPECT_EQ(control->OnAmbientPropertyChange(DISPID_AMBIENT_UIDEAD), S_OK);
    };
    say(true);
    EXPECT_FALSE(IsWindowEnabled(GetParent(list())));
    EXPECT_TRUE(IsWindowEnabled(list())) << "Enabled is what it was, and the list is not greyed";
    EXPECT_NE(GetFocus(), list());
    say(false);
    EXPECT_TRUE(IsWindowEnabled(GetParent(list())));
}

TEST_F(ControlActivation, VerbsThatAreNoneOfItsOwn) {
    EXPECT_EQ(run(OLEIVERB_DISCARDUNDOSTATE), S_OK);
    EXPECT_EQ(run(OLEIVERB_OPEN), E_NOTIMPL);
    EXPECT_EQ(run(-99), E_NOTIMPL);
    EXPECT_EQ(site_.userInterfaces, 0);
    EXPECT_EQ(run(17), OLEOBJ_S_INVALIDVERB);
    EXPECT_EQ(site_.userInterfaces, 1) << "an unknown number means the first verb";
    EXPECT_EQ(run(OLEIVERB_HIDE), S_OK);
    EXPECT_EQ(site_.deactivations, 1);
}

} // namespace
} // namespace cvlog::tests
