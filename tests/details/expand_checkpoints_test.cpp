// A long errors file: every fifty rows the list is shown and other code runs, and a strip offers to stop.

#include "base/failure.h"
#include "core/log_row_kind.h"
#include "details/expand_entry.h"
#include "details/frm_cancel.h"
#include "tests/support/expansion_world.h"
#include "tests/support/placed_log.h"
#include "view/list_set.h"

#include <gtest/gtest.h>

namespace cvlog::details {
namespace {

using tests::errorLine;
using tests::ExpansionWorld;
using tests::expectNothingLeft;
using Calls = std::vector<std::string>;

constexpr std::size_t kCancelButton = 1;

class ExpandCheckpoints : public testing::Test {
protected:
    platform::headless::HeadlessListViewPeer& peer(std::size_t index = 0) {
        return platform::headless::peerOf(world.list(index));
    }
    int shownStrips() {
        int count = 0;
        for (const auto& showing : world.forms().shown) count += showing.caption == u"Cancel";
        return count;
    }
    void pressCancel() { world.pressCancel(); }
    int childCount(std::size_t index = 0) { return static_cast<int>(world.messages(index).size()); }

    ExpansionWorld world{3};
};

TEST_F(ExpandCheckpoints, AreNotReachedByFortyNineRows) {
    world.globals.options.ErrorsListFilter = {{u'W', true}};
    std::string content;
    for (int i = 0; i < 49; ++i)
        content +=
            errorLine("", "", "Error", "E1", "shown") + errorLine("", "", "Warning", "W1", "hidden") + "\n";
    world.writeErrors(content);
    world.expand();
    EXPECT_EQ(childCount(), 50) << "with the row that tells of the hidden ones";
    EXPECT_EQ(shownStrips(), 0);
    EXPECT_EQ(world.platform.pump.yields, 0);
    expectNothingLeft(world);
}

TEST_F(ExpandCheckpoints, ShowTheStripAtTheFiftiethRowAndTakeItAwayAtTheEnd) {
    world.writeLines(50);
    world.atYield(1, [&] {
        EXPECT_EQ(shownStrips(), 1);
        ASSERT_NE(world.globals.frmCancel, nullptr);
        EXPECT_TRUE(world.globals.frmCancel->form().visible());
    });
    world.expand();
    EXPECT_EQ(world.platform.pump.yields, 1);
    EXPECT_EQ(childCount(), 50);
    EXPECT_EQ(childCount(2), 50);
    expectNothingLeft(world);
}

TEST_F(ExpandCheckpoints, LayTheStripOverTheListLeavingItsScrollBarFree) {
    world.platform.screens.window = {1'500, 750, 8'000, 3'000};
    world.writeLines(60);
    base::Area place;
    world.atYield(1, [&] { place = *world.globals.frmCancel->form().placement(); });
    world.expand();
    EXPECT_EQ(place, (base::Area{1'500, 750, 8'000 - 255, 300}));
    EXPECT_EQ(world.forms().shown.back().owner, world.list().windowHandle());
}

TEST_F(ExpandCheckpoints, GoInTheirOrder) {
    std::string content;
    for (int i = 1; i < 50; ++i) content += "line\n";
    world.writeErrors(content + std::string(200, 'W'));
    world.calls.restart();
    world.expand();
    Calls order;
    for (const std::string& call : world.calls.journal())
        for (const std::string_view watched : {"List.columnChanged", "List.repaint", "Form.create",
                                               "Form.show", "List.scrollTo", "MessagePump.yield"})
            if (call == watched && (order.empty() || order.back() != call)) order.push_back(call);
    EXPECT_EQ(order, (Calls{"List.columnChanged", "List.repaint", "Form.create", "Form.show", "List.scrollTo",
                            "MessagePump.yield", "List.columnChanged", "List.scrollTo"}));
}

TEST_F(ExpandCheckpoints, BringTheWindowUpToDateOnceWhenTheStripIsThere) {
    ExpansionWorld single{1};
    single.writeLines(100);
    std::size_t begin = 0;
    single.atYield(1, [&] { begin = single.calls.journal().size(); });
    single.calls.restart();
    single.expand();
    Calls order;
    for (std::size_t i = begin; i < single.calls.journal().size(); ++i) {
        const std::string& call = single.calls.journal()[i];
        for (const std::string_view watched : {"List.batchBegan", "List.rowsInserted", "List.repaint",
                                               "List.scrollTo", "List.batchEnded", "MessagePump.yield"})
            if (call == watched) order.push_back(call);
        if (call == "MessagePump.yield") break;
    }
    const Calls expected = {
        "List.batchBegan", "List.batchEnded", // the row of the checkpoint before, for other lists
        "List.batchBegan", "List.rowsInserted", "List.rowsInserted", "List.repaint",
        "List.scrollTo",   "List.batchEnded",   "MessagePump.yield"};
    EXPECT_EQ(order, expected);
    expectNothingLeft(single);
}

TEST_F(ExpandCheckpoints, ComeEveryFiftyShownRows) {
    world.globals.options.ErrorsListFilter = {{u'W', true}};
    std::string content;
    for (int i = 0; i < 160; ++i)
        content += errorLine("", "", "", "E1", "shown") + errorLine("", "", "", "W1", "hidden");
    world.writeErrors(content);
    std::vector<int> rows;
    world.platform.pump.atYield = [&](int) { rows.push_back(childCount()); };
    world.expand();
    EXPECT_EQ(rows, (std::vector<int>{50, 100, 150}));
    EXPECT_EQ(shownStrips(), 1);
    expectNothingLeft(world);
}

TEST_F(ExpandCheckpoints, LetTheOtherListsBeOneRowBehind) {
    world.writeLines(120);
    world.atYield(2, [&] {
        EXPECT_EQ(childCount(0), 100);
        EXPECT_EQ(childCount(1), 99);
        EXPECT_EQ(childCount(2), 99);
    });
    world.expand();
    EXPECT_EQ(childCount(1), 120);
    expectNothingLeft(world);
}

TEST_F(ExpandCheckpoints, WithCancelKeepTheRowInThisListAloneAndAddNoneThatTellsOfIt) {
    world.writeLines(200);
    world.atYield(2, [&] { pressCancel(); });
    world.expand();
    EXPECT_EQ(childCount(0), 100);
    EXPECT_EQ(childCount(1), 99);
    EXPECT_EQ(world.messages(0).back(), "line 100");
    EXPECT_EQ(world.messages(1).back(), "line 99");
    EXPECT_FALSE(world.globals.ExpansionBusy);
    EXPECT_EQ(world.list(1).row(2 + 99 + 1).cellText(6), u"after");
    CollapseEntry(world.globals, world.view(), 2);
    expectNothingLeft(world);
    EXPECT_EQ(world.list(1).rowCount(), 3) << "the row that one list alone has takes no other row with it";
}

TEST_F(ExpandCheckpoints, WithCancelAfterAHiddenLineTellOfItBelowTheLastRowOfEveryList) {
    world.globals.options.ErrorsListFilter = {{u'W', true}};
    std::string content = errorLine("", "", "", "W1", "hidden");
    for (int i = 0; i < 100; ++i) content += "line\n";
    world.writeErrors(content);
    world.atYield(1, [&] { pressCancel(); });
    world.expand();
    EXPECT_EQ(childCount(0), 51);
    EXPECT_EQ(childCount(1), 50);
    EXPECT_EQ(world.messages(0).back(), tests::kHiddenRecords);
    EXPECT_EQ(world.messages(1).back(), tests::kHiddenRecords);
}

TEST_F(ExpandCheckpoints, WithCancelFoundWhileInputWaitsTellThatRowsAreMissing) {
    world.writeLines(200);
    world.platform.pump.hasInput = [&] { return childCount() == 50 && world.globals.frmCancel != nullptr; };
    world.atYield(2, [&] { pressCancel(); });
    world.expand();
    EXPECT_EQ(world.platform.pump.yields, 2);
    EXPECT_EQ(world.messages().back(), tests::kHiddenRecords);
    EXPECT_EQ(childCount(0), 51);
    EXPECT_EQ(childCount(1), 51);
    expectNothingLeft(world);
}

TEST_F(ExpandCheckpoints, TakeCancelAlsoWhileOnlyHiddenLinesCome) {
    world.globals.options.ErrorsListFilter = {{u'W', true}};
    std::string content;
    for (int i = 0; i < 50; ++i) content += "line\n";
    for (int i = 0; i < 5'000; ++i) content += errorLine("", "", "", "W1", "hidden");
    world.writeErrors(content);
    world.platform.pump.hasInput = [&] { return world.calls.countOf("MessagePump.inputWaiting") == 150; };
    world.atYield(2, [&] { pressCancel(); });
    world.expand();
    EXPECT_EQ(world.calls.countOf("MessagePump.inputWaiting"), 150);
    EXPECT_EQ(world.messages().back(), tests::kHiddenRecords);
}

TEST_F(ExpandCheckpoints, DoNotRememberTheCancelOfAnEarlierExpansion) {
    world.writeLines(120);
    world.atYield(1, [&] { pressCancel(); });
    world.expand();
    world.platform.pump.atYield = nullptr;
    CollapseEntry(world.globals, world.view(), 2);
    world.expand();
    EXPECT_EQ(childCount(), 120);
    expectNothingLeft(world);
}

TEST_F(ExpandCheckpoints, TurnThePictureEveryTwentyRowsAndWhileTheCountStandsThere) {
    world.globals.options.ErrorsListFilter = {{u'W', true}};
    std::string content;
    for (int i = 0; i < 80; ++i) content += "line\n";                  // frames at 60 and 80
    content += errorLine("", "", "", "W1", "hidden") + "\n" + "   \n"; // and at each of these
    for (int i = 0; i < 20; ++i) content += "line\n";                  // and at 100
    world.writeErrors(content);
    int frame = -1;
    world.atYield(2, [&] { frame = world.globals.frmCancel->frame(); });
    world.expand();
    EXPECT_EQ(frame, 5) << "the checkpoint comes before the frame of its own row";
    EXPECT_EQ(world.calls.countOf("Form.pictureChanged"), 6);
}

TEST_F(ExpandCheckpoints, TakeAStripThatItsUserClosedForCancel) {
    world.writeLines(200);
    world.atYield(2, [&] { world.forms().live.back()->userCloses(); });
    world.expand();
    EXPECT_EQ(childCount(0), 100);
    EXPECT_FALSE(world.globals.ExpansionBusy);
    EXPECT_EQ(world.globals.frmCancel, nullptr);
}

TEST_F(ExpandCheckpoints, StayBusyWhenTheStripIsClosed) {
    world.writeLines(100);
    world.atYield(1, [&] {
        world.forms().live.back()->userCloses();
        EXPECT_TRUE(world.globals.ExpansionBusy);
        CollapseEntry(world.globals, world.view(), 2);
        EXPECT_EQ(childCount(), 50);
    });
    world.expand();
    EXPECT_FALSE(world.globals.ExpansionBusy);
}

TEST_F(ExpandCheckpoints, EndTheExpansionWhenTheProgramIsToEnd) {
    world.writeLines(200);
    world.atYield(1, [&] { world.platform.pump.programEnds = true; });
    world.expand();
    EXPECT_EQ(world.platform.pump.yields, 1);
    EXPECT_EQ(childCount(0), 50);
    EXPECT_FALSE(world.globals.ExpansionBusy);
    EXPECT_EQ(world.globals.frmCancel, nullptr);
}

TEST_F(ExpandCheckpoints, AskTheHostAnewAfterOtherCodeRan) {
    std::string content;
    for (int i = 0; i < 120; ++i) content += errorLine("PROG", "PAYROLL", "Error", "E1", "m");
    world.writeErrors(content);
    world.atYield(1, [&] { world.host.objects[u"P1"]->set(u"DisplayName", u"Renamed"); });
    world.calls.restart();
    world.expand();
    EXPECT_EQ(world.calls.countOf("Repository.FindObject"), 3) << "once between two yields";
    EXPECT_EQ(world.calls.countOf("Workspace.TranslateReturnCode"), 3);
    EXPECT_EQ(world.child(50).cellText(4), u"Payroll program");
    EXPECT_EQ(world.child(51).cellText(4), u"Renamed");
}

TEST_F(ExpandCheckpoints, GoOnWithoutAStripThatTheSystemDoesNotMake) {
    world.writeLines(120);
    world.calls.insideCall = [&](const std::string& call) {
        if (call == "Form.create") throw tests::CallCounter::injectedError();
    };
    world.expand();
    world.calls.insideCall = nullptr;
    EXPECT_EQ(childCount(), 120);
    expectNothingLeft(world);
}

TEST_F(ExpandCheckpoints, RefuseToCollapseButLetTheSelectionMoveToTheEntry) {
    world.writeLines(60);
    world.atYield(1, [&] {
        CollapseSelectedEntry(world.globals, world.view(), 10);
        EXPECT_TRUE(world.list().isSelected(2));
    });
    world.expand();
    EXPECT_EQ(childCount(), 60);
}

/// Which window is frozen.
class ExpansionOwner : public tests::PlacedLog {
protected:
    ExpansionOwner() {
        world.globals.options.KeepInSession = true;
        window.window->set(u"Enabled", true).set(u"MousePointer", std::int16_t{0});
        world.platform.files.addFile(tests::kErrorsPath, "one");
    }
    core::LogViews::ListRef opened() {
        if (world.globals.LogViews.count() == 0) world.addControl();
        world.add({u"M1", 2, u"P1", u"opened", u"given.errors"});
        world.calls.restart();
        const auto list = world.globals.LogViews.first();
        ExpandEntry(world.globals, list, 1);
        return list;
    }
    Calls told() { return world.calls.journalOf({"Window.", "Form.enabled", "Form.pointer"}); }
};

TEST_F(ExpansionOwner, OfADockedLogIsTheWindowOfTheLastTool) {
    giveWindow();
    assumeParent();
    world.globals.options.DockedOption = true;
    opened();
    EXPECT_EQ(told(), (Calls{"Window.Enabled = False", "Window.MousePointer = 13", "Window.Enabled = True",
                             "Window.MousePointer = 0"}));
}

TEST_F(ExpansionOwner, OfADockedLogIsNoneWhenTheHostNamesNoWindow) {
    world.LogWorld::globals.LogWindowVisible = true;
    host::ShowLog(globals());
    ASSERT_TRUE(floats());
    assumeParent();
    world.globals.options.DockedOption = true;
    opened();
    EXPECT_EQ(told(), Calls()) << "the floating window is not taken instead";
}

TEST_F(ExpansionOwner, OfAFloatingLogIsItsWindow) {
    world.LogWorld::globals.LogWindowVisible = true;
    host::ShowLog(globals());
    ASSERT_TRUE(floats());
    opened();
    EXPECT_EQ(told(), (Calls{"Form.enabledChanged", "Form.pointerChanged", "Form.enabledChanged",
                             "Form.pointerChanged"}));
    EXPECT_TRUE(placement().frmLog->form()->enabled());
    EXPECT_EQ(placement().frmLog->form()->pointer(), widgets::Pointer::Default);
}

TEST_F(ExpansionOwner, OfAFloatingLogIsItsWindowAlsoWithTheOptionButNoContainer) {
    world.LogWorld::globals.LogWindowVisible = true;
    host::ShowLog(globals());
    giveWindow();
    world.globals.options.DockedOption = true;
    opened();
    EXPECT_EQ(told(), (Calls{"Form.enabledChanged", "Form.pointerChanged", "Form.enabledChanged",
                             "Form.pointerChanged"}));
}

TEST_F(ExpansionOwner, GetsItsBusyPointerAgainAfterEveryYield) {
    giveWindow();
    assumeParent();
    world.globals.options.DockedOption = true;
    std::string lines;
    for (int i = 0; i < 120; ++i) lines += "line\n";
    world.platform.files.addFile(tests::kErrorsPath, lines);
    int asked = 0;
    world.platform.pump.hasInput = [&] { return ++asked == 10; };
    opened();
    EXPECT_EQ(world.platform.pump.yields, 3);
    EXPECT_EQ(told(), (Calls{"Window.Enabled = False", "Window.MousePointer = 13", "Window.MousePointer = 13",
                             "Window.MousePointer = 13", "Window.MousePointer = 13", "Window.Enabled = True",
                             "Window.MousePointer = 0"}));
}

TEST_F(ExpansionOwner, IsGivenBackWhateverEndsTheExpansion) {
    giveWindow();
    assumeParent();
    world.globals.options.DockedOption = true;
    std::string lines;
    for (int i = 0; i < 120; ++i) lines += "line\n";
    const std::function<void()> ends[] = {
        [&] { forms().live.back()->userClicks(kCancelButton); },
        [&] { forms().live.back()->userCloses(); },
        [&] { world.platform.pump.programEnds = true; },
        [&] { world.close(); },
        [&] { world.controls.clear(); },
        [&] { world.host.workspace->raise(u"TranslateReturnCode", tests::CallCounter::injectedError()); },
    };
    for (const auto& end : ends) {
        world.platform.files.addFile(tests::kErrorsPath, lines);
        world.platform.pump.atYield = [&](int) { end(); };
        base::ignoring([&] { opened(); });
        world.platform.pump.atYield = nullptr;
        world.platform.pump.programEnds = false;
        world.host.workspace->heal(u"TranslateReturnCode");
        const Calls calls = told();
        ASSERT_GE(calls.size(), 2U);
        EXPECT_EQ(calls[calls.size() - 2], "Window.Enabled = True");
        EXPECT_EQ(calls.back(), "Window.MousePointer = 0");
        if (!globals().store.Workspace) {
            ASSERT_TRUE(world.open());
            world.globals.options.KeepInSession = true;
        }
        assumeParent();
        world.globals.options.DockedOption = true;
        view::ClearLists(globals());
    }
}

TEST_F(ExpansionOwner, OfALogThatDoesNotFloatIsNone) {
    opened();
    EXPECT_EQ(told(), Calls());
    EXPECT_FALSE(floats()) << "none is made";
}

TEST_F(ExpansionOwner, GetsItsInputBackAlsoWhenNothingIsRead) {
    giveWindow();
    assumeParent();
    world.globals.options.DockedOption = true;
    world.addControl();
    world.add({u"M1", 0, u"", u"no file", u""});
    world.calls.restart();
    ExpandEntry(world.globals, world.globals.LogViews.first(), 1);
    EXPECT_EQ(told(), (Calls{"Window.Enabled = True", "Window.MousePointer = 0"}));
}

TEST_F(ExpansionOwner, MayRefuseEverything) {
    giveWindow();
    assumeParent();
    world.globals.options.DockedOption = true;
    window.window->remove(u"Enabled").remove(u"MousePointer");
    EXPECT_EQ(opened()->rowCount(), 2);
}

} // namespace
} // namespace cvlog::details
