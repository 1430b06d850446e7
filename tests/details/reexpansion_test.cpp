// The user changed which kinds of lines are shown: open entries follow.

#include "core/options.h"
#include "details/expand_entry.h"
#include "tests/support/expansion_world.h"

#include <gtest/gtest.h>

namespace cvlog::details {
namespace {

using tests::errorLine;
using tests::ExpansionWorld;
using Texts = std::vector<std::string>;

class Reexpansion : public testing::Test {
protected:
    Reexpansion() {
        world.writeErrors(errorLine("", "", "", "E1", "error") + errorLine("", "", "", "W1", "warning"));
        world.host.options.addFilter(u"Errors", u"true");
        world.host.options.addFilter(u"Warnings", u"true");
        core::LoadOptions(world.globals);
        world.globals.options.KeepInSession = true;
    }
    ~Reexpansion() override { tests::expectNothingLeft(world); }
    void hideWarnings(bool hide) {
        world.host.options.clearFilters();
        world.host.options.addFilter(u"Errors", u"true");
        world.host.options.addFilter(u"Warnings", hide ? u"false" : u"true");
        save();
    }
    void save() { world.host.options.document->fire(1); }
    void letTimePass() { world.platform.peers.timers.advance(5); }

    ExpansionWorld world{2};
};

const Texts kAll = {"error", "warning"};
const Texts kErrorsOnly = {"error", "... Some records are hidden ..."};

TEST_F(Reexpansion, ShowsOpenEntriesByTheNewKindsInEveryList) {
    world.expand();
    EXPECT_EQ(world.messages(), kAll);
    hideWarnings(true);
    EXPECT_EQ(world.messages(), kAll) << "not inside the host's event";
    letTimePass();
    EXPECT_EQ(world.messages(0), kErrorsOnly);
    EXPECT_EQ(world.messages(1), kErrorsOnly);
    hideWarnings(false);
    letTimePass();
    EXPECT_EQ(world.messages(1), kAll);
}

TEST_F(Reexpansion, TakesNoFocusAndOpensNoClosedEntry) {
    hideWarnings(true);
    letTimePass();
    EXPECT_EQ(world.list().rowCount(), 3);
    world.expand();
    const int focused = platform::headless::peerOf(world.list()).told("takeFocus");
    hideWarnings(false);
    letTimePass();
    EXPECT_EQ(platform::headless::peerOf(world.list()).told("takeFocus"), focused);
}

TEST_F(Reexpansion, HappensAlsoWhenASecondSaveChangesNothing) {
    world.expand();
    hideWarnings(true);
    save();
    letTimePass();
    EXPECT_EQ(world.messages(), kErrorsOnly);
}

TEST_F(Reexpansion, HappensOnceForAChange) {
    world.expand();
    hideWarnings(true);
    letTimePass();
    world.calls.restart();
    save();
    letTimePass();
    EXPECT_EQ(world.calls.countOf("FileReader.open"), 0);
}

TEST_F(Reexpansion, OfSeveralEntriesFollowsEachOfThem) {
    world.add({u"M1", 2, u"P1", u"last", u"given.errors"});
    ExpandEntry(world.globals, world.view(), 4);
    ExpandEntry(world.globals, world.view(), 2);
    hideWarnings(true);
    letTimePass();
    EXPECT_EQ(world.messages(), kErrorsOnly);
    EXPECT_EQ(world.list().rowCount(), 8);
    EXPECT_EQ(world.list().row(8).cellText(6), u"... Some records are hidden ...");
}

TEST_F(Reexpansion, WaitsForAnExpansionThatIsUnderWay) {
    world.writeLines(120);
    world.atYield(1, [&] {
        hideWarnings(true);
        letTimePass();
        EXPECT_EQ(world.messages().size(), 50U);
    });
    world.expand();
    EXPECT_EQ(world.messages().size(), 120U);
    world.platform.pump.atYield = nullptr;
    world.writeErrors("new");
    letTimePass();
    EXPECT_EQ(world.messages(), Texts{"new"});
}

TEST_F(Reexpansion, OfALongEntryShowsTheStripWithoutTakingTheInput) {
    world.writeLines(60);
    world.expand();
    hideWarnings(true);
    std::int32_t active = 1;
    world.atYield(world.platform.pump.yields + 1, [&] { active = world.forms().active; });
    letTimePass();
    EXPECT_EQ(active, 0);
}

TEST_F(Reexpansion, IsForgottenWithTheDatabase) {
    hideWarnings(true);
    world.close();
    EXPECT_FALSE(world.globals.options.entriesOutdated);
    letTimePass();
}

} // namespace
} // namespace cvlog::details
