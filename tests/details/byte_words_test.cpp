#include "details/byte_words.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace cvlog::details {
namespace {

std::uint64_t placesOneByOne(const std::string& block, char byte) {
    std::uint64_t places = 0;
    for (std::size_t at = 0; at < kBytesOfBlock; ++at)
        if (block[at] == byte) places |= std::uint64_t{1} << at;
    return places;
}

TEST(PlacesInBlock, AreThoseOfTheByteHoweverTheyAreLookedFor) {
    std::mt19937 random(1);
    for (int round = 0; round < 2000; ++round) {
        std::string block;
        for (std::size_t at = 0; at < kBytesOfBlock; ++at)
            block += random() % 4 == 0 ? '"' : static_cast<char>(random() % 256);
        ASSERT_EQ(PlacesInBlock(block.data(), '"'), placesOneByOne(block, '"')) << "round " << round;
        ASSERT_EQ(PlacesInBlockByWords(block.data(), '"'), placesOneByOne(block, '"')) << "round " << round;
    }
    const std::string all(kBytesOfBlock, '"');
    EXPECT_EQ(PlacesInBlock(all.data(), '"'), ~std::uint64_t{0});
    EXPECT_EQ(PlacesInBlockByWords(all.data(), '\0'), 0U);
}

TEST(UnusualBytes, AreFoundAtEveryPlaceOfTextsOfEveryLength) {
    for (std::size_t size = 0; size <= 40; ++size) {
        const std::string plain(size, '~');
        EXPECT_FALSE(AnyUnusual(plain)) << size;
        EXPECT_FALSE(AnyUnusualByWords(plain)) << size;
        for (std::size_t place = 0; place < size; ++place)
            for (const char unusual : {'\0', '\t', '\x1F', '\x80', '\xA0', '\xFF'}) {
                std::string text = plain;
                text[place] = unusual;
                EXPECT_TRUE(AnyUnusual(text)) << size << ", " << place;
                EXPECT_TRUE(AnyUnusualByWords(text)) << size << ", " << place;
            }
    }
}

TEST(UnusualBytes, AreNeitherTheBlankNorTheLastOfAscii) {
    for (const char usual : {' ', '!', '"', '\x7F'}) {
        EXPECT_FALSE(AnyUnusual(std::string(20, usual)));
        EXPECT_FALSE(AnyUnusualByWords(std::string(20, usual)));
    }
}

TEST(BytesOfShortTexts, AreEqualOnlyWhenAllAre) {
    for (std::size_t size = 0; size <= 40; ++size) {
        std::string text;
        for (std::size_t at = 0; at < size; ++at) text += static_cast<char>('a' + at % 26);
        EXPECT_TRUE(EqualBytes(text, std::string(text))) << size;
        EXPECT_FALSE(EqualBytes(text, text + 'a')) << size;
        EXPECT_FALSE(EqualBytes(text + 'a', text)) << size;
        for (std::size_t place = 0; place < size; ++place) {
            std::string other = text;
            other[place] = '#';
            EXPECT_FALSE(EqualBytes(text, other)) << size << ", " << place;
            EXPECT_EQ(FirstWord(text) == FirstWord(other), place >= kBytesOfWord) << size << ", " << place;
        }
    }
}

} // namespace
} // namespace cvlog::details
