#include "view/column_headers_object.h"

#include "tests/view/list_face_fixture.h"

#include <limits>

namespace cvlog::view {
namespace {

using automation::ObjectRef;
using automation::Value;
using platform::headless::peerOf;
namespace code = automation::code;

class ColumnHeadersTest : public ListFaceTest {
protected:
    int told() { return peerOf(world.list()).told("columnChanged"); }
};

TEST_F(ColumnHeadersTest, GivesColumnsByPlaceOrKey) {
    EXPECT_EQ(text(header(1), u"Key"), u"Date");
    EXPECT_EQ(number(child(headers, u"Item", u"METHOD"), u"Index"), 3);
    EXPECT_EQ(text(child(headers, u"", 7), u""), text(header(7), u"Text")) << "default members";
    EXPECT_EQ(number(child(face, u"ColumnHeaders", u"name"), u"Index"), 5);
    for (const int index : {-1, 0, 8})
        EXPECT_EQ(codeOf([&] { headers->invoke(u"Item", index); }), code::kIndexOutOfBounds);
    EXPECT_EQ(codeOf([&] { headers->invoke(u"Item", u"none"); }), code::kElementNotFound);
    EXPECT_EQ(codeOf([&] { headers->invoke(u"Item", u""); }), code::kElementNotFound);
}

TEST_F(ColumnHeadersTest, TellsWhatAColumnIs) {
    const ObjectRef method = header(3);
    EXPECT_EQ(text(method, u"Text"), world.list().column(3).caption);
    EXPECT_EQ(number(method, u"SubItemIndex"), 2);
    EXPECT_EQ(number(method, u"Position"), 3);
    EXPECT_EQ(automation::toSingle(method->get(u"Width")), world.list().column(3).width);
    EXPECT_EQ(number(method, u"Alignment"), 0);
    EXPECT_EQ(text(method, u"Tag"), u"");
    for (const char16_t* fixed : {u"Key", u"Index", u"SubItemIndex"})
        EXPECT_EQ(codeOf([&] { method->put(fixed, 1); }), code::kMemberNotFound);
}

TEST_F(ColumnHeadersTest, ChangesShowInTheListAndItsPeer) {
    const ObjectRef method = header(3);
    const int before = told();
    method->put(u"Text", u"Step");
    method->put(u"Width", 1234.5F);
    method->put(u"Position", 1);
    method->put(u"Alignment", 2);
    method->put(u"Icon", u"SortUp");
    EXPECT_EQ(told(), before + 5);
    method->put(u"Tag", u"note");
    EXPECT_EQ(told(), before + 5) << "nobody sees a tag";
    const widgets::Column& column = world.list().column(3);
    EXPECT_EQ(column.caption, u"Step");
    EXPECT_EQ(column.width, 1234.5F);
    EXPECT_EQ(column.position, 1);
    EXPECT_EQ(column.alignment, widgets::Alignment::Center);
    EXPECT_EQ(column.icon, u"SortUp");
    EXPECT_EQ(text(method, u"Tag"), u"note");
    EXPECT_EQ(number(header(1), u"Position"), 2) << "the columns between made room";
    EXPECT_EQ(number(method, u"Alignment"), 2);
    EXPECT_EQ(text(method, u"Icon"), u"SortUp");
}

TEST_F(ColumnHeadersTest, TakesAnIconByItsPlaceInTheHeaderIcons) {
    const auto icons = std::make_shared<widgets::ImageList>();
    icons->add(u"one", nullptr);
    icons->add(u"two", nullptr);
    world.list().setHeaderIcons(icons);
    header(2)->put(u"Icon", 2);
    EXPECT_EQ(text(header(2), u"Icon"), u"two");
    EXPECT_EQ(codeOf([&] { header(2)->put(u"Icon", 3); }), code::kIndexOutOfBounds);
    header(2)->put(u"Icon", 0);
    EXPECT_EQ(text(header(2), u"Icon"), u"");
}

TEST_F(ColumnHeadersTest, RefusesValuesThatAreNone) {
    const ObjectRef column = header(2);
    const int before = told();
    for (const int position : {0, -1, 8})
        EXPECT_EQ(codeOf([&] { column->put(u"Position", position); }), code::kInvalidPropertyValue);
    for (const int alignment : {-1, 3})
        EXPECT_EQ(codeOf([&] { column->put(u"Alignment", alignment); }), code::kInvalidPropertyValue);
    for (const double width :
         {-1.0, 1e7, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()})
        EXPECT_EQ(codeOf([&] { column->put(u"Width", width); }), code::kInvalidPropertyValue) << width;
    EXPECT_EQ(codeOf([&] { column->put(u"Width", u"wide"); }), code::kTypeMismatch);
    EXPECT_EQ(told(), before);
    column->put(u"Width", 0);
    EXPECT_EQ(world.list().column(2).width, 0) << "hidden";
}

TEST_F(ColumnHeadersTest, AColumnThatTheListNoLongerHasFailsClearly) {
    const ObjectRef last = header(7);
    std::vector<widgets::Column> fewer(6);
    world.list().setColumns(fewer);
    expectEveryMember(last, code::kElementGone);
}

} // namespace
} // namespace cvlog::view
