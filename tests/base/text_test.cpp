#include "base/text.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace cvlog::base {
namespace {

using namespace std::string_literals;

struct FoldPair {
    char16_t small;
    char16_t capital;
};

class CaseFolding : public testing::TestWithParam<FoldPair> {};

TEST_P(CaseFolding, MapsTheSmallLetterToItsCapitalAndLeavesTheCapital) {
    EXPECT_EQ(foldCase(GetParam().small), GetParam().capital);
    EXPECT_EQ(foldCase(GetParam().capital), GetParam().capital);
}

INSTANTIATE_TEST_SUITE_P(Letters, CaseFolding,
                         testing::Values(FoldPair{u'a', u'A'}, FoldPair{u'z', u'Z'},
                                         FoldPair{u'\u00E9', u'\u00C9'}, FoldPair{u'\u00FE', u'\u00DE'},
                                         FoldPair{u'\u00FF', u'\u0178'}, FoldPair{u'\u0101', u'\u0100'},
                                         FoldPair{u'\u013A', u'\u0139'}, FoldPair{u'\u017E', u'\u017D'},
                                         FoldPair{u'\u03B1', u'\u0391'}, FoldPair{u'\u03AC', u'\u0386'},
                                         FoldPair{u'\u03AF', u'\u038A'}, FoldPair{u'\u0430', u'\u0410'},
                                         FoldPair{u'\u0451', u'\u0401'}, FoldPair{u'\u04C2', u'\u04C1'},
                                         FoldPair{u'\u0561', u'\u0531'}, FoldPair{u'\u1E01', u'\u1E00'},
                                         FoldPair{u'\u2170', u'\u2160'}, FoldPair{u'\u24D0', u'\u24B6'},
                                         FoldPair{u'\uFF41', u'\uFF21'}));

TEST(CaseFoldingOfOthers, KeepsWhatHasNoCapitalOfOneUnit) {
    for (const char16_t unit : u"\u00D7\u00F7\u00DF\u0131\u3042\uAC00\u4E00\xD800\xDC00 0_"s)
        EXPECT_EQ(foldCase(unit), unit) << std::hex << static_cast<unsigned>(unit);
}

TEST(CaseFoldingOfAll, IsStableWhenAppliedTwice) {
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        const char16_t once = foldCase(static_cast<char16_t>(unit));
        ASSERT_EQ(foldCase(once), once) << std::hex << unit;
    }
}

TEST(EqualsIgnoringCase, ComparesEveryCodeUnitAndTheLength) {
    EXPECT_TRUE(equalsIgnoringCase(u"", u""));
    EXPECT_TRUE(equalsIgnoringCase(u"LogChanged", u"LOGCHANGED"));
    EXPECT_FALSE(equalsIgnoringCase(u"Log", u"Log "));
    EXPECT_FALSE(equalsIgnoringCase(u"co-op", u"coop")) << "a linguistic comparison would skip the hyphen";
    EXPECT_FALSE(equalsIgnoringCase(u"a\0b"s, u"a\0c"s)) << "what follows a NUL counts";
    EXPECT_TRUE(equalsIgnoringCase(u"\xD800x"s, u"\xD800X"s));
}

TEST(IsSame, ComparesEveryCodeUnitAndTheLength) {
    EXPECT_TRUE(isSame({}, u""));
    EXPECT_TRUE(isSame(u"Log"s, u"Log"));
    EXPECT_FALSE(isSame(u"Log", u"log"));
    EXPECT_FALSE(isSame(u"Log", u"Log "));
    EXPECT_FALSE(isSame(u"Log", {}));
    EXPECT_FALSE(isSame(u"a\0b"s, u"a\0c"s)) << "what follows a NUL counts";
    EXPECT_FALSE(isSame(u"a\u0141", u"a\u0041")) << "both bytes of a unit count";
}

TEST(Folded, GivesEqualTextsExactlyForEqualTexts) { EXPECT_EQ(folded(u"aB\u00E9\0z"s), u"AB\u00C9\0Z"s); }

TEST(TrimBlanks, DropsOnlyU0020AndOnlyAtTheEnds) {
    EXPECT_EQ(trimBlanks(u"  a  b "), u"a  b");
    EXPECT_EQ(trimBlanks(u"   "), u"");
    EXPECT_EQ(trimBlanks(u""), u"");
    EXPECT_EQ(trimBlanks(u"\u00A0a\u3000"), u"\u00A0a\u3000");
    EXPECT_EQ(trimBlanks(u"\ta\t"), u"\ta\t");
}

TEST(Decimal, WritesTheSignAndAllDigits) {
    EXPECT_EQ(decimal(0), u"0");
    EXPECT_EQ(decimal(-9), u"-9");
    EXPECT_EQ(decimal(std::numeric_limits<std::int32_t>::min()), u"-2147483648");
    EXPECT_EQ(decimal(std::numeric_limits<std::int64_t>::min()), u"-9223372036854775808");
}

TEST(ReplaceFirst, ReplacesOneOccurrenceAndDoesNotLookAtTheReplacement) {
    EXPECT_EQ(replaceFirst(u"a %1 b %1", u"%1", u"7"), u"a 7 b %1");
    EXPECT_EQ(replaceFirst(u"%1", u"%1", u"%1%1"), u"%1%1");
    EXPECT_EQ(replaceFirst(u"none", u"%1", u"7"), u"none");
    EXPECT_EQ(replaceFirst(u"", u"%1", u"7"), u"");
}

struct Utf8Pair {
    std::u16string text;
    std::string bytes;
};

class Utf8 : public testing::TestWithParam<Utf8Pair> {};

TEST_P(Utf8, ConvertsBothWays) {
    EXPECT_EQ(toUtf8(GetParam().text), GetParam().bytes);
    EXPECT_EQ(fromUtf8(GetParam().bytes), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, Utf8,
    testing::Values(Utf8Pair{u"", ""}, Utf8Pair{u"a\0b"s, "a\0b"s}, Utf8Pair{u"\u007F", "\x7F"},
                    Utf8Pair{u"\u0080", "\xC2\x80"}, Utf8Pair{u"\u07FF", "\xDF\xBF"},
                    Utf8Pair{u"\u0800", "\xE0\xA0\x80"}, Utf8Pair{u"\uFFFF", "\xEF\xBF\xBF"},
                    Utf8Pair{u"\U00010000", "\xF0\x90\x80\x80"}, Utf8Pair{u"\U0010FFFF", "\xF4\x8F\xBF\xBF"},
                    Utf8Pair{u"\xD800"s, "\xED\xA0\x80"}, Utf8Pair{u"\xDFFFx"s, "\xED\xBF\xBFx"}));

class MalformedUtf8 : public testing::TestWithParam<Utf8Pair> {};

TEST_P(MalformedUtf8, BecomesOneReplacementAByte) { EXPECT_EQ(fromUtf8(GetParam().bytes), GetParam().text); }

INSTANTIATE_TEST_SUITE_P(Bytes, MalformedUtf8,
                         testing::Values(Utf8Pair{u"\uFFFDa", "\x80"
                                                              "a"},
                                         Utf8Pair{u"\uFFFD\uFFFD", "\xC0\x80"}, Utf8Pair{u"\uFFFD", "\xC3"},
                                         Utf8Pair{u"\uFFFDa", "\xC3"
                                                              "a"},
                                         Utf8Pair{u"\uFFFD\uFFFD\uFFFD", "\xE0\x80\x80"},
                                         Utf8Pair{u"\uFFFD\uFFFD", "\xE2\x82"},
                                         Utf8Pair{u"\uFFFD\uFFFD\uFFFD\uFFFD", "\xF4\x90\x80\x80"},
                                         Utf8Pair{u"\uFFFD", "\xFF"}));

TEST(Utf8OfAnyLength, IsReadExactlyWhereverTheFirstOtherCharacterStands) {
    std::u16string out = u"what was there before, longer than some and shorter than others";
    for (std::size_t length = 0; length <= 70; ++length) {
        const std::string plain =
            std::string("0123456789abcdefghijklmnopqrstuvwxyz0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ")
                .substr(0, length);
        const std::u16string wide(plain.begin(), plain.end());
        fromUtf8(plain, out);
        EXPECT_EQ(out, wide);
        std::u16string widened(length, u'?');
        EXPECT_EQ(widenAscii(plain, widened.data()), widened.data() + length);
        EXPECT_EQ(widened, wide);
        for (std::size_t place = 0; place <= length; ++place) {
            std::string text = plain;
            std::u16string expected = wide;
            fromUtf8(text.insert(place, "\xC3\xBC"), out);
            EXPECT_EQ(out, expected.insert(place, u"\u00FC")) << length << ", " << place;
            text = plain;
            expected = wide;
            fromUtf8(text.insert(place, "\x80"), out);
            EXPECT_EQ(out, expected.insert(place, u"\uFFFD")) << length << ", " << place;
        }
    }
}

TEST(Utf8, IsReadBehindWhatIsKeptOfATextThatWasThere) {
    std::u16string out = u"kept, dropped";
    fromUtf8("gr\xC3\xBC\xC3\x9F", out, 4);
    EXPECT_EQ(out, u"keptgr\u00FC\u00DF");
    fromUtf8("", out, 4);
    EXPECT_EQ(out, u"kept");
}

TEST(Utf8OfAnyText, ComesBackExactly) {
    std::mt19937 random(20240102);
    for (int round = 0; round < 2000; ++round) {
        std::u16string text;
        for (auto length = random() % 12; length > 0; --length)
            text.push_back(
                static_cast<char16_t>(random() % 4 == 0 ? 0xD800 + random() % 0x800 : random() % 0x10000));
        ASSERT_EQ(fromUtf8(toUtf8(text)), text) << "round " << round;
    }
}

} // namespace
} // namespace cvlog::base
