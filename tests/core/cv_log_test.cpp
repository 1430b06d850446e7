#include "core/cv_log.h"

#include "automation/error.h"
#include "tests/support/log_world.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace cvlog::core {
namespace {

using automation::Value;
using Ids = std::vector<std::int32_t>;

class CVLogTest : public testing::Test {
protected:
    CVLogTest() { world.log->events().advise(sink); }
    tests::LogWorld world;
    std::shared_ptr<tests::RecordingSink> sink = std::make_shared<tests::RecordingSink>();
};

TEST_F(CVLogTest, RaisesEventsByNameWithoutRegardToCase) {
    for (const char16_t* name : {u"LogChanged", u"gotfocus", u"LOSTFOCUS", u"Unload"})
        world.log->FireEvent(name);
    EXPECT_EQ(sink->ids, (Ids{1, 2, 3, 5}));
}

TEST_F(CVLogTest, RaisesNothingForAnUnknownNameOrWhileAnExpansionIsBusy) {
    world.log->FireEvent(u"Nothing");
    world.globals.ExpansionBusy = true;
    world.log->FireEvent(u"LogChanged");
    EXPECT_TRUE(sink->ids.empty());
}

TEST_F(CVLogTest, ConvertsTheArgumentsOfShowErrors) {
    std::vector<Value> seen;
    sink->handler = [&](std::int32_t, std::span<Value> a) { seen.assign(a.begin(), a.end()); };
    Value arguments[] = {Value(7), Value(u"12")};
    world.log->FireEvent(u"ShowErrors", arguments);
    ASSERT_EQ(sink->ids, Ids{4});
    EXPECT_TRUE(seen[0] == Value(u"7"));
    EXPECT_TRUE(seen[1] == Value(12));
}

TEST_F(CVLogTest, WritesTheArgumentsOfKeyDownBack) {
    sink->handler = [](std::int32_t, std::span<Value> a) { a[0] = u"0"; };
    Value arguments[] = {Value(65), Value(1)};
    world.log->FireEvent(u"KeyDown", arguments);
    EXPECT_EQ(sink->ids, Ids{6});
    EXPECT_TRUE(arguments[0] == Value(std::int16_t{0}));
    EXPECT_TRUE(arguments[1] == Value(std::int16_t{1}));
}

/// The log lies in a container of the host's with window 77.
class CVLogKeys : public CVLogTest {
protected:
    using Keys = std::vector<platform::headless::RecordingWindowMessages::KeyDown>;

    CVLogKeys() {
        parent->set(u"hwnd", 77);
        world.globals.placement.Parent = parent;
    }
    void fireKeyDown(std::int16_t code) {
        arguments[0] = code;
        EXPECT_NO_THROW(world.log->FireEvent(u"keydown", arguments));
    }
    const Keys& posted() const { return world.platform.windowMessages.keys; }

    std::shared_ptr<tests::ScriptObject> parent =
        std::make_shared<tests::ScriptObject>("Parent", world.calls);
    Value arguments[2] = {Value(std::int16_t{0}), Value(std::int16_t{1})};
};

TEST_F(CVLogKeys, ArePostedToTheParentsWindowAfterTheHandlersHaveChangedThem) {
    sink->handler = [this](std::int32_t, std::span<Value> a) {
        EXPECT_TRUE(posted().empty());
        a[0] = std::int16_t{66};
    };
    fireKeyDown(65);
    EXPECT_EQ(posted(), (Keys{{77, 66}}));
}

TEST_F(CVLogKeys, ArePostedAsZeroWhenAHandlerTookThem) {
    sink->handler = [](std::int32_t, std::span<Value> a) { a[0] = std::int16_t{0}; };
    fireKeyDown(65);
    EXPECT_EQ(posted(), (Keys{{77, 0}}));
}

TEST_F(CVLogKeys, ArePostedWhenNobodyListensOrAHandlerFails) {
    fireKeyDown(65);
    sink->handler = [](std::int32_t, std::span<Value>) {
        throw automation::AutomationError(automation::code::kFailure);
    };
    fireKeyDown(-1);
    EXPECT_EQ(posted(), (Keys{{77, 65}, {77, -1}}));
}

TEST_F(CVLogKeys, GoToTheParentThatTheHandlerLeaves) {
    const auto other = std::make_shared<tests::ScriptObject>("Other", world.calls);
    other->set(u"hwnd", u"78");
    sink->handler = [&](std::int32_t, std::span<Value>) { world.globals.placement.Parent = other; };
    fireKeyDown(65);
    EXPECT_EQ(posted(), (Keys{{78, 65}}));
}

TEST_F(CVLogKeys, GoNowhereWithoutAParentOrItsWindowAndNobodyMinds) {
    parent->set(u"hwnd", u"no number");
    fireKeyDown(65);
    parent->remove(u"hwnd");
    fireKeyDown(66);
    world.globals.placement.Parent = nullptr;
    fireKeyDown(67);
    EXPECT_TRUE(posted().empty());
    EXPECT_EQ(sink->ids, (Ids{6, 6, 6})) << "the event is raised all the same";
    EXPECT_TRUE(arguments[0] == Value(std::int16_t{67}));
}

TEST_F(CVLogKeys, MayFailToBePosted) {
    world.platform.gate.watcher = [](std::string_view name) {
        if (name == "WindowMessages.postKeyDown") throw std::runtime_error("no window");
    };
    sink->handler = [](std::int32_t, std::span<Value> a) { a[0] = std::int16_t{66}; };
    fireKeyDown(65);
    EXPECT_TRUE(arguments[0] == Value(std::int16_t{66})) << "written back before the message is posted";
    EXPECT_TRUE(posted().empty());
}

TEST_F(CVLogKeys, AreLeftAloneWhileAnExpansionIsBusy) {
    world.globals.ExpansionBusy = true;
    sink->handler = [](std::int32_t, std::span<Value> a) { a[0] = std::int16_t{66}; };
    fireKeyDown(65);
    EXPECT_TRUE(sink->ids.empty());
    EXPECT_TRUE(posted().empty());
    EXPECT_TRUE(arguments[0] == Value(std::int16_t{65}));
    EXPECT_EQ(world.calls.countOf("Parent."), 0);
}

TEST_F(CVLogTest, KeepsPlacementPropertiesForOldHostsWithoutEffect) {
    for (const char16_t* name : {u"Left", u"Top", u"Width", u"Height"}) {
        world.log->put(name, 12.5);
        EXPECT_EQ(automation::toSingle(world.log->get(name)), 0.0F);
        EXPECT_THROW(world.log->put(name, u"word"), automation::AutomationError);
    }
    EXPECT_NO_THROW(world.log->invoke(u"Display"));
}

TEST(LogViewsTest, HoldsEveryListOnceInOrderOfItsComing) {
    tests::LogWorld world;
    const auto makeList = [&world] {
        auto list = std::make_shared<widgets::ListView>(world.platform.collator, world.platform.measurer);
        list->attach(world.platform.peers.makeListView(*list));
        return list;
    };
    const auto first = makeList();
    const auto second = makeList();
    LogViews views;
    EXPECT_EQ(views.first(), nullptr);
    views.add(first);
    views.add(second);
    views.add(first);
    EXPECT_EQ(views.count(), 2);
    EXPECT_EQ(views.all(), (std::vector<LogViews::ListRef>{first, second}));
    views.remove(*first);
    views.remove(*first);
    EXPECT_EQ(views.first(), second);
}

} // namespace
} // namespace cvlog::core
