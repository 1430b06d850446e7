#include "store/history_loading.h"

#include "core/results.h"
#include "tests/store/history_world.h"
#include "tests/support/failure_code.h"

#include <algorithm>
#include <limits>

namespace cvlog::store {
namespace {

using automation::Null;
using automation::Value;
using testbed::addRecord;
using testbed::rowNames;

/// An open log and the list of a history, without its window.
class HistoryList {
public:
    HistoryList() {
        EXPECT_TRUE(world.open());
        list.setColumns({widgets::Column{u"Message", u"Message", 1440, 1, {}}});
        list.attach(world.platform.peers.makeListView(list));
        world.calls.restart();
    }
    void load(std::int32_t sessionStart) { LoadHistory(world.globals, list, progress, sessionStart); }
    void remove(std::int32_t number) {
        std::erase_if(world.engine.records(), [number](const tests::FakeRecord& record) {
            return automation::toInt32(record.at(u"RecordNum")) == number;
        });
    }
    std::string names() const { return rowNames(list); }
    base::Twips textWidth(int row) const { return list.textWidth(list.row(row).text()); }
    platform::headless::HeadlessListViewPeer& peer() { return platform::headless::peerOf(list); }

    tests::LogWorld world;
    widgets::ListView list{world.platform.collator, world.platform.measurer};
    HistoryProgress progress;
};

struct LoadCase {
    const char* name;
    std::vector<std::int32_t> records;
    std::int32_t sessionStart;
    const char* rows;
    std::int32_t removed = 0;     // after it was counted
    std::int32_t unreadable = 0;  // its LogMessage is null
    std::int32_t lastLoaded = -1; // the number of the last record
};

const LoadCase kLoads[] = {
    {"AnEmptyTable", {}, 0, "S"},
    {"AnEmptiedTable", {}, 5, "S"},
    {"AnEmptiedTableOfNegativeNumbers", {}, -5, "S"},
    {"NoRecordOfThisSession", {1, 2, 3}, 3, "1 2 3 S"},
    {"BothSessions", {1, 2, 3, 4}, 3, "1 2 3 S 4"},
    {"EarlierRecordsDeleted", {4, 5}, 3, "S 4 5"},
    {"ThisSessionAlone", {5}, 0, "S 5"},
    {"TheLastEarlierRecordDeleted", {1, 2, 3}, 3, "1 2 S", 3},
    {"RecordsInNoOrder", {4, 1, 3}, 3, "1 3 S 4"},
    {"TheLargestNumber", {1, 2147483647}, 2147483646, "1 S 2147483647"},
    {"AnUnreadableEarlierRecord", {1, 2, 3}, 3, "1", 0, 2, 0},
    {"AnUnreadableFirstRecordOfThisSession", {1, 2, 3}, 1, "1 S", 0, 2, 0},
    {"AnUnreadableRecordOfThisSession", {1, 2, 3}, 0, "S 1", 0, 2, 0},
};

class HistoryLoads : public ::testing::TestWithParam<LoadCase> {};

TEST_P(HistoryLoads, ShowsTheRecordsWithTheSeparatorInItsPlace) {
    HistoryList history;
    for (const std::int32_t number : GetParam().records) addRecord(history.world, number);
    if (GetParam().removed != 0) history.remove(GetParam().removed);
    for (tests::FakeRecord& record : history.world.engine.records())
        if (automation::toInt32(record.at(u"RecordNum")) == GetParam().unreadable)
            record[u"LogMessage"] = Null{};
    history.load(GetParam().sessionStart);
    EXPECT_EQ(history.names(), GetParam().rows);
    const std::string rows = GetParam().rows;
    EXPECT_EQ(history.progress.SeparatorPending, rows.find('S') == std::string::npos);
    std::int32_t last = GetParam().lastLoaded;
    if (last < 0) {
        last = 0;
        for (const tests::FakeRecord& record : history.world.engine.records())
            last = std::max(last, automation::toInt32(record.at(u"RecordNum")));
    }
    EXPECT_EQ(history.progress.LastLoaded, last);
    EXPECT_EQ(history.world.engine.openRecordsets, 1) << "the query is closed; the log's own cursor stays";
    EXPECT_TRUE(history.world.platform.messages.shown.empty());
}

INSTANTIATE_TEST_SUITE_P(Loads, HistoryLoads, ::testing::ValuesIn(kLoads),
                         [](const auto& instance) { return std::string(instance.param.name); });

TEST(HistoryLoading, AsksForTheRecordsAfterTheLastOneOnly) {
    HistoryList history;
    addRecord(history.world, 7);
    history.load(0);
    EXPECT_EQ(history.world.calls.countOf(
                  "Database.openSnapshot(select * from LogInfo where RecordNum > 0 order by RecordNum)"),
              1);
    history.load(0);
    EXPECT_EQ(history.world.calls.countOf(
                  "Database.openSnapshot(select * from LogInfo where RecordNum > 7 order by RecordNum)"),
              1);
    EXPECT_EQ(history.names(), "S 7") << "nothing is new";
    addRecord(history.world, 9);
    history.load(0);
    EXPECT_EQ(history.names(), "S 7 9");
}

TEST(HistoryLoading, MakesARowOfEachRecord) {
    HistoryList history;
    addRecord(history.world, 1, 7)[u"LogMessage"] = u"  a\r\nlong\ttext\n ";
    addRecord(history.world, 2, -3);
    for (const char16_t* column : {u"ObjectType", u"ObjectName", u"Errors"})
        addRecord(history.world, 3)[column] = Null{};
    history.load(5);
    EXPECT_EQ(history.list.row(1).text(), u"a  long text");
    EXPECT_EQ(history.list.row(1).smallIcon(), u"Bad");
    EXPECT_EQ(history.list.row(1).tag(), u"PROG\nPAYROLL\npayroll.err");
    EXPECT_EQ(history.list.rowKey(1), u"k1");
    EXPECT_EQ(history.list.row(2).smallIcon(), u"Cancel");
    EXPECT_EQ(history.list.row(3).tag(), u"\nPAYROLL\npayroll.err");
    EXPECT_EQ(history.list.row(4).tag(), u"PROG\n\npayroll.err");
    EXPECT_EQ(history.list.row(5).tag(), u"PROG\nPAYROLL\n");
    const widgets::RowContent& separator = history.list.row(6);
    const std::u16string dashes(68, u'-');
    EXPECT_EQ(separator.text(), dashes + u" Current session " + dashes);
    EXPECT_EQ(separator.smallIcon(), u"Session");
    EXPECT_EQ(separator.tag(), u"");
    EXPECT_EQ(history.list.rowKey(6), u"");
}

TEST(HistoryLoading, NamesTheSessionInTheUsersLanguage) {
    HistoryList history;
    history.world.globals.platform.language = resources::Language::Japanese;
    history.load(0);
    EXPECT_NE(
        std::u16string(history.list.row(1).text()).find(resources::text(resources::Language::Japanese, 514)),
        std::u16string::npos);
}

struct CodeCase {
    Value code;
    const char16_t* icon; // null: the load ends there
};

TEST(HistoryLoading, ReadsReturnCodesAsNumbersHoweverTheyAreStored) {
    const CodeCase cases[] = {
        {u"1", u"Suspect"},        {u" 1 ", u"Suspect"},     {u"1.5", u"Bad"},
        {u"2.5", u"Bad"},          {u"-0.5", u"Good"},       {u"2147483647", u"Bad"},
        {u"-2147483648", u"Bad"},  {0.5, u"Good"},           {1.5, u"Bad"},
        {u"-4", u"Cancel"},        {true, u"Failure"},       {std::int64_t{16}, u"Cancel"},
        {Null{}, nullptr},         {u"", nullptr},           {u"abc", nullptr},
        {u"99999999999", nullptr}, {u"2147483648", nullptr}, {u"&H10", nullptr},
        {u"1,5", nullptr},         {u"1 2", nullptr},        {std::int64_t{1} << 40, nullptr},
    };
    for (const CodeCase& each : cases) {
        HistoryList history;
        addRecord(history.world, 1);
        addRecord(history.world, 2)[u"ReturnMessage"] = each.code;
        addRecord(history.world, 3);
        history.load(0);
        SCOPED_TRACE(tests::describe(each.code));
        EXPECT_EQ(history.names(), each.icon ? "S 1 2 3" : "S 1");
        if (each.icon && history.list.rowCount() == 4) {
            EXPECT_EQ(history.list.row(3).smallIcon(), each.icon);
        }
        EXPECT_EQ(history.progress.LastLoaded, each.icon ? 3 : 0);
    }
}

TEST(HistoryLoading, EndsAtARecordWhoseTextsOrNumberCannotBeRead) {
    for (const auto& [column, bad] :
         std::vector<std::pair<const char16_t*, Value>>{{u"LogMessage", Null{}},
                                                        {u"LogMessage", Value(automation::ObjectRef())},
                                                        {u"ObjectName", automation::ErrorCode{1}},
                                                        {u"RecordNum", std::int64_t{1} << 33}}) {
        HistoryList history;
        addRecord(history.world, 1);
        addRecord(history.world, 2);
        if (std::u16string_view(column) != u"RecordNum")
            history.world.engine.records().back()[column] = bad;
        else
            history.world.calls.insideCall = [&, values = 0](const std::string& name) mutable {
                constexpr int kValuesOfARow = 6;
                if (name.starts_with("Recordset.value") && ++values > kValuesOfARow)
                    throw tests::CallCounter::injectedError();
            };
        history.load(0);
        history.world.calls.insideCall = nullptr;
        EXPECT_EQ(history.names(), "S 1");
        EXPECT_EQ(history.progress.LastLoaded, 0);
        EXPECT_FALSE(history.progress.SeparatorPending);
    }
}

TEST(HistoryLoading, LeavesTheListUntouchedByARefreshAfterAnUnreadableRecord) {
    HistoryList history;
    addRecord(history.world, 1)[u"LogMessage"] = Null{};
    const base::Twips width = history.list.column(1).width;
    history.load(1);
    EXPECT_EQ(history.peer().told("repaint"), 0);
    EXPECT_EQ(history.list.column(1).width, width);
    HistoryList whole;
    whole.load(1);
    EXPECT_EQ(whole.peer().told("repaint"), 1);
}

TEST(HistoryLoading, BringsRowsTwiceAfterABrokenLoadAndNumbersEachOfThem) {
    HistoryList history;
    addRecord(history.world, 1);
    addRecord(history.world, 2)[u"LogMessage"] = Null{};
    history.load(0);
    history.world.engine.records()[1][u"LogMessage"] = u"repaired";
    history.load(0);
    EXPECT_EQ(history.names(), "S 1 1 2");
    EXPECT_EQ(history.progress.LastLoaded, 2);
    EXPECT_EQ(history.list.rowOf(u"k1"), 2);
    history.list.remove(2);
    EXPECT_EQ(history.list.rowOf(u"k1"), 2) << "the other one has the key still";
}

TEST(HistoryLoading, WidensTheColumnToTheWidestRowAndNeverNarrowsIt) {
    HistoryList history;
    history.load(0);
    EXPECT_EQ(history.list.column(1).width, history.textWidth(1) + 650) << "the separator counts";
    addRecord(history.world, 1)[u"LogMessage"] = std::u16string(400, u'm');
    history.load(0);
    const base::Twips wide = history.list.column(1).width;
    EXPECT_EQ(wide, history.textWidth(2) + 650);
    addRecord(history.world, 2);
    history.load(0);
    EXPECT_EQ(history.list.column(1).width, wide);
    history.list.setColumnWidth(1, 90'000);
    addRecord(history.world, 3);
    history.load(0);
    EXPECT_EQ(history.list.column(1).width, 90'000);
}

TEST(HistoryLoading, CountsTheSeparatorAtTheEndForTheColumnToo) {
    HistoryList history;
    addRecord(history.world, 1);
    history.load(1);
    EXPECT_EQ(history.names(), "1 S");
    EXPECT_EQ(history.list.column(1).width, history.textWidth(2) + 650);
}

TEST(HistoryLoading, ShowsTheLastRow) {
    HistoryList history;
    for (int number = 1; number <= 100; ++number) addRecord(history.world, number);
    history.load(50);
    EXPECT_EQ(history.peer().scrolledTo(), std::vector<int>{101});
}

TEST(HistoryLoading, RaisesAQueryThatCannotBeOpened) {
    HistoryList history;
    addRecord(history.world, 1);
    history.world.globals.store.LogDatabase->close();
    EXPECT_NE(tests::failureCode([&] { history.load(0); }), 0);
    EXPECT_EQ(history.names(), "");
    EXPECT_TRUE(history.progress.SeparatorPending);
    history.world.globals.store.LogDatabase.reset();
    EXPECT_EQ(tests::failureCode([&] { history.load(0); }), automation::code::kObjectRequired);
}

TEST(HistoryTags, AreTakenApartHoweverManyLinesTheyHave) {
    const auto parts = [](std::u16string_view tag) {
        const HistoryTag parsed = HistoryTag::parse(tag);
        return base::toUtf8(parsed.objectType + u"|" + parsed.objectName + u"|" + parsed.errorsFile);
    };
    EXPECT_EQ(parts(u"PROG\nPAYROLL\npayroll.err"), "PROG|PAYROLL|payroll.err");
    EXPECT_EQ(parts(u""), "||");
    EXPECT_EQ(parts(u"PROG"), "PROG||");
    EXPECT_EQ(parts(u"\n\n"), "||");
    EXPECT_EQ(parts(u"PROG\nA\nB\nerr"), "PROG|A|B") << "a name with a line feed names nothing";
}

} // namespace
} // namespace cvlog::store
