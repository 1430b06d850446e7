#include "automation/event_source.h"

#include "automation/error.h"
#include "tests/support/log_world.h"

#include <gtest/gtest.h>

namespace cvlog::automation {
namespace {

using tests::RecordingSink;
using Ids = std::vector<std::int32_t>;

class EventSourceTest : public testing::Test {
protected:
    std::shared_ptr<RecordingSink> connect() {
        sinks.push_back(std::make_shared<RecordingSink>());
        cookies.push_back(source.advise(sinks.back()));
        return sinks.back();
    }
    EventSource source;
    std::vector<std::shared_ptr<RecordingSink>> sinks;
    std::vector<std::uint32_t> cookies;
};

TEST_F(EventSourceTest, GivesEverySinkItsOwnCookieThatIsNotZero) {
    connect();
    connect();
    EXPECT_NE(cookies[0], 0U);
    EXPECT_NE(cookies[0], cookies[1]);
    EXPECT_EQ(source.connections().size(), 2U);
}

TEST_F(EventSourceTest, TellsAllSinksInTheOrderOfTheirConnection) {
    Ids order;
    for (int i = 0; i < 3; ++i)
        connect()->handler = [&order, i](std::int32_t, std::span<Value>) { order.push_back(i); };
    source.raise(1, {});
    EXPECT_EQ(order, (Ids{0, 1, 2}));
}

TEST_F(EventSourceTest, RefusesUnknownCookies) {
    connect();
    EXPECT_FALSE(source.unadvise(cookies[0] + 1));
    EXPECT_TRUE(source.unadvise(cookies[0]));
    EXPECT_FALSE(source.unadvise(cookies[0]));
}

TEST_F(EventSourceTest, PassesArgumentsByReferenceFromSinkToSink) {
    for (int i = 0; i < 2; ++i)
        connect()->handler = [](std::int32_t, std::span<Value> a) { a[0] = toInt32(a[0]) + 1; };
    Value arguments[] = {Value(5)};
    source.raise(1, arguments);
    EXPECT_EQ(toInt32(arguments[0]), 7);
}

TEST_F(EventSourceTest, GoesOnWhenASinkFails) {
    connect()->handler = [](std::int32_t, std::span<Value>) { throw AutomationError(code::kFailure); };
    connect()->handler = [](std::int32_t, std::span<Value>) { throw 7; };
    const auto last = connect();
    EXPECT_NO_THROW(source.raise(4, {}));
    EXPECT_EQ(last->ids, Ids{4});
}

TEST_F(EventSourceTest, GoesOnWhenASinkDisconnectsItself) {
    const auto first = connect();
    const auto second = connect();
    first->handler = [&](std::int32_t, std::span<Value>) { source.unadvise(cookies[0]); };
    source.raise(1, {});
    source.raise(2, {});
    EXPECT_EQ(first->ids, Ids{1});
    EXPECT_EQ(second->ids, (Ids{1, 2}));
}

TEST_F(EventSourceTest, SkipsASinkThatAnEarlierOneDisconnected) {
    const auto first = connect();
    const auto second = connect();
    const auto third = connect();
    first->handler = [&](std::int32_t, std::span<Value>) { source.unadvise(cookies[1]); };
    source.raise(1, {});
    EXPECT_TRUE(second->ids.empty());
    EXPECT_EQ(third->ids, Ids{1});
}

TEST_F(EventSourceTest, LeavesTheRunningEventToTheSinksConnectedAtItsStart) {
    const auto first = connect();
    std::shared_ptr<RecordingSink> late;
    first->handler = [&](std::int32_t id, std::span<Value>) {
        if (id == 1) late = connect();
    };
    source.raise(1, {});
    EXPECT_TRUE(late->ids.empty());
    source.raise(2, {});
    EXPECT_EQ(late->ids, Ids{2});
}

TEST_F(EventSourceTest, RaisesWithinAHandlerThreeDeep) {
    const auto first = connect();
    const auto second = connect();
    first->handler = [&](std::int32_t id, std::span<Value>) {
        if (id < 3) source.raise(id + 1, {});
    };
    source.raise(1, {});
    EXPECT_EQ(first->ids, (Ids{1, 2, 3}));
    EXPECT_EQ(second->ids, (Ids{3, 2, 1}));
}

TEST_F(EventSourceTest, KeepsASinkAliveWhileItHandlesItsLastEvent) {
    connect();
    bool wholeAfterwards = false;
    const std::weak_ptr<RecordingSink> watched = sinks[0];
    sinks[0]->handler = [&](std::int32_t, std::span<Value>) {
        sinks.clear();
        source.unadvise(cookies[0]);
        wholeAfterwards = !watched.expired();
    };
    source.raise(1, {});
    EXPECT_TRUE(wholeAfterwards);
    EXPECT_TRUE(watched.expired());
}

TEST_F(EventSourceTest, LetsASinkThatDiesReachTheSource) {
    struct Last : EventSink {
        Last(EventSource& from, std::size_t& count) : source(from), left(count) {}
        ~Last() override { left = source.connections().size(); }
        void onEvent(std::int32_t, std::span<Value>) override {}
        EventSource& source;
        std::size_t& left;
    };
    std::size_t left = 99;
    const std::uint32_t cookie = source.advise(std::make_shared<Last>(source, left));
    EXPECT_TRUE(source.unadvise(cookie));
    EXPECT_EQ(left, 0U);
}

} // namespace
} // namespace cvlog::automation
