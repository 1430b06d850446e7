#include "base/compact_text_view.h"

#include <gtest/gtest.h>

#include <sstream>

namespace cvlog::base {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

/// A text in both ways.
struct Both {
    explicit Both(std::string text) : bytes(std::move(text)), units(bytes.begin(), bytes.end()) {}
    CompactTextView inBytes() const { return std::string_view(bytes); }
    CompactTextView wide() const { return units; }
    std::string bytes;
    std::u16string units;
};

TEST(CompactTextView, IsTheSameTextInBothWays) {
    for (const char* text : {"", "a", "Row 17", "with\ttab and\nline", "0123456789abcdef0123456789"}) {
        const Both both(text);
        EXPECT_TRUE(both.inBytes().inBytes());
        EXPECT_FALSE(both.wide().inBytes());
        EXPECT_EQ(both.inBytes(), both.wide());
        EXPECT_EQ(both.wide(), both.inBytes());
        EXPECT_EQ(both.inBytes(), Both(text).inBytes());
        EXPECT_EQ(both.inBytes().size(), both.units.size());
        EXPECT_EQ(both.inBytes().empty(), both.units.empty());
        for (std::size_t i = 0; i < both.units.size(); ++i) {
            EXPECT_EQ(both.inBytes()[i], both.units[i]);
            EXPECT_EQ(both.wide()[i], both.units[i]);
        }
    }
}

TEST(CompactTextView, OfNothingIsEmpty) {
    EXPECT_TRUE(CompactTextView().empty());
    EXPECT_EQ(CompactTextView(), CompactTextView(u""));
    EXPECT_EQ(std::u16string(CompactTextView()), u"");
}

TEST(CompactTextView, DiffersInEveryUnitAndInItsLength) {
    const Both both("text");
    for (const CompactTextView text : {both.inBytes(), both.wide()}) {
        for (const char16_t* other : {u"", u"tex", u"texts", u"Text", u"te\u0178t", u"tex\u0174"}) {
            EXPECT_NE(text, other);
            EXPECT_NE(CompactTextView(other), text);
        }
        EXPECT_EQ(text, u"text");
    }
    const Both withNul("a\0b"s);
    EXPECT_EQ(withNul.inBytes(), u"a\0b"sv);
    EXPECT_NE(withNul.inBytes(), u"a\0c"sv);
}

TEST(CompactTextView, IsFoundEqualWithoutRegardToCase) {
    const Both lower("expansion 1"), upper("EXPANSION 1"), other("expansion 2");
    for (const CompactTextView text : {lower.inBytes(), lower.wide()}) {
        EXPECT_TRUE(text.equalsIgnoringCase(upper.inBytes()));
        EXPECT_TRUE(text.equalsIgnoringCase(upper.wide()));
        EXPECT_FALSE(text.equalsIgnoringCase(other.inBytes()));
        EXPECT_FALSE(text.equalsIgnoringCase(other.wide()));
        EXPECT_FALSE(text.equalsIgnoringCase(u"expansion"));
    }
    EXPECT_TRUE(CompactTextView(u"\u00E9").equalsIgnoringCase(u"\u00C9"));
    EXPECT_FALSE(CompactTextView("i"sv).equalsIgnoringCase(u"\u0130")) << "a capital of other languages";
}

TEST(CompactTextView, HasAFirstPart) {
    const Both both("text");
    for (const CompactTextView text : {both.inBytes(), both.wide()}) {
        EXPECT_EQ(text.first(0), u"");
        EXPECT_EQ(text.first(2), u"te");
        EXPECT_EQ(text.first(4), u"text");
        EXPECT_EQ(text.first(5), u"text");
    }
}

TEST(CompactTextView, IsTakenAsUtf16WhereItLiesOrInABuffer) {
    const Both both("text");
    std::u16string buffer = u"a longer one that was there before";
    EXPECT_EQ(both.inBytes().in(buffer), u"text");
    EXPECT_EQ(buffer, u"text");
    EXPECT_EQ(both.wide().in(buffer).data(), both.units.data());
    std::u16string all = u"a ";
    both.inBytes().appendTo(all);
    both.wide().appendTo(all);
    EXPECT_EQ(all, u"a texttext");
    EXPECT_EQ(std::u16string(both.inBytes()), u"text");
}

TEST(CompactTextView, IsToldInUtf8) {
    EXPECT_EQ(CompactTextView(u"\u00E4 \U0001F600").toUtf8(), "\xC3\xA4 \xF0\x9F\x98\x80");
    std::ostringstream told;
    told << CompactTextView("plain"sv) << CompactTextView(u"\u00E4");
    EXPECT_EQ(told.str(), "plain\xC3\xA4");
}

} // namespace
} // namespace cvlog::base
