// How lists sort: what the collator is asked, what rows remember, and what a failure leaves.

#include "base/text.h"
#include "tests/widgets/fragile_collator.h"
#include "tests/widgets/list_view_fixture.h"
#include "widgets/row_ranks.h"

#include <algorithm>
#include <random>
#include <stdexcept>

namespace cvlog::widgets {
namespace {

class SortingTest : public testing::Test {
protected:
    void fill(const Texts& texts) {
        for (const auto& text : texts) list_.append(rowWith(text));
    }
    Texts texts(const ListView& list) const {
        Texts result;
        for (int i = 1; i <= list.rowCount(); ++i) result.emplace_back(list.row(i).text());
        return result;
    }
    static RowPtr rowWith(std::u16string text) { return makeRow({std::move(text), u"", u"", {}}); }

    FragileCollator collator_;
    platform::headless::HeadlessTextMeasurer measurer_;
    ListView list_{collator_, measurer_};
};

TEST_F(SortingTest, AsksTheCollatorOnceForEachDistinctText) {
    fill({u"b", u"a", u"b", u"A", u"b", u"a"});
    list_.setSorted(true);
    EXPECT_EQ(collator_.calls, 3);
    list_.setSort(0, SortOrder::Descending);
    list_.setSorted(true);
    EXPECT_EQ(collator_.calls, 3) << "the rows remember";
}

TEST_F(SortingTest, SharesTheKeysWithOtherListsThatShowTheRows) {
    ListView other(collator_, measurer_);
    fill({u"c", u"b", u"a"});
    for (int i = 1; i <= 3; ++i) other.append(list_.content(i));
    list_.setSorted(true);
    other.setSorted(true);
    EXPECT_EQ(collator_.calls, 3);
    const RowPtr inserted = rowWith(u"bb");
    list_.append(inserted);
    other.append(inserted);
    EXPECT_EQ(collator_.calls, 4) << "a new row's text is the only one to be looked at";
    EXPECT_EQ(texts(other), (Texts{u"a", u"b", u"bb", u"c"}));
}

TEST_F(SortingTest, SortsTwoListsByDifferentColumnsOfTheSameRows) {
    ListView other(collator_, measurer_);
    for (const char16_t* text : {u"1", u"3", u"2"}) {
        const RowPtr row = makeRow(
            {text, u"", u"", {{u"Back", std::u16string(3U - (text[0] - u'0'), u'x'), u"", u"", u""}}});
        list_.append(row);
        other.append(row);
    }
    list_.setSorted(true);
    other.setSort(1, SortOrder::Ascending);
    other.setSorted(true);
    const RowPtr last = makeRow({u"25", u"", u"", {{u"Back", u"xx", u"", u"", u""}}});
    list_.append(last);
    other.append(last);
    EXPECT_EQ(texts(list_), (Texts{u"1", u"2", u"25", u"3"}));
    EXPECT_EQ(texts(other), (Texts{u"3", u"2", u"1", u"25"}));
}

TEST_F(SortingTest, ForgetsTheKeyOfATextThatChanges) {
    fill({u"a", u"b", u"c"});
    list_.setSorted(true);
    list_.replace(1, list_.row(1).with(RowField::Text, u"z"));
    EXPECT_EQ(texts(list_), (Texts{u"z", u"b", u"c"})) << "it keeps its place";
    list_.setSorted(true);
    EXPECT_EQ(texts(list_), (Texts{u"b", u"c", u"z"}));
    const int calls = collator_.calls;
    list_.replace(3, list_.row(3).with(RowField::Tag, u"other"));
    list_.setSorted(true);
    EXPECT_EQ(collator_.calls, calls) << "a tag is no text";
}

TEST_F(SortingTest, FindsTheSamePlaceInEveryListThatHasLostItsOrderAlike) {
    ListView other(collator_, measurer_);
    std::mt19937 random(3);
    const auto text = [&] { return base::decimal(static_cast<int>(random() % 900)); };
    for (int i = 0; i < 700; ++i) fill({text()});
    list_.setSorted(true);
    for (int i = 1; i <= 700; ++i)
        other.insert(1 + static_cast<int>(random() % static_cast<unsigned>(i)), list_.content(i));
    other.setSorted(true); // made another way: its chunks lie elsewhere
    for (int i = 1; i <= 700; ++i) other.replace(i, list_.content(i));
    for (int i = 0; i < 40; ++i) {
        const int position = 1 + static_cast<int>(random() % 700);
        const RowPtr content = rowWith(text());
        list_.replace(position, content);
        other.replace(position, content);
    }
    for (int i = 0; i < 200; ++i) {
        const RowPtr content = rowWith(text());
        list_.append(content);
        other.append(content);
    }
    EXPECT_EQ(texts(list_), texts(other));
}

TEST_F(SortingTest, LeavesTheListAsItWasWhenTheCollatorFails) {
    fill({u"c", u"a", u"b"});
    list_.select(2, true);
    list_.focusRow(3);
    collator_.callsUntilFailure = 2;
    EXPECT_THROW(list_.setSorted(true), std::runtime_error);
    EXPECT_FALSE(list_.sorted());
    EXPECT_EQ(texts(list_), (Texts{u"c", u"a", u"b"}));
    EXPECT_TRUE(list_.isSelected(2));
    EXPECT_EQ(list_.focusedRow(), 3);
    list_.setSorted(true);
    collator_.callsUntilFailure = 1;
    EXPECT_THROW(list_.setSort(1, SortOrder::Descending), std::runtime_error);
    EXPECT_EQ(list_.sortKey(), 0);
    EXPECT_EQ(list_.sortOrder(), SortOrder::Ascending);
    collator_.callsUntilFailure = 1;
    EXPECT_THROW(list_.append(rowWith(u"d")), std::runtime_error);
    EXPECT_EQ(texts(list_), (Texts{u"a", u"b", u"c"}));
}

/// Keys of all lengths whose beginnings are equal for long, so that every way of telling them apart is needed.
TEST(RowRanking, RanksAsTheKeysCompare) {
    platform::headless::HeadlessCollator collator;
    std::mt19937 random(11);
    std::vector<RowPtr> rows;
    std::vector<const RowContent*> contents;
    std::vector<std::u16string> seen{u""};
    for (int i = 0; i < 3000; ++i) {
        std::u16string text = seen[random() % seen.size()].substr(0, random() % 60);
        for (auto length = random() % 12; length > 0; --length) text += u"aAb \u4E00\u00E4"[random() % 6];
        seen.push_back(text);
        rows.push_back(makeRow({text, u"", u"", {}}));
        contents.push_back(rows.back().get());
    }
    const RowRanks ranked = rankRows(contents, 1, collator);
    for (int i = 0; i < 40'000; ++i) {
        const std::size_t left = random() % rows.size();
        const std::size_t right = random() % rows.size();
        const std::string leftKey = collator.sortKey(std::u16string(contents[left]->text()));
        const std::string rightKey = collator.sortKey(std::u16string(contents[right]->text()));
        ASSERT_EQ(ranked.ranks[left] < ranked.ranks[right], leftKey < rightKey);
        ASSERT_EQ(ranked.ranks[left] == ranked.ranks[right], leftKey == rightKey);
    }
    EXPECT_EQ(*std::max_element(ranked.ranks.begin(), ranked.ranks.end()) + 1, ranked.count);
}

TEST(RowRanking, RanksAnewWhenRowsComeFromDifferentRankings) {
    platform::headless::HeadlessCollator collator;
    const RowPtr rows[] = {makeRow({u"b", u"", u"", {}}), makeRow({u"d", u"", u"", {}}),
                           makeRow({u"a", u"", u"", {}}), makeRow({u"c", u"", u"", {}})};
    const RowContent* const all[] = {rows[0].get(), rows[1].get(), rows[2].get(), rows[3].get()};
    rankRows(std::span(all).first(2), 1, collator);
    rankRows(std::span(all).last(2), 1, collator);
    EXPECT_EQ(rankRows(all, 1, collator).ranks, (std::vector<std::uint32_t>{1, 3, 0, 2}));
    EXPECT_EQ(placesOf(rankRows(all, 1, collator), true), (std::vector<std::uint32_t>{2, 0, 3, 1}));
}

} // namespace
} // namespace cvlog::widgets
