// The control in a container that activates it in place, with a site that does what it likes while it is told.

#include "tests/windows/in_place_site.h"

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

} // namespace
} // namespace cvlog::tests
