#include "tests/store/history_window.h"

#include "base/failure.h"
#include "core/log_resources.h"
#include "host/help_contexts.h"
#include "store/history_menu.h"
#include "tests/support/failure_code.h"

namespace cvlog::store {
namespace {

using testbed::addRecord;
using testbed::rowNames;

class FrmLogHistoryTest : public testbed::HistoryWindow {
protected:
    platform::headless::FormBook& forms() { return world.platform.peers.forms; }
    platform::headless::MenuBook& menus() { return world.platform.peers.menus; }
    std::u16string stored(std::u16string_view key) {
        return world.platform.settings.get(u"Calvetta", u"Activity Log History", key, u"none");
    }
};

TEST_F(FrmLogHistoryTest, ShowsAllRecordsInAModalWindowInFrontOfTheHosts) {
    letErrorsBeShown();
    inHistory([&](FrmLogHistory& window) {
        EXPECT_EQ(window.form().caption(), u"Activity Log History");
        EXPECT_EQ(rowNames(*window.lvHistory()), "1 2 3 S 4 5");
        EXPECT_EQ(window.lvHistory()->columnCount(), 1);
        EXPECT_EQ(window.lvHistory()->smallIcons(), world.globals.frmLogResources->ilLog);
        ASSERT_TRUE(window.form().list());
        EXPECT_EQ(window.form().list()->area, window.form().clientArea());
        EXPECT_EQ(peer(window).scrolledTo(), std::vector<int>{6});
    });
    ASSERT_EQ(forms().shown.size(), 1U);
    EXPECT_EQ(forms().shown[0], (platform::headless::FormBook::Showing{u"Activity Log History", 77, true}));
    EXPECT_EQ(world.globals.store.LastRecordNum, 3);
}

TEST_F(FrmLogHistoryTest, IsLoadedBeforeItIsShown) {
    inHistory([](FrmLogHistory&) {});
    std::vector<std::string> order;
    for (const std::string& call : world.calls.journal())
        if (call.starts_with("Database.openSnapshot") || call == "Recordset.close" ||
            call == "Form.runModal" || call == "Form.create")
            order.push_back(call.substr(0, call.find('(')));
    EXPECT_EQ(order, (std::vector<std::string>{"Form.create", "Database.openSnapshot", "Recordset.close",
                                               "Form.runModal"}));
}

// What ran meanwhile would meet a history that is neither there nor not there.
TEST_F(FrmLogHistoryTest, RunsNoMessagesWhileItLoads) {
    for (std::int32_t number = 6; number <= 500; ++number) addRecord(world, number);
    inHistory([&](FrmLogHistory& window) { EXPECT_EQ(window.lvHistory()->rowCount(), 501); });
    EXPECT_EQ(world.calls.journalOf({"MessagePump"}), std::vector<std::string>{});
    EXPECT_EQ(world.platform.pump.yields, 0);
}

TEST_F(FrmLogHistoryTest, HasNoOwnerWithoutAHostWindow) {
    inHistory([](FrmLogHistory&) {});
    EXPECT_EQ(forms().shown.at(0).owner, 0);
}

TEST_F(FrmLogHistoryTest, ComesBackWhereItWasAndFitsItsListWhenResized) {
    inHistory([&](FrmLogHistory& window) {
        forms().live.at(0)->userMoves({1200, 900, 7000, 3000});
        EXPECT_EQ(window.form().list()->area, window.form().clientArea());
        EXPECT_EQ(window.form().list()->area.width,
                  7000 - platform::headless::HeadlessFormPeer::kFrame.width);
    });
    EXPECT_EQ(stored(u"Left"), u"1200");
    EXPECT_EQ(stored(u"Height"), u"3000");
    inHistory([&](FrmLogHistory& window) {
        EXPECT_EQ(window.form().placement(), (base::Area{1200, 900, 7000, 3000}));
    });
    EXPECT_EQ(world.platform.settings.get(u"Calvetta", u"Activity Log", u"Left", u"none"), u"none");
}

TEST_F(FrmLogHistoryTest, LeavesNothingBehindWhenTheQueryCannotBeOpened) {
    world.globals.store.LogDatabase->close();
    EXPECT_NE(tests::failureCode([&] { ShowHistory(world.globals); }), 0);
    EXPECT_TRUE(forms().live.empty());
    EXPECT_EQ(world.globals.store.frmLogHistory, nullptr);
    EXPECT_TRUE(forms().shown.empty());
    world.close();
    EXPECT_EQ(tests::failureCode([&] { ShowHistory(world.globals); }), automation::code::kObjectRequired);
    EXPECT_TRUE(forms().live.empty());
}

TEST_F(FrmLogHistoryTest, OpensWithTheRowsBeforeAnUnreadableRecord) {
    world.engine.records()[1][u"LogMessage"] = automation::Null{};
    inHistory([](FrmLogHistory& window) {
        EXPECT_EQ(rowNames(*window.lvHistory()), "1");
        EXPECT_EQ(window.progress().LastLoaded, 0);
    });
}

TEST_F(FrmLogHistoryTest, IsOneHoweverOftenItIsOpened) {
    inHistory([&](FrmLogHistory&) {
        ShowHistory(world.globals);
        EXPECT_EQ(forms().live.size(), 1U);
        EXPECT_EQ(forms().broughtToFront, std::vector<std::u16string>{u"Activity Log History"});
    });
}

TEST_F(FrmLogHistoryTest, GoesWhenTheHostClosesTheDatabase) {
    std::vector<std::string> steps;
    inHistory([&](FrmLogHistory& window) {
        world.calls.insideCall = [&](const std::string& name) {
            if (name != "List.appearanceChanged") return;
            steps.emplace_back(world.globals.frmLogResources && window.isLoaded() ? "unbound" : "too late");
        };
        world.close();
        world.calls.insideCall = nullptr;
        world.calls.restart();
        EXPECT_EQ(window.lvHistory()->smallIcons(), nullptr);
        EXPECT_FALSE(window.isLoaded());
        EXPECT_EQ(press(window, 46), 46) << "keys that are still under way do no harm";
        EXPECT_EQ(press(window, 121, 1), 0);
        EXPECT_EQ(world.calls.journalOf({"Database.", "Recordset."}), std::vector<std::string>{})
            << "a closed database is not used";
    });
    EXPECT_EQ(steps, std::vector<std::string>{"unbound"});
    EXPECT_NE(stored(u"Left"), u"none") << "its place was stored before the workspace went";
    EXPECT_TRUE(menus().shown.empty());
}

TEST_F(FrmLogHistoryTest, MayBeClosedWhileItLoads) {
    bool asked = false;
    world.host.workspace->before(u"GetProductInfo", [&] {
        if (!std::exchange(asked, true)) UnloadHistory(world.globals);
    });
    ShowHistory(world.globals);
    world.host.workspace->before(u"GetProductInfo", nullptr);
    EXPECT_TRUE(asked);
    EXPECT_TRUE(forms().shown.empty());
    EXPECT_TRUE(forms().live.empty());
}

TEST_F(FrmLogHistoryTest, HoldsTheComponentsStateAsLongAsItIsOpen) {
    auto state = std::make_shared<int>(1);
    world.globals.holder = [state] { return state; };
    inHistory([&](FrmLogHistory&) { EXPECT_GT(state.use_count(), 2); });
    EXPECT_EQ(state.use_count(), 2);
    world.globals.holder = nullptr;
}

TEST_F(FrmLogHistoryTest, KeysDoWhatTheMenuDoes) {
    letErrorsBeShown();
    inHistory([&](FrmLogHistory& window) {
        EXPECT_EQ(press(window, 112), 0);
        ASSERT_EQ(world.platform.helpViewer.shown.size(), 1U);
        EXPECT_EQ(world.platform.helpViewer.shown[0].context, host::kHistoryListHelp);
        EXPECT_EQ(press(window, 121), 121) << "F10 alone is the system's";
        EXPECT_TRUE(menus().shown.empty());
        EXPECT_EQ(press(window, 121, 1), 0);
        EXPECT_EQ(menus().shown.size(), 1U);
        press(window, 67);
        EXPECT_FALSE(world.platform.clipboard.text);
        select(window, {1});
        press(window, 67, 2);
        EXPECT_EQ(world.platform.clipboard.text, u"message 1\r\n");
        press(window, 46);
        EXPECT_EQ(rowNames(*window.lvHistory()), "2 3 S 4 5");
        press(window, 65);
        EXPECT_TRUE(window.isLoaded());
        press(window, 27);
        EXPECT_FALSE(window.isLoaded());
    });
}

TEST_F(FrmLogHistoryTest, OpensItsMenuByTheRightButtonWithHelpForItsTime) {
    inHistory([&](FrmLogHistory& window) {
        peer(window).userReleasesButton(widgets::MouseButton::Left);
        EXPECT_TRUE(menus().shown.empty());
        menus().whileOpen = [&] {
            EXPECT_TRUE(world.platform.messageFilters.isInstalled());
            EXPECT_TRUE(world.platform.messageFilters.send({ports::kFromMenu, 0x100, 0x70}));
        };
        peer(window).userReleasesButton(widgets::MouseButton::Right);
        menus().whileOpen = nullptr;
        EXPECT_FALSE(world.platform.messageFilters.isInstalled());
        ASSERT_EQ(menus().shown.size(), 1U);
        EXPECT_EQ(world.platform.helpViewer.shown.at(0).context, host::kHistoryMenuHelp);
    });
}

TEST_F(FrmLogHistoryTest, RunsWhatIsChosenWhenTheMenuHasClosed) {
    inHistory([&](FrmLogHistory& window) {
        select(window, {2});
        menus().choices = {u"mnuHistoryCopy", u"mnuHistoryDelete", u"mnuHistoryClear", u""};
        peer(window).userReleasesButton(widgets::MouseButton::Right);
        EXPECT_EQ(world.platform.clipboard.text, u"message 2\r\n");
        peer(window).userReleasesButton(widgets::MouseButton::Right);
        EXPECT_EQ(rowNames(*window.lvHistory()), "1 3 S 4 5");
        peer(window).userReleasesButton(widgets::MouseButton::Right);
        EXPECT_EQ(rowNames(*window.lvHistory()), "S");
        peer(window).userReleasesButton(widgets::MouseButton::Right);
        EXPECT_EQ(menus().shown.size(), 4U);
    });
}

TEST_F(FrmLogHistoryTest, MayBeClosedWhileItsMenuIsOpen) {
    inHistory([&](FrmLogHistory& window) {
        menus().whileOpen = [&] { world.close(); };
        menus().choices = {u"mnuHistoryClear"};
        peer(window).userReleasesButton(widgets::MouseButton::Right);
        menus().whileOpen = nullptr;
        EXPECT_FALSE(window.isLoaded());
    });
    EXPECT_EQ(records(), "1 2 3 4 5");
}

TEST_F(FrmLogHistoryTest, RemovesTheHelpOfAMenuThatFails) {
    inHistory([&](FrmLogHistory& window) {
        world.calls.insideCall = [](const std::string& name) {
            if (name.starts_with("Menu.")) throw tests::CallCounter::injectedError();
        };
        peer(window).userReleasesButton(widgets::MouseButton::Right);
        world.calls.insideCall = nullptr;
        EXPECT_FALSE(world.platform.messageFilters.isInstalled());
    });
}

TEST_F(FrmLogHistoryTest, ShowsItsCommandsInOrderInTheUsersLanguage) {
    for (const auto language : {resources::Language::English, resources::Language::Japanese}) {
        const widgets::MenuItemRef menu = MakeHistoryMenu();
        world.globals.platform.language = language;
        const widgets::ListView list(world.platform.collator, world.platform.measurer);
        PrepareHistoryMenu(world.globals, menu, list);
        std::vector<std::u16string> names;
        for (const auto& item : menu->items) names.push_back(item->name);
        EXPECT_EQ(names, (std::vector<std::u16string>{
                             u"mnuHistoryShowErrors", u"mnuHistorySep1", u"mnuHistoryDelete",
                             u"mnuHistoryClear", u"mnuHistoryCopy", u"mnuHistorySep2", u"mnuHistorySave"}));
        EXPECT_EQ(menu->caption, resources::text(language, 120));
        const std::pair<int, int> captions[] = {{0, 121}, {2, 122}, {3, 123}, {4, 124}, {6, 125}};
        for (const auto& [place, id] : captions)
            EXPECT_EQ(menu->items[static_cast<std::size_t>(place)]->caption, resources::text(language, id));
        EXPECT_TRUE(menu->items[1]->separator && menu->items[5]->separator);
    }
    world.globals.platform.language = resources::Language::English;
}

/// The menu's state as letters: visible Show Errors, its separator, then what is enabled.
std::string stateOf(const widgets::MenuItemRef& menu) {
    std::string state;
    const auto item = [&](const char16_t* name) { return findMenuItem(menu, name); };
    if (item(u"mnuHistoryShowErrors")->visible) state += 'V';
    if (item(u"mnuHistorySep1")->visible) state += '-';
    for (const auto& [name, letter] :
         {std::pair(u"mnuHistoryShowErrors", 'E'), std::pair(u"mnuHistoryDelete", 'D'),
          std::pair(u"mnuHistoryClear", 'L'), std::pair(u"mnuHistoryCopy", 'C'),
          std::pair(u"mnuHistorySave", 'R')})
        if (item(name)->enabled) state += letter;
    return state;
}

TEST_F(FrmLogHistoryTest, EnablesWhatCanBeDone) {
    letErrorsBeShown();
    inHistory([&](FrmLogHistory& window) {
        const auto state = [&] {
            PrepareHistoryMenu(world.globals, window.mnuPopUpHistory(), *window.lvHistory());
            return stateOf(window.mnuPopUpHistory());
        };
        window.lvHistory()->selectAll(false);
        EXPECT_EQ(state(), "EDLR");
        select(window, {1});
        EXPECT_EQ(state(), "V-EDLCR");
        select(window, {4});
        EXPECT_EQ(state(), "EDLCR") << "the separator has no errors";
        window.lvHistory()->clear();
        EXPECT_EQ(state(), "");
        window.progress().SeparatorPending = true;
        world.engine.records().clear();
        window.LoadHistory(3);
        EXPECT_EQ(state(), "EDLR") << "the separator alone is a row";
    });
}

TEST_F(FrmLogHistoryTest, ShowsErrorsOnlyWhenTheHostCanShowThem) {
    struct Obstacle {
        const char* name;
        std::function<void()> put;
    };
    const auto workspace = world.host.workspace;
    const Obstacle obstacles[] = {
        {"unknown object",
         [&] {
             world.host.repository->on(u"FindObject",
                                       [](std::span<automation::Value>) { return automation::Value(); });
         }},
        {"a repository that fails",
         [&] { world.host.repository->raise(u"FindObject", tests::CallCounter::injectedError()); }},
        {"no file", [&] { world.host.names[4] = u"C:\\Elsewhere"; }},
        {"no project directory",
         [&] { workspace->raise(u"GetCalvettaName", tests::CallCounter::injectedError()); }},
        {"no tools", [&] { workspace->set(u"ActiveToolList", automation::Value()); }},
        {"tools that fail",
         [&] { workspace->raise(u"ActiveToolList", tests::CallCounter::injectedError()); }},
        {"a window that holds no others", [&] { main->set(u"IsMDIForm", false); }},
        {"a window that does not say so", [&] { main->remove(u"IsMDIForm"); }},
        {"no window", [&] { workspace->set(u"CalvettaWindow", automation::Value()); }},
    };
    for (const Obstacle& obstacle : obstacles) {
        SCOPED_TRACE(obstacle.name);
        letErrorsBeShown();
        inHistory([&](FrmLogHistory& window) {
            select(window, {1});
            const auto visible = [&] {
                PrepareHistoryMenu(world.globals, window.mnuPopUpHistory(), *window.lvHistory());
                return stateOf(window.mnuPopUpHistory()).starts_with("V-");
            };
            EXPECT_TRUE(visible());
            obstacle.put();
            EXPECT_FALSE(visible());
        });
        for (const char16_t* member : {u"GetCalvettaName", u"ActiveToolList"}) workspace->heal(member);
        world.host.repository->heal(u"FindObject");
        world.host.names[4] = u"C:\\Proj";
    }
}

TEST_F(FrmLogHistoryTest, ShowsErrorsByTheHostsOwnWindowWhateverTheToolsAre) {
    letErrorsBeShown();
    const auto window = std::make_shared<tests::ScriptObject>("Window", world.calls);
    const auto tool = std::make_shared<tests::ScriptObject>("Tool", world.calls);
    tool->set(u"CalvettaWindow", window);
    const auto tools = std::make_shared<tests::ScriptCollection>("Tools", world.calls);
    tools->add(u"", tool);
    world.host.workspace->set(u"ActiveToolList", tools);
    inHistory([&](FrmLogHistory& history) {
        select(history, {1});
        for (const bool hosts : {true, false}) {
            main->set(u"IsMDIForm", hosts);
            window->set(u"IsMDIForm", !hosts);
            PrepareHistoryMenu(world.globals, history.mnuPopUpHistory(), *history.lvHistory());
            EXPECT_EQ(stateOf(history.mnuPopUpHistory()).starts_with("V-"), hosts);
        }
    });
}

TEST_F(FrmLogHistoryTest, ShowsNoErrorsOfARowWithoutAFileName) {
    letErrorsBeShown();
    world.engine.records()[0][u"Errors"] = automation::Null{};
    world.engine.records()[1][u"ObjectName"] = u"PAY\nROLL\nX";
    world.platform.files.addFolder(u"C:\\Proj\\");
    inHistory([&](FrmLogHistory& window) {
        for (const int row : {1, 2}) {
            select(window, {row});
            PrepareHistoryMenu(world.globals, window.mnuPopUpHistory(), *window.lvHistory());
            EXPECT_FALSE(stateOf(window.mnuPopUpHistory()).starts_with("V"));
        }
    });
}

TEST_F(FrmLogHistoryTest, StressesShowErrorsOnlyWhileItIsThere) {
    letErrorsBeShown();
    inHistory([&](FrmLogHistory& window) {
        select(window, {1});
        peer(window).userReleasesButton(widgets::MouseButton::Right);
        select(window, {4});
        peer(window).userReleasesButton(widgets::MouseButton::Right);
        const auto stressed = [&](std::size_t menu) {
            std::vector<std::u16string> names;
            for (const auto& item : menus().shown.at(menu).items)
                if (item.isDefault) names.push_back(item.name);
            return names;
        };
        EXPECT_EQ(stressed(0), std::vector<std::u16string>{u"mnuHistoryShowErrors"});
        EXPECT_EQ(stressed(1), std::vector<std::u16string>{});
    });
}

TEST_F(FrmLogHistoryTest, ADoubleClickShowsErrorsOnlyWhereTheMenuWould) {
    letErrorsBeShown();
    inHistory([&](FrmLogHistory& window) {
        select(window, {4});
        peer(window).userDoubleClicks();
        EXPECT_TRUE(window.isLoaded());
        select(window, {2});
        peer(window).userDoubleClicks();
        EXPECT_FALSE(window.isLoaded());
    });
}

} // namespace
} // namespace cvlog::store
