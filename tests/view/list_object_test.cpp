#include "view/list_object.h"

#include "tests/view/list_face_fixture.h"
#include "view/list_items_object.h"

namespace cvlog::view {
namespace {

using automation::ObjectRef;
using automation::Value;
using platform::headless::peerOf;
namespace code = automation::code;
using Texts = std::vector<std::u16string>;

class ListObjectTest : public ListFaceTest {};

TEST_F(ListObjectTest, ShowsItsRowsAndColumnsLive) {
    EXPECT_EQ(number(items, u"Count"), 3);
    EXPECT_EQ(number(headers, u"Count"), 7);
    world.list().append(rowOf(u"d"));
    EXPECT_EQ(number(items, u"Count"), 4);
    EXPECT_EQ(text(item(4), u"Text"), u"d");
}

TEST_F(ListObjectTest, TellsTheFactsOfItsKind) {
    EXPECT_EQ(number(face, u"View"), 3);
    EXPECT_TRUE(truth(face, u"MultiSelect"));
    EXPECT_EQ(number(face, u"LabelEdit"), 1);
    EXPECT_FALSE(truth(face, u"HideSelection"));
    EXPECT_TRUE(truth(face, u"FullRowSelect"));
    EXPECT_EQ(number(face, u"hwnd"), world.list().windowHandle());
    for (const char16_t* fact :
         {u"View", u"MultiSelect", u"LabelEdit", u"HideSelection", u"FullRowSelect", u"hWnd"})
        EXPECT_EQ(codeOf([&] { face->put(fact, 1); }), code::kMemberNotFound);
}

TEST_F(ListObjectTest, GivesTheSelectedRowOrNothing) {
    EXPECT_EQ(child(face, u"SelectedItem"), nullptr);
    world.list().select(3, true);
    world.list().select(2, true);
    EXPECT_EQ(number(child(face, u"SelectedItem"), u"Index"), 2)
        << "the first, as no selected one has the focus";
    world.list().focusRow(3);
    EXPECT_EQ(number(child(face, u"SelectedItem"), u"Index"), 3);
}

TEST_F(ListObjectTest, SelectsARowBesideTheOthersAndGivesItTheFocus) {
    world.list().select(1, true);
    face->put(u"SelectedItem", item(3));
    EXPECT_EQ(world.list().selectedCount(), 2);
    EXPECT_EQ(world.list().selectedRow(), 3);
    EXPECT_GT(peerOf(world.list()).told("selectionChanged"), 0);
    face->put(u"SelectedItem", ObjectRef());
    EXPECT_EQ(world.list().selectedCount(), 0);
    EXPECT_EQ(child(face, u"SelectedItem"), nullptr);
}

TEST_F(ListObjectTest, SelectsRowsOfItsOwnOnly) {
    world.addControl();
    const ObjectRef other = child(controlsOf(1), u"Item", 1);
    EXPECT_EQ(codeOf([&] { other->put(u"SelectedItem", item(1)); }), code::kElementNotFound);
    EXPECT_EQ(codeOf([&] { face->put(u"SelectedItem", face); }), code::kTypeMismatch);
    EXPECT_EQ(codeOf([&] { face->put(u"SelectedItem", 1); }), code::kTypeMismatch);
    EXPECT_EQ(world.list().selectedCount() + world.list(1).selectedCount(), 0);
}

TEST_F(ListObjectTest, SortsWhenItIsToldTo) {
    EXPECT_FALSE(truth(face, u"Sorted"));
    EXPECT_EQ(number(face, u"SortKey"), 0);
    EXPECT_EQ(number(face, u"SortOrder"), 0);
    face->put(u"Sorted", true);
    EXPECT_EQ(texts(), (Texts{u"a", u"b", u"c"}));
    face->put(u"SortOrder", 1);
    EXPECT_EQ(texts(), (Texts{u"c", u"b", u"a"}));
    EXPECT_EQ(number(face, u"SortOrder"), 1);
    world.list().replace(1, rowOf(u"c")->withCell(2, widgets::CellField::Text, u"a"));
    face->put(u"SortKey", 2);
    EXPECT_EQ(texts(), (Texts{u"b", u"a", u"c"}));
    EXPECT_EQ(number(face, u"SortKey"), 2);
    face->put(u"Sorted", false);
    EXPECT_FALSE(world.list().sorted());
    EXPECT_EQ(texts(), (Texts{u"b", u"a", u"c"})) << "the order stays";
}

TEST_F(ListObjectTest, RefusesSortKeysAndOrdersThatAreNone) {
    for (const int key : {-1, 7})
        EXPECT_EQ(codeOf([&] { face->put(u"SortKey", key); }), code::kInvalidPropertyValue);
    for (const int order : {-1, 2})
        EXPECT_EQ(codeOf([&] { face->put(u"SortOrder", order); }), code::kInvalidPropertyValue);
    face->put(u"SortKey", 6);
    EXPECT_EQ(world.list().sortKey(), 6);
    EXPECT_EQ(world.list().sortOrder(), widgets::SortOrder::Ascending);
}

TEST_F(ListObjectTest, SortsThisListOnly) {
    world.addControl();
    const Texts before = texts(1);
    face->put(u"Sorted", true);
    EXPECT_EQ(texts(1), before);
    EXPECT_FALSE(world.list(1).sorted());
}

TEST_F(ListObjectTest, ARowWhoseTextChangesKeepsItsPlaceUntilTheListSortsAgain) {
    face->put(u"Sorted", true);
    item(1)->put(u"Text", u"z");
    EXPECT_EQ(texts(), (Texts{u"z", u"b", u"c"}));
    face->put(u"Sorted", true);
    EXPECT_EQ(texts(), (Texts{u"b", u"c", u"z"}));
}

TEST_F(ListObjectTest, ShowsAndChangesTheLooks) {
    const auto changes = [this] { return peerOf(world.list()).told("appearanceChanged"); };
    const int before = changes();
    EXPECT_EQ(number(face, u"BackColor"), static_cast<std::int32_t>(0x80000005));
    EXPECT_EQ(number(face, u"ForeColor"), static_cast<std::int32_t>(0x80000008));
    EXPECT_TRUE(truth(face, u"Enabled"));
    face->put(u"BackColor", 0xFF);
    face->put(u"ForeColor", static_cast<std::int32_t>(0x8000000F));
    face->put(u"Enabled", false);
    EXPECT_EQ(world.list().colours(), (widgets::Colours{0xFF, 0x8000000F}));
    EXPECT_EQ(number(face, u"ForeColor"), static_cast<std::int32_t>(0x8000000F));
    EXPECT_FALSE(truth(face, u"Enabled"));
    EXPECT_EQ(changes(), before + 3);
    face->put(u"ForeColor", std::int64_t{0x80000011});
    EXPECT_EQ(world.list().colours().fore, 0x80000011);
}

TEST_F(ListObjectTest, PassesRefreshAndFocusOnToItsPeer) {
    const int before = peerOf(world.list()).told("repaint");
    face->invoke(u"Refresh");
    EXPECT_EQ(peerOf(world.list()).told("repaint"), before + 1);
    face->invoke(u"SetFocus");
    EXPECT_EQ(peerOf(world.list()).told("takeFocus"), 1);
}

TEST_F(ListObjectTest, FindsARowByItsWholeTextWithoutRegardToCase) {
    EXPECT_EQ(number(child(face, u"FindItem", u"B"), u"Index"), 3);
    EXPECT_EQ(child(face, u"FindItem", u""), nullptr);
    EXPECT_EQ(child(face, u"FindItem", u"bb"), nullptr);
}

TEST_F(ListObjectTest, FindsARowBySubItemTagOrBeginningFromAnyRowOn) {
    EXPECT_EQ(number(child(face, u"FindItem", u"METHOD A", 1), u"Index"), 2);
    EXPECT_EQ(child(face, u"FindItem", u"method", 1), nullptr);
    EXPECT_EQ(number(child(face, u"FindItem", u"method", 1, automation::Missing{}, 1), u"Index"), 1);
    EXPECT_EQ(number(child(face, u"FindItem", u"method", 1, 2, 1), u"Index"), 2);
    EXPECT_EQ(number(child(face, u"FindItem", u"Tag b", 2), u"Index"), 3);
    EXPECT_EQ(child(face, u"FindItem", u"tag a", 2, 3), nullptr);
    EXPECT_EQ(codeOf([&] { face->invoke(u"FindItem", u"a", 3); }), code::kInvalidPropertyValue);
    EXPECT_EQ(codeOf([&] { face->invoke(u"FindItem", u"a", 0, 4); }), code::kIndexOutOfBounds);
    EXPECT_EQ(codeOf([&] { face->invoke(u"FindItem", u"a", 0, u"none"); }), code::kElementNotFound);
}

TEST_F(ListObjectTest, GivesTheFirstRowInViewOrNothing) {
    for (int i = 0; i < 60; ++i) world.list().append(rowOf(u"row"));
    world.list().scrollTo(55);
    const int top = peerOf(world.list()).topRow();
    ASSERT_GT(top, 1);
    EXPECT_EQ(number(child(face, u"GetFirstVisible"), u"Index"), top);
    world.list().clear();
    world.list().attach(nullptr);
    EXPECT_EQ(child(face, u"GetFirstVisible"), nullptr);
}

TEST_F(ListObjectTest, ItsFontIsTheControlsFont) {
    const ObjectRef font = child(face, u"Font");
    EXPECT_EQ(font, automation::toObject(world.controls[0]->get(u"Font")));
    font->put(u"Size", 20);
    EXPECT_EQ(world.list().font().points, 20);
    EXPECT_TRUE(world.controls[0]->unsaved()) << "what is changed in the font is to be stored";
}

TEST_F(ListObjectTest, AFontThatIsPutIsTheControlsToo) {
    base::Font look;
    look.points = 30;
    const ObjectRef font = world.platform.fonts.make(look);
    face->put(u"Font", font);
    EXPECT_EQ(world.list().font(), look);
    EXPECT_EQ(automation::toObject(world.controls[0]->get(u"Font")), font);
    EXPECT_EQ(world.controls[0]->properties().font, font);
}

TEST_F(ListObjectTest, WhatIsNoFontIsRefusedAndTheFontStays) {
    const base::Font before = world.list().font();
    EXPECT_EQ(codeOf([&] { face->put(u"Font", ObjectRef()); }), code::kObjectRequired);
    EXPECT_NE(codeOf([&] { face->put(u"Font", items); }), 0);
    EXPECT_EQ(world.list().font(), before);
}

TEST_F(ListObjectTest, EverythingOfAListWhoseControlHasGoneFailsClearly) {
    const ObjectRef row = item(1);
    const ObjectRef cells = child(row, u"ListSubItems");
    const ObjectRef cell = child(cells, u"Item", 1);
    const ObjectRef column = header(1);
    const std::weak_ptr<widgets::ListView> list = world.globals.LogViews.first();
    world.removeControl(0);
    EXPECT_TRUE(list.expired()) << "none of the objects keeps the list";
    for (const ObjectRef& object : {face, items, row, cells, cell, headers, column})
        expectEveryMember(object, code::kElementGone);
}

TEST_F(ListObjectTest, TheObjectsAreValidWhileTheListLives) {
    const auto list = std::make_shared<widgets::ListView>(world.platform.collator, world.platform.measurer);
    const auto font = std::make_shared<ListFont>(world.platform.fonts, list);
    const ObjectRef loose = makeListObject(list, font);
    EXPECT_EQ(number(loose, u"hWnd"), 0);
    EXPECT_EQ(child(loose, u"GetFirstVisible"), nullptr) << "no peer, no view";
    EXPECT_EQ(number(child(loose, u"ListItems"), u"Count"), 0);
}

} // namespace
} // namespace cvlog::view
