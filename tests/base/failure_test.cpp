#include "base/failure.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace cvlog::base {
namespace {

TEST(Ignoring, AnswersWhetherTheStatementSucceeded) {
    int runs = 0;
    EXPECT_TRUE(ignoring([&] { ++runs; }));
    EXPECT_FALSE(ignoring([&] {
        ++runs;
        throw std::runtime_error("failure");
    }));
    EXPECT_FALSE(ignoring([] { throw 7; }));
    EXPECT_EQ(runs, 2);
}

TEST(ValueOr, GivesTheFallbackOnlyForAFailure) {
    EXPECT_EQ(valueOr(1, [] { return 2; }), 2);
    EXPECT_EQ(valueOr(1, []() -> int { throw std::runtime_error("failure"); }), 1);
}

TEST(ScopeExit, RunsOnEveryPathAndLetsNoFailureOut) {
    int runs = 0;
    {
        ScopeExit exit([&] { ++runs; });
    }
    try {
        ScopeExit exit([&] {
            ++runs;
            throw std::runtime_error("in the action");
        });
        throw std::logic_error("in the scope");
    } catch (const std::logic_error&) {
        ++runs;
    }
    EXPECT_EQ(runs, 3);
}

} // namespace
} // namespace cvlog::base
