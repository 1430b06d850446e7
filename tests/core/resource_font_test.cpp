#include "core/log_resources.h"

#include "hostapi/font_object.h"
#include "tests/support/failure_code.h"
#include "tests/support/log_world.h"

#include <gtest/gtest.h>

namespace cvlog::core {
namespace {

using automation::ObjectRef;
using tests::LogWorld;

base::Font bigFont() {
    base::Font font;
    font.face = u"Tahoma";
    font.points = 20;
    return font;
}

TEST(ResourceFontTest, IsAsNewListsHaveItAndTheSameObjectEachTime) {
    LogWorld world;
    const ObjectRef font = automation::toObject(world.log->get(u"Font"));
    EXPECT_EQ(hostapi::FontObject(font).read(), world.addControl().font());
    EXPECT_EQ(automation::toObject(world.log->get(u"Font")), font);
}

TEST(ResourceFontTest, LoadsTheResourceFormThatIsNotThere) {
    LogWorld world;
    ASSERT_EQ(world.globals.frmLogResources, nullptr);
    const ObjectRef font = world.platform.fonts.make(bigFont());
    world.log->put(u"Font", font);
    EXPECT_NE(world.globals.frmLogResources, nullptr);
    EXPECT_EQ(automation::toObject(world.log->get(u"Font")), font);
}

TEST(ResourceFontTest, IsOneForAllLogsOfTheApartment) {
    LogWorld world;
    const auto other = std::make_shared<CVLog>(world.globals);
    const ObjectRef font = world.platform.fonts.make(bigFont());
    world.log->put(u"Font", font);
    EXPECT_EQ(automation::toObject(other->get(u"Font")), font);
}

TEST(ResourceFontTest, RestylesNoList) {
    LogWorld world;
    const widgets::ListView& list = world.addControl();
    const base::Font before = list.font();
    world.log->put(u"Font", world.platform.fonts.make(bigFont()));
    world.log->get(u"Font").as<ObjectRef>()->put(u"Size", 30);
    EXPECT_EQ(list.font(), before);
    EXPECT_EQ(world.addControl().font(), before);
}

TEST(ResourceFontTest, GoesWithTheResourcesWhenTheDatabaseIsClosed) {
    LogWorld world;
    ASSERT_TRUE(world.open());
    const ObjectRef font = world.platform.fonts.make(bigFont());
    world.log->put(u"Font", font);
    world.close();
    EXPECT_EQ(font.use_count(), 1);
    EXPECT_EQ(hostapi::FontObject(automation::toObject(world.log->get(u"Font"))).read(), base::Font());
}

TEST(ResourceFontTest, KeepsItsFontWhenWhatIsPutIsNone) {
    LogWorld world;
    const ObjectRef font = automation::toObject(world.log->get(u"Font"));
    const auto putFails = [&world](const automation::Value& value) {
        return tests::failureCode([&] { world.log->put(u"Font", value); });
    };
    EXPECT_EQ(putFails(ObjectRef()), automation::code::kObjectRequired);
    EXPECT_EQ(putFails(automation::Value()), automation::code::kObjectRequired);
    EXPECT_EQ(putFails(world.log), automation::code::kTypeMismatch);
    EXPECT_EQ(putFails(u"Tahoma"), automation::code::kTypeMismatch);
    EXPECT_EQ(automation::toObject(world.log->get(u"Font")), font);
}

} // namespace
} // namespace cvlog::core
