// What the log's menu shows, by its selected row and the log's state.

#include "tests/view/log_menu_fixture.h"

namespace cvlog::view {
namespace {

using automation::Value;

struct ExpectedItem {
    const char16_t* name;
    int caption; // string id; 0 for a separator
};

constexpr ExpectedItem kItems[] = {
    {u"mnuLogShowErrors", 140}, {u"mnuLogCollaps", 141}, {u"mnuLogExpand", 142},  {u"mnuLogSep1", 0},
    {u"mnuLogDelete", 143},     {u"mnuLogClear", 144},   {u"mnuLogCopy", 145},    {u"mnuLogSep2", 0},
    {u"mnuLogSave", 146},       {u"mnuLogSep3", 0},      {u"mnuLogHistory", 147}, {u"mnuCol", 148},
    {u"mnuLogDocked", 150},     {u"mnuLogHide", 151}};

TEST(LogMenu, HasItsItemsInOrderInEveryLanguage) {
    using resources::Language;
    for (const Language language : {Language::English, Language::Japanese, Language::Korean}) {
        const widgets::MenuItemRef menu = MakeLogMenu(language);
        EXPECT_EQ(menu->name, u"mnuPopUpLog");
        EXPECT_EQ(menu->caption, resources::text(language, 139));
        ASSERT_EQ(menu->items.size(), std::size(kItems));
        for (std::size_t i = 0; i < std::size(kItems); ++i) {
            EXPECT_EQ(menu->items[i]->name, kItems[i].name);
            EXPECT_EQ(menu->items[i]->separator, kItems[i].caption == 0);
            if (kItems[i].caption != 0) {
                EXPECT_EQ(menu->items[i]->caption, resources::text(language, kItems[i].caption));
            }
        }
        const auto& columns = ColumnItems(menu);
        ASSERT_EQ(columns.size(), 1U) << "the others come with the columns";
        EXPECT_EQ(columns[0]->name, u"mnuColumn");
        EXPECT_EQ(columns[0]->caption, resources::text(language, 149));
        EXPECT_EQ(columns[0]->index, 0);
    }
}

TEST(LogMenu, KeepsTheKeyHintsWithTheirBlanks) {
    const widgets::MenuItemRef menu = MakeLogMenu(resources::Language::English);
    EXPECT_EQ(findMenuItem(menu, u"mnuLogCollaps")->caption, u"Co&llapse                   ( Grey - )");
    EXPECT_EQ(findMenuItem(menu, u"MNULOGEXPAND")->caption, u"E&xpand                    ( Grey +)");
    EXPECT_EQ(findMenuItem(menu, u"mnuLogNothing"), nullptr);
}

class LogMenuState : public LogMenuFixture {};

TEST_F(LogMenuState, ColumnItemsCarryTheHeadersAndTheStoredSettings) {
    world.platform.settings.save(u"Calvetta", u"Activity Log", u"Method", u"0");
    world.platform.settings.save(u"Calvetta", u"Activity Log", u"Type", u"no number");
    widgets::ListView& second = world.addControl();
    const auto& items = ColumnItems(world.controls[1]->mnuPopUpLog());
    ASSERT_EQ(items.size(), 7U);
    for (int column = 1; column <= 7; ++column) {
        const widgets::MenuItem& one = *items[static_cast<std::size_t>(column - 1)];
        EXPECT_EQ(one.name, u"mnuColumn");
        EXPECT_EQ(one.index, column - 1);
        EXPECT_EQ(one.caption, second.column(column).caption);
        EXPECT_EQ(one.tag, second.column(column).key);
        EXPECT_EQ(one.checked, column != 3) << column;
    }
}

// One row a state: how it comes about, and the menu that follows.

constexpr const char* kPlain = "Delete Clear Copy | Save | History Col Hide";
constexpr const char* kCanExpand = "Expand* | Delete Clear Copy | Save | History Col Hide";
constexpr const char* kCanCollapse = "Collaps* | Delete Clear Copy | Save | History Col Hide";

class LogMenuStates : public LogMenuState {
public:
    using LogMenuState::add;
    using LogMenuState::addEntry;
    using LogMenuState::addOpenEntry;
    using LogMenuState::childRow;
    using LogMenuState::globals;
    using LogMenuState::list;
    using LogMenuState::select;
    using LogMenuState::world;
};

struct State {
    const char* name;
    void (*arrange)(LogMenuStates&);
    const char* menu;
};

const State kStates[] = {
    {"an empty list", [](LogMenuStates&) {}, "Delete- Clear- Copy- | Save- | History Col Hide"},
    {"no selection", [](LogMenuStates& log) { log.addEntry(); },
     "Delete- Clear Copy- | Save | History Col Hide"},
    {"an entry without errors", [](LogMenuStates& log) { log.addEntry(u"P1", u""), log.select(1); }, kPlain},
    {"an entry with errors", [](LogMenuStates& log) { log.addEntry(), log.select(1); }, kCanExpand},
    {"an entry with errors before another",
     [](LogMenuStates& log) { log.addEntry(), log.addEntry(), log.select(1); }, kCanExpand},
    {"an unknown object", [](LogMenuStates& log) { log.addEntry(u"P9"), log.select(1); }, kPlain},
    {"no object", [](LogMenuStates& log) { log.addEntry(u""), log.select(1); }, kPlain},
    {"an open entry", [](LogMenuStates& log) { log.addOpenEntry(), log.select(1); }, kCanCollapse},
    {"an open entry of an unknown object",
     [](LogMenuStates& log) { log.addOpenEntry(), log.world.host.objects.clear(), log.select(1); },
     kCanCollapse},
    {"a child row", [](LogMenuStates& log) { log.addOpenEntry(), log.select(3); }, kCanCollapse},
    {"a child row by another case",
     [](LogMenuStates& log) {
         log.addEntry(), log.add(log.childRow(u"P1", u"1", u"EXPANSION")), log.select(2);
     },
     kCanCollapse},
    {"an entry below an open one",
     [](LogMenuStates& log) { log.addOpenEntry(), log.addEntry(), log.select(4); }, kCanExpand},
    {"no active tools",
     [](LogMenuStates& log) {
         log.addEntry(), log.select(1), log.world.host.workspace->set(u"ActiveToolList", Value());
     },
     kPlain},
    {"tools that fail",
     [](LogMenuStates& log) {
         log.addEntry(), log.select(1);
         log.world.host.workspace->raise(u"ActiveToolList", tests::CallCounter::injectedError());
     },
     kPlain},
    {"a repository that fails",
     [](LogMenuStates& log) {
         log.addEntry(), log.select(1);
         log.world.host.repository->raise(u"object", tests::CallCounter::injectedError());
     },
     kPlain},
    {"a row without cells",
     [](LogMenuStates& log) {
         log.add(widgets::makeRow({u"a row of the host's", u"P1", u"", {}})), log.select(1);
     },
     kPlain},
    {"a log in a container",
     [](LogMenuStates& log) {
         log.addEntry(u"P1", u""), log.select(1);
         log.globals().placement.Parent = log.world.host.repository;
     },
     "Delete Clear Copy | Save | History Col Docked Hide"},
    {"an empty log in a container",
     [](LogMenuStates& log) { log.globals().placement.Parent = log.world.host.repository; },
     "Delete- Clear- Copy- | Save- | History Col Docked Hide"},
    {"a docked log",
     [](LogMenuStates& log) {
         log.addEntry(u"P1", u""), log.select(1);
         log.globals().placement.Parent = log.world.host.repository;
         log.globals().options.DockedOption = true;
     },
     "Delete Clear Copy | Save | History Col Docked+ Hide"},
    {"a busy expansion",
     [](LogMenuStates& log) { log.addEntry(), log.select(1), log.globals().ExpansionBusy = true; },
     kCanExpand},
};

class LogMenuOfAState : public LogMenuStates, public testing::WithParamInterface<State> {};

TEST_P(LogMenuOfAState, ShowsWhatCanBeDone) {
    GetParam().arrange(*this);
    rightClick();
    globals().ExpansionBusy = false;
    globals().placement.Parent = nullptr;
    EXPECT_EQ(shown(), GetParam().menu);
    EXPECT_EQ(menus().shown.back().owner, list().windowHandle());
}

INSTANTIATE_TEST_SUITE_P(All, LogMenuOfAState, testing::ValuesIn(kStates), [](const auto& state) {
    std::string name = state.param.name;
    for (char& letter : name)
        if (letter == ' ') letter = '_';
    return name;
});

TEST_F(LogMenuState, ShowErrorsIsEnabledByRowsAloneAlthoughItIsNeverSeen) {
    rightClick();
    EXPECT_FALSE(item(u"mnuLogShowErrors")->enabled);
    addEntry();
    rightClick();
    EXPECT_TRUE(item(u"mnuLogShowErrors")->enabled) << "with rows, whatever is selected";
    EXPECT_FALSE(item(u"mnuLogShowErrors")->visible);
}

TEST_F(LogMenuState, ChecksTheColumnsThatAreSeenNow) {
    list().setColumnWidth(2, 0);
    platform::headless::peerOf(list()).userResizes(4, 0); // dragged away
    rightClick();
    const auto& column = menus().shown.back().items.at(7);
    ASSERT_EQ(column.name, u"mnuCol");
    EXPECT_EQ(describe(column.items),
              "Column(0)+ Column(1) Column(2)+ Column(3) Column(4)+ Column(5)+ Column(6)+");
    EXPECT_EQ(column.items.at(3).caption, u"Entity Type");
}

TEST_F(LogMenuState, EmptiesThePendingCommandBeforeTheMenuOpens) {
    commands().PendingCommand = u"Hide";
    menus().whileOpen = [this] { EXPECT_EQ(commands().PendingCommand, u""); };
    rightClick();
    EXPECT_EQ(menus().shown.size(), 1U);
}

TEST_F(LogMenuState, IsOpenedByTheRightButtonAndByShiftAndF10Alone) {
    for (const auto button : {widgets::MouseButton::Left, widgets::MouseButton::Middle})
        platform::headless::peerOf(list()).userReleasesButton(button);
    EXPECT_EQ(press(121).code, 121) << "without Shift";
    EXPECT_EQ(press(120, 1).code, 120);
    EXPECT_EQ(release(121, 1).code, 121) << "when pressed, not when released";
    EXPECT_TRUE(menus().shown.empty());
    EXPECT_EQ(press(121, 1).code, 0);
    EXPECT_EQ(press(121, 3).code, 0) << "with Ctrl as well";
    EXPECT_EQ(menus().shown.size(), 2U);
}

TEST_F(LogMenuState, RightButtonRepaintsTheListAfterTheMenu) {
    auto& peer = platform::headless::peerOf(list());
    int repaintsBefore = -1;
    menus().whileOpen = [&] { repaintsBefore = peer.told("repaint"); };
    rightClick();
    EXPECT_EQ(repaintsBefore, 0);
    EXPECT_EQ(peer.told("repaint"), 1);
    world.host.workspace->raise(u"ActiveToolList", tests::CallCounter::injectedError());
    world.platform.gate.watcher = [](std::string_view name) {
        if (name == "Menu.create") throw tests::CallCounter::injectedError();
    };
    rightClick();
    EXPECT_EQ(peer.told("repaint"), 2) << "also when no menu was shown";
}

TEST_F(LogMenuState, OfAControlWithoutALogShowsWhatIsThere) {
    world.close();
    rightClick();
    EXPECT_EQ(shown(), "Delete- Clear- Copy- | Save- | History Col Hide");
}

} // namespace
} // namespace cvlog::view
