// What an Add leaves behind: the row, the record, the fields of each.

#include "core/adding.h"

#include "automation/error.h"
#include "core/results.h"
#include "tests/support/log_world.h"

#include <gtest/gtest.h>

namespace cvlog::core {
namespace {

using tests::FakeRecord;
using tests::LogWorld;
using tests::rowsOf;

class Adding : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(world.open());
        world.hideBoxes();
        world.addControl();
    }
    std::string onlyRow() {
        const auto rows = rowsOf(world.list());
        EXPECT_EQ(rows.size(), 1U);
        return rows.empty() ? std::string() : rows.front();
    }
    std::u16string cell(std::u16string_view key) {
        const widgets::RowContent& row = world.list().row(world.list().rowCount());
        return std::u16string(row.cellText(row.cellOf(key)));
    }
    std::u16string messageTag() {
        const widgets::RowContent& row = world.list().row(world.list().rowCount());
        return std::u16string(row.cellTag(row.cellOf(u"Message")));
    }
    std::u16string recorded(const std::u16string& column) {
        auto& records = world.engine.records();
        return records.empty() ? u"<no record>" : automation::toText(records.back().at(column));
    }
    LogWorld world;
};

TEST_F(Adding, ShowsEveryFieldOfAnEntry) {
    world.platform.files.addFile(u"C:\\Proj\\payroll.errors");
    world.startSeries();
    world.platform.clock.advance(5);
    world.add({u"M1", 1, u"P1", u" line\r\ntwo\t", u""});
    EXPECT_EQ(onlyRow(),
              "2024-01-02 09:05:12|P1|Suspect|Elapsed=00:00:05|Method=Compile|Type=Program|"
              "Name=PAYROLL{P1}[PROG]|Result=RC 1[Suspect]|Message=line  two{C:\\Proj\\payroll.errors}");
}

TEST(AddingWithAMissingIcon, ShowsTheRowWithoutItAndLosesNothing) {
    LogWorld world;
    world.platform.files.remove(u"C:\\Prod\\Repository\\Icons\\PROG.ico");
    ASSERT_TRUE(world.open());
    world.hideBoxes();
    world.addControl();
    world.add({u"", 0, u"P1", u"", u""});
    const widgets::ListView& list = world.list();
    ASSERT_TRUE(list.smallIcons());
    EXPECT_EQ(list.smallIcons()->indexOf(u"PROG"), -1);
    EXPECT_GE(list.smallIcons()->indexOf(u"good"), 0);
    EXPECT_EQ(list.rowCount(), 1);
    EXPECT_EQ(world.engine.records().size(), 1U);
}

TEST_F(Adding, ShowsDateResultAndIconsWhenAllElseIsEmpty) {
    world.add({u"", 0, u"", u"", u""});
    EXPECT_EQ(onlyRow(), "2024-01-02 09:05:07||Good|Elapsed=|Method=|Type=|Name=|Result=RC 0[Good]|Message=");
    EXPECT_EQ(recorded(u"LogMessage"), u"2024-01-02 09:05:07 ");
}

TEST_F(Adding, RecordsEveryColumn) {
    world.platform.files.addFile(u"C:\\Proj\\payroll.errors");
    world.add({u"M1", 1, u"P1", u" line\r\ntwo\t", u""});
    ASSERT_EQ(world.engine.records().size(), 1U);
    EXPECT_EQ(recorded(u"RecordNum"), u"1");
    EXPECT_EQ(recorded(u"MethodName"), u"Compile");
    EXPECT_EQ(recorded(u"ObjectName"), u"PAYROLL");
    EXPECT_EQ(recorded(u"ObjectType"), u"PROG");
    EXPECT_EQ(recorded(u"LogMessage"),
              u"2024-01-02 09:05:07 Compile applied to Payroll program (Program) - RC 1.  line\r\ntwo\t");
    EXPECT_EQ(recorded(u"ReturnMessage"), u"1");
    EXPECT_EQ(recorded(u"Errors"), u"payroll.errors");
}

struct MethodCase {
    const char16_t* id;
    const char16_t* name;
};

class MethodNames : public Adding, public testing::WithParamInterface<MethodCase> {};

TEST_P(MethodNames, FollowAnAliasOnce) {
    world.add({GetParam().id, 0, u"", u"", u""});
    EXPECT_EQ(cell(u"Method"), GetParam().name);
    EXPECT_EQ(recorded(u"MethodName"), GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(Ids, MethodNames,
                         testing::Values(MethodCase{u"M1", u"Compile"}, MethodCase{u"M2", u"Compile"},
                                         MethodCase{u"M3", u"Pong"}, MethodCase{u"M4", u"Ping"},
                                         MethodCase{u"unknown", u"unknown"}, MethodCase{u"", u""}));

TEST_F(Adding, AsksForNoMethodWithoutAnIdentifier) {
    world.calls.restart();
    world.add({u"", 0, u"", u"", u""});
    EXPECT_EQ(world.calls.countOf("Workspace.Methods"), 0);
}

TEST_F(Adding, ShowsTheIdentifierWhenTheAliasIsUnknown) {
    world.host.addMethod(u"M5", u"Display", u"gone");
    world.add({u"M5", 0, u"", u"", u""});
    EXPECT_EQ(cell(u"Method"), u"M5");
}

TEST_F(Adding, TakesAnyEmptyResultForAnUnknownMethod) {
    for (const automation::Value& empty : {automation::Value(), automation::Value(automation::Null{}),
                                           automation::Value(automation::ObjectRef())}) {
        world.host.methods->on(u"Item", [empty](std::span<automation::Value>) { return empty; });
        world.add({u"M1", 0, u"", u"", u""});
        EXPECT_EQ(cell(u"Method"), u"M1");
    }
}

TEST_F(Adding, PassesTheErrorsFileNameOnWhenThereIsNoObject) {
    world.add({u"", 0, u"", u"message", u"none.errors"});
    EXPECT_EQ(recorded(u"Errors"), u"none.errors");
    EXPECT_EQ(messageTag(), u"");
    EXPECT_EQ(world.calls.countOf("FileSystem.fileExists(C:\\Proj"), 0);
}

TEST_F(Adding, DropsAnErrorsFileThatDoesNotExistOrIsAFolder) {
    world.platform.files.addFolder(u"C:\\Proj\\folder");
    for (const char16_t* name : {u"none.errors", u"folder", u""}) {
        world.add({u"", 0, u"P1", u"message", name});
        EXPECT_EQ(recorded(u"Errors"), u"");
        EXPECT_EQ(messageTag(), u"");
    }
}

TEST_F(Adding, KeepsAGivenErrorsFileNameAndAsksForNoProperty) {
    world.platform.files.addFile(u"C:\\Proj\\given.txt");
    world.calls.restart();
    world.add({u"", 0, u"P1", u"message", u"given.txt"});
    EXPECT_EQ(recorded(u"Errors"), u"given.txt") << "the name alone";
    EXPECT_EQ(messageTag(), u"C:\\Proj\\given.txt") << "the whole path";
    EXPECT_EQ(world.calls.countOf("Object:P1.Property(Source)"), 0);
}

TEST_F(Adding, DerivesTheErrorsFileNameFromTheTypesKeyProperty) {
    world.platform.files.addFile(u"C:\\Proj\\.errors");
    world.host.types[u"PROG"]->set(u"KeyProperty", u"Nothing here");
    world.add({u"", 0, u"P1", u"message", u""});
    EXPECT_EQ(recorded(u"Errors"), u".errors") << "an empty property gives just the ending";
}

TEST_F(Adding, LeavesTheErrorsFileNameEmptyWhenItCannotBeDerived) {
    world.platform.files.addFile(u"C:\\Proj\\.errors");
    world.host.types[u"PROG"]->remove(u"KeyProperty");
    EXPECT_NO_THROW(world.add({u"", 0, u"P1", u"message", u""}));
    EXPECT_EQ(recorded(u"Errors"), u"");
    EXPECT_EQ(messageTag(), u"");
}

TEST_F(Adding, TagsTheMessageOnlyWhenThereIsOne) {
    world.platform.files.addFile(u"C:\\Proj\\payroll.errors");
    world.add({u"", 0, u"P1", u"", u""});
    EXPECT_EQ(messageTag(), u"") << "an entry without a message cannot be expanded";
    EXPECT_EQ(recorded(u"Errors"), u"payroll.errors");
    world.add({u"", 0, u"P1", u"\t\r\n", u""});
    EXPECT_EQ(cell(u"Message"), u"");
    EXPECT_EQ(messageTag(), u"C:\\Proj\\payroll.errors");
}

TEST_F(Adding, LogsAPartOfTheWholeAgainstTheProject) {
    world.platform.files.addFile(u"C:\\Proj\\batch.errors");
    world.add({u"M1", 0, u"G1", u"message", u""});
    EXPECT_EQ(onlyRow(),
              "2024-01-02 09:05:07|G1|Good|Elapsed=|Method=Compile|Type=Project type|Name=DEMO{PRJ}[PROJ]|"
              "Result=RC 0[Good]|Message=message{C:\\Proj\\batch.errors}")
        << "the tag and the errors file stay those of the reported object";
    EXPECT_EQ(recorded(u"ObjectName"), u"DEMO");
    EXPECT_EQ(recorded(u"ObjectType"), u"PROJ");
    EXPECT_EQ(recorded(u"LogMessage"),
              u"2024-01-02 09:05:07 Compile applied to Demo project (Project) - RC 0. message");
}

TEST_F(Adding, FindsThePartsOfTheWholeByFlagsAndTheProjectsWordingByTheTypesId) {
    world.host.types[u"PROG"]->set(u"ID", 2); // composite by its id, not by its flags
    world.add({u"", 0, u"P1", u"", u""});
    EXPECT_EQ(cell(u"Name"), u"PAYROLL");
    EXPECT_EQ(recorded(u"LogMessage"), u"2024-01-02 09:05:07 Payroll program (Project) ");
}

TEST_F(Adding, FillsElapsedOnlyInASeriesAndMeasuresFromTheEntryBefore) {
    world.platform.clock.advance(100);
    world.add({u"", 0, u"", u"", u""});
    EXPECT_EQ(cell(u"Elapsed"), u"");
    EXPECT_EQ(world.globals.LastEntryTime, world.platform.clock.time) << "also outside a series";
    world.startSeries();
    for (const auto& [seconds, text] :
         {std::pair{0, u"00:00:00"}, std::pair{5, u"00:00:05"}, std::pair{90000, u"01:00:00"},
          std::pair{86400, u"00:00:00"}, std::pair{-5, u"00:00:05"}}) {
        world.platform.clock.advance(seconds);
        world.add({u"", 0, u"", u"", u""});
        EXPECT_EQ(cell(u"Elapsed"), text) << seconds;
    }
}

TEST_F(Adding, ClearsEarlierRowsOnlyOutsideASeriesAndOnlyWhenRowsAreNotKept) {
    world.add({u"", 0, u"", u"1", u""});
    world.add({u"", 0, u"", u"2", u""});
    EXPECT_EQ(world.list().rowCount(), 1);
    world.globals.options.KeepInSession = true;
    world.add({u"", 0, u"", u"3", u""});
    EXPECT_EQ(world.list().rowCount(), 2);
    world.globals.options.KeepInSession = false;
    world.startSeries();
    EXPECT_EQ(world.list().rowCount(), 0);
    world.add({u"", 0, u"", u"4", u""});
    world.add({u"", 0, u"", u"5", u""});
    EXPECT_EQ(world.list().rowCount(), 2);
}

TEST_F(Adding, ScrollsToTheRowAndDeselectsInTheFirstListOnly) {
    world.globals.options.KeepInSession = true;
    widgets::ListView& second = world.addControl();
    for (int i = 0; i < 30; ++i) world.add({u"", 0, u"", u"x", u""});
    world.list().select(2, true);
    world.list().select(3, true);
    second.select(4, true);
    world.add({u"", 0, u"", u"new", u""});
    EXPECT_FALSE(world.list().isSelected(2)) << "the selected row";
    EXPECT_TRUE(world.list().isSelected(3)) << "and no other";
    EXPECT_TRUE(second.isSelected(4));
    EXPECT_FALSE(second.isSelected(31));
    EXPECT_EQ(platform::headless::peerOf(world.list()).scrolledTo().back(), 31);
    EXPECT_EQ(platform::headless::peerOf(second).scrolledTo().back(), 31);
}

TEST_F(Adding, FitsTheColumnsOfEveryList) {
    widgets::ListView& second = world.addControl();
    const base::Twips before = second.column(7).width;
    world.add({u"", 0, u"", u"a message much wider than the caption of its column is", u""});
    for (widgets::ListView* list : {&world.list(), &second}) {
        EXPECT_EQ(list->column(7).width, list->cellWidth(1, 7) + 180);
        EXPECT_GT(list->column(7).width, before);
    }
}

TEST_F(Adding, GivesListsTheirIconsAndSortedOnesTheirSortIcon) {
    world.globals.options.KeepInSession = true;
    world.list().setSorted(true);
    world.add({u"", 0, u"", u"", u""});
    EXPECT_NE(world.list().smallIcons(), nullptr);
    EXPECT_NE(world.list().headerIcons(), nullptr);
    EXPECT_EQ(world.list().column(1).icon, u"SortDown");
    world.list().setSort(2, widgets::SortOrder::Descending);
    world.add({u"", 0, u"", u"", u""});
    EXPECT_EQ(world.list().column(3).icon, u"SortUp");
}

TEST_F(Adding, ShowsAnUnknownEntityIconAsNone) {
    world.host.types[u"PROG"]->set(u"KeyName", u"never loaded");
    EXPECT_NO_THROW(world.add({u"", 0, u"P1", u"", u""}));
    EXPECT_EQ(world.list().smallIcons()->indexOf(
                  std::u16string(world.list().row(1).cellIcon(world.list().row(1).cellOf(u"Name")))),
              -1);
}

TEST_F(Adding, EndsAfterTheRecordWhenThereIsNoList) {
    world.removeControl(0);
    world.globals.LogWindowVisible = false;
    world.globals.LastEntryTime = {};
    world.startSeries();
    const base::LocalTime start = world.globals.LastEntryTime;
    world.platform.clock.advance(3);
    world.add({u"", -1, u"", u"", u""});
    EXPECT_EQ(world.engine.records().size(), 1U);
    EXPECT_EQ(world.globals.series.SeriesReturnCode, 0) << "the code is not merged";
    EXPECT_EQ(world.globals.LastEntryTime, start);
    world.globals.series = {};
    world.add({u"", -1, u"", u"", u""});
    EXPECT_TRUE(world.platform.messages.shown.empty()) << "and no outcome reported";
}

TEST_F(Adding, MergesTheCodeInASeriesAndReportsItsOwnOutside) {
    world.globals.LogWindowVisible = false;
    world.add({u"", 16, u"", u"", u""});
    ASSERT_EQ(world.platform.messages.shown.size(), 1U);
    EXPECT_TRUE(
        world.platform.messages.shown[0].text.starts_with(OutcomeMessage(resources::Language::English, 16)));
    EXPECT_EQ(world.list().row(1).smallIcon(), u"Cancel");
    world.globals.LogWindowVisible = false;
    world.startSeries();
    world.add({u"", 16, u"", u"", u""});
    EXPECT_EQ(world.platform.messages.shown.size(), 1U);
    EXPECT_EQ(world.list().row(1).smallIcon(), u"Cancel");
    world.finishSeries();
    EXPECT_EQ(world.platform.messages.shown.back().text, u"Method was applied successfully");
}

TEST_F(Adding, ReportsACancelOutsideASeriesThroughItsCode) {
    world.globals.LogWindowVisible = false;
    world.add({u"", -3, u"", u"", u""});
    EXPECT_TRUE(world.platform.messages.shown.at(0).text.starts_with(
        OutcomeMessage(resources::Language::English, -3)));
    EXPECT_FALSE(world.globals.series.SeriesCanceled);
}

TEST_F(Adding, WorksWithoutADatabase) {
    world.globals.store.LogRecordset.reset();
    const auto sink = std::make_shared<tests::RecordingSink>();
    world.log->events().advise(sink);
    world.add({u"M1", 0, u"P1", u"message", u""});
    EXPECT_EQ(world.list().rowCount(), 1);
    EXPECT_EQ(sink->ids, std::vector<std::int32_t>{1});
}

TEST_F(Adding, LeavesTheErrorsFileColumnEmptyWhenTheNameIsTooLong) {
    for (const std::size_t length : {254U, 255U}) {
        const std::u16string name(length, u'e');
        world.add({u"", 0, u"", u"message", name});
        EXPECT_EQ(world.engine.records().back().at(u"Errors").is<automation::Null>(), length > 254) << length;
    }
    EXPECT_EQ(world.engine.records().size(), 2U);
}

TEST_F(Adding, TakesAHugeMessage) {
    std::u16string message(1 << 20, u'\t');
    message[5] = u'\0';
    message.front() = message.back() = u'x';
    EXPECT_NO_THROW(world.add({u"", 0, u"", message, u""}));
    EXPECT_EQ(cell(u"Message").size(), message.size());
}

TEST_F(Adding, IsReachedByNameWithAnOptionalLastArgument) {
    world.log->invoke(u"Add", u"M1", 0, u"", u"message");
    world.log->invoke(u"add", u"M1", u"0", u"", u"message", u"name");
    EXPECT_EQ(world.engine.records().size(), 2U);
    EXPECT_EQ(recorded(u"Errors"), u"name");
    EXPECT_THROW(world.log->invoke(u"Add", u"M1", u"word", u"", u""), automation::AutomationError);
    EXPECT_EQ(world.engine.records().size(), 2U);
}

TEST(AddingWithoutAHost, ShowsARowWithTheOutcomeInASeries) {
    LogWorld world;
    world.addControl();
    const auto sink = std::make_shared<tests::RecordingSink>();
    world.log->events().advise(sink);
    world.startSeries();
    EXPECT_NO_THROW(world.add({u"", 2, u"", u"message", u""}));
    ASSERT_EQ(world.list().rowCount(), 1);
    EXPECT_EQ(world.list().row(1).cellText(5), u"Method was executed with errors");
    EXPECT_EQ(sink->ids, std::vector<std::int32_t>{1});
    EXPECT_TRUE(world.engine.records().empty());
}

} // namespace
} // namespace cvlog::core
