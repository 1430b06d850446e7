// The options while the host's user changes them.

#include "core/options.h"
#include "store/log_database.h"
#include "tests/support/log_world.h"

#include <gtest/gtest.h>

namespace cvlog::core {
namespace {

struct FilterChange {
    const char* name;
    ErrorsListFilter before;
    ErrorsListFilter after;
    bool changed;
};

class SavedFilter : public testing::TestWithParam<FilterChange> {};

TEST_P(SavedFilter, IsComparedByPlaceUpToTheOldCount) {
    EXPECT_EQ(GetParam().before.differsIn(GetParam().after), GetParam().changed);
}

INSTANTIATE_TEST_SUITE_P(
    Table, SavedFilter,
    testing::Values(
        FilterChange{"Same", {{u'E', true}}, {{u'E', true}}, false},
        FilterChange{"Other", {{u'E', true}}, {{u'E', false}}, true},
        FilterChange{"SecondDiffers", {{u'E', true}, {u'W', true}}, {{u'E', true}, {u'W', false}}, true},
        FilterChange{"Missing", {{u'E', true}, {u'W', true}}, {{u'E', true}}, true},
        FilterChange{"FurtherOnesDoNotCount", {{u'E', true}}, {{u'E', true}, {u'W', true}}, false},
        FilterChange{"AFilterThatAppearsIsNoChange", {}, {{u'E', true}}, false},
        FilterChange{"OnlyValuesAreCompared", {{u'E', true}}, {{u'X', true}}, false}),
    [](const auto& test) { return test.param.name; });

class OptionsSaved : public testing::Test {
protected:
    OptionsSaved() {
        world.host.options.document->raiseEvents();
        world.host.options.setKeepInSession(u"false");
        world.host.options.setDocked(u"false");
        world.host.options.addFilter(u"Errors", u"true");
        EXPECT_TRUE(world.open());
    }
    OptionState& options() { return world.globals.options; }
    void save() { world.host.options.document->fire(1); }
    tests::LogWorld world;
};

TEST_F(OptionsSaved, AreInForceAtOnce) {
    world.host.options.setKeepInSession(u"true");
    EXPECT_FALSE(options().KeepInSession);
    save();
    EXPECT_TRUE(options().KeepInSession);
    EXPECT_FALSE(options().FilterChanged);
}

TEST_F(OptionsSaved, TellOfTheLastReloadOnlyWhetherTheFilterChanged) {
    world.host.options.clearFilters();
    world.host.options.addFilter(u"Errors", u"false");
    save();
    EXPECT_TRUE(options().FilterChanged);
    EXPECT_TRUE(options().ErrorsListFilter.hides(u'e'));
    save();
    EXPECT_FALSE(options().FilterChanged);
}

TEST_F(OptionsSaved, HearNothingFromOtherEventsOfTheDocument) {
    world.host.options.setKeepInSession(u"true");
    world.host.options.document->fire(2);
    EXPECT_FALSE(options().KeepInSession);
}

TEST_F(OptionsSaved, AreNotHeardAfterTheDatabaseIsClosed) {
    store::CloseDB(world.globals);
    world.host.options.setKeepInSession(u"true");
    EXPECT_EQ(world.host.options.document->sinkCount(), 0U);
    save();
    EXPECT_FALSE(options().KeepInSession);
}

TEST_F(OptionsSaved, AreHeardFromTheDocumentOfTheLastWorkspaceOnly) {
    tests::FakeHost other{world.calls};
    other.options.document->raiseEvents();
    store::OpenDB(world.globals, world.log, other.workspace);
    EXPECT_EQ(world.host.options.document->sinkCount(), 0U);
    EXPECT_EQ(other.options.document->sinkCount(), 1U);
}

TEST_F(OptionsSaved, OfADocumentThatRaisesNothingAreReadOnce) {
    tests::FakeHost silent{world.calls};
    silent.options.setKeepInSession(u"true");
    store::OpenDB(world.globals, world.log, silent.workspace);
    EXPECT_TRUE(options().KeepInSession);
}

} // namespace
} // namespace cvlog::core
