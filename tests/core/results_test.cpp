#include "core/results.h"

#include "base/text.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace cvlog::core {
namespace {

using namespace std::string_literals;
using ports::BoxIcon;
using resources::Language;

struct Classification {
    std::int32_t code;
    const char16_t* iconKey;
    int stringId;
    BoxIcon boxIcon;
};

class ReturnCode : public testing::TestWithParam<Classification> {};

TEST_P(ReturnCode, IsClassifiedByTheTable) {
    const Classification& row = GetParam();
    EXPECT_EQ(ResultIconKey(row.code), row.iconKey);
    EXPECT_EQ(OutcomeBoxIcon(row.code), row.boxIcon);
    for (const Language language : {Language::English, Language::Japanese, Language::Korean}) {
        std::u16string expected(resources::text(language, row.stringId));
        if (const auto at = expected.find(u"%1"); at != std::u16string::npos) {
            const std::string digits = std::to_string(row.code);
            expected.replace(at, 2, std::u16string(digits.begin(), digits.end()));
        }
        EXPECT_EQ(OutcomeMessage(language, row.code), expected);
    }
}

constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();

INSTANTIATE_TEST_SUITE_P(Known, ReturnCode,
                         testing::Values(Classification{-4, u"Cancel", 502, BoxIcon::Critical},
                                         Classification{-3, u"Cancel", 503, BoxIcon::Critical},
                                         Classification{-2, u"Bad", 504, BoxIcon::Critical},
                                         Classification{-1, u"Failure", 505, BoxIcon::Critical},
                                         Classification{0, u"Good", 506, BoxIcon::Information},
                                         Classification{1, u"Suspect", 507, BoxIcon::Exclamation},
                                         Classification{2, u"Bad", 508, BoxIcon::Critical},
                                         Classification{16, u"Cancel", 503, BoxIcon::Critical}));

INSTANTIATE_TEST_SUITE_P(Others, ReturnCode,
                         testing::Values(Classification{3, u"Bad", 509, BoxIcon::Critical},
                                         Classification{-5, u"Bad", 509, BoxIcon::Critical},
                                         Classification{7, u"Bad", 509, BoxIcon::Critical},
                                         Classification{-9, u"Bad", 509, BoxIcon::Critical},
                                         Classification{15, u"Bad", 509, BoxIcon::Critical},
                                         Classification{17, u"Bad", 509, BoxIcon::Critical},
                                         Classification{kLeast, u"Bad", 509, BoxIcon::Critical},
                                         Classification{kMost, u"Bad", 509, BoxIcon::Critical}));

TEST(OutcomeMessageText, CarriesTheDecimalCodeInEveryLanguage) {
    EXPECT_EQ(OutcomeMessage(Language::English, -9),
              u"Method was finished with an unexpected return code (RC = -9)");
    for (const Language language : {Language::English, Language::Japanese, Language::Korean}) {
        const std::u16string text = OutcomeMessage(language, kLeast);
        EXPECT_NE(text.find(u"-2147483648"), std::u16string::npos);
        EXPECT_EQ(text.find(u"%1"), std::u16string::npos);
    }
}

struct Cleaning {
    std::u16string text;
    std::u16string cleaned;
};

class CleanMessageTest : public testing::TestWithParam<Cleaning> {};

TEST_P(CleanMessageTest, ReplacesControlCharactersOneByOneThenTrimsBlanks) {
    EXPECT_EQ(CleanMessage(GetParam().text), GetParam().cleaned);
    std::u16string text(GetParam().text);
    EXPECT_EQ(CleanMessageInPlace(text), GetParam().cleaned);
    std::string utf8 = base::toUtf8(GetParam().text);
    if (!base::isAscii(utf8)) return;
    EXPECT_EQ(CleanMessageInPlace(utf8), base::toUtf8(GetParam().cleaned));
}

INSTANTIATE_TEST_SUITE_P(Messages, CleanMessageTest,
                         testing::Values(Cleaning{u"a\r\nb\t"s, u"a  b"s}, Cleaning{u"a\0b"s, u"a b"s},
                                         Cleaning{u"\t\r\n"s, u""s}, Cleaning{u"  a   b  "s, u"a   b"s},
                                         Cleaning{u"\x01"
                                                  u"a\x1F"s,
                                                  u"a"s},
                                         Cleaning{u"\u00A0a\u3000"s, u"\u00A0a\u3000"s},
                                         Cleaning{u"\x7Fz\x85"s, u"\x7Fz\x85"s},
                                         Cleaning{u"\uAC00\u4E00\u8000\uFFFF"s, u"\uAC00\u4E00\u8000\uFFFF"s},
                                         Cleaning{u"\U0001F600"s, u"\U0001F600"s},
                                         Cleaning{u"\xD800z"s, u"\xD800z"s},
                                         Cleaning{u"\u202E%1"s, u"\u202E%1"s}));

TEST(CleanMessageOfAllCharacters, ChangesExactlyThoseBelow32) {
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        const std::u16string text{u'x', static_cast<char16_t>(unit), u'x'};
        ASSERT_EQ(CleanMessage(text), unit < 32 ? u"x x"s : text) << unit;
    }
}

TEST(CleanMessageOfALongText, KeepsTheLengthOfTheInnerText) {
    std::u16string text(65536, u'\t');
    text.front() = text.back() = u'x';
    EXPECT_EQ(CleanMessage(text).size(), text.size());
}

} // namespace
} // namespace cvlog::core
