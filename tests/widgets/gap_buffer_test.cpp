#include "widgets/gap_buffer.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <vector>

namespace cvlog::widgets {
namespace {

using Buffer = GapBuffer<std::shared_ptr<int>>;

std::vector<int> valuesOf(const Buffer& buffer) {
    std::vector<int> values;
    for (std::size_t i = 0; i < buffer.size(); ++i) values.push_back(*buffer[i]);
    return values;
}

class GapBufferAgainstAVector : public testing::TestWithParam<unsigned> {};

TEST_P(GapBufferAgainstAVector, HoldsTheSameAfterEveryChange) {
    std::mt19937 random(GetParam());
    Buffer buffer;
    std::vector<int> oracle;
    for (int step = 0; step < 3000; ++step) {
        const auto size = oracle.size();
        const auto action = random() % 100;
        if (action < 60 || size == 0) {
            const auto at = random() % (size + 1);
            buffer.insert(at, std::make_shared<int>(step));
            oracle.insert(oracle.begin() + static_cast<std::ptrdiff_t>(at), step);
        } else if (action < 99) {
            const auto at = random() % size;
            const auto count = random() % std::min<std::size_t>(size - at + 1, 9);
            buffer.remove(at, count);
            const auto first = oracle.begin() + static_cast<std::ptrdiff_t>(at);
            oracle.erase(first, first + static_cast<std::ptrdiff_t>(count));
        } else {
            buffer.clear();
            oracle.clear();
        }
        ASSERT_EQ(buffer.size(), oracle.size()) << "step " << step;
        if (step % 16 == 0) {
            ASSERT_EQ(valuesOf(buffer), oracle) << "step " << step;
        }
    }
    EXPECT_EQ(valuesOf(buffer), oracle);
}

INSTANTIATE_TEST_SUITE_P(Seeds, GapBufferAgainstAVector, testing::Values(1U, 2U, 3U, 4U));

TEST(GapBuffer, LetsGoOfWhatIsRemoved) {
    Buffer buffer;
    std::vector<std::weak_ptr<int>> watched;
    for (int i = 0; i < 40; ++i) {
        auto value = std::make_shared<int>(i);
        watched.push_back(value);
        buffer.insert(buffer.size(), std::move(value));
    }
    buffer.remove(10, 5);
    for (std::size_t i = 0; i < watched.size(); ++i) EXPECT_EQ(watched[i].expired(), i >= 10 && i < 15) << i;
    buffer.clear();
    for (const auto& value : watched) EXPECT_TRUE(value.expired());
    EXPECT_EQ(buffer.size(), 0U);
}

TEST(GapBuffer, TakesAValueFromItself) {
    Buffer buffer;
    for (int i = 0; i < 16; ++i) buffer.insert(buffer.size(), std::make_shared<int>(i));
    buffer.insert(3, buffer[15]); // grows on the way
    EXPECT_EQ(*buffer[3], 15);
    EXPECT_EQ(*buffer[16], 15);
}

} // namespace
} // namespace cvlog::widgets
