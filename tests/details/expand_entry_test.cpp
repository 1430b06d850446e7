// An entry is opened into its messages: what the lists hold afterwards, and what happens in which order.

#include "details/expand_entry.h"

#include "details/frm_cancel.h"
#include "tests/support/expansion_world.h"
#include "tests/support/failure_code.h"

#include <gtest/gtest.h>

namespace cvlog::details {
namespace {

using tests::errorLine;
using tests::ExpansionWorld;
using tests::expectNothingLeft;
using Calls = std::vector<std::string>;
using Texts = std::vector<std::string>;

class ExpandEntryTest : public testing::Test {
protected:
    ~ExpandEntryTest() override {
        world.calls.disarm();
        expectNothingLeft(world);
    }
    platform::headless::HeadlessListViewPeer& peer(std::size_t index = 0) {
        return platform::headless::peerOf(world.list(index));
    }
    ExpansionWorld world{3};
    widgets::ListView& list{world.list()};
};

TEST_F(ExpandEntryTest, PutsItsMessagesBelowItInEveryListInTheFilesOrder) {
    world.writeErrors("one\r\n\r\n   \r\ntwo\nthree");
    world.expand();
    for (const std::size_t index : {0U, 1U, 2U}) {
        EXPECT_EQ(world.messages(index), (Texts{"one", "two", "three"}));
        EXPECT_EQ(world.list(index).rowCount(), 6);
        EXPECT_EQ(world.list(index).row(6).cellText(6), u"after");
    }
    for (int n = 1; n <= 3; ++n) {
        EXPECT_EQ(world.child(n).cellTag(1), u"P1");
        EXPECT_EQ(world.child(n).cellTag(2), base::decimal(n)) << "blank lines do not count";
        EXPECT_EQ(world.child(n, 1).cellTag(6), tests::kErrorsPath);
        EXPECT_EQ(list.rowKey(ExpansionWorld::kEntry + n), u"");
    }
}

TEST_F(ExpandEntryTest, WorksOnTheLastRowOfTheList) {
    world.add({u"M1", 2, u"P1", u"last", u"given.errors"});
    world.writeErrors("one");
    list.selectAll(false);
    list.select(4, true);
    ExpandSelectedEntry(world.globals, world.view());
    EXPECT_EQ(list.rowCount(), 5);
    EXPECT_EQ(list.row(5).cellText(6), u"one");
}

TEST_F(ExpandEntryTest, InASecondListFillsAllOfThem) {
    world.writeErrors("one\ntwo");
    world.expand(1);
    for (const std::size_t index : {0U, 1U, 2U}) EXPECT_EQ(world.messages(index), (Texts{"one", "two"}));
    EXPECT_EQ(peer(1).told("takeFocus"), 1);
    EXPECT_EQ(peer(0).told("takeFocus"), 0);
}

TEST_F(ExpandEntryTest, ThatIsOpenIsNotOpenedAgain) {
    world.writeErrors("one");
    world.expand();
    world.expand();
    EXPECT_EQ(world.messages(), Texts{"one"});
}

TEST_F(ExpandEntryTest, LeavesOutHiddenLinesAndSaysSoOnce) {
    world.globals.options.ErrorsListFilter = {{u'W', true}};
    world.writeErrors(
        errorLine("", "", "Error", "E1", "one") + errorLine("", "", "Warning", "W1", "not shown") +
        errorLine("", "", "Error", "E2", "two") + errorLine("", "", "Warning", "W2", "not shown"));
    world.expand();
    for (const std::size_t index : {0U, 1U, 2U})
        EXPECT_EQ(world.messages(index), (Texts{"one", "two", tests::kHiddenRecords}));
    EXPECT_EQ(world.child(2).cellTag(2), u"2") << "hidden lines do not count";
    EXPECT_EQ(tests::rowText(world.child(3)),
              std::string("|expansion||ObjID=|Num=|Type=|Name=|Result=|Message=") + tests::kHiddenRecords);
}

TEST_F(ExpandEntryTest, OfHiddenLinesAloneHasOneRowThatSaysSo) {
    world.globals.options.ErrorsListFilter = {{u'W', true}};
    world.writeErrors(errorLine("", "", "Warning", "W1", "a") + errorLine("", "", "Warning", "W2", "b"));
    world.expand();
    EXPECT_EQ(world.messages(), Texts{tests::kHiddenRecords});
}

TEST_F(ExpandEntryTest, SwitchesSortingOffInEveryListAndLeavesTheHeaderIcons) {
    for (const std::size_t index : {0U, 1U, 2U}) {
        world.list(index).setSorted(true);
        world.list(index).setColumnIcon(1, u"SortDown");
    }
    world.writeErrors("   \n\n");
    world.expand();
    for (const std::size_t index : {0U, 1U, 2U}) {
        EXPECT_FALSE(world.list(index).sorted());
        EXPECT_EQ(world.list(index).column(1).icon, u"SortDown");
        EXPECT_EQ(world.list(index).rowCount(), 3) << "blank lines are no rows, hidden or not";
    }
    world.add({u"M1", 0, u"", u"new", u""});
    EXPECT_EQ(list.row(4).cellText(6), u"new");
}

TEST_F(ExpandEntryTest, WithoutAFileOpensNothingButRefreshesAndTakesTheFocus) {
    list.setSorted(true);
    list.select(1, true);
    world.calls.restart();
    ExpandEntry(world.globals, world.view(), 1);
    EXPECT_EQ(world.calls.countOf("FileSystem."), 0);
    EXPECT_EQ(world.calls.countOf("FileReader."), 0);
    EXPECT_EQ(peer().told("takeFocus"), 1);
    EXPECT_TRUE(list.sorted());
}

TEST_F(ExpandEntryTest, WhoseFileHasGoneLosesItsReferenceInThisListAlone) {
    world.platform.files.remove(tests::kErrorsPath);
    world.expand();
    EXPECT_EQ(list.rowCount(), 3);
    EXPECT_EQ(list.row(2).cellTag(6), u"");
    EXPECT_EQ(world.list(1).row(2).cellTag(6), tests::kErrorsPath);
    EXPECT_EQ(peer().told("takeFocus"), 1);
    world.calls.restart();
    world.expand();
    EXPECT_EQ(world.calls.countOf("FileSystem.fileExists"), 0);
    world.expand(1);
    EXPECT_EQ(world.list(1).row(2).cellTag(6), u"") << "each list clears its own";
}

TEST_F(ExpandEntryTest, WhoseFileIsLockedKeepsItsReferenceAndTheSorting) {
    world.platform.files.lock(tests::kErrorsPath);
    list.setSorted(true);
    world.expand();
    EXPECT_EQ(list.rowCount(), 3);
    EXPECT_EQ(list.row(2).cellTag(6), tests::kErrorsPath);
    EXPECT_TRUE(list.sorted());
    EXPECT_EQ(peer().told("takeFocus"), 1);
}

TEST_F(ExpandEntryTest, ShowsItsLastRowAndThenItselfAtTheEnd) {
    world.writeLines(3);
    const std::size_t before = peer().scrolledTo().size();
    world.expand();
    EXPECT_EQ(std::vector<int>(peer().scrolledTo().begin() + static_cast<std::ptrdiff_t>(before),
                               peer().scrolledTo().end()),
              (std::vector<int>{5, 2}));
    EXPECT_EQ(peer(1).scrolledTo().back(), 3) << "the other lists stay where they are";
}

TEST_F(ExpandEntryTest, FitsTheColumnsOfEveryListToTheNewRows) {
    world.writeErrors("short\n" + std::string(300, 'W') + "\nshort");
    world.expand();
    const float width = list.column(7).width;
    EXPECT_GE(width, list.cellWidth(4, 7));
    EXPECT_EQ(world.list(1).column(7).width, width);
    EXPECT_EQ(world.list(2).column(7).width, width);
}

TEST_F(ExpandEntryTest, FitsTheColumnsOfItsOwnListAtTheEndHoweverManyListsThereAre) {
    list.setColumnWidth(4, 300);
    world.list(1).setColumnWidth(4, 300);
    ExpandEntry(world.globals, world.view(), 1);
    EXPECT_GT(list.column(4).width, 300);
    EXPECT_EQ(world.list(1).column(4).width, 300) << "the other lists get no look of their own";
}

TEST_F(ExpandEntryTest, AsksWhetherInputWaitsAfterEveryLineAndLetsOtherCodeRunOnlyThen) {
    world.globals.options.ErrorsListFilter = {{u'W', true}};
    world.writeErrors("one\n\n" + errorLine("", "", "", "W1", "") + "two");
    world.expand();
    EXPECT_EQ(world.calls.countOf("MessagePump.inputWaiting"), 4);
    EXPECT_EQ(world.platform.pump.yields, 0);
}

TEST_F(ExpandEntryTest, IsBusyWhileOtherCodeRunsAndNotAfterwards) {
    world.writeErrors("one\ntwo");
    world.platform.pump.hasInput = [] { return true; };
    bool busy = true;
    world.platform.pump.atYield = [&](int) { busy = busy && world.globals.ExpansionBusy; };
    world.expand();
    EXPECT_EQ(world.platform.pump.yields, 2);
    EXPECT_TRUE(busy);
}

TEST_F(ExpandEntryTest, ShowsWhatItHasWhenOtherCodeRuns) {
    world.writeErrors("one\ntwo\nthree");
    world.platform.pump.hasInput = [&] { return world.calls.countOf("MessagePump.inputWaiting") == 2; };
    world.atYield(1, [&] {
        EXPECT_EQ(world.messages(0), (Texts{"one", "two"}));
        EXPECT_EQ(world.messages(1), (Texts{"one", "two"}));
    });
    world.expand();
    EXPECT_EQ(world.platform.pump.yields, 1);
    EXPECT_EQ(world.messages(), (Texts{"one", "two", "three"}));
}

TEST_F(ExpandEntryTest, ReadsNoCancelWishWhereNoStripIsShown) {
    world.writeErrors("one\ntwo");
    world.platform.pump.hasInput = [] { return true; };
    world.atYield(1, [&] {
        EXPECT_EQ(world.globals.frmCancel, nullptr);
        EXPECT_TRUE(world.forms().live.empty());
    });
    world.expand();
    EXPECT_EQ(world.messages(), (Texts{"one", "two"}));
}

TEST_F(ExpandEntryTest, EndsWithTheHostThatHasNoTextForACodeAndKeepsTheRowsSoFar) {
    world.writeErrors(errorLine("", "", "", "E1", "one") + errorLine("", "", "", "E2", "two") +
                      errorLine("", "", "", "E3", "three"));
    world.host.workspace->on(u"TranslateReturnCode", [](std::span<automation::Value> arguments) {
        if (automation::toText(arguments[0]) == u"E3")
            throw automation::AutomationError(automation::code::kOverflow, u"no text");
        return automation::Value(u"text");
    });
    EXPECT_EQ(tests::failureCode([&] { world.expand(); }), automation::code::kOverflow);
    EXPECT_EQ(world.messages(0), (Texts{"one", "two"}));
    EXPECT_EQ(world.messages(2), (Texts{"one", "two"}));
    EXPECT_EQ(peer().told("takeFocus"), 0);
}

TEST_F(ExpandEntryTest, ReleasesTheFileSoThatItCanBeDeletedRightAfter) {
    world.writeErrors("one");
    world.expand();
    EXPECT_EQ(world.platform.files.openFiles(), 0);
}

TEST_F(ExpandEntryTest, SkipsAListThatNeverGotTheEntry) {
    world.list(2).remove(2);
    world.writeErrors("one");
    world.expand();
    EXPECT_EQ(world.messages(1), Texts{"one"});
    EXPECT_EQ(world.list(2).rowCount(), 2);
    world.removeControl(2);
}

TEST_F(ExpandEntryTest, ReadsWhateverBytesTheFileHolds) {
    std::string every;
    for (int round = 0; round < 3; ++round)
        for (int byte = 0; byte < 256; ++byte) every += static_cast<char>(byte);
    for (const std::string& content :
         {std::string(), std::string("\xFF\xFE\"\0a\0\n\0", 8), every, std::string(200'000, '"'),
          std::string(300'000, 'x'), std::string(5'000, '\0')}) {
        world.writeErrors(content);
        EXPECT_NO_THROW(world.expand());
        expectNothingLeft(world);
        CollapseEntry(world.globals, world.view(), kAllEntries);
    }
}

TEST_F(ExpandEntryTest, DoesNotOpenWhileSomethingElseIsBusy) {
    world.writeErrors("one");
    world.globals.ExpansionBusy = true;
    world.expand();
    EXPECT_EQ(list.rowCount(), 3);
    EXPECT_EQ(peer().told("takeFocus"), 0);
    world.globals.ExpansionBusy = false;
}

} // namespace
} // namespace cvlog::details
