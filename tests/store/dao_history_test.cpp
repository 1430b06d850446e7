// The history of a project that DAO keeps.

#include "store/history_commands.h"
#include "tests/store/dao_log.h"
#include "tests/store/history_world.h"
#include "tests/support/fault_sweep.h"

#include <functional>

namespace cvlog::store::testbed {
namespace {

void inHistory(DaoLogWorld& world, const std::function<void(FrmLogHistory&)>& user) {
    world.platform.peers.forms.whileModal = [&](platform::headless::HeadlessFormPeer&) {
        const auto window = world.globals.store.frmLogHistory;
        const base::ScopeExit closing([&] { window->unload(); });
        user(*window);
    };
    ShowHistory(world.globals);
}

std::string shown(DaoLogWorld& world) {
    std::string names;
    inHistory(world, [&](FrmLogHistory& window) { names = rowNames(*window.lvHistory()); });
    return names;
}

void removeRow(DaoLogWorld& world, FrmLogHistory& window, int row) {
    if (window.lvHistory()->rowCount() < row) return;
    window.lvHistory()->selectAll(false);
    window.lvHistory()->select(row, true);
    window.lvHistory()->focusRow(row);
    DeleteHistoryRecords(world.globals, window);
}

/// Two records of an earlier session, one of this.
std::unique_ptr<DaoLogWorld> twoSessions() {
    auto world = std::make_unique<DaoLogWorld>();
    EXPECT_TRUE(world->open());
    world->add(u"a");
    world->add(u"b");
    world->close();
    EXPECT_TRUE(world->open());
    world->add(u"c");
    return world;
}

TEST(DaoHistory, ShowsDeletesAndClearsRecordsAndNeverUsesANumberTwice) {
    const auto world = twoSessions();
    EXPECT_EQ(shown(*world), "1 2 S 3");
    inHistory(*world, [&](FrmLogHistory& window) { removeRow(*world, window, 1); });
    EXPECT_EQ(shown(*world), "2 S 3");
    inHistory(*world, [&](FrmLogHistory& window) {
        removeRow(*world, window, 2); // the separator
        EXPECT_EQ(rowNames(*window.lvHistory()), "S 3");
    });
    EXPECT_EQ(world->table().rows.size(), 2U) << "deleting at the separator keeps every record";
    inHistory(*world, [&](FrmLogHistory& window) {
        ClearLogHistory(world->globals, window);
        EXPECT_EQ(rowNames(*window.lvHistory()), "S");
    });
    world->add(u"d");
    EXPECT_EQ(shown(*world), "S 4");
    world->close();
    EXPECT_EQ(world->machine.dao().openDatabases(), 0);
}

TEST(DaoHistory, OpensOrSaysThatItCannotWhateverCallOfDaoFails) {
    tests::FaultSweep<DaoLogWorld> sweep;
    sweep.arrange = twoSessions;
    sweep.scenario = [](DaoLogWorld& world) {
        inHistory(world, [&](FrmLogHistory& window) {
            base::ignoring([&] { removeRow(world, window, 1); });
            base::ignoring([&] { ClearLogHistory(world.globals, window); });
        });
    };
    sweep.check = [](DaoLogWorld& world, const tests::SweepRun&) {
        EXPECT_EQ(world.globals.store.frmLogHistory, nullptr);
        EXPECT_TRUE(world.platform.peers.forms.live.empty());
        EXPECT_TRUE(world.platform.messages.shown.empty());
        EXPECT_FALSE(shown(world).empty()) << "it opens again";
        world.close();
        EXPECT_EQ(world.machine.dao().openDatabases(), 0);
    };
    sweep.leastCalls = 20;
    sweep.run();
}

} // namespace
} // namespace cvlog::store::testbed
