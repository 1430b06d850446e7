#pragma once

#include "store/history_commands.h"
#include "tests/store/history_world.h"
#include "tests/store/stored_log.h"
#include "tests/support/failure_code.h"

#include <functional>
#include <initializer_list>
#include <string>

namespace cvlog::store::testbed {

/// A log over a real file whose history can be opened.
class HistoryFiles : public StoredLog {
protected:
    /// Whatever a test has done, the history shows what the command-line program prints, up to a record that cannot be
    /// read.
    void TearDown() override {
        const std::string printed =
            exists(native())
                ? askCommandLine(native(), "select RecordNum || ':' || hex(LogMessage) from LogInfo "
                                           "where RecordNum > 0 order by RecordNum")
                : "failed: no file";
        if (!printed.starts_with("failed: ") && openLog()) {
            inHistory([&](FrmLogHistory& window) {
                const std::string shown = numbersAndTexts(*window.lvHistory());
                if (window.progress().LastLoaded != 0)
                    EXPECT_EQ(shown, printed);
                else
                    EXPECT_TRUE(printed.starts_with(shown)) << shown;
            });
            closeLog();
        }
        StoredLog::TearDown();
    }

    /// The rows of records, one a line, their texts in hexadecimal digits.
    static std::string numbersAndTexts(const widgets::ListView& list) {
        constexpr char kDigits[] = "0123456789ABCDEF";
        std::string lines;
        for (int row = 1; row <= list.rowCount(); ++row) {
            if (list.rowKey(row).empty()) continue;
            lines += (lines.empty() ? "" : "\n") + base::toUtf8(list.rowKey(row).substr(1)) + ":";
            for (const char unit : list.row(row).text().toUtf8()) {
                const auto byte = static_cast<unsigned char>(unit);
                (lines += kDigits[byte >> 4]) += kDigits[byte & 15];
            }
        }
        return lines;
    }

    /// Opens the history and runs what the user does there. Answers the failure's code, 0 when it opens.
    std::int32_t inHistory(const std::function<void(FrmLogHistory&)>& user) {
        platform_.peers.forms.whileModal = [&](platform::headless::HeadlessFormPeer&) {
            const auto window = globals_.store.frmLogHistory;
            user(*window);
            window->unload();
        };
        const std::int32_t code = tests::failureCode([&] { ShowHistory(globals_); });
        EXPECT_TRUE(platform_.peers.forms.live.empty());
        EXPECT_EQ(globals_.store.frmLogHistory, nullptr);
        EXPECT_TRUE(saidNothing());
        platform_.peers.forms.whileModal = nullptr;
        return code;
    }
    /// Runs once, when so many runs of rows have come into the list of the history that loads. Of few records there are
    /// three: those of earlier sessions, the separator, and those of this session.
    void atRun(int run, std::function<void()> action) {
        platform_.gate.watcher = [this, run, count = 0,
                                  action = std::move(action)](std::string_view name) mutable {
            if (name != "List.rowsInserted" || ++count != run) return;
            const auto once = std::exchange(action, nullptr);
            const auto keep = std::exchange(platform_.gate.watcher, nullptr);
            once();
        };
    }
    std::string shown() {
        std::string names;
        EXPECT_EQ(inHistory([&](FrmLogHistory& window) { names = rowNames(*window.lvHistory()); }), 0);
        return names;
    }
    void removeRows(FrmLogHistory& window, std::initializer_list<int> rows) {
        window.lvHistory()->selectAll(false);
        for (const int row : rows) window.lvHistory()->select(row, true);
        window.lvHistory()->focusRow(*rows.begin());
        DeleteHistoryRecords(globals_, window);
    }
    /// Two records of an earlier session, one of this.
    void makeTwoSessions(const std::string& table = kModernTable) {
        make(table);
        ASSERT_TRUE(openLog());
        addEntry(u"a");
        addEntry(u"b");
        closeLog();
        ASSERT_TRUE(openLog());
        addEntry(u"c");
    }
};

} // namespace cvlog::store::testbed
