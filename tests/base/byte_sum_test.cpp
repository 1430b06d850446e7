#include "base/byte_sum.h"

#include <gtest/gtest.h>

#include <string>

namespace cvlog::base {
namespace {

TEST(ByteSum, CountsEveryByteOfTextsOfEveryLength) {
    NumbersOfBytes numbers{};
    for (std::size_t byte = 0; byte < numbers.size(); ++byte)
        numbers[byte] = static_cast<std::int64_t>(byte * byte + 3);
    std::string text;
    std::int64_t expected = 0;
    for (unsigned size = 0; size <= 600; ++size) {
        EXPECT_EQ(sumOf(text, numbers), expected) << size;
        const auto byte = static_cast<unsigned char>(size * 7);
        text += static_cast<char>(byte);
        expected += numbers[byte];
    }
}

TEST(ByteSum, HoldsMoreThan32Bits) {
    NumbersOfBytes numbers{};
    numbers[0xFF] = std::int64_t{1} << 40;
    numbers['a'] = -1;
    EXPECT_EQ(sumOf("\xFF\xFF\xFF\xFF\xFF"
                    "a",
                    numbers),
              5 * (std::int64_t{1} << 40) - 1);
}

} // namespace
} // namespace cvlog::base
