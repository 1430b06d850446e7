#include "view/log_columns.h"

#include "automation/error.h"
#include "core/log_resources.h"
#include "tests/support/log_world.h"
#include "view/log_menu.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace cvlog::view {
namespace {

using platform::headless::peerOf;
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
    peerOf(list).verify();
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
    EXPECT_TRUE(ColumnItems(world.controls[0]->mnuPopUpLog()).at(2)->checked);
}

TEST_F(LogColumns, AreSetUpInTheListsOwnFontNotInTheResources) {
    base::Font large;
    large.points *= 5;
    core::SetResourceFont(world.globals, world.platform.fonts.make(large));
    const widgets::ListView& list = world.addControl();
    for (int i = 1; i <= 7; ++i) EXPECT_EQ(list.column(i).width, natural(i));
}

INSTANTIATE_TEST_SUITE_P(Values, BadColumnSetting,
                         testing::Values(u"word", u"", u"8", u"99", u"-3", u"99999999999", u"3 columns"));

TEST_F(LogColumns, KeepTheirDefaultForAHugeValue) {
    store(u"Method", std::u16string(64 * 1024, u'1'));
    const widgets::ListView& list = world.addControl();
    EXPECT_EQ(list.column(3).position, 3);
    EXPECT_EQ(list.column(3).width, natural(3));
}

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

TEST_F(LogColumns, ArePlacedInTheOrderOfTheirIndex) {
    store(u"Date", u"7");
    store(u"Elapsed", u"7");
    store(u"Message", u"2");
    const widgets::ListView& list = world.addControl();
    // Date goes to the end, then Elapsed behind it; the others go to their natural places, one after another.
    std::vector<int> places = {1, 2, 3, 4, 5, 6, 7};
    const auto place = [&places](int column, int position) {
        places.erase(std::find(places.begin(), places.end(), column));
        places.insert(places.begin() + (position - 1), column);
    };
    for (const auto& [column, position] : {std::pair{1, 7}, {2, 7}, {3, 3}, {4, 4}, {5, 5}, {6, 6}, {7, 2}})
        place(column, position);
    for (int i = 1; i <= 7; ++i)
        EXPECT_EQ(list.column(places[static_cast<std::size_t>(i - 1)]).position, i) << "place " << i;
}

TEST_F(LogColumns, AreReadBeforeTheScreenIsHeldBack) {
    int held = 0;
    world.host.workspace->before(u"GetProductInfo", [&] {
        const auto list = world.globals.LogViews.first();
        held += peerOf(*list).told("batchBegan") - peerOf(*list).told("batchEnded");
    });
    world.addControl();
    EXPECT_EQ(held, 0) << "the host may run any code";
}

/// Columns that the user shows and hides in two lists.
class ShownColumns : public LogColumns {
protected:
    ShownColumns() {
        world.hideBoxes();
        world.addControl();
        world.addControl();
        world.globals.options.KeepInSession = true;
        world.add({u"M1", 0, u"P1", u"a message that is wider than its caption", u""});
        world.calls.restart();
    }
    void show(std::u16string_view key, bool shown) { ShowColumn(world.globals, key, shown); }
    std::u16string stored(std::u16string_view key) {
        return world.platform.settings.get(u"Calvetta", u"Activity Log", key, u"none");
    }
    base::Twips width(int column, std::size_t list = 0) { return world.list(list).column(column).width; }
    int saves() { return world.calls.countOf("Settings.save"); }
};

TEST_F(ShownColumns, GoFromEveryListAndAreStoredOnceAsHidden) {
    show(u"Method", false);
    EXPECT_EQ(width(3, 0), 0);
    EXPECT_EQ(width(3, 1), 0);
    EXPECT_EQ(stored(u"Method"), u"0");
    EXPECT_EQ(saves(), 1);
    EXPECT_EQ(world.platform.settings.count(), 1U) << "nothing is stored of the other columns";
}

TEST_F(ShownColumns, ComeBackInEveryListAndAreStoredWithTheirPlaceInTheFirst) {
    show(u"Result", false);
    world.list(0).setColumnPosition(6, 2);
    world.list(1).setColumnPosition(6, 5);
    show(u"RESULT", true);
    for (const std::size_t list : {0U, 1U}) EXPECT_GT(width(6, list), 650);
    EXPECT_EQ(world.list(0).column(6).position, 2);
    EXPECT_EQ(world.list(1).column(6).position, 5) << "the places stay each list's own";
    EXPECT_EQ(stored(u"Result"), u"2");
    EXPECT_EQ(saves(), 2);
}

TEST_F(ShownColumns, AreAsTheUserLeftThemInTheNextList) {
    show(u"Elapsed", false);
    world.list(0).setColumnPosition(7, 1);
    show(u"Message", false);
    show(u"Message", true);
    const widgets::ListView& next = world.addControl();
    EXPECT_EQ(next.column(2).width, 0);
    EXPECT_EQ(next.column(7).position, 1);
}

TEST_F(ShownColumns, AreFittedToTheirRowsInEveryList) {
    show(u"Message", false);
    for (const std::size_t list : {0U, 1U}) world.list(list).setColumnWidth(5, 10);
    show(u"Message", true);
    for (const std::size_t list : {0U, 1U}) {
        EXPECT_EQ(width(7, list), world.list(list).widestCell(7) + 180);
        EXPECT_GT(width(5, list), 650) << "so are all the others";
        world.list(list).setColumnWidth(5, 10);
    }
    show(u"Message", false);
    for (const std::size_t list : {0U, 1U}) EXPECT_GT(width(5, list), 650) << "also when one is hidden";
}

TEST_F(ShownColumns, AreAsWideAsTheResourcesFontNeeds) {
    base::Font large;
    large.points *= 5;
    show(u"Elapsed", false);
    world.globals.frmLogResources->Font = world.platform.fonts.make(large);
    show(u"Elapsed", true);
    ports::TextMeasurer& measurer = world.platform.measurer;
    const base::Twips expected =
        measurer.width(measurer.fontNumber(large), world.list().column(2).caption) + 650;
    for (const std::size_t list : {0U, 1U}) EXPECT_EQ(width(2, list), expected) << "not as the lists' own";
}

TEST_F(ShownColumns, AreMeasuredInThePlainFontWhenTheResourcesHaveNone) {
    show(u"Elapsed", false);
    world.globals.frmLogResources.reset();
    show(u"Elapsed", true);
    EXPECT_EQ(width(2), natural(2));
}

TEST_F(ShownColumns, StoreNothingOfWhatTheUserDrags) {
    peerOf(world.list()).userMoves(7, 1);
    peerOf(world.list()).userResizes(3, 4000);
    world.add({u"M1", 0, u"P1", u"next", u""});
    world.addControl();
    EXPECT_EQ(saves(), 0);
    EXPECT_EQ(width(3), 4000) << "until the next set-up or toggle";
    EXPECT_EQ(world.list(2).column(7).position, 7);
    show(u"Method", true);
    EXPECT_LT(width(3), 4000);
}

TEST_F(ShownColumns, AreShownAndHiddenAllTheSameWhenTheChoiceCannotBeStored) {
    for (const auto mode : {tests::CallCounter::Fail::Once, tests::CallCounter::Fail::FromOn}) {
        world.calls.restart();
        world.host.workspace->before(u"GetProductInfo", [&] { world.calls.arm(2, mode); });
        world.peersMustAgree = false;
        EXPECT_NO_THROW(show(u"Method", false));
        world.calls.disarm();
        EXPECT_TRUE(world.calls.hasFailed("Settings.save"));
        for (const std::size_t list : {0U, 1U}) EXPECT_EQ(width(3, list), 0);
        EXPECT_NO_THROW(show(u"Method", true));
    }
}

TEST_F(ShownColumns, AreShownAndHiddenWithoutAProductToStoreThemFor) {
    world.host.workspace->raise(u"GetProductInfo", tests::CallCounter::injectedError());
    show(u"Method", false);
    EXPECT_EQ(saves(), 0);
    EXPECT_EQ(width(3, 1), 0);
}

TEST_F(ShownColumns, DoNotChangeForAKeyThatIsNone) {
    show(u"Colour", false);
    EXPECT_EQ(saves(), 0);
    for (int column = 1; column <= 7; ++column) EXPECT_GT(width(column), 0);
}

TEST_F(ShownColumns, ChangeInAListThatTheHostMakesWhileItIsAskedForItsName) {
    bool made = false;
    world.host.workspace->before(u"GetProductInfo", [&] {
        if (!std::exchange(made, true)) world.addControl();
    });
    show(u"Method", false);
    EXPECT_EQ(width(3, 2), 0);
    EXPECT_EQ(stored(u"Method"), u"0");
}

TEST_F(ShownColumns, SurviveTheEndOfTheirListsWhileTheHostIsAskedForItsName) {
    world.host.workspace->before(u"GetProductInfo", [&] { world.controls.clear(); });
    show(u"Method", false);
    EXPECT_EQ(saves(), 0);
}

TEST(LogColumnsWithoutAHost, HaveTheirDefaults) {
    LogWorld world;
    EXPECT_GT(world.addControl().column(7).width, 650);
}

} // namespace
} // namespace cvlog::view
