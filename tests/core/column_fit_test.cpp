#include "core/column_fit.h"

#include "core/log_row.h"
#include "tests/support/log_world.h"

#include <gtest/gtest.h>

#include <random>

namespace cvlog::core {
namespace {

using widgets::Alignment;

class ColumnFit : public testing::Test {
protected:
    ColumnFit() {
        std::vector<widgets::Column> columns{{u"Date", u"Date", 10, 0, u"", Alignment::Right}};
        for (const std::u16string_view key : kLogCellKeys)
            columns.push_back({std::u16string(key), std::u16string(key), 10, 0, u"", Alignment::Right});
        list.setColumns(columns);
    }
    void append(const std::u16string& text) {
        widgets::Row row{text, {}, {}, {}};
        for (const std::u16string_view key : kLogCellKeys)
            row.cells.push_back({std::u16string(key), text, {}, {}, {}});
        list.append(widgets::makeRow(row));
    }
    base::Twips wide(const std::u16string& text) const { return list.textWidth(text); }

    platform::headless::HeadlessCollator collator;
    platform::headless::HeadlessTextMeasurer measurer;
    widgets::ListView list{collator, measurer};
};

constexpr float kPadding[] = {420, 180, 180, 180, 650, 650, 180};

TEST_F(ColumnFit, MeasuresOneRowWithThePaddingOfEachColumn) {
    append(u"longer than the other");
    append(u"short");
    AutoSizeColumns(list, 2);
    for (int column = 1; column <= 7; ++column) {
        EXPECT_EQ(list.column(column).width, wide(u"short") + kPadding[column - 1]) << column;
        EXPECT_EQ(list.column(column).alignment, Alignment::Left);
    }
}

TEST_F(ColumnFit, MeasuresAllRowsAndTheCaptionsWithoutARow) {
    append(u"short");
    append(u"longer than all of the captions");
    append(u"short");
    AutoSizeColumns(list, 0);
    for (int column = 1; column <= 7; ++column)
        EXPECT_EQ(list.column(column).width, wide(u"longer than all of the captions") + kPadding[column - 1])
            << column;
}

TEST_F(ColumnFit, OfManyRowsGivesTheWidthsThatFittingThemInTurnGives) {
    const auto widthsAfter = [&](float start, const auto& fit) {
        std::vector<float> widths;
        for (int column = 1; column <= 7; ++column) list.setColumnWidth(column, column == 3 ? 0 : start);
        fit();
        for (int column = 1; column <= 7; ++column) widths.push_back(list.column(column).width);
        return widths;
    };
    std::mt19937 random(5);
    append(u"first");
    for (int round = 0; round < 200; ++round) {
        const int first = list.rowCount() + 1;
        for (auto n = 1 + random() % 9; n > 0; --n)
            append(std::u16string(random() % 12, random() % 2 == 0 ? u'i' : u'M'));
        if (random() % 2 == 0) list.widestCell(7); // remembered from now on, or not yet
        const auto start = static_cast<float>(1 + random() % 3000);
        const std::vector<float> inTurn = widthsAfter(start, [&] {
            for (int row = first; row <= list.rowCount(); ++row) AutoSizeColumns(list, row);
        });
        ASSERT_EQ(widthsAfter(start, [&] { AutoSizeColumns(list, first, list.rowCount()); }), inTurn)
            << round;
    }
}

TEST_F(ColumnFit, MeasuresTheCaptionsForTheOnlyRow) {
    append(u"x");
    AutoSizeColumns(list, 1);
    for (int column = 1; column <= 7; ++column)
        EXPECT_EQ(list.column(column).width,
                  std::max(wide(list.column(column).caption) + 650, wide(u"x") + kPadding[column - 1]));
}

TEST_F(ColumnFit, MeasuresTheCaptionsOfAnEmptyList) {
    AutoSizeColumns(list, 0);
    EXPECT_EQ(list.column(1).width, wide(u"Date") + 650);
}

TEST_F(ColumnFit, LeavesTheCaptionsOutForOneOfSeveralRows) {
    append(u"x");
    append(u"x");
    AutoSizeColumns(list, 2);
    EXPECT_EQ(list.column(2).width, wide(u"x") + 180);
}

TEST_F(ColumnFit, NeverShowsAHiddenColumn) {
    list.setColumnWidth(3, 0);
    append(u"text");
    AutoSizeColumns(list, 1);
    append(u"text");
    AutoSizeColumns(list, 2);
    AutoSizeColumns(list, 0);
    EXPECT_EQ(list.column(3).width, 0);
}

TEST_F(ColumnFit, NeverShrinksAndLeavesTheAlignmentThen) {
    append(u"x");
    append(u"x");
    list.setColumnWidth(7, 5000);
    AutoSizeColumns(list, 2);
    AutoSizeColumns(list, 0);
    EXPECT_EQ(list.column(7).width, 5000);
    EXPECT_EQ(list.column(7).alignment, Alignment::Right);
}

TEST_F(ColumnFit, LeavesAGainOfTwoTwipsAndTakesAnyMore) {
    append(u"x");
    append(u"x");
    const base::Twips needed = wide(u"x") + 180;
    for (const auto& [gain, taken] :
         {std::pair{2.0F, false}, std::pair{2.01F, true}, std::pair{3.0F, true}}) {
        list.setColumnWidth(2, needed - gain);
        list.setColumnAlignment(2, Alignment::Right);
        AutoSizeColumns(list, 2);
        EXPECT_EQ(list.column(2).width, taken ? needed : needed - gain) << gain;
        EXPECT_EQ(list.column(2).alignment, taken ? Alignment::Left : Alignment::Right) << gain;
    }
}

TEST_F(ColumnFit, GivesWidthsToColumnsNotToTheirPlacesOnScreen) {
    list.setColumnPosition(7, 1);
    append(u"x");
    append(u"x");
    AutoSizeColumns(list, 2);
    EXPECT_EQ(list.column(1).width, wide(u"x") + 420);
    EXPECT_EQ(list.column(7).width, wide(u"x") + 180);
}

TEST_F(ColumnFit, TakesCellsByPositionAndPaddingByTheColumnsKey) {
    append(u"x");
    widgets::Row child{u"x", {}, {}, {{u"ObjID", u"a text", {}, {}, {}}, {u"Num", u"y", {}, {}, {}}}};
    list.append(widgets::makeRow(child));
    AutoSizeColumns(list, 2);
    EXPECT_EQ(list.column(2).width, wide(u"a text") + 180);
    EXPECT_EQ(list.column(5).width, 650) << "there is no such cell";
}

} // namespace
} // namespace cvlog::core
