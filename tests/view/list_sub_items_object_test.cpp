#include "view/list_sub_items_object.h"

#include "tests/view/list_face_fixture.h"

namespace cvlog::view {
namespace {

using automation::Missing;
using automation::ObjectRef;
using automation::Value;
using platform::headless::peerOf;
namespace code = automation::code;

class ListSubItemsTest : public ListFaceTest {
protected:
    void SetUp() override {
        ListFaceTest::SetUp();
        cells = child(item(1), u"ListSubItems");
    }
    ObjectRef cell(int index) { return child(cells, u"Item", index); }
    const widgets::RowContent& row() { return world.list().row(1); }
    ObjectRef cells;
};

TEST_F(ListSubItemsTest, GivesSubItemsByPlaceOrKey) {
    EXPECT_EQ(number(cells, u"Count"), 2);
    EXPECT_EQ(text(cell(1), u"Text"), u"elapsed c");
    EXPECT_EQ(number(child(cells, u"Item", u"METHOD"), u"Index"), 2);
    EXPECT_EQ(text(child(item(1), u"ListSubItems", u"Method"), u""), u"method c") << "default members";
    for (const int index : {-1, 0, 3})
        EXPECT_EQ(codeOf([&] { cells->invoke(u"Item", index); }), code::kIndexOutOfBounds);
    EXPECT_EQ(codeOf([&] { cells->invoke(u"Item", u"none"); }), code::kElementNotFound);
    EXPECT_EQ(codeOf([&] { cells->invoke(u"Item", u""); }), code::kElementNotFound);
}

TEST_F(ListSubItemsTest, ASubItemReadsAndChangesItsTexts) {
    const ObjectRef first = cell(1);
    EXPECT_EQ(text(first, u"Key"), u"Elapsed");
    EXPECT_EQ(text(first, u"Tag"), u"et");
    EXPECT_EQ(text(first, u"ReportIcon"), u"ei");
    EXPECT_EQ(text(first, u"ToolTipText"), u"tip");
    first->put(u"Text", u"1");
    first->put(u"Tag", u"2");
    first->put(u"ReportIcon", u"3");
    first->put(u"ToolTipText", u"4");
    EXPECT_EQ(peerOf(world.list()).told("rowChanged"), 4);
    EXPECT_EQ(row().cellText(1), u"1");
    EXPECT_EQ(row().cellTag(1), u"2");
    EXPECT_EQ(row().cellIcon(1), u"3");
    EXPECT_EQ(row().cellToolTip(1), u"4");
    EXPECT_EQ(row().cellText(2), u"method c");
    EXPECT_EQ(codeOf([&] { first->put(u"Index", 1); }), code::kMemberNotFound);
}

TEST_F(ListSubItemsTest, ASubItemTakesAnIconByItsPlace) {
    const auto icons = std::make_shared<widgets::ImageList>();
    icons->add(u"one", nullptr);
    world.list().setSmallIcons(icons);
    cell(2)->put(u"ReportIcon", 1);
    EXPECT_EQ(row().cellIcon(2), u"one");
    EXPECT_EQ(codeOf([&] { cell(2)->put(u"ReportIcon", 2); }), code::kIndexOutOfBounds);
    EXPECT_EQ(row().cellIcon(2), u"one");
}

TEST_F(ListSubItemsTest, ASubItemsKeyIsUniqueInItsRow) {
    const ObjectRef first = cell(1);
    EXPECT_EQ(codeOf([&] { first->put(u"Key", u"METHOD"); }), code::kKeyNotUnique);
    first->put(u"Key", u"ELAPSED");
    first->put(u"Key", u"New");
    EXPECT_EQ(row().cellOf(u"new"), 1);
    EXPECT_EQ(text(first, u"Text"), u"elapsed c") << "still found under its new key";
    EXPECT_EQ(world.list().row(2).cellOf(u"Elapsed"), 1) << "the other rows keep theirs";
}

TEST_F(ListSubItemsTest, AddsSubItemsAnywhere) {
    const ObjectRef second = cell(2);
    const ObjectRef first = child(cells, u"Add", 1, u"Extra", u"text", u"icon", u"tip");
    EXPECT_EQ(number(first, u"Index"), 1);
    EXPECT_EQ(number(second, u"Index"), 3) << "a sub-item is found by its key";
    EXPECT_EQ(row().cellOf(u"extra"), 1);
    EXPECT_EQ(row().cellText(1), u"text");
    EXPECT_EQ(row().cellIcon(1), u"icon");
    EXPECT_EQ(row().cellToolTip(1), u"tip");
    const ObjectRef last = child(cells, u"Add");
    EXPECT_EQ(number(last, u"Index"), 4);
    EXPECT_EQ(text(last, u"Key"), u"");
    last->put(u"Text", u"without a key");
    EXPECT_EQ(row().cellText(4), u"without a key");
    EXPECT_EQ(codeOf([&] { cells->invoke(u"Add", Missing{}, u"EXTRA"); }), code::kKeyNotUnique);
    EXPECT_EQ(codeOf([&] { cells->invoke(u"Add", 6); }), code::kIndexOutOfBounds);
    EXPECT_EQ(number(cells, u"Count"), 4);
}

TEST_F(ListSubItemsTest, RemovesSubItems) {
    const ObjectRef first = cell(1);
    const ObjectRef second = cell(2);
    cells->invoke(u"Remove", u"elapsed");
    EXPECT_EQ(number(second, u"Index"), 1);
    expectEveryMember(first, code::kElementGone);
    EXPECT_EQ(codeOf([&] { cells->invoke(u"Remove", 2); }), code::kIndexOutOfBounds);
    cells->invoke(u"Clear");
    EXPECT_EQ(number(cells, u"Count"), 0);
    expectEveryMember(second, code::kElementGone);
    EXPECT_EQ(world.list().row(2).cellCount(), 2);
}

TEST_F(ListSubItemsTest, SubItemsAreReadByTheirPlace) {
    EXPECT_EQ(automation::toText(item(1)->invoke(u"SubItems", 1)), u"elapsed c");
    EXPECT_EQ(automation::toText(item(1)->invoke(u"SubItems", 2)), u"method c");
    EXPECT_EQ(automation::toText(item(1)->invoke(u"SubItems", 6)), u"")
        << "a column that the row has nothing for";
    for (const int index : {-1, 0, 7})
        EXPECT_EQ(codeOf([&] { item(1)->invoke(u"SubItems", index); }), code::kIndexOutOfBounds);
    EXPECT_EQ(codeOf([&] { item(1)->get(u"SubItems"); }), code::kParameterNotOptional);
}

TEST_F(ListSubItemsTest, SubItemsArePutByTheirPlace) {
    putAt(item(1), u"SubItems", 2, u"changed");
    EXPECT_EQ(row().cellText(2), u"changed");
    EXPECT_EQ(row().cellKey(2), u"Method");
    EXPECT_EQ(peerOf(world.list()).told("rowChanged"), 1);
    for (const int index : {-1, 0, 7})
        EXPECT_EQ(codeOf([&] { putAt(item(1), u"SubItems", index, u"x"); }), code::kIndexOutOfBounds);
    EXPECT_EQ(codeOf([&] { item(1)->put(u"SubItems", u"x"); }), code::kParameterNotOptional);
    EXPECT_EQ(peerOf(world.list()).told("rowChanged"), 1);
}

TEST_F(ListSubItemsTest, APutBeyondTheLastSubItemMakesThoseBetweenWithTheirColumnsKeys) {
    const ObjectRef added = child(items, u"Add");
    putAt(added, u"SubItems", 4, u"name");
    const widgets::RowContent& made = world.list().row(4);
    ASSERT_EQ(made.cellCount(), 4);
    EXPECT_EQ(made.cellOf(u"Name"), 4);
    EXPECT_EQ(made.cellOf(u"Elapsed"), 1);
    EXPECT_EQ(made.cellText(4), u"name");
    EXPECT_EQ(made.cellText(1), u"");
}

TEST_F(ListSubItemsTest, APutNeverMakesASecondSubItemOfOneKey) {
    cell(1)->put(u"Key", u"Type");
    putAt(item(1), u"SubItems", 3, u"type");
    EXPECT_EQ(row().cellOf(u"Type"), 1);
    EXPECT_EQ(row().cellKey(3), u"");
    EXPECT_EQ(row().cellText(3), u"type");
}

} // namespace
} // namespace cvlog::view
