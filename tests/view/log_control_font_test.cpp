#include "hostapi/font_object.h"
#include "platform/headless/headless_fonts.h"
#include "tests/support/failure_code.h"
#include "tests/support/log_world.h"
#include "view/log_control.h"
#include "view/log_control_ids.h"

#include <gtest/gtest.h>

namespace cvlog::view {
namespace {

using automation::ObjectRef;
using automation::Value;
using platform::headless::HeadlessFont;
using tests::LogWorld;

base::Font sized(float points) {
    base::Font font;
    font.face = u"Tahoma";
    font.points = points;
    return font;
}

class LogControlFontTest : public testing::Test {
protected:
    void SetUp() override {
        world.addControl();
        control().propertyChanged = [this](std::int32_t id) { changed.push_back(id); };
    }
    LogControl& control() { return *world.controls.at(0); }
    ObjectRef font() { return automation::toObject(control().get(u"Font")); }
    std::shared_ptr<HeadlessFont> makeFont(float points) {
        return std::static_pointer_cast<HeadlessFont>(world.platform.fonts.make(sized(points)));
    }
    std::int32_t putFails(const Value& value) {
        return tests::failureCode([&] { control().put(u"Font", value); });
    }

    LogWorld world;
    std::vector<std::int32_t> changed;
};

TEST_F(LogControlFontTest, GivesTheListsFontAsTheSameObjectEachTime) {
    const ObjectRef first = font();
    EXPECT_EQ(hostapi::FontObject(first).read(), world.list().font());
    EXPECT_EQ(font(), first);
    EXPECT_TRUE(changed.empty()) << "to look at it changes nothing";
    EXPECT_FALSE(control().unsaved());
}

TEST_F(LogControlFontTest, APutReplacesTheListsFontAndIsAChange) {
    const auto put = makeFont(20);
    control().put(u"Font", ObjectRef(put));
    EXPECT_EQ(font(), put);
    EXPECT_EQ(world.list().font(), sized(20));
    EXPECT_EQ(changed, std::vector<std::int32_t>{kFontId});
    EXPECT_TRUE(control().unsaved());
}

TEST_F(LogControlFontTest, TextIsMeasuredInTheFontThatIsThere) {
    const auto width = [this] { return automation::toSingle(control().invoke(u"TextWidth", u"Message")); };
    const float before = width();
    const base::Twips column = world.list().column(1).width;
    control().put(u"Font", ObjectRef(makeFont(16.5F)));
    EXPECT_NEAR(width(), 2 * before, before / 20);
    font()->put(u"Size", 33);
    EXPECT_NEAR(width(), 4 * before, before / 20);
    EXPECT_EQ(world.list().column(1).width, column) << "columns keep the widths they were set up with";
}

TEST_F(LogControlFontTest, AChangeInTheFontIsSeenInTheListAndIsAChange) {
    font()->put(u"Size", 12);
    EXPECT_FLOAT_EQ(world.list().font().points, 12);
    font()->put(u"Bold", true);
    EXPECT_EQ(world.list().font().weight, 700);
    EXPECT_EQ(changed, (std::vector<std::int32_t>{kFontId, kFontId}));
    EXPECT_TRUE(control().unsaved());
}

TEST_F(LogControlFontTest, AFontThatWasReplacedIsNoLongerListenedTo) {
    const auto first = makeFont(10);
    control().put(u"Font", ObjectRef(first));
    control().put(u"Font", ObjectRef(makeFont(11)));
    EXPECT_EQ(first->listeners(), 0U);
    first->put(u"Size", 30);
    EXPECT_EQ(world.list().font(), sized(11));
}

TEST_F(LogControlFontTest, TheFontThatIsThereMayBePutAgain) {
    const auto same = makeFont(10);
    control().put(u"Font", ObjectRef(same));
    control().put(u"Font", ObjectRef(same));
    EXPECT_EQ(same->listeners(), 1U);
    same->put(u"Size", 14);
    EXPECT_FLOAT_EQ(world.list().font().points, 14);
}

TEST_F(LogControlFontTest, TwoControlsMayShareAFont) {
    world.addControl();
    const auto shared = makeFont(10);
    for (const auto& each : world.controls) each->put(u"Font", ObjectRef(shared));
    shared->put(u"Size", 14);
    EXPECT_EQ(world.list(0).font(), sized(14));
    EXPECT_EQ(world.list(1).font(), sized(14));
    world.removeControl(0);
    EXPECT_EQ(shared->listeners(), 1U);
}

TEST_F(LogControlFontTest, TheControlsEndEndsTheListening) {
    const auto put = makeFont(10);
    control().put(u"Font", ObjectRef(put));
    world.controls.clear();
    EXPECT_EQ(put->listeners(), 0U);
    EXPECT_EQ(put.use_count(), 1);
    put->put(u"Size", 14);
}

TEST_F(LogControlFontTest, KeepsItsFontWhenWhatIsPutIsNone) {
    const ObjectRef before = font();
    EXPECT_EQ(putFails(ObjectRef()), automation::code::kObjectRequired);
    EXPECT_EQ(putFails(Value()), automation::code::kObjectRequired);
    EXPECT_EQ(putFails(automation::Null()), automation::code::kObjectRequired);
    EXPECT_EQ(putFails(world.log), automation::code::kTypeMismatch);
    EXPECT_EQ(putFails(12), automation::code::kTypeMismatch);
    EXPECT_EQ(font(), before);
    EXPECT_EQ(world.list().font(), base::Font());
    EXPECT_TRUE(changed.empty());
}

TEST_F(LogControlFontTest, AFontThatBecomesUnreadableLeavesTheListAsItWas) {
    const auto put = makeFont(10);
    control().put(u"Font", ObjectRef(put));
    put->put(u"Size", 0);
    EXPECT_EQ(world.list().font(), sized(10));
}

TEST_F(LogControlFontTest, AFontThatTellsOfNothingIsHeldAllTheSame) {
    const auto silent = std::make_shared<tests::ScriptObject>("font", world.calls);
    silent->set(u"Name", u"Tahoma").set(u"Size", 20).set(u"Bold", false).set(u"Italic", false);
    silent->set(u"Underline", false).set(u"Strikethrough", false).set(u"Weight", 400).set(u"Charset", 1);
    control().put(u"Font", ObjectRef(silent));
    EXPECT_EQ(font(), silent);
    EXPECT_EQ(world.list().font(), sized(20));
}

TEST_F(LogControlFontTest, AListenerThatReplacesTheFontInsideItsChangeIsObeyed) {
    const auto first = makeFont(10);
    const auto second = makeFont(30);
    control().put(u"Font", ObjectRef(first));
    int rounds = 0;
    control().propertyChanged = [&](std::int32_t) {
        if (rounds++ == 0) control().put(u"Font", ObjectRef(second));
    };
    first->put(u"Size", 14);
    EXPECT_EQ(font(), second);
    EXPECT_EQ(world.list().font(), sized(30));
    EXPECT_EQ(first->listeners(), 0U);
}

TEST_F(LogControlFontTest, AListenerThatDestroysTheControlInsideAChangeOfItsFontIsSurvived) {
    const auto put = makeFont(10);
    control().put(u"Font", ObjectRef(put));
    control().propertyChanged = [this](std::int32_t) { world.controls.clear(); };
    put->put(u"Size", 14);
    EXPECT_TRUE(world.controls.empty());
    EXPECT_EQ(put->listeners(), 0U);
}

TEST_F(LogControlFontTest, ARefusedChangeChangesNothing) {
    std::vector<std::int32_t> asked;
    control().mayChange = [&asked](std::int32_t id) {
        asked.push_back(id);
        return false;
    };
    const auto refused = [this](std::u16string_view name, const Value& value) {
        return tests::failureCode([&] { control().put(name, value); }) == automation::code::kSetNotPermitted;
    };
    EXPECT_TRUE(refused(u"BackColor", 1));
    EXPECT_TRUE(refused(u"ForeColor", 1));
    EXPECT_TRUE(refused(u"Enabled", false));
    EXPECT_TRUE(refused(u"Font", ObjectRef(makeFont(20))));
    EXPECT_EQ(asked, (std::vector<std::int32_t>{kBackColorId, kForeColorId, kEnabledId, kFontId}));
    EXPECT_EQ(world.list().colours(), widgets::Colours());
    EXPECT_TRUE(world.list().enabled());
    EXPECT_EQ(world.list().font(), base::Font());
    EXPECT_TRUE(changed.empty());
    EXPECT_FALSE(control().unsaved());
}

TEST_F(LogControlFontTest, FollowsTheContainersFontUntilItHasItsOwn) {
    control().setAmbientFont(sized(9));
    EXPECT_EQ(world.list().font(), sized(9));
    const ObjectRef followed = font();
    control().setAmbientFont(sized(9));
    EXPECT_EQ(font(), followed);
    control().setAmbientFont(sized(10));
    EXPECT_EQ(hostapi::FontObject(font()).read(), sized(10));
    EXPECT_FALSE(control().unsaved()) << "the container's font is not the control's to store";
    EXPECT_TRUE(changed.empty());
    control().setAmbientFont(std::nullopt);
    EXPECT_EQ(world.list().font(), base::Font());
    control().put(u"Font", ObjectRef(makeFont(20)));
    control().setAmbientFont(sized(11));
    EXPECT_EQ(world.list().font(), sized(20));
}

TEST_F(LogControlFontTest, AFontThatWasChangedIsItsOwn) {
    control().setAmbientFont(sized(9));
    font()->put(u"Size", 14);
    control().setAmbientFont(sized(10));
    EXPECT_EQ(world.list().font(), sized(14));
}

} // namespace
} // namespace cvlog::view
