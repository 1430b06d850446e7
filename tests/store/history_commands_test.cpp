#include "store/history_commands.h"

#include "core/column_fit.h"
#include "tests/store/history_window.h"
#include "tests/support/failure_code.h"

namespace cvlog::store {
namespace {

using testbed::addRecord;
using testbed::rowNames;
using Statements = std::vector<std::string>;

constexpr int kSeparator = 4; // its row

class HistoryCommands : public testbed::HistoryWindow {
protected:
    void erase(FrmLogHistory& window) { DeleteHistoryRecords(world.globals, window); }
    /// Fails the statement with this number, counted from the next one.
    void failStatement(int number) {
        world.calls.insideCall = [number, count = 0](const std::string& name) mutable {
            if (name.starts_with("Database.execute") && ++count == number)
                throw tests::CallCounter::injectedError();
        };
    }
    void failNoMore() { world.calls.insideCall = nullptr; }
    static std::string deleteOf(int number) {
        return "Database.execute(delete from LogInfo where RecordNum = " + std::to_string(number) + ")";
    }
};

TEST_F(HistoryCommands, DeleteTakesTheSelectedRowsAndTheirRecordsFromTheLastOn) {
    inHistory([&](FrmLogHistory& window) {
        select(window, {1, 3, 6});
        erase(window);
        EXPECT_EQ(rowNames(*window.lvHistory()), "2 S 4");
        EXPECT_EQ(statements(), (Statements{deleteOf(5), deleteOf(3), deleteOf(1)}));
        EXPECT_EQ(records(), "2 4");
    });
    EXPECT_EQ(world.globals.store.LastRecordNum, 3);
}

TEST_F(HistoryCommands, DeleteGoesByTheSelectionWhenTheFocusIsOnAnotherRecord) {
    inHistory([&](FrmLogHistory& window) {
        select(window, {2}, 1);
        erase(window);
        EXPECT_EQ(rowNames(*window.lvHistory()), "1 3 S 4 5");
    });
}

TEST_F(HistoryCommands, DeleteTakesASelectedSeparatorOffTheListOnly) {
    inHistory([&](FrmLogHistory& window) {
        select(window, {3, kSeparator}, 3);
        erase(window);
        EXPECT_EQ(rowNames(*window.lvHistory()), "1 2 4 5");
        EXPECT_EQ(statements(), Statements{deleteOf(3)});
    });
}

TEST_F(HistoryCommands, DeleteAtTheSeparatorHidesTheEarlierSessionsAndKeepsEveryRecord) {
    inHistory([&](FrmLogHistory& window) {
        select(window, {2, kSeparator, 6}, kSeparator);
        erase(window);
        EXPECT_EQ(rowNames(*window.lvHistory()), "S 4 5") << "also the selected one below stays";
        EXPECT_EQ(statements(), Statements{"Database.execute(delete from LogInfo where RecordNum <= 0)"});
        EXPECT_EQ(records(), "1 2 3 4 5");
    });
    inHistory([](FrmLogHistory& window) { EXPECT_EQ(rowNames(*window.lvHistory()), "1 2 3 S 4 5"); });
}

TEST_F(HistoryCommands, DeleteAtTheSeparatorGoesByTheFocusAloneAndFitsTheColumn) {
    inHistory([&](FrmLogHistory& window) {
        widgets::ListView& list = *window.lvHistory();
        list.setColumnWidth(1, 100);
        select(window, {2}, kSeparator);
        erase(window);
        EXPECT_EQ(rowNames(list), "S 4 5");
        EXPECT_EQ(list.column(1).width, list.widestCell(1) + 420);
    });
}

TEST_F(HistoryCommands, DeleteAtTheSeparatorThatFailsLeavesEveryRow) {
    inHistory([&](FrmLogHistory& window) {
        select(window, {2}, kSeparator);
        failStatement(1);
        EXPECT_NE(tests::failureCode([&] { erase(window); }), 0);
        failNoMore();
        EXPECT_EQ(rowNames(*window.lvHistory()), "1 2 3 S 4 5");
        EXPECT_EQ(window.form().caption(), u"Activity Log History");
    });
}

TEST_F(HistoryCommands, DeleteShowsItsCaptionWhileItRuns) {
    inHistory([&](FrmLogHistory& window) {
        std::vector<std::u16string> captions;
        world.calls.insideCall = [&](const std::string& name) {
            if (name.starts_with("Database.execute")) captions.push_back(window.form().caption());
        };
        select(window, {1, 2});
        erase(window);
        failNoMore();
        EXPECT_EQ(captions, std::vector<std::u16string>(2, u"Activity Log History - Deleting records..."));
    });
}

TEST_F(HistoryCommands, NeverTouchTheRecordsOfADatabaseThatTheLogHasOpenedSince) {
    inHistory([&](FrmLogHistory& window) {
        ASSERT_TRUE(world.open());
        select(window, {1});
        EXPECT_EQ(tests::failureCode([&] { erase(window); }), automation::code::kObjectRequired);
        EXPECT_EQ(tests::failureCode([&] { ClearLogHistory(world.globals, window); }),
                  automation::code::kObjectRequired);
        EXPECT_EQ(statements(), Statements{});
        EXPECT_EQ(records(), "1 2 3 4 5");
    });
}

TEST_F(HistoryCommands, DeleteChangesNothingInTheLogsOwnLists) {
    world.hideBoxes();
    world.addControl();
    world.add({u"M1", 0, u"P1", u"shown", u""});
    inHistory([&](FrmLogHistory& window) {
        window.lvHistory()->selectAll(true);
        peer(window).userFocuses(1);
        erase(window);
        EXPECT_EQ(window.lvHistory()->rowCount(), 0);
    });
    EXPECT_EQ(world.list().rowCount(), 1);
    EXPECT_EQ(records(), "");
}

TEST_F(HistoryCommands, DeleteOfNothingOnlyShowsItsCaption) {
    world.engine.records().clear();
    inHistory([&](FrmLogHistory& window) {
        window.lvHistory()->clear();
        std::vector<std::u16string> captions;
        world.calls.insideCall = [&](const std::string& name) {
            if (name == "Form.captionChanged") captions.push_back(window.form().caption());
        };
        erase(window);
        failNoMore();
        EXPECT_EQ(captions, (std::vector<std::u16string>{u"Activity Log History - Deleting records...",
                                                         u"Activity Log History"}));
        EXPECT_EQ(statements(), Statements{});
    });
}

TEST_F(HistoryCommands, DeleteEndsAtTheRecordThatCannotBeDeletedAndCanGoOnLater) {
    inHistory([&](FrmLogHistory& window) {
        select(window, {1, 2, 3, 6});
        failStatement(2);
        EXPECT_NE(tests::failureCode([&] { erase(window); }), 0);
        failNoMore();
        EXPECT_EQ(rowNames(*window.lvHistory()), "1 2 S 4") << "its row went before its record stayed";
        EXPECT_EQ(records(), "1 2 3 4");
        EXPECT_TRUE(window.lvHistory()->isSelected(1) && window.lvHistory()->isSelected(2));
        EXPECT_EQ(window.form().caption(), u"Activity Log History");
        erase(window);
        EXPECT_EQ(rowNames(*window.lvHistory()), "S 4");
        EXPECT_EQ(records(), "3 4");
    });
}

TEST_F(HistoryCommands, DeleteTakesOneOfTwoRowsOfARecord) {
    world.engine.records()[1][u"LogMessage"] = automation::Null{};
    inHistory([&](FrmLogHistory& window) {
        world.engine.records()[1][u"LogMessage"] = u"repaired";
        window.LoadHistory(3);
        EXPECT_EQ(rowNames(*window.lvHistory()), "1 1 2 3 S 4 5");
        select(window, {2});
        erase(window);
        EXPECT_EQ(rowNames(*window.lvHistory()), "1 2 3 S 4 5");
        EXPECT_EQ(statements(), Statements{deleteOf(1)});
        select(window, {1});
        erase(window);
        EXPECT_EQ(records(), "2 3 4 5");
    });
}

TEST_F(HistoryCommands, DeleteFitsTheColumn) {
    inHistory([&](FrmLogHistory& window) {
        widgets::ListView& list = *window.lvHistory();
        list.setColumnWidth(1, 100);
        select(window, {1});
        erase(window);
        EXPECT_EQ(list.column(1).width, list.widestCell(1) + 420);
    });
}

TEST_F(HistoryCommands, ClearDeletesAllAndLeavesTheSeparator) {
    inHistory([&](FrmLogHistory& window) {
        std::vector<std::int32_t> during;
        world.calls.insideCall = [&](const std::string& name) {
            if (name.starts_with("Database.execute"))
                during = {cursor, static_cast<std::int32_t>(window.form().pointer())};
        };
        ClearLogHistory(world.globals, window);
        failNoMore();
        EXPECT_EQ(during, (std::vector<std::int32_t>{11, 11}));
        EXPECT_EQ(window.form().pointer(), widgets::Pointer::Default);
        EXPECT_EQ(statements(), Statements{"Database.execute(delete from LogInfo)"});
        EXPECT_EQ(rowNames(*window.lvHistory()), "S");
        EXPECT_EQ(records(), "");
    });
    EXPECT_EQ(world.globals.store.LastRecordNum, 3);
    world.hideBoxes();
    world.add({u"M1", 0, u"P1", u"after", u""});
    inHistory([](FrmLogHistory& window) {
        EXPECT_EQ(rowNames(*window.lvHistory()), "S 6") << "its number is new, so it is of this session";
    });
}

TEST_F(HistoryCommands, ClearLoadsFromTheFirstRecordOnWhatOthersAddMeanwhile) {
    inHistory([&](FrmLogHistory& window) {
        world.calls.insideCall = [&](const std::string& name) {
            if (!name.starts_with("Database.openSnapshot") || !world.engine.records().empty()) return;
            addRecord(world, 2);
            addRecord(world, 9);
        };
        ClearLogHistory(world.globals, window);
        failNoMore();
        EXPECT_EQ(rowNames(*window.lvHistory()), "2 S 9") << "not only above what was loaded before";
    });
}

TEST_F(HistoryCommands, ClearChangesNothingInTheLogsOwnLists) {
    world.hideBoxes();
    world.addControl();
    world.add({u"M1", 0, u"P1", u"shown", u""});
    inHistory([&](FrmLogHistory& window) { ClearLogHistory(world.globals, window); });
    EXPECT_EQ(world.list().rowCount(), 1);
    EXPECT_EQ(world.globals.store.LastRecordNum, 3);
}

TEST_F(HistoryCommands, ClearThatFailsLeavesEverything) {
    inHistory([&](FrmLogHistory& window) {
        failStatement(1);
        EXPECT_NE(tests::failureCode([&] { ClearLogHistory(world.globals, window); }), 0);
        failNoMore();
        EXPECT_EQ(rowNames(*window.lvHistory()), "1 2 3 S 4 5");
        EXPECT_FALSE(window.progress().SeparatorPending);
        EXPECT_EQ(window.form().pointer(), widgets::Pointer::Default);
        EXPECT_EQ(cursor, 0);
    });
}

TEST_F(HistoryCommands, CopyTakesTheTextsOfTheSelectedRows) {
    inHistory([&](FrmLogHistory& window) {
        select(window, {1, kSeparator, 6});
        CopyHistoryRecords(world.globals, window);
        const std::u16string separator(window.lvHistory()->row(kSeparator).text());
        EXPECT_EQ(world.platform.clipboard.text, u"message 1\r\n" + separator + u"\r\nmessage 5\r\n");
        window.lvHistory()->selectAll(false);
        CopyHistoryRecords(world.globals, window);
        EXPECT_EQ(world.platform.clipboard.text, u"");
        EXPECT_EQ(window.form().pointer(), widgets::Pointer::Default);
    });
}

TEST_F(HistoryCommands, CopyCountsBeyondSixteenBits) {
    world.platform.peers.mirrored = false;
    for (int number = 6; number <= 70'000; ++number) addRecord(world, number);
    inHistory([&](FrmLogHistory& window) {
        for (const int rows : {32'767, 32'768, 70'000}) {
            window.lvHistory()->selectAll(false);
            for (int row = 1; row <= rows; ++row) window.lvHistory()->select(row, true);
            CopyHistoryRecords(world.globals, window);
            const std::u16string& text = *world.platform.clipboard.text;
            EXPECT_EQ(std::count(text.begin(), text.end(), u'\n'), rows);
        }
    });
}

TEST_F(HistoryCommands, CopyAndClearDoWithoutTheHostsPointer) {
    inHistory([&](FrmLogHistory& window) {
        world.host.workspace->raise(u"SetMainWindowCursor", tests::CallCounter::injectedError());
        select(window, {1});
        CopyHistoryRecords(world.globals, window);
        EXPECT_EQ(world.platform.clipboard.text, u"message 1\r\n");
        ClearLogHistory(world.globals, window);
        EXPECT_EQ(rowNames(*window.lvHistory()), "S");
        world.host.workspace->heal(u"SetMainWindowCursor");
    });
}

class ShowErrorsOfHistory : public HistoryCommands {
protected:
    ShowErrorsOfHistory() {
        letErrorsBeShown();
        world.log->events().advise(sink);
        sink->handler = [this](std::int32_t id, std::span<automation::Value> values) {
            if (id != 4) return;
            order.emplace_back("event " + base::toUtf8(automation::toText(values[0])) + " " +
                               std::to_string(automation::toInt32(values[1])));
        };
        world.platform.pump.atYield = [this](int) { order.emplace_back("messages"); };
    }

    std::shared_ptr<tests::RecordingSink> sink = std::make_shared<tests::RecordingSink>();
    std::vector<std::string> order;
};

TEST_F(ShowErrorsOfHistory, ClosesTheWindowRunsWhatWaitsAndTellsTheHost) {
    inHistory([&](FrmLogHistory& window) {
        select(window, {2});
        world.host.repository->before(u"FindObject",
                                      [&] { order.emplace_back(window.isLoaded() ? "asked" : "too late"); });
        world.platform.pump.atYield = [&](int) {
            order.emplace_back(window.isLoaded() ? "too early" : "messages");
        };
        ShowHistoryErrors(world.globals, window);
        world.host.repository->before(u"FindObject", nullptr);
    });
    EXPECT_EQ(order, (std::vector<std::string>{"asked", "messages", "event P1 0"}));
}

TEST_F(ShowErrorsOfHistory, TellsTheLogThatOpenedTheDatabaseAndNoOther) {
    const auto other = std::make_shared<core::CVLog>(world.globals);
    const auto otherSink = std::make_shared<tests::RecordingSink>();
    other->events().advise(otherSink);
    otherSink->handler = [this](std::int32_t, std::span<automation::Value>) { order.emplace_back("other"); };
    inHistory([&](FrmLogHistory& window) {
        select(window, {2});
        ShowHistoryErrors(world.globals, window);
    });
    EXPECT_EQ(order, (std::vector<std::string>{"messages", "event P1 0"}));
    otherSink->handler = nullptr;
}

TEST_F(ShowErrorsOfHistory, TellsNobodyWhenTheLogGoesMeanwhile) {
    inHistory([&](FrmLogHistory& window) {
        select(window, {2});
        world.platform.pump.atYield = [&](int) { world.close(); };
        ShowHistoryErrors(world.globals, window);
    });
    EXPECT_EQ(order, std::vector<std::string>{});
}

TEST_F(ShowErrorsOfHistory, LeavesTheWindowWhenTheObjectIsNotFound) {
    world.engine.records()[1][u"ObjectName"] = u"GONE";
    inHistory([&](FrmLogHistory& window) {
        select(window, {2});
        EXPECT_EQ(tests::failureCode([&] { ShowHistoryErrors(world.globals, window); }),
                  automation::code::kObjectRequired);
        EXPECT_TRUE(window.isLoaded());
        window.lvHistory()->selectAll(false);
        ShowHistoryErrors(world.globals, window);
        EXPECT_TRUE(window.isLoaded());
    });
    EXPECT_EQ(order, std::vector<std::string>{});
}

} // namespace
} // namespace cvlog::store
