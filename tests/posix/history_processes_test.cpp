// The history of a file that another process writes at the same time, and of one that this process may not write.

#include "tests/posix/child_process.h"
#include "tests/store/history_files.h"

#include <sys/stat.h>

namespace cvlog::store {
namespace {

using testbed::rowNames;

class HistoryProcesses : public testbed::HistoryFiles {
protected:
    static constexpr int kCount = 300;

    /// Appends numbered texts, and deletes every third one again.
    int write() {
        const auto database = makeSqliteEngine(files_)->open(folder_.path(testbed::kFile));
        const auto rows = database->openTable(u"LogInfo");
        for (int i = 1; i <= kCount; ++i) {
            rows->addNew();
            rows->assign(u"LogMessage", u"n" + base::decimal(1000 + i));
            rows->assign(u"ReturnMessage", std::int32_t{0});
            rows->update();
            if (i % 3 == 0)
                database->execute(u"delete from LogInfo where LogMessage = 'n" + base::decimal(999 + i) +
                                  u"'");
        }
        database->close();
        return 0;
    }
    /// The rows are in the order of their numbers, and what they say is in the order of its writing.
    static void expectInOrder(const widgets::ListView& list) {
        int number = 0;
        std::u16string text;
        for (int row = 1; row <= list.rowCount(); ++row) {
            if (list.rowKey(row).empty()) continue;
            const int next = std::stoi(base::toUtf8(list.rowKey(row).substr(1)));
            EXPECT_GT(next, number);
            number = next;
            const std::u16string here(list.row(row).text());
            if (!here.starts_with(u"n")) continue;
            EXPECT_GT(here, text);
            text = here;
        }
    }
};

TEST_F(HistoryProcesses, OfAFileThatAnotherOneWritesIsWholeWheneverItIsOpened) {
    makeTwoSessions();
    const pid_t writer = tests::startChild([this] { return write(); });
    int opened = 0;
    int status = 0;
    bool isWriting = true;
    while (isWriting) {
        isWriting = waitpid(writer, &status, WNOHANG) == 0;
        EXPECT_EQ(inHistory([&](FrmLogHistory& window) {
                      expectInOrder(*window.lvHistory());
                      EXPECT_NE(window.progress().LastLoaded, 0);
                      window.LoadHistory(globals_.store.LastRecordNum);
                      expectInOrder(*window.lvHistory());
                      ++opened;
                  }),
                  0);
    }
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_GT(opened, 0);
    addEntry(u"d");
    inHistory([&](FrmLogHistory& window) {
        EXPECT_EQ(window.lvHistory()->rowCount(), 3 + 1 + kCount - kCount / 3 + 1)
            << "all, and the separator";
        const std::string last = window.lvHistory()->row(window.lvHistory()->rowCount()).text().toUtf8();
        EXPECT_TRUE(last.ends_with("d")) << last;
    });
    closeLog();
}

TEST_F(HistoryProcesses, DeletesItsRecordsWhileAnotherOneWrites) {
    makeTwoSessions();
    const pid_t writer = tests::startChild([this] { return write(); });
    inHistory([&](FrmLogHistory& window) { removeRows(window, {1, 2, 4}); });
    EXPECT_EQ(tests::exitCodeOf(writer), 0);
    closeLog();
    EXPECT_EQ(askWhole("select count(*) from LogInfo"), std::to_string(kCount - kCount / 3));
    EXPECT_EQ(askWhole("select count(*) from LogInfo where RecordNum <= 3"), "0");
}

// As somebody else: for a superuser every file can be written.
TEST_F(HistoryProcesses, OfAFileThatCannotBeWrittenShowsAllAndDeletesNothing) {
    makeTwoSessions();
    closeLog();
    const std::string before = testbed::readWhole(native());
    ASSERT_EQ(chmod(native().c_str(), 0444), 0);
    ASSERT_EQ(chmod(folder_.native().c_str(), 0555), 0);
    const auto look = [this](FrmLogHistory& window) {
        const auto names = [&] { return rowNames(*window.lvHistory()); };
        if (names() != "1 2 3 S") return 3;
        if (tests::failureCode([&] { ClearLogHistory(globals_, window); }) == 0) return 4;
        if (names() != "1 2 3 S") return 5;
        if (tests::failureCode([&] { removeRows(window, {1, 2}); }) == 0) return 6;
        if (names() != "1 3 S" || !window.lvHistory()->isSelected(1)) return 7;
        return 0;
    };
    const int code = tests::exitCodeOf(tests::startChild([&] {
        constexpr uid_t kNobody = 65534;
        if (geteuid() == 0 && setuid(kNobody) != 0) return 50;
        if (!openLog()) return 1;
        int result = 2;
        inHistory([&](FrmLogHistory& window) { result = look(window); });
        return result;
    }));
    EXPECT_EQ(chmod(folder_.native().c_str(), 0755), 0);
    EXPECT_EQ(chmod(native().c_str(), 0644), 0);
    EXPECT_EQ(code, 0) << "50: the test could not become another user";
    EXPECT_TRUE(testbed::readWhole(native()) == before) << "not a byte has changed";
}

} // namespace
} // namespace cvlog::store
