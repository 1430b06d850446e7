// Every outward call of opening the history and of its commands fails, once and from then on.

#include "store/history_commands.h"
#include "tests/store/history_world.h"
#include "tests/support/fault_sweep.h"

namespace cvlog::store {
namespace {

using testbed::addRecord;
using testbed::rowNames;

using Action = std::function<void(tests::LogWorld&, FrmLogHistory&)>;

std::unique_ptr<tests::LogWorld> arrange() {
    auto world = std::make_unique<tests::LogWorld>();
    for (std::int32_t number = 1; number <= 3; ++number) addRecord(*world, number);
    EXPECT_TRUE(world->open());
    world->peersMustAgree = false; // a peer that fails cannot follow
    addRecord(*world, 4);
    world->host.workspace->set(u"CalvettaWindow",
                               std::make_shared<tests::ScriptObject>("Main", world->calls));
    world->platform.objects.classes[u"Tabulite.TLReport"] = [&calls = world->calls] {
        auto generator = std::make_shared<tests::ScriptObject>("Generator", calls);
        generator->set(u"CreateReport", automation::Value());
        generator->set(u"Interrupted", false);
        return generator;
    };
    return world;
}

void openHistory(tests::LogWorld& world, const Action& action) {
    world.platform.peers.forms.whileModal = [&](platform::headless::HeadlessFormPeer&) {
        const auto window = world.globals.store.frmLogHistory;
        const base::ScopeExit closing([&] { window->unload(); });
        if (action) action(world, *window);
        EXPECT_EQ(window->form().pointer(), widgets::Pointer::Default);
        EXPECT_EQ(window->form().caption(), u"Activity Log History");
    };
    ShowHistory(world.globals);
}

void expectTidy(tests::LogWorld& world) {
    EXPECT_EQ(world.globals.store.frmLogHistory, nullptr);
    EXPECT_TRUE(world.platform.peers.forms.live.empty());
    EXPECT_EQ(world.platform.peers.forms.faults, std::vector<std::string>());
    EXPECT_EQ(world.engine.openRecordsets, 1) << "the log's own cursor";
    EXPECT_FALSE(world.platform.messageFilters.isInstalled());
    EXPECT_EQ(world.platform.peers.menus.live, 0);
    EXPECT_TRUE(world.platform.messages.shown.empty());
    std::string rows;
    openHistory(world,
                [&](tests::LogWorld&, FrmLogHistory& window) { rows = rowNames(*window.lvHistory()); });
    EXPECT_FALSE(rows.empty()) << "the history opens again";
}

void sweep(const Action& action, int leastCalls) {
    tests::FaultSweep<tests::LogWorld> faults;
    faults.arrange = arrange;
    faults.scenario = [&](tests::LogWorld& world) { openHistory(world, action); };
    faults.check = [](tests::LogWorld& world, const tests::SweepRun&) { expectTidy(world); };
    faults.leastCalls = leastCalls;
    faults.run();
}

void selectAll(FrmLogHistory& window) {
    if (window.lvHistory()->rowCount() == 0) return;
    window.lvHistory()->selectAll(true);
    platform::headless::peerOf(*window.lvHistory()).userFocuses(1);
}

TEST(HistoryFaults, OpeningLeavesAShownWindowOrNone) { sweep(nullptr, 40); }

TEST(HistoryFaults, DeletingKeepsEveryRecordWhoseStatementFailed) {
    sweep(
        [](tests::LogWorld& world, FrmLogHistory& window) {
            selectAll(window);
            const bool wasFilled = window.lvHistory()->rowCount() == 5; // loading can fail, too
            const bool whole = base::ignoring([&] { DeleteHistoryRecords(world.globals, window); });
            const std::size_t left = world.engine.records().size();
            const int rows = window.lvHistory()->rowCount();
            const bool hasSeparator = (" " + rowNames(*window.lvHistory())).find(" S") != std::string::npos;
            const auto shown = static_cast<std::size_t>(rows - (hasSeparator ? 1 : 0));
            if (whole && wasFilled) {
                EXPECT_EQ(left, 0U);
                EXPECT_EQ(rows, 0);
            }
            EXPECT_GE(left, shown) << "what is shown has its record";
            EXPECT_TRUE(!wasFilled || left <= shown + 1) << "one row at most went before its record stayed";
        },
        50);
}

TEST(HistoryFaults, NothingThatTheUserDoesInTheWindowFailsIntoTheSystem) {
    sweep(
        [](tests::LogWorld&, FrmLogHistory& window) {
            auto& user = platform::headless::peerOf(*window.lvHistory());
            for (const auto& [code, shift] :
                 {std::pair<std::int16_t, std::int16_t>{112, 0}, {67, 2}, {121, 1}}) {
                selectAll(window);
                widgets::KeyEvent key{code, shift};
                EXPECT_NO_THROW(user.userPresses(key));
            }
            EXPECT_NO_THROW(user.userDoubleClicks());
            selectAll(window);
            widgets::KeyEvent deletion{46, 0};
            EXPECT_NO_THROW(user.userPresses(deletion));
        },
        50);
}

TEST(HistoryFaults, ClearingDeletesAllOrNothing) {
    sweep(
        [](tests::LogWorld& world, FrmLogHistory& window) {
            base::ignoring([&] { ClearLogHistory(world.globals, window); });
            EXPECT_TRUE(world.engine.records().empty() || world.engine.records().size() == 4);
        },
        50);
}

TEST(HistoryFaults, CopyingReportingAndTheMenuGiveBackWhatTheyTook) {
    sweep(
        [](tests::LogWorld& world, FrmLogHistory& window) {
            selectAll(window);
            base::ignoring([&] { CopyHistoryRecords(world.globals, window); });
            base::ignoring([&] { ReportHistory(world.globals, window); });
            world.platform.peers.menus.choices = {u"mnuHistoryCopy"};
            platform::headless::peerOf(*window.lvHistory()).userReleasesButton(widgets::MouseButton::Right);
            base::ignoring([&] { ShowHistoryErrors(world.globals, window); });
            world.platform.peers.menus.choices.clear();
        },
        60);
}

/// The host closes the database, or the window, at each call in turn.
void disturb(const Action& action, const std::function<void(tests::LogWorld&)>& disturbance) {
    for (int number = 1;; ++number) {
        const std::unique_ptr<tests::LogWorld> world = arrange();
        int count = 0;
        bool disturbing = false;
        world->calls.restart();
        world->calls.insideCall = [&](const std::string&) {
            if (disturbing || ++count != number) return;
            disturbing = true;
            disturbance(*world);
        };
        base::ignoring([&] { openHistory(*world, action); });
        world->calls.insideCall = nullptr;
        SCOPED_TRACE("disturbed at call " + std::to_string(number));
        EXPECT_EQ(world->globals.store.frmLogHistory, nullptr);
        EXPECT_TRUE(world->platform.peers.forms.live.empty());
        EXPECT_EQ(world->platform.peers.forms.faults, std::vector<std::string>());
        world->close();
        EXPECT_EQ(world->engine.openRecordsets, 0);
        if (!disturbing) return;
        ASSERT_LT(number, 1000);
    }
}

const Action kEverything = [](tests::LogWorld& world, FrmLogHistory& window) {
    selectAll(window);
    base::ignoring([&] { CopyHistoryRecords(world.globals, window); });
    platform::headless::peerOf(*window.lvHistory()).userReleasesButton(widgets::MouseButton::Right);
    base::ignoring([&] { ReportHistory(world.globals, window); });
    base::ignoring([&] { DeleteHistoryRecords(world.globals, window); });
    base::ignoring([&] { ClearLogHistory(world.globals, window); });
};

TEST(HistoryUnderWay, EndsWhereverTheDatabaseIsClosed) {
    disturb(kEverything, [](tests::LogWorld& world) { base::ignoring([&] { world.close(); }); });
}

TEST(HistoryUnderWay, EndsWhereverTheWindowIsClosed) {
    disturb(kEverything, [](tests::LogWorld& world) { UnloadHistory(world.globals); });
}

TEST(HistoryUnderWay, GoesOnWhereverTheHistoryIsAskedForOnceMore) {
    disturb(kEverything, [](tests::LogWorld& world) { base::ignoring([&] { ShowHistory(world.globals); }); });
}

TEST(HistoryUnderWay, GoesOnWhereverTheUserActsOnceMore) {
    disturb(kEverything, [](tests::LogWorld& world) {
        if (const auto window = world.globals.store.frmLogHistory) {
            base::ignoring([&] { DeleteHistoryRecords(world.globals, *window); });
            base::ignoring([&] { ClearLogHistory(world.globals, *window); });
        }
    });
}

} // namespace
} // namespace cvlog::store
