#include "view/row_commands.h"

#include "base/text.h"
#include "tests/support/failure_code.h"
#include "tests/support/opened_log.h"
#include "view/log_columns.h"
#include "view/sorting.h"

#include <gtest/gtest.h>

namespace cvlog::view {
namespace {

using platform::headless::peerOf;
using tests::LogWorld;
using tests::Names;
using tests::namesOf;

using Calls = std::vector<std::string>;

class RowCommands : public testing::Test {
protected:
    RowCommands() : owner(tests::keepingWorld(2)), world(*owner) {
        tests::addEntries(world, {"1", "2", "3", "4", "5"});
        world.calls.restart();
    }
    ~RowCommands() override { tests::expectSound(world); }

    core::LogViews::ListRef view(std::size_t index = 0) { return world.globals.LogViews.all().at(index); }
    Names names() { return namesOf(world.list()); }
    Calls pointers() { return world.calls.journalOf({"Workspace.SetMainWindowCursor"}); }
    void select(std::initializer_list<const char*> rows) {
        tests::selectRows(world.list(), rows);
        world.calls.restart();
    }
    void remove() { DeleteRows(world.globals, view()); }
    std::u16string copy(std::size_t list = 0) {
        CopyRows(world.globals, view(list));
        return world.platform.clipboard.text.value_or(u"nothing was put there");
    }
    static std::u16string lineOf(const widgets::RowContent& row) {
        std::u16string line(row.text());
        for (int cell = 1; cell <= 6; ++cell) line += u"\t" + std::u16string(row.cellText(cell));
        return line + u"\r\n";
    }

    std::unique_ptr<LogWorld> owner;
    LogWorld& world;
};

using CopyRecords = RowCommands;

TEST_F(CopyRecords, WritesALineOfSevenFieldsForEachSelectedRow) {
    world.list().replace(2, widgets::makeRow({u"date",
                                              u"tag",
                                              u"Good",
                                              {{u"Elapsed", u"elapsed", u"tag", u"Good", u"tip"},
                                               {u"Method", u"method", {}, {}, {}},
                                               {u"Type", u"type", {}, {}, {}},
                                               {u"Name", u"name", u"P1", u"PROG", {}},
                                               {u"Result", u"result", {}, {}, {}},
                                               {u"Message", u"message", u"C:\\errors", {}, {}}}}));
    world.list().select(2, true);
    EXPECT_EQ(copy(), u"date\telapsed\tmethod\ttype\tname\tresult\tmessage\r\n") << "and no tags, no header";
    world.list().replace(2, world.list(1).content(2));
}

TEST_F(CopyRecords, GoesByTheListsOrderNotByThatOfSelecting) {
    select({"5", "1", "3"});
    const widgets::ListView& list = world.list();
    EXPECT_EQ(copy(), lineOf(list.row(1)) + lineOf(list.row(3)) + lineOf(list.row(5)));
    SortByColumn(world.globals, view(), 7);
    SortByColumn(world.globals, view(), 7);
    ASSERT_EQ(names(), (Names{"5", "4", "3", "2", "1"}));
    EXPECT_EQ(copy(), lineOf(list.row(1)) + lineOf(list.row(3)) + lineOf(list.row(5))) << "as it is sorted";
}

TEST_F(CopyRecords, WritesHiddenColumnsAndKeepsTheirOrderWhateverTheScreenShows) {
    select({"2"});
    const std::u16string before = copy();
    ShowColumn(world.globals, u"Method", false);
    ShowColumn(world.globals, u"Date", false);
    world.list().setColumnPosition(7, 1);
    EXPECT_EQ(copy(), before);
}

TEST_F(CopyRecords, BeginsTheLineOfAChildRowWithAnEmptyField) {
    tests::openEntry(world, 2, 2);
    select({"+2.1"});
    EXPECT_EQ(copy(), u"\t\t\t\t\t\t2.1\r\n");
}

TEST_F(CopyRecords, TakesNoChildRowsAlongWithTheirEntry) {
    tests::openEntry(world, 2, 2);
    select({"2"});
    EXPECT_EQ(copy(), lineOf(world.list().row(2)));
}

TEST_F(CopyRecords, FillsTheFieldsThatARowLacks) {
    for (const std::size_t list : {0U, 1U}) world.list(list).clear();
    world.list().append(widgets::makeRow({u"short", {}, {}, {{u"Elapsed", u"one", {}, {}, {}}}}), true);
    EXPECT_EQ(copy(), u"short\tone\t\t\t\t\t\r\n");
    world.list().clear();
}

TEST_F(CopyRecords, CopiesLongTextsWhole) {
    const std::u16string longText(5000, u'\uC11C');
    world.add({u"M1", 0, u"", longText, u""});
    world.list().select(6, true);
    EXPECT_NE(copy().find(u"\t" + longText + u"\r\n"), std::u16string::npos);
}

TEST_F(CopyRecords, ReadsTheSelectionOfTheActingListOnly) {
    select({"1"});
    world.list(1).select(4, true);
    EXPECT_EQ(copy(0), lineOf(world.list().row(1)));
    EXPECT_EQ(copy(1), lineOf(world.list().row(4)));
}

TEST_F(CopyRecords, PutsAnEmptyTextWhenNothingIsSelected) {
    EXPECT_EQ(copy(), u"");
    EXPECT_EQ(world.calls.countOf("Clipboard.setText"), 1);
}

TEST_F(CopyRecords, ShowsTheHourglassMeanwhileAndThenThePointerOfBefore) {
    world.host.cursor = 42;
    select({"1"});
    copy();
    EXPECT_EQ(world.calls.journal(), (Calls{"Workspace.SetMainWindowCursor(11)", "Clipboard.setText",
                                            "Workspace.SetMainWindowCursor(42)"}));
}

TEST_F(CopyRecords, PutsThePointerBackWhenTheClipboardIsRefused) {
    select({"1"});
    world.calls.arm(2, tests::CallCounter::Fail::Once);
    EXPECT_EQ(tests::failureCode([&] { CopyRows(world.globals, view()); }),
              tests::CallCounter::injectedError().code());
    EXPECT_TRUE(world.calls.hasFailed("Clipboard.setText"));
    EXPECT_EQ(pointers(), (Calls{"Workspace.SetMainWindowCursor(11)", "Workspace.SetMainWindowCursor(0)"}));
}

TEST_F(CopyRecords, EndsWithTheHostsErrorBeforeItCopiedAnything) {
    select({"1"});
    world.host.workspace->raise(u"SetMainWindowCursor", tests::CallCounter::injectedError());
    EXPECT_EQ(tests::failureCode([&] { CopyRows(world.globals, view()); }),
              tests::CallCounter::injectedError().code());
    EXPECT_FALSE(world.platform.clipboard.text);
    EXPECT_EQ(pointers().size(), 1U);
}

TEST_F(CopyRecords, IgnoresAHostThatRefusesThePointerAtTheEnd) {
    select({"1"});
    world.calls.arm(3, tests::CallCounter::Fail::Once);
    EXPECT_NO_THROW(copy());
    EXPECT_TRUE(world.calls.hasFailed("Workspace.SetMainWindowCursor(0)"));
}

TEST_F(CopyRecords, CopiesWhileAnExpansionIsBusy) {
    select({"1"});
    world.globals.ExpansionBusy = true;
    EXPECT_EQ(copy(), lineOf(world.list().row(1)));
    world.globals.ExpansionBusy = false;
}

TEST_F(CopyRecords, NeedsAnOpenLog) {
    world.close();
    EXPECT_EQ(tests::failureCode([&] { CopyRows(world.globals, view()); }),
              automation::code::kObjectRequired);
}

using DeleteRecords = RowCommands;

TEST_F(DeleteRecords, RemovesTheSelectedRowsFromEveryListAndNoOther) {
    select({"2", "4"});
    remove();
    for (const std::size_t list : {0U, 1U}) EXPECT_EQ(namesOf(world.list(list)), (Names{"1", "3", "5"}));
    EXPECT_EQ(world.engine.records().size(), 5U) << "the log keeps its records";
    EXPECT_EQ(world.list().selectedCount(), 0);
}

struct Deletion {
    const char* name;
    std::vector<const char*> selected; // entry 2 has two child rows, entry 4 one, entry 5 one
    Names left;
};

void PrintTo(const Deletion& deletion, std::ostream* out) { *out << deletion.name; }

class DeleteRecordsOfAnOpenLog : public RowCommands, public testing::WithParamInterface<Deletion> {};

TEST_P(DeleteRecordsOfAnOpenLog, LeavesTheseRows) {
    tests::openEntry(world, 5, 1);
    tests::openEntry(world, 4, 1);
    tests::openEntry(world, 2, 2);
    ASSERT_EQ(names(), (Names{"1", "2", "+2.1", "+2.2", "3", "4", "+4.1", "5", "+5.1"}));
    for (const char* row : GetParam().selected) select({row});
    remove();
    for (const std::size_t list : {0U, 1U}) EXPECT_EQ(namesOf(world.list(list)), GetParam().left);
}

INSTANTIATE_TEST_SUITE_P(
    Selections, DeleteRecordsOfAnOpenLog,
    testing::Values(
        Deletion{"None", {}, {"1", "2", "+2.1", "+2.2", "3", "4", "+4.1", "5", "+5.1"}},
        Deletion{"OpenEntry", {"2"}, {"1", "3", "4", "+4.1", "5", "+5.1"}},
        Deletion{"LastEntry", {"5"}, {"1", "2", "+2.1", "+2.2", "3", "4", "+4.1"}},
        Deletion{"NeighbouringOpenEntries", {"4", "5"}, {"1", "2", "+2.1", "+2.2", "3"}},
        Deletion{"AllEntries", {"1", "2", "3", "4", "5"}, {}},
        Deletion{"ChildAlone", {"+2.1"}, {"1", "2", "+2.2", "3", "4", "+4.1", "5", "+5.1"}},
        Deletion{"LastChild", {"+5.1"}, {"1", "2", "+2.1", "+2.2", "3", "4", "+4.1", "5"}},
        Deletion{"AllChildrenOfOne", {"+2.1", "+2.2"}, {"1", "2", "3", "4", "+4.1", "5", "+5.1"}},
        Deletion{"EntryAndSomeOfItsChildren", {"2", "+2.2"}, {"1", "3", "4", "+4.1", "5", "+5.1"}},
        Deletion{"EntryAndAllItsChildren", {"2", "+2.1", "+2.2"}, {"1", "3", "4", "+4.1", "5", "+5.1"}},
        Deletion{"EntryAndChildOfAnother", {"2", "+4.1"}, {"1", "3", "4", "5", "+5.1"}},
        Deletion{"ClosedEntryAboveAnOpenOne", {"1", "3"}, {"2", "+2.1", "+2.2", "4", "+4.1", "5", "+5.1"}},
        Deletion{"Everything", {"1", "2", "+2.1", "+2.2", "3", "4", "+4.1", "5", "+5.1"}, {}}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST_F(DeleteRecords, ClosesOpenEntriesFromTheLastOneUpAndThenRestoresThePointer) {
    tests::openEntry(world, 4, 1);
    tests::openEntry(world, 2, 1);
    world.host.cursor = 7;
    select({"1", "2", "4", "5"});
    std::vector<Names> seen;
    world.host.workspace->before(u"SetMainWindowCursor", [&] { seen.push_back(namesOf(world.list(1))); });
    remove();
    EXPECT_EQ(pointers(), (Calls{"Workspace.SetMainWindowCursor(11)", "Workspace.SetMainWindowCursor(11)",
                                 "Workspace.SetMainWindowCursor(0)", "Workspace.SetMainWindowCursor(11)",
                                 "Workspace.SetMainWindowCursor(0)", "Workspace.SetMainWindowCursor(7)"}));
    EXPECT_EQ(seen, (std::vector<Names>{{"1", "2", "+2.1", "3", "4", "+4.1", "5"},
                                        {"1", "2", "+2.1", "3", "4", "+4.1"},
                                        {"1", "2", "+2.1", "3", "4"},
                                        {"1", "2", "+2.1", "3"},
                                        {"1", "2", "3"},
                                        {"3"}}));
}

TEST_F(DeleteRecords, HoldsNoListBackWhileTheHostIsAsked) {
    tests::openEntry(world, 4, 1);
    tests::openEntry(world, 2, 1);
    select({"1", "2", "3", "4"});
    std::vector<int> open;
    world.host.workspace->before(u"SetMainWindowCursor", [&] {
        for (const std::size_t list : {0U, 1U})
            open.push_back(peerOf(world.list(list)).told("batchBegan") -
                           peerOf(world.list(list)).told("batchEnded"));
    });
    remove();
    EXPECT_EQ(open, std::vector<int>(12, 0)) << "six calls, two lists";
}

TEST_F(DeleteRecords, GoesByTheSelectionOfTheActingList) {
    select({"1"});
    world.list(1).select(5, true);
    DeleteRows(world.globals, view(1));
    EXPECT_EQ(names(), (Names{"1", "2", "3", "4"}));
    EXPECT_TRUE(world.list().isSelected(1));
}

TEST_F(DeleteRecords, RemovesNothingWhenNothingIsSelected) {
    remove();
    EXPECT_EQ(names().size(), 5U);
    EXPECT_EQ(pointers(), (Calls{"Workspace.SetMainWindowCursor(11)", "Workspace.SetMainWindowCursor(0)"}));
}

TEST_F(DeleteRecords, EndsWithTheHostsErrorBeforeItRemovedAnything) {
    select({"1", "2"});
    world.host.workspace->raise(u"SetMainWindowCursor", tests::CallCounter::injectedError());
    EXPECT_EQ(tests::failureCode([&] { remove(); }), tests::CallCounter::injectedError().code());
    EXPECT_EQ(names().size(), 5U);
    EXPECT_EQ(pointers().size(), 1U);
}

TEST_F(DeleteRecords, IsRefusedWithoutATraceWhileAnExpansionIsBusySoThatNoChildRowIsLeftBehind) {
    tests::openEntry(world, 2, 1);
    select({"2", "3"});
    world.globals.ExpansionBusy = true;
    remove();
    world.globals.ExpansionBusy = false;
    EXPECT_EQ(names(), (Names{"1", "2", "+2.1", "3", "4", "5"}));
    EXPECT_EQ(pointers(), Calls());
}

TEST_F(DeleteRecords, KeepsListsSorted) {
    SortByColumn(world.globals, view(), 1);
    SortByColumn(world.globals, view(), 7);
    ASSERT_EQ(names(), (Names{"5", "4", "3", "2", "1"}));
    select({"4", "1"});
    remove();
    EXPECT_EQ(names(), (Names{"5", "3", "2"}));
    tests::addEntry(world, "31");
    EXPECT_EQ(names(), (Names{"5", "31", "3", "2"}));
}

TEST_F(DeleteRecords, TakesFromAListThatLacksRowsOnlyTheSelectedOnes) {
    world.list(1).remove(2);
    world.list(1).remove(3);
    ASSERT_EQ(namesOf(world.list(1)), (Names{"1", "3", "5"}));
    select({"2", "3", "4"});
    remove();
    EXPECT_EQ(names(), (Names{"1", "5"}));
    EXPECT_EQ(namesOf(world.list(1)), (Names{"1", "5"}));
}

TEST_F(DeleteRecords, RemovesTheSameRowsFromAListThatItsHostSortedOtherwise) {
    world.list(1).setSort(6, widgets::SortOrder::Descending);
    world.list(1).setSorted(true);
    select({"1", "2"});
    remove();
    EXPECT_EQ(names(), (Names{"3", "4", "5"}));
    EXPECT_EQ(namesOf(world.list(1)), (Names{"5", "4", "3"}));
    world.list(1).setSort(6, widgets::SortOrder::Ascending);
}

} // namespace
} // namespace cvlog::view
