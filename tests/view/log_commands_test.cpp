// What the commands of the log's menu do, and what they survive.

#include "view/log_commands.h"

#include "store/frm_log_history.h"
#include "store/log_database.h"
#include "tests/support/fault_sweep.h"
#include "tests/view/log_menu_fixture.h"

namespace cvlog::view {
namespace {

using platform::headless::peerOf;

class LogCommands : public LogMenuFixture {
protected:
    CommandTarget target(std::size_t control = 0) {
        return {globals(), globals().LogViews.all().at(control), world.controls.at(control)->mnuPopUpLog(),
                world.controls.at(control)};
    }
    void click(std::u16string_view name) { ClickMenuItem(target(), *item(name)); }
    void dispatch(std::u16string word) {
        commands().PendingCommand = std::move(word);
        DispatchCommand(target());
    }
    std::u16string errorsFileOf(int row, std::size_t control = 0) {
        return std::u16string(list(control).row(row).cellTag(6));
    }
};

struct ClickCase {
    const char16_t* item;
    const char16_t* word;
    const char16_t* wordWithoutSelection;
};

TEST_F(LogCommands, AClickLeavesTheWordOfItsItem) {
    const ClickCase cases[] = {{u"mnuLogShowErrors", u"ShowErrors", u""},
                               {u"mnuLogCollaps", u"Collaps", u""},
                               {u"mnuLogExpand", u"Expand", u"Expand"},
                               {u"mnuLogSave", u"Save", u"Save"},
                               {u"mnuLogHistory", u"ShowHistory", u"ShowHistory"},
                               {u"mnuLogDocked", u"Docked", u"Docked"},
                               {u"mnuLogHide", u"Hide", u"Hide"}};
    addEntry();
    for (const ClickCase& one : cases) {
        commands().PendingCommand.clear();
        list().selectAll(false);
        click(one.item);
        EXPECT_EQ(commands().PendingCommand, one.wordWithoutSelection);
        commands().PendingCommand.clear();
        select(1);
        click(one.item);
        EXPECT_EQ(commands().PendingCommand, one.word);
    }
    EXPECT_EQ(list().rowCount(), 1);
}

TEST_F(LogCommands, AClickOnAColumnLeavesItsPlaceToo) {
    ClickMenuItem(target(), *ColumnItems(item(u"mnuPopUpLog")).at(4));
    EXPECT_EQ(commands().PendingCommand, u"ColumnClick");
    EXPECT_EQ(commands().PendingColumnIndex, 4);
}

TEST_F(LogCommands, DeleteClearAndCopyActAtOnceAndLeaveNoWord) {
    for (int i = 0; i < 3; ++i) addEntry();
    select(2);
    click(u"mnuLogCopy");
    EXPECT_EQ(world.platform.clipboard.text, u"2024-05-17 10:00:00\t\t\t\t\tRC 2\tmessage\r\n");
    click(u"mnuLogDelete");
    EXPECT_EQ(list().rowCount(), 2);
    click(u"mnuLogClear");
    EXPECT_EQ(list().rowCount(), 0);
    EXPECT_EQ(commands().PendingCommand, u"");
}

TEST_F(LogCommands, DeleteAndClearLeaveTheRecords) {
    globals().options.KeepInSession = true;
    for (int i = 0; i < 3; ++i) world.add({u"", 0, u"", u"x", u""});
    select(1);
    choose(u"mnuLogDelete");
    choose(u"mnuLogClear");
    EXPECT_EQ(list().rowCount(), 0);
    EXPECT_EQ(world.engine.records().size(), 3U);
}

TEST_F(LogCommands, RecordsOfDeletedAndClearedRowsAreStillInTheHistory) {
    globals().options.KeepInSession = true;
    for (int i = 0; i < 3; ++i) world.add({u"", 0, u"", u"x", u""});
    select(1);
    choose(u"mnuLogDelete");
    choose(u"mnuLogClear");
    int rows = 0;
    world.platform.peers.forms.whileModal = [&](platform::headless::HeadlessFormPeer& history) {
        rows = globals().store.frmLogHistory->lvHistory()->rowCount();
        history.userCloses();
    };
    choose(u"mnuLogHistory");
    EXPECT_EQ(rows, 4) << "and the separator";
}

TEST_F(LogCommands, ClearLeavesTheSorting) {
    addEntry(u"b");
    peerOf(list()).userClicksHeader(3);
    peerOf(list()).userClicksHeader(3);
    choose(u"mnuLogClear");
    EXPECT_EQ(list().rowCount(), 0);
    EXPECT_TRUE(list().sorted());
    EXPECT_EQ(list().sortKey(), 2);
    EXPECT_EQ(list().sortOrder(), widgets::SortOrder::Descending);
    EXPECT_EQ(list().column(3).icon, u"SortUp");
}

TEST_F(LogCommands, AnEntryThatNamesItselfExpansionIsAChildRowEverywhere) {
    addEntry();
    addEntry(u"Expansion");
    select(2);
    rightClick();
    EXPECT_EQ(shown().substr(0, 8), "Collaps*") << "as for any child row";
    doubleClick();
    EXPECT_TRUE(errorsShown.empty()) << "it has no cell that names an object";
    release(37);
    EXPECT_EQ(list().selectedRow(), 1) << "Left leads to the entry above";
    choose(u"mnuLogDelete");
    EXPECT_EQ(list().rowCount(), 0) << "it goes with the entry above";
}

TEST_F(LogCommands, DeleteAndClearReachEveryList) {
    world.addControl();
    for (int i = 0; i < 3; ++i) addEntry();
    select(1, 1);
    choose(u"mnuLogDelete", 1);
    EXPECT_EQ(list(0).rowCount(), 2);
    choose(u"mnuLogClear", 1);
    EXPECT_EQ(list(0).rowCount() + list(1).rowCount(), 0);
}

TEST_F(LogCommands, WordsAreKnownWithoutRegardToCaseAndOthersDoNothing) {
    const auto& shown = world.platform.peers.forms.shown;
    world.platform.peers.forms.whileModal = [](platform::headless::HeadlessFormPeer& history) {
        history.userCloses();
    };
    for (const char16_t* word : {u"ShowHistory", u"SHOWHISTORY", u"showhistory"}) dispatch(word);
    EXPECT_EQ(shown.size(), 3U);
    const auto calls = world.calls.count();
    for (const char16_t* word : {u"", u"ShowHistory ", u"Delete", u"Show History"}) dispatch(word);
    EXPECT_EQ(shown.size(), 3U);
    EXPECT_EQ(world.calls.count(), calls);
}

TEST_F(LogCommands, HistoryAndReportThatFailLeaveNothingOpen) {
    addEntry();
    world.globals.store.LogDatabase->close();
    choose(u"mnuLogHistory");
    choose(u"mnuLogSave");
    EXPECT_EQ(menus().shown.size(), 2U);
    EXPECT_TRUE(world.platform.peers.forms.live.empty());
}

TEST_F(LogCommands, ReportIsOfTheClickedListUnderTheLogsName) {
    std::vector<std::u16string> reported;
    world.platform.objects.classes[u"Tabulite.TLReport"] = [&] {
        auto generator = std::make_shared<tests::ScriptObject>("Generator", world.calls);
        generator->set(u"Interrupted", true);
        generator->on(u"CreateReport", [&](std::span<automation::Value> values) {
            const automation::ObjectRef of = automation::toObject(values[0]);
            EXPECT_EQ(automation::toInt32(of->get(u"hWnd")), list(1).windowHandle());
            reported.push_back(automation::toText(values[1]));
            return automation::Value();
        });
        return generator;
    };
    world.addControl();
    addEntry();
    choose(u"mnuLogSave", 1);
    EXPECT_EQ(reported, std::vector<std::u16string>{u"Log"});
}

TEST_F(LogCommands, DockedTurnsWhatTheLogSays) {
    giveWindow();
    assumeParent();
    choose(u"mnuLogDocked");
    EXPECT_TRUE(host::GetDocked(globals()));
    choose(u"mnuLogDocked");
    EXPECT_FALSE(host::GetDocked(globals()));
}

TEST_F(LogCommands, HideHidesTheLog) {
    giveWindow();
    setParent();
    globals().LogWindowVisible = true;
    choose(u"mnuLogHide");
    EXPECT_FALSE(host::GetVisible(globals()));
}

TEST_F(LogCommands, ExpandOpensTheSelectedEntry) {
    addEntry(); // its file is gone, which opening finds out
    select(1);
    choose(u"mnuLogExpand");
    EXPECT_EQ(errorsFileOf(1), u"");
}

TEST_F(LogCommands, CollapsClosesTheSelectedEntryInEveryList) {
    world.addControl();
    addOpenEntry();
    select(1);
    choose(u"mnuLogCollaps");
    EXPECT_EQ(list(0).rowCount(), 1);
    EXPECT_EQ(list(1).rowCount(), 1);
}

TEST_F(LogCommands, CollapsFromAChildRowSelectsItsEntry) {
    addOpenEntry();
    select(3);
    choose(u"mnuLogCollaps");
    EXPECT_EQ(list().rowCount(), 1);
    EXPECT_EQ(list().selectedRow(), 1);
}

TEST_F(LogCommands, ActOnWhatIsSelectedWhenTheMenuHasClosed) {
    addEntry(u"P1", u"C:\\a.errors");
    addEntry(u"P1", u"C:\\b.errors");
    select(1);
    menus().whileOpen = [this] { select(2); };
    choose(u"mnuLogExpand");
    EXPECT_EQ(errorsFileOf(1), u"C:\\a.errors");
    EXPECT_EQ(errorsFileOf(2), u"");
}

TEST_F(LogCommands, CollapsWithoutASelectionDoesNothing) {
    addOpenEntry();
    dispatch(u"Collaps");
    dispatch(u"Expand");
    EXPECT_EQ(list().rowCount(), 3);
}

TEST_F(LogCommands, ShowErrorsTellsTheHostOfTheRow) {
    addOpenEntry();
    select(1);
    dispatch(u"ShowErrors");
    select(3);
    dispatch(u"ShowErrors");
    list().selectAll(false);
    dispatch(u"ShowErrors");
    add(childRow(u"P1", u"70000"));
    select(4);
    dispatch(u"ShowErrors");
    EXPECT_EQ(errorsShown, (Errors{{u"P1", 0}, {u"P1", 2}, {u"P1", 70000}}));
}

TEST_F(LogCommands, ShowErrorsOfAChildRowWithoutANumberFails) {
    addEntry();
    add(childRow(u"P1", u"no number"));
    select(2);
    EXPECT_EQ(codeOf([&] { dispatch(u"ShowErrors"); }), automation::code::kTypeMismatch);
    EXPECT_TRUE(errorsShown.empty());
}

TEST_F(LogCommands, AColumnIsTurnedInEveryListAndItsItemInThisMenuAlone) {
    world.addControl();
    choose(u"mnuColumn(2)", 1);
    for (const std::size_t control : {0, 1}) EXPECT_EQ(list(control).column(3).width, 0);
    EXPECT_EQ(world.platform.settings.get(u"Calvetta", u"Activity Log", u"Method", u"none"), u"0");
    EXPECT_FALSE(ColumnItems(item(u"mnuPopUpLog", 1)).at(2)->checked);
    EXPECT_TRUE(ColumnItems(item(u"mnuPopUpLog", 0)).at(2)->checked) << "until its own menu is prepared";
    choose(u"mnuColumn(2)", 0);
    EXPECT_GT(list(1).column(3).width, 0);
    EXPECT_EQ(world.platform.settings.get(u"Calvetta", u"Activity Log", u"Method", u"none"), u"3");
}

TEST_F(LogCommands, AColumnThatIsNotThereEndsSilentlyInTheMenu) {
    menus().whileOpen = [this] {
        commands().PendingCommand = u"ColumnClick";
        commands().PendingColumnIndex = -1;
    };
    rightClick();
    EXPECT_EQ(list().columnCount(), 7);
}

TEST_F(LogCommands, HelpForTheMenuIsThereAsLongAsTheMenu) {
    auto& filters = world.platform.messageFilters;
    menus().whileOpen = [&] {
        EXPECT_TRUE(filters.isInstalled());
        EXPECT_EQ(globals().menuHelp.MenuHelpContext, u"1001");
        EXPECT_TRUE(filters.send({2, 0x100, 0x70}));
    };
    rightClick();
    EXPECT_FALSE(filters.isInstalled());
    ASSERT_EQ(world.platform.helpViewer.shown.size(), 1U);
    EXPECT_EQ(world.platform.helpViewer.shown[0].context, 1001);
    menus().whileOpen = nullptr;
    item(u"mnuLogClear")->helpContext = 7;
    menus().whileOpen = [&] { EXPECT_EQ(globals().menuHelp.MenuHelpContext, u"7"); };
    rightClick();
}

TEST_F(LogCommands, AFailingDeleteEndsSilentlyAndNothingElseIsCarriedOut) {
    addEntry();
    select(1);
    world.host.workspace->raise(u"SetMainWindowCursor", tests::CallCounter::injectedError());
    choose(u"mnuLogDelete");
    EXPECT_EQ(list().rowCount(), 1);
    EXPECT_EQ(release(46).code, 0) << "consumed all the same";
}

TEST_F(LogCommands, HeaderClicksSort) {
    addEntry(u"b");
    addEntry(u"a");
    peerOf(list()).userClicksHeader(3);
    EXPECT_TRUE(list().sorted());
    EXPECT_EQ(list().sortKey(), 2);
    EXPECT_EQ(list().column(3).icon, u"SortDown");
}

// Foreign code while the menu is open, and then a choice.
struct Meanwhile {
    const char* name;
    std::function<void(tests::LogWorld&)> run;
};

const Meanwhile kMeanwhile[] = {
    {"nothing", [](tests::LogWorld&) {}},
    {"Add",
     [](tests::LogWorld& world) {
         world.add({u"M1", 2, u"P1", u"meanwhile", u""});
     }},
    {"CloseDB", [](tests::LogWorld& world) { world.close(); }},
    {"OpenDB", [](tests::LogWorld& world) { world.open(); }},
    {"Clear", [](tests::LogWorld& world) { ClearLists(world.globals); }},
    {"series", [](tests::LogWorld& world) { world.startSeries(); }},
    {"another control", [](tests::LogWorld& world) { world.addControl(); }},
    {"the control goes", [](tests::LogWorld& world) { world.removeControl(0); }},
    {"all controls go", [](tests::LogWorld& world) { world.controls.clear(); }},
    {"the log goes", [](tests::LogWorld& world) { world.log.reset(); }},
    {"all goes", [](tests::LogWorld& world) { world.close(), world.controls.clear(), world.log.reset(); }},
    {"a menu in the menu",
     [](tests::LogWorld& world) {
         world.platform.peers.menus.whileOpen = nullptr;
         peerOf(world.list()).userReleasesButton(widgets::MouseButton::Right);
     }},
    {"a double click", [](tests::LogWorld& world) { peerOf(world.list()).userDoubleClicks(); }},
    {"Delete",
     [](tests::LogWorld& world) {
         widgets::KeyEvent key{46, 0};
         peerOf(world.list()).userReleases(key);
     }},
};

const char16_t* const kChoices[] = {u"",           u"mnuLogExpand", u"mnuLogDelete",  u"mnuLogClear",
                                    u"mnuLogCopy", u"mnuLogSave",   u"mnuLogHistory", u"mnuColumn(3)",
                                    u"mnuLogHide"};

std::vector<widgets::RowId> idsOf(const widgets::ListView& list) {
    std::vector<widgets::RowId> ids;
    for (int row = 1; row <= list.rowCount(); ++row) ids.push_back(list.idAt(row));
    return ids;
}

void expectListsAgreeAndNothingBusy(tests::LogWorld& world) {
    const auto lists = world.globals.LogViews.all();
    EXPECT_EQ(lists.size(), world.controls.size());
    for (const auto& list : lists) EXPECT_EQ(idsOf(*list), idsOf(*lists.front()));
    EXPECT_FALSE(world.globals.ExpansionBusy);
    EXPECT_FALSE(world.platform.messageFilters.isInstalled());
    EXPECT_EQ(world.globals.menuHelp.MenuHelpHook, nullptr);
    EXPECT_EQ(world.platform.peers.menus.live, 0);
}

std::unique_ptr<tests::LogWorld> worldWithRows() {
    auto world = tests::openWorld(2);
    givePointer(*world);
    world->globals.options.KeepInSession = true;
    for (int i = 0; i < 3; ++i) world->add({u"M1", 2, u"P1", u"message", u"C:\\x.errors"});
    world->list(0).append(widgets::makeRow(
        {u"2024-05-17 10:00:00", u"P1", u"Bad", {{u"Message", u"message", u"C:\\x.errors", {}, {}}}}));
    PropagateNewRow(world->globals, world->list(0), world->list(0).rowCount());
    world->list(0).select(4, true);
    world->list(0).focusRow(4);
    return world;
}

TEST(LogMenuReentrancy, NothingThatRunsWhileTheMenuIsOpenDoesHarm) {
    for (const Meanwhile& meanwhile : kMeanwhile)
        for (const char16_t* choice : kChoices) {
            SCOPED_TRACE(std::string(meanwhile.name) + ", then " + base::toUtf8(choice));
            const auto world = worldWithRows();
            auto& menus = world->platform.peers.menus;
            menus.choices = {choice};
            menus.whileOpen = [&] { meanwhile.run(*world); };
            peerOf(world->list(0)).userReleasesButton(widgets::MouseButton::Right);
            EXPECT_FALSE(menus.shown.empty());
            menus.whileOpen = nullptr;
            expectListsAgreeAndNothingBusy(*world);
            if (world->log) world->close();
        }
}

TEST(FaultSweepOfTheMenu, LeavesNoHookNoMenuAndListsInStep) {
    for (const char16_t* choice : kChoices) {
        SCOPED_TRACE(base::toUtf8(choice));
        tests::FaultSweep<tests::LogWorld> sweep;
        sweep.arrange = [choice] {
            auto world = worldWithRows();
            world->peersMustAgree = false;
            world->platform.peers.menus.choices = {choice};
            return world;
        };
        sweep.scenario = [](tests::LogWorld& world) {
            peerOf(world.list(0)).userReleasesButton(widgets::MouseButton::Right);
        };
        sweep.check = [](tests::LogWorld& world, const tests::SweepRun& run) {
            EXPECT_FALSE(run.error) << "the user's commands end silently";
            EXPECT_TRUE(run.armed || !world.platform.peers.menus.shown.empty());
            expectListsAgreeAndNothingBusy(world);
        };
        sweep.leastCalls = 5;
        sweep.run();
    }
}

} // namespace
} // namespace cvlog::view
