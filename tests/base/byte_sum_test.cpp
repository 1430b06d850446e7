#include "base/byte_sum.h"

#include <gtest/gtest.h>

#include <string>

namespace cvlog::base {
namespace {

TEST(ByteSum, CountsEveryByteOfTextsOfEveryLength) {
    NumbersOfBytes numbers{};
    for (std::size_t byte = 0; byte < numbers.size(); ++byte)
        numbers[byte] = static_cast<std::int64_t>(byte * byte + 3);
    ByteSum sum(numbers);
    std::string text;
    std::int64_t expected = 0;
    for (unsigned size = 0; size <= 600; ++size) {
        EXPECT_EQ(sum.of(text), expected) << size;
        const auto byte = static_cast<unsigned char>(size * 7);
        text += static_cast<char>(byte);
        expected += numbers[byte];
    }
}

TEST(ByteSum, HoldsMoreThan32Bits) {
    NumbersOfBytes numbers{};
    numbers[0xFF] = std::int64_t{1} << 40;
    numbers['a'] = -1;
    numbers['\0'] = std::int64_t{1} << 50; // a NUL counts only where it is in the text
    ByteSum sum(numbers);
    EXPECT_EQ(sum.of("\xFF\xFF"
                     "a"),
              2 * (std::int64_t{1} << 40) - 1);
    EXPECT_EQ(sum.of(std::string(31, '\xFF') + "a"), 31 * (std::int64_t{1} << 40) - 1);
    EXPECT_EQ(sum.of(std::string(17, '\0')), 17 * (std::int64_t{1} << 50));
}

} // namespace
} // namespace cvlog::base
