#include "base/byte_words.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace cvlog::base {
namespace {

std::uint64_t placesOneByOne(const std::string& block, char byte) {
    std::uint64_t places = 0;
    for (std::size_t at = 0; at < kBytesOfBlock; ++at)
        if (block[at] == byte) places |= std::uint64_t{1} << at;
    return places;
}

TEST(placesInBlock, AreThoseOfTheByteHoweverTheyAreLookedFor) {
    std::mt19937 random(1);
    for (int round = 0; round < 2000; ++round) {
        std::string block;
        for (std::size_t at = 0; at < kBytesOfBlock; ++at)
            block += random() % 4 == 0 ? '"' : static_cast<char>(random() % 256);
        ASSERT_EQ(placesInBlock(block.data(), '"'), placesOneByOne(block, '"')) << "round " << round;
        ASSERT_EQ(placesInBlockByWords(block.data(), '"'), placesOneByOne(block, '"')) << "round " << round;
    }
    const std::string all(kBytesOfBlock, '"');
    EXPECT_EQ(placesInBlock(all.data(), '"'), ~std::uint64_t{0});
    EXPECT_EQ(placesInBlockByWords(all.data(), '\0'), 0U);
}

TEST(UnusualBytes, AreFoundAtEveryPlaceOfTextsOfEveryLength) {
    constexpr std::size_t kLongest = 2 * kBytesOfBlock + 10;
    for (std::size_t size = 0; size <= kLongest; ++size) {
        const std::string plain(size, '~');
        EXPECT_FALSE(anyUnusual(plain)) << size;
        EXPECT_FALSE(anyUnusualByWords(plain)) << size;
        for (std::size_t place = 0; place < size; ++place)
            for (const char unusual : {'\0', '\t', '\x1F', '\x80', '\xA0', '\xFF'}) {
                std::string text = plain;
                text[place] = unusual;
                EXPECT_TRUE(anyUnusual(text)) << size << ", " << place;
                EXPECT_TRUE(anyUnusualByWords(text)) << size << ", " << place;
            }
    }
}

TEST(UnusualBytes, AreNeitherTheBlankNorTheLastOfAscii) {
    for (const char usual : {' ', '!', '"', '\x7F'}) {
        EXPECT_FALSE(anyUnusual(std::string(20, usual)));
        EXPECT_FALSE(anyUnusualByWords(std::string(20, usual)));
    }
}

TEST(BytesOfShortTexts, AreEqualOnlyWhenAllAre) {
    for (std::size_t size = 0; size <= 40; ++size) {
        std::string text;
        for (std::size_t at = 0; at < size; ++at) text += static_cast<char>('a' + at % 26);
        EXPECT_TRUE(equalBytes(text, std::string(text))) << size;
        EXPECT_FALSE(equalBytes(text, text + 'a')) << size;
        EXPECT_FALSE(equalBytes(text + 'a', text)) << size;
        for (std::size_t place = 0; place < size; ++place) {
            std::string other = text;
            other[place] = '#';
            EXPECT_FALSE(equalBytes(text, other)) << size << ", " << place;
            EXPECT_EQ(firstWord(text) == firstWord(other), place >= kBytesOfWord) << size << ", " << place;
        }
    }
}

} // namespace
} // namespace cvlog::base
