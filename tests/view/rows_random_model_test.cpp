// Long random runs of what users do with rows, on one to three lists that come and go, held against a plain oracle: the
// log as entries with their child rows.

#include "base/text.h"
#include "details/expansion.h"
#include "tests/support/opened_log.h"
#include "view/list_set.h"
#include "view/log_columns.h"
#include "view/row_commands.h"
#include "view/sorting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

namespace cvlog::view {
namespace {

using tests::LogWorld;
using tests::Names;

struct Entry {
    std::string name;
    std::string date;
    std::vector<int> children; // their numbers
};

struct Oracle {
    std::vector<Entry> entries;
    int sortColumn = 1; // 1 date, 7 message
    bool descending = false;
    bool sorted = false;
    std::set<std::u16string> hidden;

    bool before(const Entry& left, const Entry& right) const {
        const Entry& first = descending ? right : left;
        const Entry& second = descending ? left : right;
        return sortColumn == 1 ? first.date < second.date : first.name < second.name;
    }
    void add(Entry entry) {
        const auto byOrder = [this](const Entry& left, const Entry& right) { return before(left, right); };
        entries.insert(sorted ? std::upper_bound(entries.begin(), entries.end(), entry, byOrder)
                              : entries.end(),
                       std::move(entry));
    }
    void collapseAll() {
        for (Entry& entry : entries) entry.children.clear();
    }
    void click(int column) {
        collapseAll();
        descending = column == sortColumn ? !descending : descending;
        sortColumn = column;
        sorted = true;
        std::stable_sort(entries.begin(), entries.end(),
                         [this](const Entry& left, const Entry& right) { return before(left, right); });
    }
    Names rows() const {
        Names names;
        for (const Entry& entry : entries) {
            names.push_back(entry.name);
            for (const int child : entry.children)
                names.push_back("+" + entry.name + "." + std::to_string(child));
        }
        return names;
    }
    void remove(const std::set<std::string>& selected) {
        for (Entry& entry : entries)
            std::erase_if(entry.children, [&](int child) {
                return selected.contains("+" + entry.name + "." + std::to_string(child));
            });
        std::erase_if(entries, [&](const Entry& entry) { return selected.contains(entry.name); });
    }
    bool empty() const { return entries.empty(); }
};

class RandomRows : public testing::TestWithParam<unsigned> {
protected:
    RandomRows() : owner_(tests::keepingWorld(2)), world_(*owner_), random_(GetParam()) {}

    void step() {
        switch (pick(14)) {
        case 0:
            return sort();
        case 1:
            return toggle();
        case 2:
        case 3:
            return open();
        case 4:
            return collapse();
        case 5:
            return collapseAll();
        case 6:
        case 7:
            return removeSome();
        case 8:
            return clearOrReset();
        case 9:
            return changeControls();
        case 10:
            return copySome();
        default:
            return add();
        }
    }

    void check() {
        ASSERT_EQ(tests::namesOf(*firstList()), oracle_.rows());
        tests::expectSound(world_);
        for (const auto& list : world_.globals.LogViews.all()) {
            ASSERT_EQ(list->sorted(), oracle_.sorted);
            ASSERT_EQ(list->sortKey() + 1, oracle_.sortColumn);
            ASSERT_EQ(list->sortOrder() == widgets::SortOrder::Descending, oracle_.descending);
            for (int column = 1; column <= 7; ++column)
                ASSERT_EQ(list->column(column).width == 0, oracle_.hidden.contains(list->column(column).key));
        }
        ASSERT_EQ(world_.engine.records().size(), static_cast<std::size_t>(count_)) << "one for each report";
        ASSERT_EQ(world_.host.cursor, 0);
        ASSERT_EQ(world_.platform.peers.book.faults, std::vector<std::string>());
    }

private:
    int pick(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
    core::LogViews::ListRef firstList() { return world_.globals.LogViews.first(); }
    core::LogViews::ListRef anyList() {
        const auto lists = world_.globals.LogViews.all();
        return lists[static_cast<std::size_t>(pick(static_cast<int>(lists.size())))];
    }
    Entry& anyEntry() {
        return oracle_.entries[static_cast<std::size_t>(pick(static_cast<int>(oracle_.entries.size())))];
    }

    void add() {
        if (pick(3) == 0) world_.platform.clock.advance(1);
        // Names come in any order, so that sorting moves rows.
        const std::string name = "e" + std::to_string(1000 + pick(9000)) + "-" + std::to_string(++count_);
        tests::addEntry(world_, name);
        oracle_.add({name, base::toUtf8(base::formatDateTime(world_.platform.clock.time)), {}});
    }
    void sort() {
        const int column = pick(2) == 0 ? 1 : 7;
        SortByColumn(world_.globals, anyList(), column);
        oracle_.click(column);
    }
    void toggle() {
        const std::u16string keys[] = {u"Elapsed", u"Type", u"Name"};
        const std::u16string key = keys[pick(3)];
        const bool show = oracle_.hidden.erase(key) != 0;
        if (!show) oracle_.hidden.insert(key);
        ShowColumn(world_.globals, key, show);
    }
    void open() {
        if (oracle_.empty()) return;
        Entry& entry = anyEntry();
        if (!entry.children.empty()) return;
        const int children = 1 + pick(3);
        tests::openEntry(world_, tests::placeOf(*firstList(), entry.name), children);
        for (int number = 1; number <= children; ++number) entry.children.push_back(number);
        oracle_.sorted = false; // an expansion switches sorting off
    }
    void collapse() {
        if (oracle_.empty()) return;
        Entry& entry = anyEntry();
        const auto list = anyList();
        const int place = tests::placeOf(*list, entry.name);
        const int behind = static_cast<int>(entry.children.size());
        details::CollapseSelectedEntry(world_.globals, list, place + (behind > 0 ? pick(behind + 1) : 0));
        entry.children.clear();
    }
    void collapseAll() {
        details::CollapseEntry(world_.globals, anyList(), details::kAllEntries);
        oracle_.collapseAll();
    }
    std::set<std::string> selectSome(widgets::ListView& list) {
        list.selectAll(false);
        std::set<std::string> selected;
        const Names names = tests::namesOf(list);
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (pick(4) != 0) continue;
            list.select(static_cast<int>(i) + 1, true);
            selected.insert(names[i]);
        }
        return selected;
    }
    void removeSome() {
        const auto list = anyList();
        const std::set<std::string> selected = selectSome(*list);
        DeleteRows(world_.globals, list);
        oracle_.remove(selected);
    }
    void copySome() {
        const auto list = anyList();
        const std::size_t lines = selectSome(*list).size();
        CopyRows(world_.globals, list);
        const std::u16string text = world_.platform.clipboard.text.value();
        EXPECT_EQ(std::count(text.begin(), text.end(), u'\n'), static_cast<std::ptrdiff_t>(lines));
        EXPECT_EQ(std::count(text.begin(), text.end(), u'\t'), static_cast<std::ptrdiff_t>(6 * lines));
    }
    void clearOrReset() {
        if (pick(4) != 0) return;
        oracle_.entries.clear();
        if (pick(2) == 0) return ClearLists(world_.globals);
        ResetLists(world_.globals);
        oracle_.sorted = oracle_.descending = false;
        oracle_.sortColumn = 1;
    }
    void changeControls() {
        const auto count = static_cast<int>(world_.controls.size());
        if (count < 3 && pick(2) == 0)
            world_.addControl();
        else if (count > 1)
            world_.removeControl(static_cast<std::size_t>(pick(count)));
    }

    std::unique_ptr<LogWorld> owner_;
    LogWorld& world_;
    std::mt19937 random_;
    Oracle oracle_;
    int count_ = 0;
};

TEST_P(RandomRows, StayEqualToTheOracleInEveryList) {
    for (int i = 0; i < 800; ++i) {
        SCOPED_TRACE("seed " + std::to_string(GetParam()) + ", step " + std::to_string(i));
        step();
        check();
        if (HasFailure()) return;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomRows, testing::Range(1U, 13U));

} // namespace
} // namespace cvlog::view
