// Three sorted lists that show the same rows, against a plain oracle and with a collator that may fail.

#include "base/text.h"
#include "tests/widgets/fragile_collator.h"
#include "tests/widgets/list_view_fixture.h"

#include <algorithm>
#include <memory>
#include <random>
#include <stdexcept>

namespace cvlog::widgets {
namespace {

struct OracleRow {
    int number;
    std::u16string texts[3];
    bool selected = false;
    std::u16string key = {};
};

/// What a list is meant to hold, by plain means.
struct Oracle {
    bool before(const OracleRow& left, const OracleRow& right) const {
        const auto column = static_cast<std::size_t>(sortKey);
        const int compared =
            platform::headless::HeadlessCollator::compare(left.texts[column], right.texts[column]);
        return descending ? compared > 0 : compared < 0;
    }
    void sort() {
        std::stable_sort(rows.begin(), rows.end(), [this](const OracleRow& left, const OracleRow& right) {
            return before(left, right);
        });
    }
    bool inOrder() const {
        return std::is_sorted(
            rows.begin(), rows.end(),
            [this](const OracleRow& left, const OracleRow& right) { return before(left, right); });
    }
    void insert(int position, OracleRow row) {
        auto place = rows.begin() + (position - 1);
        if (sorted)
            place = std::find_if(rows.begin(), rows.end(),
                                 [&](const OracleRow& other) { return before(row, other); });
        rows.insert(place, std::move(row));
    }

    std::vector<OracleRow> rows;
    int focusedNumber = 0;
    bool sorted = false;
    int sortKey = 0;
    bool descending = false;
};

/// Every change is made in three lists that share the contents of their rows; one of them has a collator that may
/// fail meanwhile, and is then checked to be as it was before the change is made again.
class ThreeLists : public testing::TestWithParam<unsigned> {
protected:
    struct One {
        std::unique_ptr<ListView> list;
        Oracle oracle;
        std::unique_ptr<ListView::Batch> batch;
    };

    ThreeLists() {
        for (One& one : all_) {
            one.list = std::make_unique<ListView>(collator_, measurer_);
            one.list->setColumns({{u"First", u"F", 1000, 0, u"", Alignment::Left},
                                  {u"Second", u"S", 1000, 0, u"", Alignment::Left},
                                  {u"Third", u"T", 0, 0, u"", Alignment::Left}});
            one.list->attach(factory_.makeListView(*one.list));
        }
    }
    int pick(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }

    OracleRow makeOracleRow() {
        constexpr const char16_t* kTexts[] = {u"",         u"a",       u"A",     u"1:00:05",
                                              u"10:00:05", u"2:00:05", u"\u00E4"};
        std::u16string many = u"row ";
        for (int length = pick(12); length > 0; --length) many += static_cast<char16_t>(u'a' + pick(2));
        return {++lastNumber_, {kTexts[pick(7)], std::move(many), kTexts[pick(3)]}};
    }
    static RowPtr contentOf(const OracleRow& row) {
        return makeRow({row.texts[0],
                        base::decimal(row.number),
                        u"",
                        {{u"S", row.texts[1], u"", u"", u""}, {u"T", row.texts[2], u"", u"", u""}}});
    }

    template <class Change>
    void changeAll(Change&& change) {
        for (One& one : all_) {
            collator_.callsUntilFailure = pick(4) == 0 ? 1 + pick(8) : 0;
            try {
                change(*one.list);
            } catch (const std::runtime_error&) {
                ++failures_;
                check(one);
                collator_.callsUntilFailure = 0;
                change(*one.list);
            }
            collator_.callsUntilFailure = 0;
        }
    }
    template <class Change>
    void tellOracles(Change&& change) {
        for (One& one : all_) change(one.oracle);
    }
    Oracle& oracle() { return all_[0].oracle; }
    int rowCount() { return static_cast<int>(oracle().rows.size()); }

    void insert() {
        if (oracle().sorted && !oracle().inOrder()) setSorted(true); // else its place is nobody's business
        const OracleRow row = makeOracleRow();
        const RowPtr content = contentOf(row);
        const int position = 1 + pick(rowCount() + 1);
        changeAll([&](ListView& list) { list.insert(position, content); });
        tellOracles([&](Oracle& each) { each.insert(position, row); });
    }
    void remove() {
        if (rowCount() == 0) return;
        const int position = 1 + pick(rowCount());
        changeAll([&](ListView& list) { list.remove(position); });
        tellOracles([&](Oracle& each) {
            const auto gone = each.rows.begin() + (position - 1);
            if (gone->number == each.focusedNumber) each.focusedNumber = 0;
            each.rows.erase(gone);
        });
    }
    void replace() {
        if (rowCount() == 0) return;
        const int position = 1 + pick(rowCount());
        OracleRow row = makeOracleRow();
        row.number = oracle().rows[static_cast<std::size_t>(position - 1)].number;
        const RowPtr content = contentOf(row);
        changeAll([&](ListView& list) { list.replace(position, content); });
        tellOracles([&](Oracle& each) {
            OracleRow& own = each.rows[static_cast<std::size_t>(position - 1)];
            std::copy(std::begin(row.texts), std::end(row.texts), std::begin(own.texts));
        });
    }
    void clear() {
        changeAll([](ListView& list) { list.clear(); });
        tellOracles([](Oracle& each) {
            each.rows.clear();
            each.focusedNumber = 0;
        });
    }
    void setSort() {
        const int key = pick(3);
        const bool descending = pick(2) == 0;
        changeAll([&](ListView& list) {
            list.setSort(key, descending ? SortOrder::Descending : SortOrder::Ascending);
        });
        tellOracles([&](Oracle& each) {
            each.sortKey = key;
            each.descending = descending;
            if (each.sorted) each.sort();
        });
    }
    void setSorted(bool sorted) {
        changeAll([&](ListView& list) { list.setSorted(sorted); });
        tellOracles([&](Oracle& each) {
            each.sorted = sorted;
            if (sorted) each.sort();
        });
    }
    /// What the user does in one list only.
    void changeOne() {
        One& one = all_[static_cast<std::size_t>(pick(3))];
        if (rowCount() == 0) return;
        const int position = 1 + pick(rowCount());
        OracleRow& row = one.oracle.rows[static_cast<std::size_t>(position - 1)];
        const int what = pick(4);
        if (what == 0) {
            row.selected = !row.selected;
            one.list->select(position, row.selected);
        } else if (what == 1) {
            one.oracle.focusedNumber = row.number;
            one.list->focusRow(position);
        } else if (what == 2) {
            row.key = row.key.empty() ? u"key " + base::decimal(row.number) : u"";
            ASSERT_TRUE(one.list->setRowKey(position, row.key));
        } else if (one.batch) {
            one.batch.reset();
        } else {
            one.batch = std::make_unique<ListView::Batch>(*one.list);
        }
    }
    void step() {
        const int what = pick(100);
        if (what < 45) return insert();
        if (what < 60) return remove();
        if (what < 66) return replace();
        if (what < 78) return setSort();
        if (what < 82) return setSorted(pick(4) != 0);
        if (what < 83) return clear();
        changeOne();
    }

    static void check(const One& one) {
        const ListView& list = *one.list;
        const Oracle& oracle = one.oracle;
        ASSERT_EQ(list.rowCount(), static_cast<int>(oracle.rows.size()));
        ASSERT_EQ(list.sorted(), oracle.sorted);
        ASSERT_EQ(list.sortKey(), oracle.sortKey);
        ASSERT_EQ(list.sortOrder() == SortOrder::Descending, oracle.descending);
        int selected = 0;
        int focused = 0;
        for (int position = 1; position <= list.rowCount(); ++position) {
            const OracleRow& row = oracle.rows[static_cast<std::size_t>(position - 1)];
            ASSERT_EQ(list.row(position).tag(), base::decimal(row.number)) << "row " << position;
            ASSERT_EQ(list.row(position).text(), row.texts[0]) << "row " << position;
            ASSERT_EQ(list.isSelected(position), row.selected) << "row " << position;
            ASSERT_EQ(list.rowKey(position), row.key) << "row " << position;
            selected += row.selected ? 1 : 0;
            if (row.number == oracle.focusedNumber) focused = position;
        }
        ASSERT_EQ(list.selectedCount(), selected);
        ASSERT_EQ(list.focusedRow(), focused);
    }
    void checkAll() {
        for (const One& one : all_) check(one);
        ASSERT_EQ(factory_.book.faults, std::vector<std::string>());
    }

    std::mt19937 random_{GetParam()};
    FragileCollator collator_;
    platform::headless::CallGate gate_;
    platform::headless::HeadlessTextMeasurer measurer_;
    platform::headless::HeadlessPeerFactory factory_{gate_};
    One all_[3];
    int lastNumber_ = 0;
    int failures_ = 0;
};

TEST_P(ThreeLists, HoldWhatAPlainListHoldsAlsoAfterTheCollatorFailed) {
    for (int i = 0; i < 2000; ++i) {
        SCOPED_TRACE("seed " + std::to_string(GetParam()) + ", step " + std::to_string(i));
        step();
        checkAll();
        if (HasFatalFailure()) return;
    }
    EXPECT_GT(failures_, 20);
}

INSTANTIATE_TEST_SUITE_P(Seeds, ThreeLists, testing::Range(1U, 9U));

} // namespace
} // namespace cvlog::widgets
