#include "base/compact_text.h"

#include "base/text.h"

#include <gtest/gtest.h>

namespace cvlog::base {
namespace {

TEST(CompactText, StaysInBytesAsLongAsItIsAscii) {
    CompactText text;
    text.appendUtf8("PROG");
    text.appendAscii('\n');
    text.append(u"PAYROLL");
    EXPECT_TRUE(text.isAscii());
    EXPECT_EQ(text.ascii(), "PROG\nPAYROLL");
    EXPECT_EQ(text.wide(), u"");
}

TEST(CompactText, IsWideFromTheFirstOtherCharacterOn) {
    CompactText utf8;
    utf8.appendUtf8("a");
    utf8.appendUtf8("gr\xC3\xBC\xC3\x9F");
    utf8.appendAscii('\n');
    utf8.appendUtf8("plain");
    utf8.append(u"wide");
    EXPECT_FALSE(utf8.isAscii());
    EXPECT_EQ(utf8.wide(), u"agr\u00FC\u00DF\nplainwide");
    EXPECT_EQ(utf8.ascii(), "");

    CompactText utf16;
    utf16.appendAscii('a');
    utf16.append(u"\u00FC");
    EXPECT_FALSE(utf16.isAscii());
    EXPECT_EQ(utf16.wide(), u"a\u00FC");
}

TEST(CompactText, BeginsAnewInBytes) {
    CompactText text;
    text.append(u"\u00FC");
    text.clear();
    EXPECT_TRUE(text.isAscii());
    text.append(u"a\x7F");
    EXPECT_EQ(text.ascii(), "a\x7F");
    EXPECT_EQ(text.wide(), u"");
}

TEST(CompactText, TakesControlCharactersAndMalformedBytes) {
    CompactText text;
    text.appendUtf8(std::string_view("\0\t", 2));
    EXPECT_TRUE(text.isAscii());
    text.appendUtf8("\x80");
    EXPECT_EQ(text.wide(), (std::u16string{u'\0', u'\t', u'\uFFFD'}));
}

TEST(AsciiBytes, AreKnownAtEveryPlaceOfTextsOfEveryLength) {
    for (std::size_t size = 0; size <= 40; ++size) {
        const std::string plain(size, '\x7F');
        EXPECT_TRUE(isAscii(plain)) << size;
        for (std::size_t place = 0; place < size; ++place)
            for (const char beyond : {'\x80', '\xC3', '\xFF'}) {
                std::string text = plain;
                text[place] = beyond;
                EXPECT_FALSE(isAscii(text)) << size << ", " << place;
            }
    }
}

} // namespace
} // namespace cvlog::base
