#include "core/series.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace cvlog::core {
namespace {

using Codes = std::vector<std::int32_t>;

std::int32_t reported(const Codes& codes) {
    Series series;
    series.start();
    for (const std::int32_t code : codes) series.merge(code);
    return series.finish();
}

// What a series reports, without its state: a cancel counts only as the last code; the last timeout or stopped queue
// hides everything else; then a failure outranks errors and errors outrank warnings.
std::int32_t oracle(const Codes& codes) {
    if (!codes.empty() && codes.back() == -3) return -3;
    for (auto code = codes.rbegin(); code != codes.rend(); ++code)
        if (*code == -4 || *code == -2) return *code;
    for (const std::int32_t rank : {-1, 2, 1})
        for (const std::int32_t code : codes)
            if (code == rank) return rank;
    return 0;
}

struct Vector {
    Codes codes;
    std::int32_t reported;
};

class SeriesVectors : public testing::TestWithParam<Vector> {};

TEST_P(SeriesVectors, ReportTheCombinedCode) {
    EXPECT_EQ(reported(GetParam().codes), GetParam().reported);
    EXPECT_EQ(oracle(GetParam().codes), GetParam().reported) << "the oracle is wrong";
}

INSTANTIATE_TEST_SUITE_P(All, SeriesVectors,
                         testing::Values(Vector{{}, 0}, Vector{{0, -3}, -3}, Vector{{0, -3, 0}, 0},
                                         Vector{{1, 2, 1}, 2}, Vector{{2, 1}, 2}, Vector{{2, -1, 2}, -1},
                                         Vector{{-4, 2}, -4}, Vector{{-4, -1}, -4}, Vector{{-4, -2}, -2},
                                         Vector{{-2, -4}, -4}, Vector{{-1, -4}, -4}, Vector{{-2, -1}, -2},
                                         Vector{{-1, -2}, -2}, Vector{{-2, 1}, -2}, Vector{{-1, -3}, -3},
                                         Vector{{-3, -3}, -3}, Vector{{2, -3, 99}, 2}, Vector{{1, -3, 16}, 1},
                                         Vector{{16}, 0}, Vector{{3}, 0}, Vector{{-5}, 0}));

TEST(SeriesOfAnyCodes, AgreeWithTheOracleUpToFiveCodes) {
    constexpr std::array<std::int32_t, 11> kCodes = {-5, -4, -3, -2, -1, 0, 1, 2, 3, 16, 99};
    int sequences = 0;
    for (std::size_t length = 1; length <= 5; ++length) {
        std::vector<std::size_t> digits(length, 0);
        for (bool more = true; more;) {
            Codes codes;
            for (const std::size_t digit : digits) codes.push_back(kCodes[digit]);
            ASSERT_EQ(reported(codes), oracle(codes)) << testing::PrintToString(codes);
            ++sequences;
            std::size_t place = 0;
            while (place < length && ++digits[place] == kCodes.size()) digits[place++] = 0;
            more = place < length;
        }
    }
    EXPECT_EQ(sequences, 177155);
}

TEST(SeriesState, StartsCleanWhateverWasBefore) {
    Series series;
    series.start();
    series.merge(-4);
    series.merge(-3);
    series.start();
    EXPECT_TRUE(series.InSeries);
    EXPECT_EQ(series.SeriesReturnCode, 0);
    EXPECT_FALSE(series.SeriesCanceled);
    EXPECT_EQ(series.finish(), 0);
}

TEST(SeriesState, IsCleanAfterItsEnd) {
    Series series;
    series.start();
    series.merge(-4);
    series.merge(-3);
    EXPECT_EQ(series.SeriesReturnCode, -4) << "a cancel leaves the stored code";
    EXPECT_EQ(series.finish(), -3);
    EXPECT_FALSE(series.InSeries);
    EXPECT_EQ(series.finish(), 0);
}

} // namespace
} // namespace cvlog::core
