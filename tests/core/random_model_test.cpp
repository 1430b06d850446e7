// Long random runs of actions on one to three lists, held against a plain oracle: the rows of the log as a vector.

#include "base/text.h"
#include "core/adding.h"
#include "tests/support/log_world.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace cvlog::core {
namespace {

using tests::LogWorld;

struct OracleRow {
    std::string date;
    std::string message;
};

/// The log as a user would describe it.
struct Oracle {
    std::vector<OracleRow> rows;
    std::size_t records = 0;
    bool inSeries = false;
    bool keep = false;
    int sortColumn = 0; // 1 date, 7 message; 0: not sorted
    bool descending = false;

    const std::string& keyOf(const OracleRow& row) const { return sortColumn == 1 ? row.date : row.message; }
    bool before(const OracleRow& left, const OracleRow& right) const {
        return descending ? keyOf(right) < keyOf(left) : keyOf(left) < keyOf(right);
    }
    void add(OracleRow row) {
        if (!inSeries && !keep) reset();
        const auto behindEqual = [this](const OracleRow& left, const OracleRow& right) {
            return before(left, right);
        };
        const auto place =
            sortColumn == 0 ? rows.end() : std::upper_bound(rows.begin(), rows.end(), row, behindEqual);
        rows.insert(place, std::move(row));
        ++records;
    }
    void sort(int column, bool downwards) {
        sortColumn = column;
        descending = downwards;
        std::stable_sort(rows.begin(), rows.end(),
                         [this](const auto& l, const auto& r) { return before(l, r); });
    }
    void reset() {
        rows.clear();
        sortColumn = 0;
    }
};

class RandomRun : public testing::TestWithParam<unsigned> {
protected:
    RandomRun() : random_(GetParam()) {
        EXPECT_TRUE(world_.open());
        world_.hideBoxes();
        world_.addControl();
    }

    void step() {
        switch (pick(16)) {
        case 0:
            return startSeries();
        case 1:
            return finishSeries();
        case 2:
            oracle_.keep = world_.globals.options.KeepInSession = pick(3) != 0;
            return;
        case 3:
            return changeControls();
        case 4:
            return sortLists();
        case 5:
            return reopen();
        case 6:
            return failToAdd();
        case 7:
            return changeFont();
        case 8:
            world_.platform.clock.advance(pick(4));
            return;
        default:
            return add();
        }
    }

    void check() {
        ASSERT_EQ(world_.engine.records().size(), oracle_.records);
        for (const auto& list : world_.globals.LogViews.all()) {
            ASSERT_EQ(list->rowCount(), static_cast<int>(oracle_.rows.size()));
            for (int position = 1; position <= list->rowCount(); ++position) {
                const OracleRow& expected = oracle_.rows[static_cast<std::size_t>(position - 1)];
                ASSERT_EQ(list->row(position).text().toUtf8(), expected.date) << "row " << position;
                ASSERT_EQ(list->row(position).cellText(6).toUtf8(), expected.message) << "row " << position;
            }
            ASSERT_EQ(list->sorted(), oracle_.sortColumn != 0);
            checkWidths(*list);
        }
        ASSERT_EQ(world_.platform.peers.book.faults, std::vector<std::string>());
    }

    int pick(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

private:
    void add() {
        const std::string message(1, static_cast<char>('a' + pick(5)));
        const char16_t* objects[] = {u"", u"P1", u"G1"};
        const char16_t* methods[] = {u"", u"M1", u"M2", u"unknown"};
        world_.add({methods[pick(4)], pick(6) - 3, objects[pick(3)], base::fromUtf8(message), u""});
        oracle_.add({base::toUtf8(base::formatDateTime(world_.platform.clock.time)), message});
    }
    void failToAdd() { EXPECT_ANY_THROW(world_.add({u"", 0, u"no such object", u"x", u""})); }
    void startSeries() {
        world_.startSeries();
        oracle_.inSeries = true;
        if (!oracle_.keep) oracle_.reset();
    }
    void finishSeries() {
        world_.finishSeries();
        oracle_.inSeries = false;
    }
    void changeControls() {
        const auto count = static_cast<int>(world_.controls.size());
        if (count < 3 && pick(2) == 0)
            world_.addControl();
        else if (count > 1)
            world_.removeControl(static_cast<std::size_t>(pick(count)));
    }
    void sortLists() {
        const int column = pick(2) == 0 ? 1 : 7;
        const bool downwards = pick(2) == 0;
        for (const auto& list : world_.globals.LogViews.all()) {
            list->setSort(column - 1,
                          downwards ? widgets::SortOrder::Descending : widgets::SortOrder::Ascending);
            list->setSorted(true);
        }
        oracle_.sort(column, downwards);
    }
    void reopen() {
        const bool keep = oracle_.keep;
        world_.close();
        oracle_.rows.clear(); // a closed log is empty but stays sorted
        ASSERT_TRUE(world_.open());
        world_.globals.options.KeepInSession = keep;
        world_.globals.LogWindowVisible = true;
    }
    void changeFont() {
        base::Font font;
        font.points = static_cast<float>(8 + pick(4));
        const auto lists = world_.globals.LogViews.all();
        lists[static_cast<std::size_t>(pick(static_cast<int>(lists.size())))]->setFont(font);
    }
    static void checkWidths(const widgets::ListView& list) {
        for (const int column : {1, 7}) {
            base::Twips widest = 0;
            for (int position = 1; position <= list.rowCount(); ++position)
                widest = std::max(widest, list.textWidth(list.row(position).columnText(column)));
            ASSERT_EQ(list.widestCell(column), widest);
        }
    }

    std::mt19937 random_;
    LogWorld world_;
    Oracle oracle_;
};

TEST_P(RandomRun, KeepsEveryListEqualToTheOracle) {
    for (int i = 0; i < 1500; ++i) {
        SCOPED_TRACE("seed " + std::to_string(GetParam()) + ", step " + std::to_string(i));
        step();
        check();
        if (HasFatalFailure()) return;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomRun, testing::Range(1U, 13U));

} // namespace
} // namespace cvlog::core
