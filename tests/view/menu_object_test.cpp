// The menu items as others see them, through the control's Controls.

#include "view/menu_object.h"

#include "tests/view/list_face_fixture.h"
#include "view/log_menu.h"

namespace cvlog::view {
namespace {

using automation::ObjectRef;
using automation::Value;
namespace code = automation::code;

class MenuObject : public ListFaceTest {
protected:
    ObjectRef control(std::u16string_view name) { return child(controlsOf(0), u"Item", name); }
    widgets::MenuItem& model(std::u16string_view name) {
        return *findMenuItem(world.controls[0]->mnuPopUpLog(), name);
    }
};

TEST_F(MenuObject, IsThereForEveryItemByItsName) {
    const ObjectRef controls = controlsOf(0);
    constexpr const char16_t* kNames[] = {
        u"mnuPopUpLog", u"mnuLogShowErrors", u"mnuLogCollaps", u"mnuLogExpand",
        u"mnuLogSep1",  u"mnuLogDelete",     u"mnuLogClear",   u"mnuLogCopy",
        u"mnuLogSep2",  u"mnuLogSave",       u"mnuLogSep3",    u"mnuLogHistory",
        u"mnuCol",      u"mnuColumn",        u"mnuLogDocked",  u"mnuLogHide"};
    EXPECT_EQ(number(controls, u"Count"), 1 + static_cast<int>(std::size(kNames)));
    int place = 2; // the list comes first
    for (const char16_t* name : kNames) {
        EXPECT_EQ(child(controls, u"Item", place++), control(name));
        if (name != std::u16string_view(u"mnuColumn")) {
            EXPECT_EQ(text(control(name), u"Name"), name);
        }
    }
}

TEST_F(MenuObject, IsLive) {
    const ObjectRef hide = control(u"MNULOGHIDE");
    EXPECT_EQ(text(hide, u"Caption"), u"&Hide");
    hide->put(u"Caption", u"&Away");
    hide->put(u"Visible", false);
    hide->put(u"Enabled", 0);
    hide->put(u"Checked", u"True");
    hide->put(u"Tag", u"note");
    hide->put(u"HelpContextID", 12);
    const widgets::MenuItem& item = model(u"mnuLogHide");
    EXPECT_EQ(item.caption, u"&Away");
    EXPECT_FALSE(item.visible);
    EXPECT_FALSE(item.enabled);
    EXPECT_TRUE(item.checked);
    EXPECT_EQ(item.tag, u"note");
    EXPECT_EQ(item.helpContext, 12);
    model(u"mnuLogHide").visible = true;
    EXPECT_TRUE(truth(hide, u"Visible"));
    EXPECT_FALSE(truth(hide, u"Enabled"));
    EXPECT_TRUE(truth(hide, u"Checked"));
    EXPECT_EQ(text(hide, u"Tag"), u"note");
    EXPECT_EQ(number(hide, u"HelpContextID"), 12);
}

TEST_F(MenuObject, HasANameOfItsOwnAndNoPlaceOutsideOfAnArray) {
    const ObjectRef hide = control(u"mnuLogHide");
    EXPECT_EQ(codeOf([&] { hide->put(u"Name", u"other"); }), code::kMemberNotFound);
    EXPECT_EQ(codeOf([&] { hide->get(u"Index"); }), code::kNotAnArray);
}

TEST_F(MenuObject, OfTheColumnsIsAnArrayFromZero) {
    const ObjectRef columns = control(u"mnuColumn");
    EXPECT_EQ(number(columns, u"Count"), 7);
    EXPECT_EQ(number(columns, u"LBound"), 0);
    EXPECT_EQ(number(columns, u"UBound"), 6);
    for (int i = 0; i < 7; ++i) {
        const ObjectRef item = child(columns, u"Item", i);
        EXPECT_EQ(text(item, u"Name"), u"mnuColumn");
        EXPECT_EQ(number(item, u"Index"), i);
        EXPECT_EQ(text(item, u"Tag"), world.list().column(i + 1).key);
        EXPECT_EQ(text(item, u"Caption"), world.list().column(i + 1).caption);
        EXPECT_TRUE(truth(item, u"Checked"));
    }
    EXPECT_EQ(text(child(columns, u"", 2), u"Tag"), u"Method") << "Item is the default member";
    for (const int place : {-1, 7})
        EXPECT_EQ(codeOf([&] { columns->invoke(u"Item", place); }), code::kNoArrayElement);
}

TEST_F(MenuObject, KeptBeyondItsControlAnswersWithAnError) {
    const ObjectRef hide = control(u"mnuLogHide");
    const ObjectRef columns = control(u"mnuColumn");
    const ObjectRef column = child(columns, u"Item", 1);
    world.removeControl(0);
    expectEveryMember(hide, code::kElementGone);
    expectEveryMember(column, code::kElementGone);
    expectEveryMember(columns, code::kElementGone);
}

TEST_F(MenuObject, DecidesWhatTheMenuShows) {
    control(u"mnuLogHide")->put(u"Visible", false);
    control(u"mnuLogHistory")->put(u"Enabled", false);
    control(u"mnuLogSep2")->put(u"Visible", false);
    platform::headless::peerOf(world.list()).userReleasesButton(widgets::MouseButton::Right);
    ASSERT_EQ(world.platform.peers.menus.shown.size(), 1U);
    for (const auto& item : world.platform.peers.menus.shown[0].items) {
        EXPECT_NE(item.name, u"mnuLogHide");
        EXPECT_NE(item.name, u"mnuLogSep2");
        if (item.name == u"mnuLogHistory") {
            EXPECT_FALSE(item.enabled);
        }
    }
}

} // namespace
} // namespace cvlog::view
