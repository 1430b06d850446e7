// The order in which the history opens, in one record of all calls: its window is in its place before the records are
// read, and shown when they are there.

#include "tests/store/history_window.h"

#include <algorithm>

namespace cvlog::store {
namespace {

using Steps = std::vector<std::string>;

class HistoryOrder : public testbed::HistoryWindow {
protected:
    HistoryOrder() {
        letErrorsBeShown(); // which gives the host a main window
        world.host.workspace->set(u"ActiveToolList", automation::Value());
    }

    /// What opening does, until the window is shown; what is repeated is there once.
    Steps opening() {
        world.calls.restart();
        std::size_t count = 0;
        inHistory([&](FrmLogHistory&) { count = world.calls.journal().size(); });
        Steps steps;
        for (std::size_t i = 0; i < count; ++i) {
            const std::string call = world.calls.journal()[i];
            const std::string step = call.starts_with("Database.") ? call : call.substr(0, call.find('('));
            if (isStep(step) && (steps.empty() || steps.back() != step)) steps.push_back(step);
        }
        return steps;
    }
    static Steps joined(Steps first, const Steps& rest) {
        first.insert(first.end(), rest.begin(), rest.end());
        return first;
    }

    static inline const Steps kUpToTheRows = {
        "Form.create",
        "Settings.get",
        "Form.placementChanged",
        "Form.listPlaced",
        "Database.openSnapshot(select * from LogInfo where RecordNum > 0 order by RecordNum)",
        "List.rowsInserted"};
    static inline const Steps kShown = {"Main.hwnd", "Form.runModal"};

private:
    static bool isStep(const std::string& call) {
        static const Steps kNamed = {"Settings.get", "List.rowsInserted", "List.scrollTo",
                                     "List.repaint", "Recordset.close",   "Main.hwnd"};
        return call.starts_with("Form.") || call.starts_with("Database.") ||
               std::find(kNamed.begin(), kNamed.end(), call) != kNamed.end();
    }
};

TEST_F(HistoryOrder, IsPlaceThenRecordsThenTheModalWindow) {
    EXPECT_EQ(opening(),
              joined(joined(kUpToTheRows, {"List.scrollTo", "Recordset.close", "List.repaint"}), kShown));
    ASSERT_EQ(world.platform.peers.forms.shown.size(), 1U);
    EXPECT_EQ(world.platform.peers.forms.shown[0].owner, 77) << "the host's main window";
    EXPECT_TRUE(world.platform.peers.forms.shown[0].modal);
}

TEST_F(HistoryOrder, IsTheSameWhenTheLastRowCannotBeShown) {
    world.peersMustAgree = false;
    world.calls.insideCall = [](const std::string& name) {
        if (name == "List.scrollTo") throw tests::CallCounter::injectedError();
    };
    EXPECT_EQ(opening(),
              joined(joined(kUpToTheRows, {"List.scrollTo", "Recordset.close", "List.repaint"}), kShown));
}

TEST_F(HistoryOrder, LeavesOutTheLastRowAndTheRefreshAfterAnUnreadableRecord) {
    world.engine.records()[1][u"LogMessage"] = automation::Null{};
    EXPECT_EQ(opening(), joined(joined(kUpToTheRows, {"Recordset.close"}), kShown));
}

TEST_F(HistoryOrder, GoesOnWhenItsPlaceIsNotKnown) {
    world.calls.insideCall = [](const std::string& name) {
        if (name == "Settings.get") throw tests::CallCounter::injectedError();
    };
    EXPECT_EQ(opening(),
              joined(joined(kUpToTheRows, {"List.scrollTo", "Recordset.close", "List.repaint"}), kShown));
}

TEST_F(HistoryOrder, EndsBeforeTheWindowIsShownWhenTheQueryCannotBeOpened) {
    world.calls.insideCall = [](const std::string& name) {
        if (name.starts_with("Database.openSnapshot")) throw tests::CallCounter::injectedError();
    };
    EXPECT_THROW(ShowHistory(world.globals), automation::AutomationError);
    EXPECT_EQ(world.calls.countOf("Form.create"), 1);
    EXPECT_EQ(world.calls.countOf("Form.runModal"), 0);
    EXPECT_TRUE(world.platform.peers.forms.live.empty());
}

} // namespace
} // namespace cvlog::store
