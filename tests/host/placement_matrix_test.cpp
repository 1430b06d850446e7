// Other code runs at every call that placing the log makes of its host and of its windows, and every such call fails.

#include "base/failure.h"
#include "host/frm_msg.h"
#include "tests/support/fault_sweep.h"
#include "tests/support/placed_log.h"

namespace cvlog::host {
namespace {

using tests::LogWorld;

/// A log with a container, two lists of its host and a host window.
struct PlacedWorld {
    PlacedWorld() {
        EXPECT_TRUE(log.open());
        tools->add(u"", window.tool);
        log.host.workspace->set(u"ActiveToolList", tools);
        log.globals.LogWindowVisible = true;
        log.addControl();
        log.addControl();
        log.globals.placement.Parent = container;
    }
    ~PlacedWorld() {
        calls.disarm();
        calls.insideCall = nullptr;
        log.close();
        PutVisible(log.globals, false); // what was shown of a closed log
        EXPECT_FALSE(log.globals.placement.frmLog);
        EXPECT_EQ(log.platform.peers.forms.faults, std::vector<std::string>());
        EXPECT_TRUE(log.platform.peers.forms.live.empty());
        EXPECT_EQ(log.platform.peers.timers.enabledTimers(), 0);
    }
    core::Globals& globals() { return log.globals; }
    void userClosesTheFirstForm() {
        auto& forms = log.platform.peers.forms.live;
        if (!forms.empty()) forms.front()->userCloses();
    }
    void save() {
        log.host.options.setDocked(log.globals.options.DockedOption ? u"false" : u"true");
        log.host.options.document->fire(1);
        while (log.platform.peers.timers.runNext()) {
        }
    }
    /// What holds whatever happened.
    void check() {
        EXPECT_LE(log.platform.peers.forms.live.size(), 1U);
        EXPECT_EQ(log.globals.placement.frmLog != nullptr, !log.platform.peers.forms.live.empty());
        tests::expectListsInStep(log);
        EXPECT_FALSE(log.globals.ExpansionBusy);
    }

    LogWorld log;
    tests::CallCounter& calls = log.calls;
    tests::FakeWindow window{log.calls};
    std::shared_ptr<tests::ScriptCollection> tools =
        std::make_shared<tests::ScriptCollection>("Tools", log.calls);
    automation::ObjectRef container = std::make_shared<tests::ScriptObject>("Container", log.calls);
    automation::ObjectRef another = std::make_shared<tests::ScriptObject>("Another", log.calls);
};

struct Action {
    const char* name;
    std::function<void(PlacedWorld&)> run;
};

void PrintTo(const Action& action, std::ostream* stream) { *stream << action.name; }

const std::vector<Action>& actions() {
    static const std::vector<Action> all = {
        {"Show", [](PlacedWorld& w) { ShowLog(w.globals()); }},
        {"VisibleOn", [](PlacedWorld& w) { PutVisible(w.globals(), true); }},
        {"VisibleOff", [](PlacedWorld& w) { PutVisible(w.globals(), false); }},
        {"NoParent", [](PlacedWorld& w) { PutParent(w.globals(), nullptr); }},
        {"OtherParent", [](PlacedWorld& w) { PutParent(w.globals(), w.another); }},
        {"DockedTurned", [](PlacedWorld& w) { PutDocked(w.globals(), !w.globals().options.DockedOption); }},
        {"Focus", [](PlacedWorld& w) { FocusLog(w.globals(), *w.log.log); }},
        {"Move", [](PlacedWorld& w) { MoveHostWindow(w.globals(), 1, 2, 3, 4); }},
        {"Dock", [](PlacedWorld& w) { Dock(w.globals(), w.container); }},
        {"Alert", [](PlacedWorld& w) { ShowAlert(w.globals()); }},
        {"OptionsSaved", [](PlacedWorld& w) { w.save(); }},
        {"UserCloses", [](PlacedWorld& w) { w.userClosesTheFirstForm(); }},
        {"WindowClosed", [](PlacedWorld& w) { CloseFloatingWindow(w.globals()); }},
        {"CloseDB", [](PlacedWorld& w) { w.log.close(); }},
        {"OpenDB", [](PlacedWorld& w) { w.log.open(); }},
        {"Add",
         [](PlacedWorld& w) {
             w.log.add({u"M1", -1, u"P1", u"message", u""});
         }},
        {"Series",
         [](PlacedWorld& w) {
             w.log.startSeries();
             w.log.finishSeries();
         }},
        {"ControlGone",
         [](PlacedWorld& w) {
             if (!w.log.controls.empty()) w.log.removeControl(0);
         }},
        {"ControlMade", [](PlacedWorld& w) { w.log.addControl(); }},
    };
    return all;
}

// Lists are told of changes inside stretches in which nothing else can run.
bool canRunOtherCode(const std::string& call) {
    return !call.starts_with("List.") && !call.starts_with("Recordset.") && !call.starts_with("Database.");
}

class Placing : public testing::TestWithParam<std::tuple<Action, Action>> {};

TEST_P(Placing, HoldsWhateverRunsAtAnyOfItsCalls) {
    const auto& [outer, inner] = GetParam();
    for (int number = 1;; ++number) {
        PlacedWorld world;
        int calls = 0;
        std::string interrupted;
        world.calls.insideCall = [&](const std::string& name) {
            if (!canRunOtherCode(name) || !interrupted.empty() || ++calls != number) return;
            interrupted = name;
            base::ignoring([&] { inner.run(world); });
        };
        base::ignoring([&] { outer.run(world); });
        world.calls.insideCall = nullptr;
        SCOPED_TRACE(std::string(inner.name) + " inside " + outer.name + " at " + interrupted);
        world.check();
        if (interrupted.empty() || HasFailure()) break;
    }
}

INSTANTIATE_TEST_SUITE_P(Pairs, Placing,
                         testing::Combine(testing::ValuesIn(actions()), testing::ValuesIn(actions())),
                         [](const auto& test) {
                             return std::string(std::get<0>(test.param).name) + "While" +
                                    std::get<1>(test.param).name;
                         });

class PlacingFaults : public testing::TestWithParam<Action> {};

TEST_P(PlacingFaults, LeaveTheLogFloatingOrHiddenAndReachNoHost) {
    const Action action = GetParam();
    tests::FaultSweep<PlacedWorld> sweep;
    sweep.arrange = [] {
        auto world = std::make_unique<PlacedWorld>();
        world->log.peersMustAgree = false; // a list's window that fails cannot follow
        return world;
    };
    sweep.scenario = [&](PlacedWorld& world) { action.run(world); };
    sweep.check = [&](PlacedWorld& world, const tests::SweepRun& run) {
        EXPECT_FALSE(run.error);
        world.check();
    };
    sweep.run();
}

const Action kPlacing[] = {
    {"Show", [](PlacedWorld& w) { ShowLog(w.globals()); }},
    {"HideAndShow",
     [](PlacedWorld& w) {
         PutVisible(w.globals(), false);
         PutVisible(w.globals(), true);
     }},
    {"ShowAndTakeTheParentAway",
     [](PlacedWorld& w) {
         ShowLog(w.globals());
         PutParent(w.globals(), nullptr);
     }},
    {"OtherParent", [](PlacedWorld& w) { PutParent(w.globals(), w.another); }},
    {"DockAndUndock",
     [](PlacedWorld& w) {
         PutDocked(w.globals(), true);
         FocusLog(w.globals(), *w.log.log);
         PutDocked(w.globals(), false);
         FocusLog(w.globals(), *w.log.log);
     }},
    {"Move", [](PlacedWorld& w) { MoveHostWindow(w.globals(), 1, 2, 3, 4); }},
    {"OptionsSaved", [](PlacedWorld& w) { w.save(); }},
    {"UserCloses",
     [](PlacedWorld& w) {
         ShowLog(w.globals());
         w.userClosesTheFirstForm();
     }},
};

INSTANTIATE_TEST_SUITE_P(Members, PlacingFaults, testing::ValuesIn(kPlacing),
                         [](const auto& test) { return std::string(test.param.name); });

} // namespace
} // namespace cvlog::host
