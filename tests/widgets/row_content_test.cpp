#include "widgets/row_content.h"

#include "base/text.h"

#include <gtest/gtest.h>

namespace cvlog::widgets {
namespace {

using namespace std::string_literals;

Row sampleRow() {
    return {
        u"text"s,
        u"tag"s,
        u"icon"s,
        {{u"A", u"a1\0x"s, u"a2", u"a3", u"a4"}, {u"B", u"", u"", u"", u""}, {u"C", u"c1", u"", u"c3", u""}}};
}

TEST(RowContent, KeepsEveryTextExactly) {
    const RowPtr row = makeRow(sampleRow());
    EXPECT_EQ(row->text(), u"text");
    EXPECT_EQ(row->tag(), u"tag");
    EXPECT_EQ(row->smallIcon(), u"icon");
    ASSERT_EQ(row->cellCount(), 3);
    EXPECT_EQ(row->cellText(1), u"a1\0x"s);
    EXPECT_EQ(row->cellTag(1), u"a2");
    EXPECT_EQ(row->cellIcon(1), u"a3");
    EXPECT_EQ(row->cellToolTip(1), u"a4");
    EXPECT_EQ(row->cellText(2), u"");
    EXPECT_EQ(row->cellIcon(3), u"c3");
    EXPECT_TRUE(row->edit() == sampleRow());
}

TEST(RowContent, IsMadeOfThreeTextsWhereThereAreNoCells) {
    const RowPtr row = makeRow(u"text", u"", u"Good");
    EXPECT_EQ(row->edit(), (Row{u"text", u"", u"Good", {}}));
    EXPECT_EQ(row->keys(), makeRow(u"", u"", u"")->keys()) << "all share the keys";
    EXPECT_FALSE(row->rememberedWidth(1, 1));
}

TEST(RowContent, FindsCellsByKeyWithoutRegardToCase) {
    const RowPtr row = makeRow(sampleRow());
    EXPECT_EQ(row->cellOf(u"b"), 2);
    EXPECT_EQ(row->cellOf(u"D"), 0);
    EXPECT_EQ(row->cellKey(3), u"C");
}

TEST(RowContent, AnswersEmptyForCellsOutOfRange) {
    const RowPtr row = makeRow(sampleRow());
    for (const int cell : {-1, 0, 4}) {
        EXPECT_EQ(row->cellText(cell), u"");
        EXPECT_EQ(row->cellKey(cell), u"");
    }
}

TEST(RowContent, ShowsItsOwnTextInTheFirstColumnAndCellsByPositionInTheOthers) {
    const RowPtr row = makeRow(sampleRow());
    EXPECT_EQ(row->columnText(1), u"text");
    EXPECT_EQ(row->columnText(2), u"a1\0x"s);
    EXPECT_EQ(row->columnText(4), u"c1");
    EXPECT_EQ(row->columnText(5), u"");
}

TEST(RowContent, SharesKeysOnlyWhenTheyAreItsOwn) {
    const RowPtr first = makeRow(sampleRow());
    const RowPtr second = makeRow(sampleRow(), first->keys());
    EXPECT_EQ(first->keys(), second->keys());
    Row other = sampleRow();
    other.cells[1].key = u"Z";
    EXPECT_EQ(makeRow(other, first->keys())->cellOf(u"Z"), 2);
    other.cells.pop_back();
    EXPECT_EQ(makeRow(other, first->keys())->cellCount(), 2);
}

TEST(RowContent, RemembersWidthsOfOneFontOnly) {
    const RowPtr row = makeRow(sampleRow());
    EXPECT_EQ(row->rememberedWidth(1, 1), std::nullopt);
    row->rememberWidth(1, 1, 100);
    row->rememberWidth(1, 4, 0);
    EXPECT_EQ(row->rememberedWidth(1, 1), 100);
    EXPECT_EQ(row->rememberedWidth(1, 4), 0);
    EXPECT_EQ(row->rememberedWidth(1, 2), std::nullopt);
    EXPECT_EQ(row->rememberedWidth(2, 1), std::nullopt);
    row->rememberWidth(2, 2, 7);
    EXPECT_EQ(row->rememberedWidth(2, 1), std::nullopt);
    EXPECT_EQ(row->rememberedWidth(1, 1), std::nullopt);
    row->rememberWidth(2, 99, 7);
    EXPECT_EQ(row->rememberedWidth(2, 99), std::nullopt);
}

TEST(RowContent, CopiesItselfWithOneTextChangedAndLeavesTheOriginal) {
    const RowPtr row = makeRow(sampleRow());
    const auto expectOnly = [&row](const RowPtr& copy, auto change) {
        Row expected = sampleRow();
        change(expected);
        EXPECT_TRUE(copy->edit() == expected);
        EXPECT_EQ(copy->keys(), row->keys()) << "shared";
        EXPECT_TRUE(row->edit() == sampleRow());
    };
    expectOnly(row->with(RowField::Text, u"a longer text"), [](Row& r) { r.text = u"a longer text"; });
    expectOnly(row->with(RowField::Tag, u""), [](Row& r) { r.tag.clear(); });
    expectOnly(row->with(RowField::SmallIcon, u"x\0y"s), [](Row& r) { r.smallIcon = u"x\0y"s; });
    expectOnly(row->withCell(1, CellField::Text, u""), [](Row& r) { r.cells[0].text.clear(); });
    expectOnly(row->withCell(2, CellField::Tag, u"new"), [](Row& r) { r.cells[1].tag = u"new"; });
    expectOnly(row->withCell(3, CellField::Icon, u"i"), [](Row& r) { r.cells[2].icon = u"i"; });
    expectOnly(row->withCell(3, CellField::ToolTip, u"end"), [](Row& r) { r.cells[2].toolTip = u"end"; });
    expectOnly(row->with(RowField::Text, row->cellText(1)), [](Row& r) { r.text = u"a1\0x"s; });
}

TEST(RowContent, ACopyForgetsTheWidthOfTheChangedTextOnly) {
    const RowPtr row = makeRow(sampleRow());
    for (int column = 1; column <= 4; ++column) row->rememberWidth(1, column, 10.0F);
    const auto known = [](const RowPtr& copy) {
        std::string columns;
        for (int column = 1; column <= 4; ++column) columns += copy->rememberedWidth(1, column) ? '1' : '0';
        return columns;
    };
    EXPECT_EQ(known(row->with(RowField::Text, u"t")), "0111");
    EXPECT_EQ(known(row->withCell(2, CellField::Text, u"t")), "1101");
    EXPECT_EQ(known(row->withCell(2, CellField::Tag, u"t")), "1111");
    EXPECT_EQ(known(row->with(RowField::Tag, u"t")), "1111");
    EXPECT_EQ(known(row), "1111");
    EXPECT_EQ(known(makeRow(sampleRow())->with(RowField::Text, u"t")), "0000");
}

/// A row that is like the sample but for three texts, one of them empty.
RowPtr likeSample(const RowPtr& model) {
    const OwnText own[] = {
        {RowField::Tag, u"own tag"}, {1, CellField::Text, u""}, {2, CellField::Text, u"own b"}};
    return makeRowLike(model, own);
}

TEST(RowLikeAnother, HasItsOwnTextsAndAllOthersOfTheModel) {
    const RowPtr model = makeRow(sampleRow());
    const RowPtr row = likeSample(model);
    Row expected = sampleRow();
    expected.tag = u"own tag";
    expected.cells[0].text.clear();
    expected.cells[1].text = u"own b";
    EXPECT_TRUE(row->edit() == expected);
    EXPECT_TRUE(model->edit() == sampleRow());
    EXPECT_EQ(row->model(), model.get());
    EXPECT_EQ(row->keys(), model->keys());
    EXPECT_EQ(row->columnText(3), u"own b");
    EXPECT_EQ(row->columnText(4), u"c1");
    EXPECT_EQ(row->columnText(9), u"");
}

TEST(RowLikeAnother, TakesTextsInAsciiBytesToo) {
    const OwnText own[] = {{RowField::Tag, u"t\u00E4g"},
                           {1, CellField::Tag, std::string_view("12")},
                           {2, CellField::Text, std::string_view("a text that is longer than a block")}};
    const RowPtr row = makeRowLike(makeRow(sampleRow()), own);
    EXPECT_EQ(row->tag(), u"t\u00E4g");
    EXPECT_EQ(row->cellTag(1), u"12");
    EXPECT_EQ(row->cellText(2), u"a text that is longer than a block");
    EXPECT_EQ(row->cellText(3), u"c1");
    Row wide = sampleRow();
    wide.cells.resize(9);
    const OwnText beyond[] = {{9, CellField::Tag, std::string_view("12")}};
    EXPECT_EQ(makeRowLike(makeRow(wide), beyond)->cellTag(9), u"12") << "more fields than a model may have";
}

TEST(RowLikeAnother, MayBeTheModelOfAThird) {
    const OwnText last[] = {{3, CellField::ToolTip, u"tip"}};
    const RowPtr row = makeRowLike(likeSample(makeRow(sampleRow())), last);
    EXPECT_EQ(row->tag(), u"own tag");
    EXPECT_EQ(row->cellToolTip(3), u"tip");
    EXPECT_EQ(row->cellText(2), u"own b");
    EXPECT_EQ(row->smallIcon(), u"icon");
}

TEST(RowContent, LiesInBytesWhenAllItsTextsAreAscii) {
    EXPECT_TRUE(makeRow(sampleRow())->text().inBytes());
    Row wide = sampleRow();
    wide.cells[1].toolTip = u"\u65E5";
    const RowPtr row = makeRow(wide);
    EXPECT_FALSE(row->text().inBytes()) << "one text is enough";
    EXPECT_EQ(row->edit(), wide);
    EXPECT_TRUE(row->withCell(2, CellField::ToolTip, u"day")->text().inBytes());
    EXPECT_FALSE(makeRow(sampleRow())->with(RowField::Tag, u"t\u00E4g")->text().inBytes());
}

TEST(RowLikeAnother, LiesInBytesWhenItsOwnTextsAreAscii) {
    Row sample = sampleRow();
    sample.tag = u"t\u00E4g";
    const RowPtr model = makeRow(sample);
    const OwnText ascii[] = {{RowField::Text, std::string_view("own")}, {1, CellField::Text, u"also own"}};
    const RowPtr row = makeRowLike(model, ascii);
    EXPECT_TRUE(row->text().inBytes());
    EXPECT_TRUE(row->cellText(1).inBytes()) << "also what was given in UTF-16";
    EXPECT_FALSE(row->tag().inBytes()) << "it is the model's";
    EXPECT_EQ(row->text(), u"own");
    EXPECT_EQ(row->cellText(1), u"also own");
    EXPECT_EQ(row->tag(), u"t\u00E4g");
    const OwnText mixed[] = {{RowField::Text, std::string_view("own")}, {1, CellField::Text, u"\xD83D"}};
    const RowPtr other = makeRowLike(model, mixed);
    EXPECT_FALSE(other->text().inBytes());
    EXPECT_EQ(other->text(), u"own");
    EXPECT_EQ(other->cellText(1), u"\xD83D") << "half of a pair is kept";
}

TEST(RowLikeAnother, KnowsWhichColumnsMayDiffer) {
    const RowPtr row = likeSample(makeRow(sampleRow()));
    std::string own;
    for (int column = 1; column <= 4; ++column) own += row->ownsColumn(column) ? '1' : '0';
    EXPECT_EQ(own, "0110");
    row->rememberWidth(1, 3, 30);
    std::vector<int> columns;
    std::u16string texts;
    std::vector<float> widths;
    row->visitOwnColumns(1, {}, [&](int column, base::CompactTextView text, float& width) {
        columns.push_back(column);
        text.appendTo(texts);
        texts += u'.';
        widths.push_back(std::exchange(width, 7.0F));
    });
    EXPECT_EQ(columns, (std::vector<int>{2, 3}));
    EXPECT_EQ(texts, u".own b.");
    EXPECT_EQ(widths, (std::vector<float>{-1, 30})) << "the first was not measured yet";
    EXPECT_EQ(row->rememberedWidth(1, 2), 7.0F);
    EXPECT_TRUE(makeRow(sampleRow())->ownsColumn(1)) << "a row without a model owns all";
}

TEST(RowLikeAnother, SharesTheWidthsOfWhatItHasInCommon) {
    const RowPtr model = makeRow(sampleRow());
    const RowPtr row = likeSample(model);
    const RowPtr other = likeSample(model);
    row->rememberWidth(1, 1, 10);
    row->rememberWidth(1, 2, 20);
    row->rememberWidth(1, 3, 30);
    row->rememberWidth(1, 4, 40);
    for (int column = 1; column <= 4; ++column)
        EXPECT_EQ(row->rememberedWidth(1, column), static_cast<float>(10 * column));
    EXPECT_EQ(other->rememberedWidth(1, 1), 10);
    EXPECT_EQ(other->rememberedWidth(1, 2), std::nullopt);
    EXPECT_EQ(other->rememberedWidth(1, 4), 40);
    EXPECT_EQ(model->rememberedWidth(1, 2), std::nullopt);
    row->rememberWidth(2, 3, 7);
    EXPECT_EQ(row->rememberedWidth(1, 2), std::nullopt) << "another font";
    EXPECT_EQ(row->rememberedWidth(1, 4), 40) << "the model was not measured with it";
}

TEST(RowLikeAnother, IsCopiedWithOneTextChanged) {
    const RowPtr row = likeSample(makeRow(sampleRow()));
    for (int column = 1; column <= 4; ++column) row->rememberWidth(1, column, 10.0F);
    const RowPtr copy = row->withCell(3, CellField::Text, u"changed");
    Row expected = row->edit();
    expected.cells[2].text = u"changed";
    EXPECT_TRUE(copy->edit() == expected);
    EXPECT_EQ(copy->rememberedWidth(1, 4), std::nullopt);
}

TEST(RowLikeAnother, KeepsItsModelAlive) {
    RowPtr model = makeRow(sampleRow());
    const RowPtr row = likeSample(model);
    model = {};
    EXPECT_EQ(row->text(), u"text");
}

TEST(RowLikeAnother, MayHaveAnyNumberOfCells) {
    for (const int cells : {0, 1, 7, 8, 20}) {
        Row wide;
        for (int i = 0; i < cells; ++i) wide.cells.push_back({u"key" + base::decimal(i), u"t", {}, {}, {}});
        std::vector<OwnText> own{{RowField::Text, u"own"}};
        if (cells > 0) own.emplace_back(cells, CellField::ToolTip, u"last");
        const RowPtr row = makeRowLike(makeRow(wide), own);
        EXPECT_EQ(row->text(), u"own") << cells;
        EXPECT_EQ(row->cellToolTip(cells), cells > 0 ? u"last" : u"");
        EXPECT_EQ(row->cellText(1), cells > 0 ? u"t" : u"");
        EXPECT_EQ(row->cellCount(), cells);
    }
}

TEST(RowPtrTest, CountsItsReferences) {
    RowPtr first = makeRow(sampleRow());
    RowPtr second = first;
    RowPtr third = std::move(first);
    EXPECT_FALSE(first);
    EXPECT_EQ(second.get(), third.get());
    second = second; // NOLINT: assignment to itself is the point
    second = RowPtr();
    EXPECT_EQ(third->text(), u"text");
}

TEST(RowCell, IsFoundByKeyForEditing) {
    Row row = sampleRow();
    EXPECT_EQ(row.cell(u"c"), &row.cells[2]);
    EXPECT_EQ(row.cell(u"None"), nullptr);
}

} // namespace
} // namespace cvlog::widgets
