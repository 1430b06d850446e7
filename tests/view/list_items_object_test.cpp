#include "view/list_items_object.h"

#include "tests/view/list_face_fixture.h"

#include <functional>

namespace cvlog::view {
namespace {

using automation::Missing;
using automation::ObjectRef;
using automation::Value;
using platform::headless::peerOf;
namespace code = automation::code;
using Texts = std::vector<std::u16string>;

class ListItemsTest : public ListFaceTest {};

TEST_F(ListItemsTest, GivesRowsByPlaceOrKey) {
    item(2)->put(u"Key", u"Second");
    EXPECT_EQ(text(item(2), u"Text"), u"a");
    EXPECT_EQ(number(child(items, u"Item", u"SECOND"), u"Index"), 2);
    EXPECT_EQ(text(child(items, u"", 3), u""), u"b") << "default members";
    EXPECT_EQ(text(child(face, u"ListItems", 3), u"Text"), u"b") << "ListItems(3) in one call";
    EXPECT_EQ(text(child(items, u"Item", 2.0), u"Text"), u"a") << "scripts count in doubles";
}

TEST_F(ListItemsTest, RefusesPlacesAndKeysThatAreNone) {
    for (const int index : {-1, 0, 4})
        EXPECT_EQ(codeOf([&] { items->invoke(u"Item", index); }), code::kIndexOutOfBounds);
    EXPECT_EQ(codeOf([&] { items->invoke(u"Item", u"1"); }), code::kElementNotFound) << "a text is a key";
    EXPECT_EQ(codeOf([&] { items->invoke(u"Item", u""); }), code::kElementNotFound);
    EXPECT_EQ(codeOf([&] { items->invoke(u"Item", face); }), code::kUnknownName)
        << "an object without a value";
    EXPECT_EQ(codeOf([&] { items->invoke(u"Remove", 4); }), code::kIndexOutOfBounds);
    EXPECT_EQ(codeOf([&] { items->invoke(u"Remove", u"none"); }), code::kElementNotFound);
    EXPECT_EQ(static_cast<std::uint32_t>(code::kIndexOutOfBounds) & 0xFFFFU, 35600U);
    EXPECT_EQ(static_cast<std::uint32_t>(code::kElementNotFound) & 0xFFFFU, 35601U);
}

TEST_F(ListItemsTest, AddsAtTheEndOrAtAPlace) {
    const ObjectRef last = child(items, u"Add");
    EXPECT_EQ(number(last, u"Index"), 4);
    EXPECT_EQ(text(last, u"Text"), u"");
    const ObjectRef first = child(items, u"Add", 1, u"Key", u"new", Missing{}, u"Bad");
    EXPECT_EQ(number(first, u"Index"), 1);
    EXPECT_EQ(text(first, u"Key"), u"Key");
    EXPECT_EQ(text(first, u"SmallIcon"), u"Bad");
    EXPECT_EQ(texts(), (Texts{u"new", u"c", u"a", u"b", u""}));
    EXPECT_EQ(number(last, u"Index"), 5) << "a row is held by itself, not by its place";
    child(items, u"Add", u"key", Missing{}, u"before");
    EXPECT_EQ(texts().front(), u"before");
    EXPECT_EQ(peerOf(world.list()).told("rowsInserted"), 6);
}

/// A host's object whose default value is a place in the list, and that does something when it is asked.
class MeddlingIndex : public automation::DispatchObject {
public:
    const automation::DispatchTable& dispatchTable() const override {
        static const automation::DispatchTable table = {
            {u"Value",
             0,
             automation::MemberKind::PropertyGet,
             automation::Type::Int32,
             {},
             automation::on<MeddlingIndex>([](MeddlingIndex& self, std::span<Value>) {
                 self.meddle();
                 return self.place;
             })}};
        return table;
    }
    std::function<void()> meddle = [] {};
    std::int32_t place = 3;
};

TEST_F(ListItemsTest, AnIndexThatIsAnObjectMayEmptyTheListWhileItIsRead) {
    const auto index = std::make_shared<MeddlingIndex>();
    EXPECT_EQ(text(child(items, u"Item", index), u"Text"), u"b");
    const ObjectRef row = item(1);
    index->meddle = [this] { world.list().clear(); };
    EXPECT_EQ(codeOf([&] { items->invoke(u"Add", index); }), code::kIndexOutOfBounds);
    EXPECT_EQ(codeOf([&] { items->invoke(u"Item", index); }), code::kIndexOutOfBounds);
    EXPECT_EQ(codeOf([&] { items->invoke(u"Remove", index); }), code::kIndexOutOfBounds);
    EXPECT_EQ(codeOf([&] { face->invoke(u"FindItem", u"a", 0, index); }), code::kIndexOutOfBounds);
    EXPECT_EQ(codeOf([&] { row->put(u"SmallIcon", index); }), code::kElementGone);
    EXPECT_EQ(codeOf([&] { row->invoke(u"ListSubItems", index); }), code::kElementGone);
    EXPECT_EQ(world.list().rowCount(), 0);
}

TEST_F(ListItemsTest, AddsNothingForAWrongPlaceKeyOrIcon) {
    child(items, u"Add", Missing{}, u"Key");
    EXPECT_EQ(codeOf([&] { items->invoke(u"Add", Missing{}, u"KEY"); }), code::kKeyNotUnique);
    EXPECT_EQ(codeOf([&] { items->invoke(u"Add", 6); }), code::kIndexOutOfBounds);
    EXPECT_EQ(codeOf([&] { items->invoke(u"Add", 0); }), code::kIndexOutOfBounds);
    EXPECT_EQ(codeOf([&] { items->invoke(u"Add", u"none"); }), code::kElementNotFound);
    EXPECT_EQ(codeOf([&] { items->invoke(u"Add", 1, u"", u"", 0, 999); }), code::kIndexOutOfBounds);
    EXPECT_EQ(world.list().rowCount(), 4);
}

TEST_F(ListItemsTest, AddsToASortedListAtTheSortedPlace) {
    face->put(u"Sorted", true);
    const ObjectRef added = child(items, u"Add", 1, u"K", u"bb");
    EXPECT_EQ(number(added, u"Index"), 3);
    EXPECT_EQ(text(added, u"Text"), u"bb");
    EXPECT_EQ(world.list().rowOf(u"K"), 3);
}

TEST_F(ListItemsTest, TakesIconsByKeyOrPlace) {
    const auto icons = std::make_shared<widgets::ImageList>();
    icons->add(u"one", nullptr);
    icons->add(u"two", nullptr);
    world.list().setSmallIcons(icons);
    EXPECT_EQ(text(child(items, u"Add", Missing{}, u"", u"", 1, 2), u"SmallIcon"), u"two");
    item(1)->put(u"SmallIcon", 1);
    EXPECT_EQ(text(item(1), u"SmallIcon"), u"one");
    item(1)->put(u"SmallIcon", u"unknown");
    EXPECT_EQ(text(item(1), u"SmallIcon"), u"unknown") << "shows none";
    item(1)->put(u"SmallIcon", Value());
    EXPECT_EQ(text(item(1), u"SmallIcon"), u"");
    EXPECT_EQ(codeOf([&] { item(1)->put(u"SmallIcon", 3); }), code::kIndexOutOfBounds);
}

TEST_F(ListItemsTest, RemovesByPlaceOrKeyAndClears) {
    item(3)->put(u"Key", u"last");
    items->invoke(u"Remove", 1);
    EXPECT_EQ(texts(), (Texts{u"a", u"b"}));
    items->invoke(u"Remove", u"LAST");
    EXPECT_EQ(texts(), (Texts{u"a"}));
    items->invoke(u"Clear");
    EXPECT_EQ(number(items, u"Count"), 0);
    EXPECT_EQ(peerOf(world.list()).told("cleared"), 1);
}

TEST_F(ListItemsTest, ARowThatHasGoneFailsClearly) {
    const ObjectRef removed = item(1);
    const ObjectRef cleared = item(2);
    const ObjectRef cells = child(cleared, u"ListSubItems");
    const ObjectRef cell = child(cells, u"Item", u"Method");
    items->invoke(u"Remove", 1);
    EXPECT_EQ(text(cleared, u"Text"), u"a");
    expectEveryMember(removed, code::kElementGone);
    items->invoke(u"Clear");
    world.list().append(rowOf(u"later"));
    for (const ObjectRef& object : {cleared, cells, cell}) expectEveryMember(object, code::kElementGone);
    EXPECT_EQ(codeOf([&] { face->put(u"SelectedItem", removed); }), code::kElementGone);
    EXPECT_EQ(texts(), (Texts{u"later"}));
}

TEST_F(ListItemsTest, ARowReadsAndChangesItsTexts) {
    const ObjectRef row = item(2);
    EXPECT_EQ(text(row, u"Text"), u"a");
    EXPECT_EQ(text(row, u"Tag"), u"tag a");
    EXPECT_EQ(text(row, u"SmallIcon"), u"Ok");
    EXPECT_EQ(text(row, u"Key"), u"");
    row->put(u"Text", u"A");
    row->put(u"Tag", 12);
    row->put(u"SmallIcon", u"Bad");
    EXPECT_EQ(world.list().row(2).text(), u"A");
    EXPECT_EQ(world.list().row(2).tag(), u"12");
    EXPECT_EQ(world.list().row(2).smallIcon(), u"Bad");
    EXPECT_EQ(peerOf(world.list()).told("rowChanged"), 3);
    EXPECT_EQ(codeOf([&] { row->put(u"Index", 1); }), code::kMemberNotFound);
}

TEST_F(ListItemsTest, ARowIsFollowedWhereverItMoves) {
    const ObjectRef row = item(1);
    face->put(u"Sorted", true);
    EXPECT_EQ(number(row, u"Index"), 3);
    world.list().insert(1, rowOf(u"0"));
    EXPECT_EQ(number(row, u"Index"), 4);
    row->put(u"Text", u"still c");
    EXPECT_EQ(world.list().row(4).text(), u"still c");
}

TEST_F(ListItemsTest, ARowsKeyIsUniqueInItsList) {
    item(1)->put(u"Key", u"Key");
    EXPECT_EQ(codeOf([&] { item(2)->put(u"Key", u"key"); }), code::kKeyNotUnique);
    item(1)->put(u"Key", u"");
    item(2)->put(u"Key", u"key");
    EXPECT_EQ(text(item(2), u"Key"), u"key");
}

TEST_F(ListItemsTest, ARowIsSelectedAndBroughtIntoView) {
    const ObjectRef row = item(3);
    EXPECT_FALSE(truth(row, u"Selected"));
    row->put(u"Selected", true);
    EXPECT_TRUE(world.list().isSelected(3));
    EXPECT_EQ(peerOf(world.list()).told("selectionChanged"), 1);
    row->put(u"Selected", false);
    EXPECT_FALSE(truth(row, u"Selected"));
    row->invoke(u"EnsureVisible");
    EXPECT_EQ(peerOf(world.list()).scrolledTo().back(), 3);
}

TEST_F(ListItemsTest, ChangesOfARowReachNoOtherList) {
    world.addControl();
    ASSERT_EQ(world.list(1).content(1).get(), world.list().content(1).get()) << "the content is shared";
    item(1)->put(u"Text", u"mine");
    putAt(item(1), u"SubItems", 1, u"mine too");
    EXPECT_EQ(world.list(1).row(1).text(), u"c");
    EXPECT_EQ(world.list(1).row(1).cellText(1), u"elapsed c");
    items->invoke(u"Clear");
    EXPECT_EQ(world.list(1).rowCount(), 3);
}

TEST_F(ListItemsTest, AChangeIsSeenByTheColumnsWidths) {
    const base::Twips before = world.list().widestCell(2);
    putAt(item(1), u"SubItems", 1, u"a text that is much longer than any other in this column");
    EXPECT_GT(world.list().widestCell(2), before);
    putAt(item(1), u"SubItems", 1, u"elapsed c");
    EXPECT_EQ(world.list().widestCell(2), before);
}

TEST_F(ListItemsTest, WalkingAllRowsKeepsEveryObjectOnItsRow) {
    for (int i = 0; i < 2000; ++i) world.list().append(rowOf(base::decimal(i)));
    std::vector<ObjectRef> all;
    for (int i = 1; i <= number(items, u"Count"); ++i) all.push_back(item(i));
    items->invoke(u"Remove", 2);
    items->invoke(u"Add", 1);
    items->invoke(u"Add", 1);
    EXPECT_EQ(number(all[0], u"Index"), 3);
    for (std::size_t i = 2; i < all.size(); ++i) EXPECT_EQ(number(all[i], u"Index"), static_cast<int>(i) + 2);
}

} // namespace
} // namespace cvlog::view
