#include "core/series_report.h"

#include "host/frm_log.h"

#include "automation/error.h"
#include "core/results.h"
#include "tests/support/log_world.h"

#include <gtest/gtest.h>

#include <tuple>

namespace cvlog::core {
namespace {

using Box = platform::headless::RecordingMessageBoxes::Box;
using ports::BoxIcon;
using tests::LogWorld;

class SeriesReport : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(world.open()); }

    void report(std::int32_t code) {
        world.globals.series.start();
        if (code == -3 || code == 16)
            world.globals.series.SeriesCanceled = true;
        else
            world.globals.series.SeriesReturnCode = code;
        SeriesFinish(world.globals);
    }
    const std::vector<Box>& boxes() const { return world.platform.messages.shown; }

    LogWorld world;
};

TEST_F(SeriesReport, InformsOfSuccess) {
    world.globals.LogWindowVisible = false;
    report(0);
    EXPECT_EQ(boxes(), std::vector<Box>({{u"Calvetta Workbench", u"Method was applied successfully",
                                          BoxIcon::Information, false}}));
}

TEST_F(SeriesReport, AsksWhetherToShowTheLogForAnyOtherCode) {
    world.globals.LogWindowVisible = false;
    for (const std::int32_t code : {1, 2, -1, -2, -4, 7}) report(code);
    ASSERT_EQ(boxes().size(), 6U);
    EXPECT_EQ(boxes()[0].text, u"Method was executed with warnings\r\nSee Activity Log for details.\r\nDo "
                               u"you wish to see the log now?");
    EXPECT_EQ(boxes()[0].icon, BoxIcon::Exclamation);
    for (std::size_t i = 1; i < boxes().size(); ++i) EXPECT_EQ(boxes()[i].icon, BoxIcon::Critical);
    EXPECT_TRUE(
        boxes()[5].text.starts_with(u"Method was finished with an unexpected return code (RC = 7)\r\n"));
    for (const Box& box : boxes()) {
        EXPECT_TRUE(box.asks);
        EXPECT_EQ(box.title, u"Calvetta Workbench");
    }
}

TEST_F(SeriesReport, ReportsACancelWhateverElseHappened) {
    world.globals.LogWindowVisible = false;
    world.globals.series = {true, 2, true};
    SeriesFinish(world.globals);
    EXPECT_TRUE(boxes().at(0).text.starts_with(OutcomeMessage(resources::Language::English, -3)));
}

TEST_F(SeriesReport, ShowsTheLogOnYesAndChangesNothingOnNo) {
    world.globals.LogWindowVisible = false;
    world.platform.messages.answers = {false, true};
    report(1);
    EXPECT_FALSE(world.globals.LogWindowVisible);
    report(1);
    EXPECT_TRUE(world.globals.LogWindowVisible);
}

TEST_F(SeriesReport, SpeaksTheUsersLanguage) {
    for (const auto language : {resources::Language::Japanese, resources::Language::Korean}) {
        world.globals.platform.language = language;
        world.globals.LogWindowVisible = false;
        report(-1);
        EXPECT_EQ(boxes().back().text, OutcomeMessage(language, -1) + u"\r\n" +
                                           std::u16string(resources::text(language, 510)) + u"\r\n" +
                                           std::u16string(resources::text(language, 511)));
    }
}

// Visible, floating, docked in a parent, and tools and lists that differ in number: all sixteen together.
class SeriesIsTold : public SeriesReport,
                     public testing::WithParamInterface<std::tuple<bool, bool, bool, bool>> {};

TEST_P(SeriesIsTold, WhenTheLogIsNotInView) {
    const auto [visible, floating, docked, countsDiffer] = GetParam();
    world.addControl();
    if (!countsDiffer) world.addControl(); // the host has two tools
    world.globals.LogWindowVisible = visible;
    if (floating) world.globals.placement.frmLog = std::make_shared<host::FrmLog>(world.globals);
    world.globals.placement.Parent = docked ? world.host.workspace : nullptr;
    report(0);
    const bool told = !visible || (!floating && !docked && countsDiffer);
    EXPECT_EQ(boxes().size(), told ? 1U : 0U);
}

INSTANTIATE_TEST_SUITE_P(Conditions, SeriesIsTold,
                         testing::Combine(testing::Bool(), testing::Bool(), testing::Bool(),
                                          testing::Bool()));

TEST_F(SeriesReport, DoesNotAskTheHostWhenItsAnswerCannotMatter) {
    world.globals.LogWindowVisible = false;
    world.calls.restart();
    report(0);
    EXPECT_EQ(world.calls.countOf("Workspace.ActiveToolList"), 0);
}

TEST_F(SeriesReport, ClearsTheSeriesEvenWhenNobodyIsTold) {
    world.hideBoxes();
    report(-4);
    EXPECT_TRUE(boxes().empty());
    world.globals.LogWindowVisible = false;
    SeriesFinish(world.globals);
    EXPECT_EQ(boxes().at(0).text, u"Method was applied successfully");
}

TEST_F(SeriesReport, ClearsTheSeriesEvenWhenTheHostFails) {
    world.globals.LogWindowVisible = true;
    world.host.workspace->raise(u"ActiveToolList",
                                automation::AutomationError(automation::code::kFailure, u"gone", u"Host"));
    world.globals.series = {true, -4, true};
    EXPECT_THROW(SeriesFinish(world.globals), automation::AutomationError);
    EXPECT_FALSE(world.globals.series.InSeries);
    EXPECT_FALSE(world.globals.series.SeriesCanceled);
    EXPECT_EQ(world.globals.series.SeriesReturnCode, 0);
}

TEST_F(SeriesReport, LeavesASeriesThatStartsWhileTheBoxIsOpen) {
    world.globals.LogWindowVisible = false;
    world.platform.messages.whileOpen = [this] {
        SeriesStart(world.globals);
        world.globals.series.merge(2);
    };
    report(-1);
    EXPECT_TRUE(world.globals.series.InSeries);
    EXPECT_EQ(world.globals.series.SeriesReturnCode, 2);
}

TEST_F(SeriesReport, TakesAnEndWithoutAStartForSuccess) {
    world.globals.LogWindowVisible = false;
    SeriesFinish(world.globals);
    EXPECT_EQ(boxes().at(0).icon, BoxIcon::Information);
}

TEST_F(SeriesReport, IgnoresTheArgumentsOfTheLogObjectsMembers) {
    world.globals.LogWindowVisible = false;
    world.log->invoke(u"SeriesStart", u"M1");
    world.log->invoke(u"SeriesFinish", -4);
    EXPECT_EQ(boxes().at(0).text, u"Method was applied successfully");
}

TEST_F(SeriesReport, StartsByClearingTheListsUnlessRowsAreKept) {
    world.hideBoxes();
    world.addControl();
    world.globals.options.KeepInSession = true;
    world.add({u"", 0, u"", u"kept", u""});
    world.platform.clock.advance(9);
    SeriesStart(world.globals);
    EXPECT_EQ(world.list().rowCount(), 1);
    EXPECT_EQ(world.globals.LastEntryTime, world.platform.clock.time);
    world.globals.options.KeepInSession = false;
    world.list().setSorted(true);
    world.platform.clock.advance(9);
    SeriesStart(world.globals);
    EXPECT_EQ(world.list().rowCount(), 0);
    EXPECT_FALSE(world.list().sorted());
    EXPECT_EQ(world.globals.LastEntryTime, world.platform.clock.time);
    for (int column = 1; column <= 7; ++column) EXPECT_EQ(world.list().column(column).icon, u"SortEmpty");
}

TEST_F(SeriesReport, StartsAnewWhenASeriesIsRunning) {
    SeriesStart(world.globals);
    world.globals.series.merge(-4);
    SeriesStart(world.globals);
    world.globals.LogWindowVisible = false;
    SeriesFinish(world.globals);
    EXPECT_EQ(boxes().at(0).icon, BoxIcon::Information);
    EXPECT_FALSE(world.globals.series.InSeries) << "series do not nest";
}

TEST(SeriesReportWithoutAHost, UsesTheLogsOwnNameAndWording) {
    LogWorld world;
    SeriesFinish(world.globals);
    EXPECT_EQ(world.platform.messages.shown,
              std::vector<Box>(
                  {{u"Activity Log", u"Method was applied successfully", BoxIcon::Information, false}}));
    EXPECT_EQ(ReturnCodeText(world.globals, 16), u"Method was canceled by the user");
}

} // namespace
} // namespace cvlog::core
