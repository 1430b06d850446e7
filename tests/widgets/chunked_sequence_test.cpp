#include "widgets/chunked_sequence.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

namespace cvlog::widgets {
namespace {

using Sequence = ChunkedSequence<std::shared_ptr<int>>;

std::vector<int> valuesOf(const Sequence& sequence) {
    std::vector<int> values;
    for (std::size_t i = 0; i < sequence.size(); ++i) values.push_back(*sequence[i]);
    return values;
}

/// Where the changes of a run are made, and how many come for each that goes.
struct Run {
    unsigned seed;
    unsigned insertions; // of a hundred changes
    bool atOnePlace;
};

class ChunkedSequenceAgainstAVector : public testing::TestWithParam<Run> {
protected:
    std::size_t pick(std::size_t bound) { return random_() % bound; }
    std::size_t place(std::size_t bound) {
        if (!GetParam().atOnePlace) return pick(bound);
        return std::min(bound - 1, bound / 3 + pick(4));
    }
    void change(int step) {
        if (pick(4000) == 0) {
            sequence_.clear();
            oracle_.clear();
        } else if (pick(100) < GetParam().insertions || oracle_.empty()) {
            const std::size_t at = pick(3) == 0 ? oracle_.size() : place(oracle_.size() + 1);
            std::vector<std::shared_ptr<int>> run(pick(20) == 0 ? 1 + pick(Sequence::kLongestRun) : 1);
            for (auto& value : run) value = std::make_shared<int>(step);
            const std::size_t length = run.size();
            sequence_.insertRun(at, run);
            oracle_.insert(oracle_.begin() + static_cast<std::ptrdiff_t>(at), length, step);
        } else {
            const std::size_t at = place(oracle_.size());
            sequence_.remove(at);
            oracle_.erase(oracle_.begin() + static_cast<std::ptrdiff_t>(at));
        }
    }

    std::mt19937 random_{GetParam().seed};
    Sequence sequence_;
    std::vector<int> oracle_;
};

TEST(ChunkedSequence, TakesRunsThatComeOneBehindTheOtherAnywhere) {
    for (const std::size_t first : {1U, 255U, 511U, 512U, 700U}) {
        Sequence sequence;
        std::vector<int> oracle;
        const auto insert = [&](std::size_t at, std::size_t count, int value) {
            std::vector<std::shared_ptr<int>> run(count);
            for (auto& each : run) each = std::make_shared<int>(value);
            sequence.insertRun(at, run);
            oracle.insert(oracle.begin() + static_cast<std::ptrdiff_t>(at), count, value);
        };
        for (int i = 0; i < 1'000; ++i) insert(oracle.size(), 1, -i);
        std::size_t at = first;
        for (int run = 1; run <= 60; ++run) {
            const std::size_t count = run % 7 == 0 ? 1 : 49;
            insert(at, count, run);
            at += count;
        }
        ASSERT_EQ(valuesOf(sequence), oracle) << first;
        for (int i = 0; i < 3'000; ++i) {
            sequence.remove(first);
            oracle.erase(oracle.begin() + static_cast<std::ptrdiff_t>(first));
            if (first == oracle.size()) break;
        }
        EXPECT_EQ(valuesOf(sequence), oracle) << first;
    }
}

TEST_P(ChunkedSequenceAgainstAVector, HoldsTheSameAfterEveryChange) {
    for (int step = 0; step < 20'000; ++step) {
        change(step);
        ASSERT_EQ(sequence_.size(), oracle_.size()) << "step " << step;
        for (int i = 0; i < 3 && !oracle_.empty(); ++i) {
            const std::size_t at = pick(oracle_.size());
            ASSERT_EQ(*sequence_[at], oracle_[at]) << "step " << step << ", place " << at;
        }
        if (step % 256 == 0) {
            ASSERT_EQ(valuesOf(sequence_), oracle_) << "step " << step;
        }
    }
    EXPECT_EQ(valuesOf(sequence_), oracle_);
}

INSTANTIATE_TEST_SUITE_P(Seeds, ChunkedSequenceAgainstAVector,
                         testing::Values(Run{1, 80, false}, Run{2, 80, true}, Run{3, 50, false},
                                         Run{4, 50, true}, Run{5, 95, false}, Run{6, 30, false}));

TEST(ChunkedSequence, ShrinksToNothingFromEitherEnd) {
    for (const bool fromEnd : {false, true}) {
        Sequence sequence;
        for (int i = 0; i < 3000; ++i) sequence.insert(sequence.size(), std::make_shared<int>(i));
        for (int i = 0; i < 3000; ++i) {
            ASSERT_EQ(*sequence[0], fromEnd ? 0 : i);
            ASSERT_EQ(*sequence[sequence.size() - 1], fromEnd ? 2999 - i : 2999);
            sequence.remove(fromEnd ? sequence.size() - 1 : 0);
        }
        EXPECT_EQ(sequence.size(), 0U);
        sequence.insert(0, std::make_shared<int>(7));
        EXPECT_EQ(*sequence[0], 7);
    }
}

TEST(ChunkedSequence, TakesRunsOneBehindTheOtherInItsMiddle) {
    for (const std::size_t length : {std::size_t{1}, std::size_t{49}, Sequence::kLongestRun}) {
        Sequence sequence;
        for (int i = 0; i < 1000; ++i) sequence.insert(sequence.size(), std::make_shared<int>(-1));
        std::size_t at = 300;
        for (int n = 0; at < 5000;) {
            std::vector<std::shared_ptr<int>> run;
            for (std::size_t i = 0; i < length; ++i) run.push_back(std::make_shared<int>(n++));
            sequence.insertRun(at, run);
            at += length;
        }
        ASSERT_EQ(sequence.size(), at + 700);
        for (std::size_t i = 0; i < sequence.size(); ++i)
            ASSERT_EQ(*sequence[i], i < 300 || i >= at ? -1 : static_cast<int>(i) - 300) << length;
    }
}

TEST(ChunkedSequence, LetsGoOfWhatIsRemoved) {
    Sequence sequence;
    std::vector<std::weak_ptr<int>> watched;
    for (int i = 0; i < 1500; ++i) {
        auto value = std::make_shared<int>(i);
        watched.push_back(value);
        sequence.insert(sequence.size(), std::move(value));
    }
    for (int i = 0; i < 700; ++i) sequence.remove(10);
    for (std::size_t i = 0; i < watched.size(); ++i) EXPECT_EQ(watched[i].expired(), i >= 10 && i < 710) << i;
    sequence.clear();
    for (const auto& value : watched) EXPECT_TRUE(value.expired());
    EXPECT_EQ(sequence.size(), 0U);
}

TEST(ChunkedSequence, TakesAValueFromItself) {
    Sequence sequence;
    const auto full = static_cast<int>(Sequence::kChunk);
    for (int i = 0; i < full; ++i) sequence.insert(sequence.size(), std::make_shared<int>(i));
    sequence.insert(3, sequence[Sequence::kChunk - 1]); // splits on the way
    EXPECT_EQ(*sequence[3], full - 1);
    EXPECT_EQ(*sequence[Sequence::kChunk], full - 1);
}

TEST(ChunkedSequence, FindsTheBoundaryOfAPartitionWhereverItLies) {
    for (const int count : {0, 1, 511, 512, 513, 2000}) {
        Sequence sequence;
        for (int i = 0; i < count; ++i) sequence.insert(sequence.size() / 2, std::make_shared<int>(0));
        for (int i = 0; i < count; ++i) *sequence[static_cast<std::size_t>(i)] = i;
        for (int boundary = 0; boundary <= count; boundary += 1 + boundary % 7)
            ASSERT_EQ(sequence.partitionPoint([&](const auto& value) { return *value < boundary; },
                                              [](const auto&) {}),
                      static_cast<std::size_t>(boundary))
                << "of " << count;
    }
}

TEST(ChunkedSequence, FindsTheFirstThatFits) {
    Sequence sequence;
    for (int i = 0; i < 2000; ++i) sequence.insert(0, std::make_shared<int>(i));
    EXPECT_EQ(sequence.find([](const auto& value) { return *value < 10; }), 1990U);
    EXPECT_EQ(sequence.find([](const auto& value) { return *value < 0; }), 2000U);
}

} // namespace
} // namespace cvlog::widgets
