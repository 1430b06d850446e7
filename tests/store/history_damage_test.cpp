// The history over a file that is damaged somewhere, at rest or under an open log. What it shows are the records that
// were written, each under its own number: a damaged byte spoils the record that it lies in, or the load ends. Deleting
// takes the record of that number and no other, clearing takes all records or none.

#include "tests/store/history_files.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>
#include <utility>

namespace cvlog::store {
namespace {

using testbed::StockDatabase;

constexpr std::size_t kPage = 512;
constexpr int kRecords = 24;

std::u16string textOf(int number) {
    std::u16string text;
    for (int i = 0; i < 12; ++i) text += u"(" + base::decimal(number * 7) + u")";
    return text;
}

/// One is the other with a unit changed, or without a unit.
bool differInOneUnit(std::u16string_view left, std::u16string_view right) {
    const auto [from, ignored] = std::mismatch(left.begin(), left.end(), right.begin(), right.end());
    const auto same = static_cast<std::size_t>(from - left.begin());
    left.remove_prefix(same);
    right.remove_prefix(same);
    while (!left.empty() && !right.empty() && left.back() == right.back()) {
        left.remove_suffix(1);
        right.remove_suffix(1);
    }
    return left.size() <= 1 && right.size() <= 1;
}

class HistoryDamage : public testbed::HistoryFiles {
protected:
    void SetUp() override {
        std::string sql = "pragma page_size = " + std::to_string(kPage) + ";" + testbed::kModernTable +
                          "; create table Other (a text); insert into Other values (hex(zeroblob(300)));";
        for (int number = 1; number <= kRecords; ++number)
            sql += "insert into LogInfo (LogMessage, ReturnMessage, ObjectType, ObjectName) values ('" +
                   base::toUtf8(textOf(number)) + "', 7, 'PROG', 'PAYROLL');";
        make(sql);
        ASSERT_TRUE(openLog());
        closeLog(); // as the log leaves the file
        whole_ = testbed::readWhole(native());
        ASSERT_GT(whole_.size(), 8 * kPage) << "more pages than one of each kind";
    }
    void TearDown() override {
        putAtRest(whole_);
        HistoryFiles::TearDown();
        EXPECT_GT(shown_, 0) << "some files are shown";
        EXPECT_GT(ended_, 0) << "some are not, or not to their end";
    }

    void putAtRest(const std::string& bytes) {
        for (const char* end : {"-wal", "-shm"}) std::filesystem::remove(native() + end);
        testbed::writeWhole(native(), bytes);
    }
    void tryAtRest(const std::string& bytes) {
        putAtRest(bytes);
        if (base::valueOr(false, [&] { return openLog(); }))
            lookAndAct();
        else
            ++ended_;
        base::ignoring([&] { closeLog(); });
        EXPECT_TRUE(platform_.peers.forms.live.empty());
    }
    enum class When { BeforeTheHistory, WhileItLoads };
    void tryUnderTheLog(const std::string& bytes, When when = When::BeforeTheHistory) {
        putAtRest(whole_);
        ASSERT_TRUE(openLog());
        // Pages that were read are read anew after a change by another program.
        ASSERT_TRUE(StockDatabase(native()).run("insert into Other values ('more')"));
        const auto damage = [&] { testbed::writeWhole(native(), bytes); };
        globals_.store.LastRecordNum = 2; // its rows come before the others are read
        if (when == When::BeforeTheHistory)
            damage();
        else
            atRun(1, damage);
        lookAndAct();
        platform_.gate.watcher = nullptr;
        base::ignoring([&] { closeLog(); });
        EXPECT_TRUE(platform_.peers.forms.live.empty());
    }
    /// Every byte that says how a page is laid out, and some of the others: one bit of it, or all.
    template <class Try>
    void damageAnyByte(std::size_t stride, Try tryFile) {
        for (std::size_t place = 0; place < whole_.size(); place += place % kPage < 64 ? 1 : stride) {
            SCOPED_TRACE("byte " + std::to_string(place));
            std::string damaged = whole_;
            const unsigned mask = place % 2 == 0 ? 0xFFU : 1U << (place / 2 % 8);
            damaged[place] = static_cast<char>(static_cast<unsigned char>(damaged[place]) ^ mask);
            tryFile(damaged);
            if (HasFailure()) return;
        }
    }

    std::string whole_;
    int shown_ = 0;
    int ended_ = 0;

private:
    using Rows = std::vector<std::pair<int, std::u16string>>;

    void lookAndAct() {
        const std::int32_t code = inHistory([&](FrmLogHistory& window) {
            const int rows = countOfRows(window);
            ++(rows == kRecords ? shown_ : ended_);
            if (rows == 0) return;
            deleteTheMiddleOne(window);
            clear(window);
        });
        ended_ += code != 0 ? 1 : 0;
    }
    /// The rows of records; all but one at most are as they were written.
    static int countOfRows(FrmLogHistory& window) {
        Rows rows;
        const widgets::ListView& list = *window.lvHistory();
        for (int row = 1; row <= list.rowCount(); ++row)
            if (!list.rowKey(row).empty()) rows.emplace_back(numberOf(list, row), list.row(row).text());
        int spoilt = 0;
        for (const auto& [number, text] : rows)
            if (text != textOf(number)) {
                ++spoilt;
                EXPECT_TRUE(differInOneUnit(text, textOf(number)) || isOnlyTextOfItsRecord(text, rows))
                    << number << ": " << base::toUtf8(text);
            }
        EXPECT_LE(spoilt, 1);
        return static_cast<int>(rows.size());
    }
    static int numberOf(const widgets::ListView& list, int row) {
        return std::stoi(base::toUtf8(list.rowKey(row).substr(1)));
    }
    /// Its number is what was damaged: the text is whole, and there once.
    static bool isOnlyTextOfItsRecord(const std::u16string& text, const Rows& rows) {
        const auto count = std::ranges::count(rows, text, &Rows::value_type::second);
        for (int number = 1; number <= kRecords; ++number)
            if (text == textOf(number)) return count == 1;
        return false;
    }

    using Records = std::multimap<int, std::string>;

    /// What another program reads; nothing and false when it cannot.
    bool readAll(Records& records, std::string& other) const {
        StockDatabase stock(native(), true);
        const std::string lines = stock.ask("select RecordNum || '|' || hex(LogMessage) from LogInfo");
        other = stock.ask("select a from Other");
        records.clear();
        if (lines.starts_with("failed: ")) return false;
        for (std::size_t at = 0; at < lines.size();) {
            const std::size_t end = std::min(lines.find('\n', at), lines.size());
            const std::string line = lines.substr(at, end - at);
            records.emplace(std::atoi(line.c_str()), line);
            at = end + 1;
        }
        return true;
    }
    void deleteTheMiddleOne(FrmLogHistory& window) {
        const int row = std::max(1, window.lvHistory()->rowCount() / 2);
        if (window.lvHistory()->rowKey(row).empty()) return;
        const int number = numberOf(*window.lvHistory(), row);
        Records before;
        Records after;
        std::string otherBefore;
        std::string otherAfter;
        const bool wasReadable = readAll(before, otherBefore);
        const bool done = base::ignoring([&] { removeRows(window, {row}); });
        const bool isReadable = readAll(after, otherAfter);
        if (!wasReadable) return;
        EXPECT_TRUE(isReadable);
        EXPECT_EQ(otherAfter, otherBefore);
        Records gone;
        std::set_difference(before.begin(), before.end(), after.begin(), after.end(),
                            std::inserter(gone, gone.end()));
        EXPECT_EQ(after.size() + gone.size(), before.size()) << "nothing has come or changed";
        EXPECT_LE(gone.size(), done ? 1U : 0U);
        for (const auto& [goneNumber, text] : gone) EXPECT_EQ(goneNumber, number);
    }
    void clear(FrmLogHistory& window) {
        Records before;
        Records after;
        std::string otherBefore;
        std::string otherAfter;
        const bool wasReadable = readAll(before, otherBefore);
        const bool done = base::ignoring([&] { ClearLogHistory(globals_, window); });
        const bool isReadable = readAll(after, otherAfter);
        if (!wasReadable) return;
        EXPECT_TRUE(isReadable);
        EXPECT_EQ(otherAfter, otherBefore);
        if (done)
            EXPECT_TRUE(after.empty());
        else
            EXPECT_EQ(after, before);
    }
};

TEST_F(HistoryDamage, AtRestAnyByteSpoilsItsOwnRecordAtMost) {
    damageAnyByte(7, [this](const std::string& bytes) { tryAtRest(bytes); });
}

TEST_F(HistoryDamage, UnderAnOpenLogAnyByteSpoilsItsOwnRecordAtMost) {
    damageAnyByte(7, [this](const std::string& bytes) { tryUnderTheLog(bytes); });
}

TEST_F(HistoryDamage, WhileItLoadsAnyByteSpoilsItsOwnRecordAtMost) {
    damageAnyByte(31, [this](const std::string& bytes) { tryUnderTheLog(bytes, When::WhileItLoads); });
}

TEST_F(HistoryDamage, AtRestAFileThatIsCutShowsNothing) {
    for (std::size_t size = 0; size < whole_.size(); size += 100) {
        tryAtRest(whole_.substr(0, size));
        tryAtRest(whole_.substr(0, size / kPage * kPage));
    }
    EXPECT_EQ(shown_, 0);
    tryAtRest(whole_);
    EXPECT_EQ(shown_, 1);
}

TEST_F(HistoryDamage, UnderAnOpenLogAFileThatIsCutShowsRecordsAsTheyWereOrEnds) {
    for (std::size_t size = 0; size <= whole_.size(); size += kPage / 4)
        for (const When when : {When::BeforeTheHistory, When::WhileItLoads}) {
            SCOPED_TRACE(size);
            tryUnderTheLog(whole_.substr(0, size), when);
        }
}

} // namespace
} // namespace cvlog::store
