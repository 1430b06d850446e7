#include "view/log_control.h"

#include "automation/error.h"
#include "base/text.h"
#include "tests/support/fault_sweep.h"
#include "tests/support/log_world.h"
#include "view/log_control_ids.h"

#include <gtest/gtest.h>

namespace cvlog::view {
namespace {

using platform::headless::peerOf;
using tests::LogWorld;
using tests::rowsOf;

class LogControlTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(world.open());
        world.hideBoxes();
        world.globals.options.KeepInSession = true;
    }
    void addRows(int count) {
        for (int i = 0; i < count; ++i) world.add({u"M1", i % 3, u"P1", u"row " + base::decimal(i), u""});
    }
    LogWorld world;
};

TEST_F(LogControlTest, RegistersItsListUnderItsWindowHandle) {
    world.platform.peers.book.handlesToGive = {4660};
    const widgets::ListView& list = world.addControl();
    EXPECT_EQ(core::LogViews::keyOf(list), u"4660k");
    EXPECT_EQ(world.globals.LogViews.first().get(), &list);
    EXPECT_EQ(automation::toInt32(world.controls[0]->get(u"hwnd")), 4660);
}

TEST_F(LogControlTest, IsGoneFromTheRegistryBeforeItsWindowHandleIsUsedAgain) {
    world.addControl();
    world.addControl();
    const std::int32_t handle = world.list(0).windowHandle();
    world.removeControl(0);
    EXPECT_EQ(world.globals.LogViews.count(), 1);
    EXPECT_FALSE(world.platform.peers.book.liveHandles.contains(handle));
    world.platform.peers.book.handlesToGive = {handle};
    world.addControl();
    EXPECT_EQ(world.globals.LogViews.count(), 2);
    addRows(1);
    EXPECT_EQ(world.list(1).rowCount(), 1);
}

TEST_F(LogControlTest, DestroysItsWindowEvenIfSomeoneHoldsItsList) {
    world.addControl();
    const auto held = world.globals.LogViews.first();
    world.removeControl(0);
    EXPECT_EQ(held->windowHandle(), 0);
    EXPECT_EQ(held->owner(), nullptr);
    held->append(widgets::makeRow({u"a", {}, {}, {}}));
}

TEST_F(LogControlTest, StartsEmptyWhenItIsTheFirst) { EXPECT_EQ(world.addControl().rowCount(), 0); }

TEST_F(LogControlTest, StartsWithACopyOfTheFirstOnesRowsOrderAndSelection) {
    world.addControl();
    addRows(50);
    world.list().setSort(5, widgets::SortOrder::Descending);
    world.list().setSorted(true);
    world.list().select(7, true);
    world.list().select(9, true);
    world.list().scrollTo(1);
    world.list().scrollTo(30);
    const widgets::ListView& copy = world.addControl();
    EXPECT_EQ(rowsOf(copy), rowsOf(world.list()));
    for (int row = 1; row <= 50; ++row) {
        EXPECT_EQ(copy.isSelected(row), row == 7 || row == 9) << row;
        EXPECT_EQ(copy.content(row).get(), world.list().content(row).get()) << "the content is shared";
    }
    EXPECT_TRUE(copy.sorted());
    EXPECT_EQ(copy.column(6).icon, u"SortUp");
    EXPECT_EQ(peerOf(copy).topRow(), peerOf(world.list()).topRow());
    EXPECT_GE(copy.column(7).width, copy.widestCell(7) + 180);
}

TEST_F(LogControlTest, HasTheSharedIconsAsSoonAsItHasCopiedRows) {
    world.addControl();
    addRows(1);
    const widgets::ListView& copy = world.addControl();
    EXPECT_EQ(copy.smallIcons(), world.globals.frmLogResources->ilLog);
    EXPECT_EQ(copy.headerIcons(), world.globals.frmLogResources->ilSort);
}

TEST_F(LogControlTest, StartsEmptyWhileNoLogIsOpen) {
    world.addControl();
    addRows(2);
    world.globals.store.CurrentLog.reset();
    EXPECT_EQ(world.addControl().rowCount(), 0);
}

TEST_F(LogControlTest, IsCreatedAndDestroyedWithoutALog) {
    LogWorld closed;
    closed.addControl();
    closed.addControl();
    closed.removeControl(0);
    EXPECT_EQ(closed.globals.LogViews.count(), 1);
}

TEST_F(LogControlTest, LeavesTheOthersWithTheirRowsWhenItDies) {
    world.addControl();
    world.addControl();
    addRows(3);
    world.removeControl(0);
    addRows(1);
    EXPECT_EQ(world.list().rowCount(), 4);
}

TEST_F(LogControlTest, TakesTheRowsAlongWhenItIsTheLastToDie) {
    world.addControl();
    addRows(3);
    world.controls.clear();
    ASSERT_TRUE(world.globals.store.CurrentLog);
    EXPECT_EQ(world.addControl().rowCount(), 0);
    EXPECT_EQ(world.engine.records().size(), 3U) << "the log itself has them";
}

TEST_F(LogControlTest, IsRegisteredBeforeItsColumnsAreSetUpAndFilledAfterwards) {
    world.addControl();
    addRows(1);
    int listsAtSetUp = 0;
    world.calls.insideCall = [&](const std::string& name) {
        if (name == "Settings.get" && listsAtSetUp == 0) listsAtSetUp = world.globals.LogViews.count();
        if (name == "Settings.get" && listsAtSetUp == 2) {
            EXPECT_EQ(world.globals.LogViews.all().back()->rowCount(), 0) << "columns come before rows";
        }
    };
    EXPECT_EQ(world.addControl().rowCount(), 1);
    world.calls.insideCall = nullptr;
    EXPECT_EQ(listsAtSetUp, 2);
}

TEST_F(LogControlTest, HasEachRowOnceWhenAnEntryComesWhileItIsSetUp) {
    world.addControl();
    addRows(3); // all of one second and one object
    bool added = false;
    world.host.workspace->before(u"GetProductInfo", [&] {
        if (world.globals.LogViews.count() == 2 && !std::exchange(added, true)) addRows(1);
    });
    const widgets::ListView& copy = world.addControl();
    ASSERT_TRUE(added);
    ASSERT_EQ(copy.rowCount(), 4);
    for (int row = 1; row <= 4; ++row) EXPECT_EQ(copy.idAt(row), world.list().idAt(row)) << "row " << row;
}

TEST_F(LogControlTest, KeepsTheWidthsOfItsColumnsWhenItGetsAnotherFont) {
    widgets::ListView& list = world.addControl();
    const base::Twips width = list.column(1).width;
    const base::Twips text = list.textWidth(u"Date");
    base::Font larger = list.font();
    larger.points *= 3;
    world.controls[0]->put(u"Font", world.platform.fonts.make(larger));
    EXPECT_GT(list.textWidth(u"Date"), text);
    EXPECT_EQ(list.column(1).width, width) << "set up once, when it was created";
}

TEST_F(LogControlTest, TellsTheLogOfItsFocus) {
    const auto sink = std::make_shared<tests::RecordingSink>();
    world.log->events().advise(sink);
    world.addControl();
    peerOf(world.list()).userEnters();
    peerOf(world.list()).userLeaves();
    EXPECT_EQ(sink->ids, (std::vector<std::int32_t>{2, 3}));
    world.close();
    peerOf(world.list()).userEnters();
    EXPECT_EQ(sink->ids.size(), 2U) << "with no log open nothing is raised";
}

TEST_F(LogControlTest, KeepsItsFocusToItselfWhileAnExpansionIsBusy) {
    const auto sink = std::make_shared<tests::RecordingSink>();
    world.log->events().advise(sink);
    world.addControl();
    std::vector<bool> site;
    world.controls[0]->focusChanged = [&site](bool got) { site.push_back(got); };
    world.globals.ExpansionBusy = true;
    peerOf(world.list()).userEnters();
    peerOf(world.list()).userLeaves();
    EXPECT_TRUE(sink->ids.empty());
    EXPECT_EQ(site, (std::vector<bool>{true, false})) << "the container hears of it all the same";
}

TEST_F(LogControlTest, MayBeTheParentOfTheLogToTheEnd) {
    LogWorld other;
    other.addControl();
    other.globals.placement.Parent = other.controls[0];
    other.controls.clear();
    EXPECT_EQ(other.globals.LogViews.count(), 1) << "the log holds it; it leaves the lists as all goes";
}

TEST_F(LogControlTest, SaysNothingOfAFocusThatCameBackWhenNobodyWasToldThatItWent) {
    const auto sink = std::make_shared<tests::RecordingSink>();
    world.log->events().advise(sink);
    auto& peer = peerOf(world.addControl());
    peer.userEnters();
    world.globals.ExpansionBusy = true;
    peer.userLeaves(); // to the strip
    world.globals.ExpansionBusy = false;
    peer.userEnters();
    EXPECT_EQ(sink->ids, std::vector<std::int32_t>{2});
    peer.userLeaves();
    peer.userEnters();
    EXPECT_EQ(sink->ids, (std::vector<std::int32_t>{2, 3, 2}));
}

TEST_F(LogControlTest, SurvivesAHandlerThatDestroysIt) {
    const auto sink = std::make_shared<tests::RecordingSink>();
    world.log->events().advise(sink);
    world.addControl();
    const auto list = world.globals.LogViews.first();
    sink->handler = [this](std::int32_t, std::span<automation::Value>) { world.controls.clear(); };
    list->owner()->gotFocus();
    EXPECT_EQ(world.globals.LogViews.count(), 0);
}

TEST_F(LogControlTest, RepaintsWhateverMouseButtonIsReleased) {
    world.addControl();
    for (const auto button :
         {widgets::MouseButton::Left, widgets::MouseButton::Right, widgets::MouseButton::Middle})
        peerOf(world.list()).userReleasesButton(button);
    EXPECT_EQ(peerOf(world.list()).told("repaint"), 3);
}

TEST_F(LogControlTest, ForwardsItsPropertiesToTheListAndTellsOfTheChange) {
    world.addControl();
    LogControl& control = *world.controls[0];
    std::vector<std::int32_t> changed;
    control.propertyChanged = [&changed](std::int32_t id) { changed.push_back(id); };
    EXPECT_EQ(automation::toInt32(control.get(u"BackColor")), static_cast<std::int32_t>(0x80000005));
    EXPECT_EQ(automation::toInt32(control.get(u"ForeColor")), static_cast<std::int32_t>(0x80000008));
    EXPECT_TRUE(automation::toBoolean(control.get(u"Enabled")));
    control.put(u"BackColor", 0x00FF00);
    control.put(u"ForeColor", 0x0000FF);
    control.put(u"Enabled", false);
    EXPECT_EQ(changed, (std::vector<std::int32_t>{kBackColorId, kForeColorId, kEnabledId}));
    EXPECT_EQ(world.list().colours(), (widgets::Colours{0x00FF00, 0x0000FF}));
    EXPECT_FALSE(world.list().enabled());
}

TEST_F(LogControlTest, TakesSystemColoursAlsoAsUnsignedNumbers) {
    world.addControl();
    world.controls[0]->put(u"BackColor", std::int64_t{0x8000000F});
    world.controls[0]->put(u"ForeColor", 2147483666.0);
    EXPECT_EQ(world.list().colours(), (widgets::Colours{0x8000000F, 0x80000012}));
    EXPECT_EQ(automation::toInt32(world.controls[0]->get(u"BackColor")),
              static_cast<std::int32_t>(0x8000000F));
}

TEST_F(LogControlTest, RefreshRepaintsTheList) {
    world.addControl();
    world.controls[0]->invoke(u"Refresh");
    EXPECT_EQ(peerOf(world.list()).told("repaint"), 1);
}

TEST_F(LogControlTest, RefusesAWindowHandle) {
    world.addControl();
    LogControl& control = *world.controls[0];
    const auto codeOfPut = [&control] {
        try {
            control.put(u"hwnd", 1);
        } catch (const automation::AutomationError& error) {
            return error.code();
        }
        return 0;
    };
    EXPECT_EQ(codeOfPut(), automation::code::kSetNotSupportedAtRunTime);
    control.setDesignMode(true);
    EXPECT_EQ(codeOfPut(), automation::code::kSetNotPermitted);
}

TEST_F(LogControlTest, MeasuresTextInItsFont) {
    world.addControl();
    EXPECT_EQ(automation::toSingle(world.controls[0]->invoke(u"TextWidth", u"Text")),
              world.list().textWidth(u"Text"));
}

TEST(FaultSweepOfControls, LeavesNoListOfAControlThatCouldNotBeMade) {
    tests::FaultSweep<LogWorld> sweep;
    sweep.arrange = [] {
        auto world = tests::openWorld(1);
        world->peersMustAgree = false;
        world->add({u"M1", 0, u"P1", u"message", u""});
        return world;
    };
    sweep.scenario = [](LogWorld& world) { world.addControl(); };
    sweep.check = [](LogWorld& world, const tests::SweepRun& run) {
        EXPECT_EQ(world.controls.size(), run.error ? 1U : 2U);
        EXPECT_EQ(world.globals.LogViews.count(), static_cast<int>(world.controls.size()));
        EXPECT_EQ(world.platform.peers.book.liveHandles.size(), world.controls.size());
        tests::expectListsInStep(world);
    };
    sweep.leastCalls = 20;
    sweep.run();
}

} // namespace
} // namespace cvlog::view
