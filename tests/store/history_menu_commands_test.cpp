// What the commands of the history's menu do when they are chosen there.

#include "tests/store/history_window.h"

namespace cvlog::store {
namespace {

class HistoryMenuCommands : public testbed::HistoryWindow {
protected:
    void choose(FrmLogHistory& window, std::u16string item) {
        world.platform.peers.menus.choices = {std::move(item)};
        peer(window).userReleasesButton(widgets::MouseButton::Right);
    }
};

TEST_F(HistoryMenuCommands, ReportIsMadeOfTheHistoryUnderItsName) {
    std::vector<std::u16string> names;
    world.platform.objects.classes[u"Tabulite.TLReport"] = [&] {
        auto generator = std::make_shared<tests::ScriptObject>("Generator", world.calls);
        generator->set(u"Interrupted", true);
        generator->on(u"CreateReport", [&](std::span<automation::Value> values) {
            names.push_back(automation::toText(values[1]));
            return automation::Value();
        });
        return generator;
    };
    inHistory([&](FrmLogHistory& window) {
        choose(window, u"mnuHistorySave");
        EXPECT_TRUE(window.isLoaded());
    });
    EXPECT_EQ(names, std::vector<std::u16string>{u"LogHistory"});
}

TEST_F(HistoryMenuCommands, ReportWithoutAGeneratorEndsWithoutAWord) {
    world.platform.objects.classes.clear();
    inHistory([&](FrmLogHistory& window) {
        choose(window, u"mnuHistorySave");
        EXPECT_EQ(world.calls.countOf("Objects.create"), 1);
        EXPECT_EQ(window.form().pointer(), widgets::Pointer::Default);
        EXPECT_TRUE(window.isLoaded());
        EXPECT_EQ(testbed::rowNames(*window.lvHistory()), "1 2 3 S 4 5");
    });
}

TEST_F(HistoryMenuCommands, ShowErrorsClosesTheWindowAndTellsTheHost) {
    letErrorsBeShown();
    const auto sink = std::make_shared<tests::RecordingSink>();
    world.log->events().advise(sink);
    std::vector<std::u16string> shown;
    sink->handler = [&](std::int32_t id, std::span<automation::Value> values) {
        if (id == 4) shown.push_back(automation::toText(values[0]));
    };
    inHistory([&](FrmLogHistory& window) {
        select(window, {2});
        choose(window, u"mnuHistoryShowErrors");
        EXPECT_FALSE(window.isLoaded());
    });
    sink->handler = nullptr;
    EXPECT_EQ(shown, std::vector<std::u16string>{u"P1"});
}

TEST_F(HistoryMenuCommands, RunWhenTheMenusHelpHasGone) {
    inHistory([&](FrmLogHistory& window) {
        select(window, {1});
        bool installed = true;
        world.calls.insideCall = [&](const std::string& name) {
            if (name.starts_with("Database.execute")) installed = world.platform.messageFilters.isInstalled();
        };
        choose(window, u"mnuHistoryDelete");
        world.calls.insideCall = nullptr;
        EXPECT_FALSE(installed);
    });
}

TEST_F(HistoryMenuCommands, RowsAreSpokenByTheirTextsAndTheMeaningOfTheirIcons) {
    world.engine.records()[0][u"ReturnMessage"] = 2;
    inHistory([&](FrmLogHistory& window) {
        const widgets::ListView& list = *window.lvHistory();
        const widgets::ListDescriber* describer = list.describer();
        ASSERT_TRUE(describer);
        EXPECT_EQ(describer->listName(), u"Activity Log History");
        EXPECT_EQ(describer->rowName(list, 1), u"message 1");
        EXPECT_EQ(describer->rowDescription(list, 1), u"errors");
        EXPECT_EQ(describer->rowName(list, 4), u"Current session") << "no dashes";
    });
}

} // namespace
} // namespace cvlog::store
