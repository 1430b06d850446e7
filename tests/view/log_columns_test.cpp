#include "view/log_columns.h"

#include "automation/error.h"
#include "tests/support/log_world.h"

#include <gtest/gtest.h>

namespace cvlog::view {
namespace {

using tests::LogWorld;

class LogColumns : public testing::Test {
protected:
    LogColumns() { EXPECT_TRUE(world.open()); }
    void store(std::u16string_view key, std::u16string_view value) {
        world.platform.settings.save(u"Calvetta", u"Activity Log", key, value);
    }
    base::Twips natural(int column) {
        return world.list().textWidth(world.list().column(column).caption) + 650;
    }
    LogWorld world;
};

TEST_F(LogColumns, AreSevenInNaturalOrderAsWideAsTheirCaptionsNeed) {
    const widgets::ListView& list = world.addControl();
    const char16_t* keys[] = {u"Date", u"Elapsed", u"Method", u"Type", u"Name", u"Result", u"Message"};
    ASSERT_EQ(list.columnCount(), 7);
    for (int i = 1; i <= 7; ++i) {
        EXPECT_EQ(list.column(i).key, keys[i - 1]);
        EXPECT_EQ(list.column(i).caption, resources::text(resources::Language::English, 131 + i));
        EXPECT_EQ(list.column(i).position, i);
        EXPECT_EQ(list.column(i).width, natural(i));
    }
    platform::headless::peerOf(list).verify();
}

TEST_F(LogColumns, SpeakTheUsersLanguage) {
    world.globals.platform.language = resources::Language::Korean;
    EXPECT_EQ(world.addControl().column(5).caption, resources::text(resources::Language::Korean, 136));
}

TEST_F(LogColumns, AreHiddenByAStoredZeroAndPlacedByAnyOtherNumber) {
    store(u"Elapsed", u"0");
    store(u"Message", u"1");
    const widgets::ListView& list = world.addControl();
    EXPECT_EQ(list.column(2).width, 0);
    EXPECT_EQ(list.column(7).position, 1);
    EXPECT_EQ(list.column(1).position, 2);
    EXPECT_EQ(list.column(7).width, natural(7));
}

class BadColumnSetting : public LogColumns, public testing::WithParamInterface<const char16_t*> {};

TEST_P(BadColumnSetting, KeepsTheColumnShownInItsNaturalPlace) {
    store(u"Method", GetParam());
    const widgets::ListView& list = world.addControl();
    for (int i = 1; i <= 7; ++i) {
        EXPECT_EQ(list.column(i).position, i);
        EXPECT_EQ(list.column(i).width, natural(i));
    }
}

INSTANTIATE_TEST_SUITE_P(Values, BadColumnSetting,
                         testing::Values(u"word", u"", u"8", u"-3", u"99999999999", u"3 columns"));

TEST_F(LogColumns, KeepTheirDefaultsWhenTheStoreFails) {
    int reads = 0;
    world.platform.gate.watcher = [&reads](std::string_view name) {
        if (name == "Settings.get" && ++reads == 3) throw tests::CallCounter::injectedError();
    };
    store(u"Elapsed", u"0");
    store(u"Method", u"0");
    const widgets::ListView& list = world.addControl();
    EXPECT_EQ(list.column(2).width, 0) << "read";
    EXPECT_EQ(list.column(3).width, natural(3)) << "not read";
    EXPECT_EQ(reads, 7);
}

TEST(LogColumnsWithoutAHost, HaveTheirDefaults) {
    LogWorld world;
    EXPECT_GT(world.addControl().column(7).width, 650);
}

} // namespace
} // namespace cvlog::view
