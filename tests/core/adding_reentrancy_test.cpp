// Other code runs while an Add calls the host or raises its event: it may add, close, and destroy what it likes.

#include "automation/error.h"
#include "base/failure.h"
#include "base/text.h"
#include "core/adding.h"
#include "tests/support/log_world.h"

#include <gtest/gtest.h>

namespace cvlog::core {
namespace {

using automation::Value;
using tests::LogWorld;

class AddingReentrancy : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(world.open());
        world.hideBoxes();
        world.globals.options.KeepInSession = true;
        world.addControl();
        world.addControl();
        world.log->events().advise(sink);
    }
    void onEvent(std::function<void()> action) {
        sink->handler = [action = std::move(action)](std::int32_t, std::span<Value>) { action(); };
    }
    LogWorld world;
    std::shared_ptr<tests::RecordingSink> sink = std::make_shared<tests::RecordingSink>();
};

TEST_F(AddingReentrancy, AddsWithinItsOwnEventThreeDeep) {
    int depth = 0;
    onEvent([&] {
        if (++depth <= 3) world.add({u"M1", depth, u"P1", u"nested", u""});
    });
    world.add({u"M1", 0, u"P1", u"outer", u""});
    EXPECT_EQ(world.engine.records().size(), 4U);
    EXPECT_EQ(world.list().rowCount(), 4);
    EXPECT_EQ(world.list().row(4).cellText(6), u"outer") << "the outer row comes last";
    tests::expectListsInStep(world);
}

TEST_F(AddingReentrancy, SurvivesASinkThatFailsOrDisconnects) {
    onEvent([&] {
        world.log->events().unadvise(1);
        throw automation::AutomationError(automation::code::kFailure, u"sink", u"sink");
    });
    EXPECT_NO_THROW(world.add({u"", 0, u"", u"message", u""}));
    world.add({u"", 0, u"", u"message", u""});
    EXPECT_EQ(sink->ids.size(), 1U);
    EXPECT_EQ(world.list().rowCount(), 2);
}

TEST_F(AddingReentrancy, GoesToTheListThatIsFirstAfterTheEvent) {
    onEvent([&] { world.removeControl(0); });
    EXPECT_NO_THROW(world.add({u"", 0, u"", u"message", u""}));
    EXPECT_EQ(world.list().rowCount(), 1);
    EXPECT_EQ(world.globals.LogViews.count(), 1);
}

TEST_F(AddingReentrancy, EndsWhenTheEventTakesTheLastList) {
    onEvent([&] { world.controls.clear(); });
    EXPECT_NO_THROW(world.add({u"", 0, u"", u"message", u""}));
    EXPECT_EQ(world.engine.records().size(), 1U);
}

TEST_F(AddingReentrancy, ShowsTheRowInAListThatTheEventMade) {
    onEvent([&] { world.addControl(); });
    world.add({u"", 0, u"", u"message", u""});
    EXPECT_EQ(world.list(2).rowCount(), 1);
    tests::expectListsInStep(world);
}

TEST_F(AddingReentrancy, SurvivesTheEndOfTheDatabaseInTheEvent) {
    onEvent([&] { world.close(); });
    for (const char16_t* object : {u"", u"P1"}) {
        ASSERT_TRUE(world.open());
        base::ignoring([&] { world.add({u"M1", 0, object, u"message", u""}); });
        tests::expectListsInStep(world);
        EXPECT_FALSE(world.globals.store.Workspace);
        EXPECT_EQ(world.engine.openDatabases, 0);
        EXPECT_EQ(world.engine.openRecordsets, 0);
    }
    EXPECT_EQ(world.engine.records().size(), 2U);
}

TEST_F(AddingReentrancy, CountsAsPartOfASeriesThatTheEventStarts) {
    onEvent([&] {
        world.platform.clock.advance(3);
        world.startSeries();
        world.platform.clock.advance(2);
    });
    world.add({u"", -1, u"", u"message", u""});
    EXPECT_EQ(world.list().row(1).cellText(1), u"00:00:02");
    EXPECT_EQ(world.globals.series.SeriesReturnCode, -1);
}

/// Each host call of an Add in turn runs some other code; the Add may fail, but the lists stay in step and every Add
/// that succeeds has its record.
class AddingReentrancyAtAnyCall : public AddingReentrancy {
protected:
    void atEveryHostCall(const std::function<void(LogWorld&)>& action) {
        for (int number = 1;; ++number) {
            LogWorld other;
            ASSERT_TRUE(other.open());
            other.hideBoxes();
            other.globals.options.KeepInSession = true;
            other.addControl();
            other.addControl();
            int calls = 0;
            std::string interrupted;
            other.calls.insideCall = [&](const std::string& name) {
                const bool host = !name.starts_with("List.") && !name.starts_with("Recordset.") &&
                                  !name.starts_with("Database.");
                if (host && interrupted.empty() && ++calls == number) {
                    interrupted = name;
                    action(other);
                }
            };
            const bool added = base::ignoring([&] { other.add({u"M2", 1, u"G1", u"outer", u""}); });
            if (interrupted.empty()) break;
            SCOPED_TRACE("inside call " + std::to_string(number) + ": " + interrupted);
            tests::expectListsInStep(other);
            if (added && other.globals.store.LogRecordset) {
                EXPECT_EQ(outerRecords(other), 1);
            }
            calls_ = number;
        }
        EXPECT_GT(calls_, 20) << "too few calls were interrupted";
    }
    static int outerRecords(LogWorld& other) {
        int count = 0;
        for (const auto& record : other.engine.records())
            if (!record.at(u"LogMessage").is<automation::Null>() &&
                automation::toText(record.at(u"LogMessage")).ends_with(u"outer"))
                ++count;
        return count;
    }
    int calls_ = 0;
};

TEST_F(AddingReentrancyAtAnyCall, AnotherAdd) {
    atEveryHostCall([](LogWorld& other) {
        const std::size_t before = other.engine.records().size();
        other.add({u"", 0, u"", u"inner", u""});
        EXPECT_EQ(other.engine.records().size(), before + 1);
    });
}

TEST_F(AddingReentrancyAtAnyCall, TheStartOfASeries) {
    atEveryHostCall([](LogWorld& other) { other.startSeries(); });
}

TEST_F(AddingReentrancyAtAnyCall, TheEndOfTheFirstControl) {
    atEveryHostCall([](LogWorld& other) { other.removeControl(0); });
}

TEST_F(AddingReentrancyAtAnyCall, TheEndOfAllControls) {
    atEveryHostCall([](LogWorld& other) { other.controls.clear(); });
}

TEST_F(AddingReentrancyAtAnyCall, ANewControl) {
    atEveryHostCall([](LogWorld& other) { other.addControl(); });
}

TEST_F(AddingReentrancyAtAnyCall, TheEndOfTheDatabase) {
    atEveryHostCall([](LogWorld& other) { other.close(); });
}

TEST_F(AddingReentrancyAtAnyCall, TheDatabaseOpenedAgain) {
    atEveryHostCall([](LogWorld& other) {
        other.close();
        other.open();
    });
}

/// A host object that knows whether it dies while it answers.
class Watched : public automation::Object {
public:
    struct State {
        int answering = 0;
        bool diedAnswering = false;
    };
    Watched(automation::ObjectRef inner, std::shared_ptr<State> state)
        : inner_(std::move(inner)), state_(std::move(state)) {}
    ~Watched() override { state_->diedAnswering |= state_->answering > 0; }

    Value call(std::u16string_view member, std::span<Value> arguments) override {
        return answer([inner = inner_, member, arguments] { return inner->call(member, arguments); });
    }
    Value get(std::u16string_view member) override {
        return answer([inner = inner_, member] { return inner->get(member); });
    }
    void put(std::u16string_view member, const Value& value) override { inner_->put(member, value); }

private:
    template <class Action>
    Value answer(Action action) {
        const std::shared_ptr<State> state = state_;
        ++state->answering;
        const base::ScopeExit done([&] { --state->answering; });
        return action();
    }
    automation::ObjectRef inner_;
    std::shared_ptr<State> state_;
};

TEST(AddingReentrancyOfObjects, KeepsTheWorkspaceAliveWhileItAnswers) {
    for (const char16_t* member :
         {u"Methods", u"Repository", u"GetCalvettaName", u"ProjectObject", u"TranslateReturnCode"}) {
        LogWorld world;
        const auto state = std::make_shared<Watched::State>();
        world.log->invoke(u"OpenDB",
                          automation::ObjectRef(std::make_shared<Watched>(world.host.workspace, state)));
        world.addControl();
        bool closed = false; // closing asks the host as well
        world.host.workspace->before(member, [&] {
            if (!std::exchange(closed, true)) world.close();
        });
        base::ignoring([&] { world.add({u"M1", 0, u"G1", u"message", u""}); });
        EXPECT_FALSE(state->diedAnswering) << base::toUtf8(member);
    }
}

} // namespace
} // namespace cvlog::core
