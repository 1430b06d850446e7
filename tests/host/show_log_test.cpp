// Where the log is shown for every state it can be in.

#include "core/log_resources.h"
#include "tests/support/placed_log.h"

#include <tuple>

namespace cvlog::host {
namespace {

class ShowLogTest : public tests::PlacedLog {};

/// Host window there, docked, wanted, floating window there: all sixteen.
class ShowLogTable : public ShowLogTest,
                     public testing::WithParamInterface<std::tuple<bool, bool, bool, bool>> {};

TEST_P(ShowLogTable, DocksFloatsOrHides) {
    const auto [hasWindow, docked, wanted, floating] = GetParam();
    if (floating) ShowFloatingWindow(globals(), {});
    if (hasWindow) giveWindow();
    globals().options.DockedOption = docked;
    globals().LogWindowVisible = wanted;
    world.calls.restart();

    ShowLog(globals());

    // Docked needs a window to dock in: without one the log floats whenever it is wanted.
    EXPECT_EQ(floats(), wanted && !(hasWindow && docked));
    EXPECT_EQ(forms().live.size(), floats() ? 1U : 0U);
    EXPECT_EQ(world.calls.countOf("Window.DisplayLog"), hasWindow ? 1 : 0);
    ASSERT_EQ(window.logView != nullptr, hasWindow);
    EXPECT_EQ(other.logView, nullptr);
    if (hasWindow) {
        EXPECT_EQ(window.logView->get(u"Visible"), automation::Value(wanted && docked));
    }
    if (floats()) {
        const int owner = hasWindow && !floating ? tests::FakeWindow::kHandle : 0;
        EXPECT_EQ(forms().shown.back().owner, owner) << "an open window keeps its owner";
        EXPECT_EQ(forms().broughtToFront.back(), u"Calvetta Activity Log");
    }
}

INSTANTIATE_TEST_SUITE_P(States, ShowLogTable,
                         testing::Combine(testing::Bool(), testing::Bool(), testing::Bool(),
                                          testing::Bool()));

TEST_F(ShowLogTest, PlacesTheControlThenAsksForTheLayoutThenFloats) {
    giveWindow();
    globals().LogWindowVisible = true;
    ShowLog(globals());
    const auto order = world.calls.journalOf({"LogView.Visible", "Window.DisplayLog", "Form.show"});
    EXPECT_EQ(order, (std::vector<std::string>{"LogView.Visible = False", "Window.DisplayLog", "Form.show"}));
}

TEST_F(ShowLogTest, MakesTheControlInsideTheContainerInFrontOfTheOthers) {
    giveWindow();
    assumeParent();
    ShowLog(globals());
    const auto made = world.calls.journalOf({"Controls.Add", "LogView."});
    EXPECT_EQ(made, (std::vector<std::string>{"Controls.Add(CVLog3.CVLogControl, LogView, <object>)",
                                              "LogView.Font = <object>", "LogView.ZOrder(0)",
                                              "LogView.Visible = False"}));
    EXPECT_EQ(window.logView->get(u"Font"), automation::Value(core::ResourceFont(globals())));
}

TEST_F(ShowLogTest, LeavesAControlThatIsThereAsItIs) {
    giveWindow();
    window.addLogView();
    ShowLog(globals());
    EXPECT_EQ(world.calls.countOf("Controls.Add"), 0);
    EXPECT_EQ(world.calls.countOf("LogView.ZOrder"), 0);
    EXPECT_EQ(world.calls.countOf("LogView.Font"), 0);
    EXPECT_EQ(world.calls.countOf("LogView.Visible"), 1);
}

TEST_F(ShowLogTest, GoesOnWithoutAControlInAWindowThatRefusesOne) {
    giveWindow();
    window.controls->raise(u"Add", tests::CallCounter::injectedError());
    globals().LogWindowVisible = true;
    ShowLog(globals());
    EXPECT_EQ(world.calls.countOf("Window.DisplayLog"), 1);
    EXPECT_TRUE(floats());
}

TEST_F(ShowLogTest, FloatsUnownedBesideAWindowThatCannotOwn) {
    giveWindow();
    globals().LogWindowVisible = true;
    window.window->remove(u"hwnd");
    ShowLog(globals());
    ASSERT_TRUE(floats());
    EXPECT_EQ(forms().shown.back().owner, 0);
    CloseFloatingWindow(globals());

    window.window->set(u"hwnd", std::int32_t{13});
    forms().refusedOwners.insert(13);
    ShowLog(globals());
    ASSERT_TRUE(floats());
    EXPECT_EQ(forms().shown.back().owner, 0);
    EXPECT_TRUE(placement().frmLog->form()->visible());
}

// A count of none, a nonsense count and members that are missing: there is no window then.
TEST_F(ShowLogTest, FindsNoWindowInAHostThatHasNone) {
    EXPECT_FALSE(FindHostWindow(globals()));
    giveWindow();
    EXPECT_TRUE(FindHostWindow(globals()));
    const auto tools = automation::toObject(world.host.workspace->get(u"ActiveToolList"));
    auto& list = dynamic_cast<tests::ScriptObject&>(*tools);
    for (const std::int32_t count : {0, -1, 1 << 30}) {
        list.set(u"Count", count);
        EXPECT_FALSE(FindHostWindow(globals())) << count;
    }
    giveWindow();
    window.tool->remove(u"CalvettaWindow");
    EXPECT_FALSE(FindHostWindow(globals()));
    world.host.workspace->remove(u"ActiveToolList");
    EXPECT_FALSE(FindHostWindow(globals()));
}

TEST_F(ShowLogTest, TellsContainersWithAScaleFromOthers) {
    auto form = std::make_shared<tests::ScriptObject>("Form", world.calls);
    EXPECT_FALSE(HasScale(form));
    form->set(u"ScaleTop", 0.0);
    EXPECT_TRUE(HasScale(form));
    EXPECT_FALSE(HasScale(nullptr));
}

} // namespace
} // namespace cvlog::host
