#include "view/controls_object.h"

#include "tests/view/list_face_fixture.h"

namespace cvlog::view {
namespace {

using automation::ObjectRef;
namespace code = automation::code;

class ControlsObjectTest : public ListFaceTest {};

TEST_F(ControlsObjectTest, HoldsTheListUnderItsNameWithoutRegardToCase) {
    const ObjectRef controls = controlsOf(0);
    for (const char16_t* name : {u"lvLog", u"LVLOG", u"lvlog"})
        EXPECT_EQ(number(child(controls, u"Item", name), u"hWnd"), world.list().windowHandle());
    EXPECT_EQ(child(controls, u"Item", 1), child(controls, u"Item", u"lvLog")) << "one object";
    EXPECT_EQ(child(controls, u"", u"lvLog"), face) << "Item is the default member";
    EXPECT_EQ(child(world.controls[0], u"Controls", u"lvLog"), face) << "Controls(name) in one call";
}

TEST_F(ControlsObjectTest, RaisesControlNotFoundForWhatItDoesNotHold) {
    const ObjectRef controls = controlsOf(0);
    EXPECT_EQ(codeOf([&] { controls->invoke(u"Item", u"lvLog2"); }), code::kControlNotFound);
    EXPECT_EQ(codeOf([&] { controls->invoke(u"Item", u""); }), code::kControlNotFound);
    for (const int place : {-1, 0, number(controls, u"Count") + 1})
        EXPECT_EQ(codeOf([&] { controls->invoke(u"Item", place); }), code::kControlNotFound);
    EXPECT_EQ(static_cast<std::uint32_t>(code::kControlNotFound) & 0xFFFFU, 730U);
}

TEST_F(ControlsObjectTest, OutlivesItsControlAndAnswersForTheListWithAnError) {
    const ObjectRef controls = controlsOf(0);
    const std::int32_t count = number(controls, u"Count");
    world.removeControl(0);
    EXPECT_EQ(number(controls, u"Count"), count);
    EXPECT_EQ(codeOf([&] { child(controls, u"Item", u"lvLog")->get(u"ListItems"); }), code::kElementGone);
}

TEST_F(ControlsObjectTest, IsReadOnly) {
    EXPECT_EQ(codeOf([&] { world.controls[0]->put(u"Controls", ObjectRef()); }), code::kMemberNotFound);
}

TEST(Controls, TakesAnyNumberOfObjectsInTheirOrder) {
    const ObjectRef inner = makeControls({});
    const ObjectRef both = makeControls({{u"first", inner}, {u"second", nullptr}});
    EXPECT_EQ(automation::toInt32(both->get(u"Count")), 2);
    EXPECT_EQ(automation::toObject(both->invoke(u"Item", 1)), inner);
    EXPECT_EQ(automation::toObject(both->invoke(u"Item", u"SECOND")), nullptr);
}

} // namespace
} // namespace cvlog::view
