#include "details/error_line.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace cvlog::details {
namespace {

struct Parsed {
    std::string type, object, severity, code, message;
    friend bool operator==(const Parsed&, const Parsed&) = default;
};

void PrintTo(const Parsed& parsed, std::ostream* out) {
    *out << '[' << parsed.type << "][" << parsed.object << "][" << parsed.severity << "][" << parsed.code
         << "][" << parsed.message << ']';
}

Parsed parse(std::string line) {
    const ErrorLine parts = ParseErrorLine(line);
    return {std::string(parts.typeName), std::string(parts.objectName), std::string(parts.severity),
            std::string(parts.code), std::string(parts.message)};
}

struct LineCase {
    const char* name;
    std::string line;
    Parsed parsed;
};

void PrintTo(const LineCase& test, std::ostream* out) { *out << test.name; }

class ErrorLineTable : public testing::TestWithParam<LineCase> {};

TEST_P(ErrorLineTable, IsTakenApart) { EXPECT_EQ(parse(GetParam().line), GetParam().parsed); }

INSTANTIATE_TEST_SUITE_P(
    Lines, ErrorLineTable,
    testing::Values(
        LineCase{"Quoted",
                 R"("Program" "PAYROLL" "x" "y" "Error" "E1234" File not found)",
                 {"Program", "PAYROLL", "Error", "E1234", "File not found"}},
        LineCase{"OnlyTheFirstFieldMustBeQuoted",
                 R"("Program" PAYROLL x y Error E1234 File not found)",
                 {"Program", "PAYROLL", "Error", "E1234", "File not found"}},
        LineCase{"QuotesInsideAFieldGroupBlanks",
                 R"("P" ab"c d"e x y Warning W1 m)",
                 {"P", "abc de", "Warning", "W1", "m"}},
        LineCase{"EmptyPairsOfQuotesAreFields", R"("" "" "" "" "" "" m)", {"", "", "", "", "m"}},
        LineCase{"PairsOfQuotesJoin", R"("a""b" 2 3 4 5 6 m)", {"ab", "2", "5", "6", "m"}},
        LineCase{"WhatFollowsAQuoteBelongsToTheField", R"("a"b c d e f g)", {"ab", "c", "f", "g", ""}},
        LineCase{"AQuoteThatIsNotClosedEndsWithTheLine", R"("a b)", {"a b", "", "", "", ""}},
        LineCase{"TheMessageKeepsItsQuotesButTheFirst",
                 R"("a" "b" "c" "d" "Error" "E1" "File" not "found")",
                 {"a", "b", "Error", "E1", R"(File" not "found")"}},
        LineCase{"TheCodeMayBeInPieces",
                 R"("a" "b" "c" "d" "Error" "E1""tail" m)",
                 {"a", "b", "Error", "E1tail", "m"}},
        LineCase{"NoMessage", R"("a" "b" "c" "d" "Error" "E1")", {"a", "b", "Error", "E1", ""}},
        LineCase{"ThePairAfterTheCodeLeavesOneQuote",
                 R"("a" "b" "c" "d" "Error" "E1" "")",
                 {"a", "b", "Error", "E1", "\""}},
        LineCase{"AQuoteAfterTheCodeIsDropped",
                 R"("a" "b" "c" "d" "Error" "E1" ")",
                 {"a", "b", "Error", "E1", ""}},
        LineCase{"TabsPartFieldsAndAreBlanksInTheMessage",
                 "\"a\"\t\"b\"\t\"c\"\t\"d\"\t\"error\"\t\"E1\"\t\tmsg\twith  tab",
                 {"a", "b", "error", "E1", "msg with  tab"}},
        LineCase{"ALineThatBeginsWithATabIsPlain",
                 "\t\"a\" \"b\" \"c\" \"d\" \"Error\" \"E1\" m",
                 {"", "", "", "", "\"a\" \"b\" \"c\" \"d\" \"Error\" \"E1\" m"}},
        LineCase{"APlainLineIsCleanedToo",
                 "   plain text line\twith tab",
                 {"", "", "", "", "plain text line with tab"}},
        LineCase{"AQuoteAlone", "\"", {"", "", "", "", ""}},
        LineCase{"BlanksInQuotesAreAField", "\"   \"", {"   ", "", "", "", ""}},
        LineCase{"Empty", "", {"", "", "", "", ""}}, LineCase{"Blanks", "    ", {"", "", "", "", ""}},
        LineCase{"ATabAloneIsAnEmptyMessage", "\t", {"", "", "", "", ""}},
        LineCase{"BlanksAroundAreDropped", "  \"a\" b c d e f m  ", {"a", "b", "e", "f", "m"}},
        LineCase{"RunsOfSeparatorsCountOnce", "\"a\" \t \tb   c d\t\te f   m", {"a", "b", "e", "f", "m"}},
        LineCase{"ATabInQuotesStaysInTheField", "\"a\tb\" c d e f g m", {"a\tb", "c", "f", "g", "m"}},
        LineCase{"ACarriageReturnIsAnOrdinaryCharacterOfAField",
                 "\"a\rb\" c d e f g m\rn",
                 {"a\rb", "c", "f", "g", "m n"}},
        LineCase{"NulsAreBlanksInTheMessage",
                 std::string("\"a\" b c d e f m\0n\0", 19),
                 {"a", "b", "e", "f", "m n"}},
        LineCase{"TheSecondByteOfACharacterIsNoSeparator",
                 "\"\x83\x5C\x83\x42\" b c d e f \x95\x5C",
                 {"\x83\x5C\x83\x42", "b", "e", "f", "\x95\x5C"}},
        LineCase{"BytesAboveAsciiStay",
                 "\"\xE9\xFF\" b c d e f \x80\xA0",
                 {"\xE9\xFF", "b", "e", "f", "\x80\xA0"}}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST(ErrorLine, LiesInTheMemoryOfTheLine) {
    std::string line = R"("a""b" c d e f g  message )";
    const ErrorLine parts = ParseErrorLine(line);
    for (const std::string_view part :
         {parts.typeName, parts.objectName, parts.severity, parts.code, parts.message}) {
        EXPECT_GE(part.data(), line.data());
        EXPECT_LE(part.data() + part.size(), line.data() + line.size());
    }
}

TEST(ErrorLine, OfAMillionQuotesIsTakenApartAtOnce) {
    // Quadratic time would not come to an end here.
    const Parsed quotes = parse(std::string(1'000'000, '"'));
    EXPECT_EQ(quotes, Parsed{});
    const Parsed pairs = parse(R"("a" b c d e f )" + std::string(1'000'000, '"'));
    EXPECT_EQ(pairs.message.size(), 999'999U);
    std::string fields = "\"a\"";
    for (int i = 0; i < 500'000; ++i) fields += " b";
    EXPECT_EQ(parse(fields).message.size(), 2U * 499'995 - 1);
}

std::string randomLine(std::mt19937& random) {
    static constexpr std::string_view kFavourites = "\"\" \t\t  aE1\r\x01\x1F";
    std::uniform_int_distribution<std::size_t> length(0, 60);
    std::uniform_int_distribution<int> any(0, 255);
    std::uniform_int_distribution<std::size_t> favourite(0, kFavourites.size() - 1);
    std::bernoulli_distribution isFavourite(0.85);
    std::bernoulli_distribution isMessage(0.8);
    std::string line(isMessage(random) ? "\"" : "");
    for (std::size_t i = length(random); i > 0; --i)
        line += isFavourite(random) ? kFavourites[favourite(random)] : static_cast<char>(any(random));
    return line;
}

bool hasControlCharacter(const std::string& text) {
    for (const char byte : text)
        if (static_cast<unsigned char>(byte) < 32) return true;
    return false;
}

TEST(ErrorLine, OfAnyBytesGivesNoMoreThanTheLineAndACleanMessage) {
    std::mt19937 random(20'261'121);
    int messages = 0;
    for (int round = 0; round < 200'000; ++round) {
        const std::string line = randomLine(random);
        const Parsed parts = parse(line);
        SCOPED_TRACE(testing::PrintToString(line));
        ASSERT_LE(parts.type.size() + parts.object.size() + parts.severity.size() + parts.code.size() +
                      parts.message.size(),
                  line.size());
        ASSERT_FALSE(hasControlCharacter(parts.message));
        if (parts.message.empty()) continue;
        ASSERT_NE(parts.message.front(), ' ');
        ASSERT_NE(parts.message.back(), ' ');
        messages += parts.code.empty() ? 0 : 1;
        if (parts.message.front() != '"') {
            ASSERT_EQ(parse(parts.message).message, parts.message);
        }
    }
    EXPECT_GT(messages, 1'000) << "too few of the lines were whole";
}

/// The format told once more, character by character, as slowly as it likes.
Parsed slowlyParsed(std::string s) {
    const auto trim = [](std::string text) {
        while (!text.empty() && text.front() == ' ') text.erase(0, 1);
        while (!text.empty() && text.back() == ' ') text.pop_back();
        return text;
    };
    const auto clean = [&](std::string text) {
        for (char& c : text)
            if (static_cast<unsigned char>(c) < 32) c = ' ';
        return trim(text);
    };
    s = trim(s);
    if (s.empty() || s.front() != '"') return {"", "", "", "", clean(s)};
    std::string slots[8];
    int field = 0;
    bool inField = false;
    bool inQuote = false;
    while (!s.empty()) {
        const char c = s.front();
        s.erase(0, 1);
        if (c == ' ' || c == '\t') {
            if (inQuote)
                slots[field] += c;
            else
                inField = false;
            continue;
        }
        if (!inField) {
            inField = true;
            if (++field == 7) {
                slots[7] = c == '"' ? s : c + s;
                break;
            }
        }
        if (c == '"')
            inQuote = !inQuote;
        else
            slots[field] += c;
    }
    return {slots[1], slots[2], slots[5], slots[6], clean(slots[7])};
}

TEST(ErrorLine, AgreesWithTheFormatReadCharacterByCharacter) {
    std::mt19937 random(7);
    for (int round = 0; round < 100'000; ++round) {
        const std::string line = randomLine(random);
        ASSERT_EQ(parse(line), slowlyParsed(line)) << testing::PrintToString(line);
    }
}

// Six fields in quotes with a blank between, as tools write them, and here and there one byte that is not so.
std::string nearlyUsualLine(std::mt19937& random) {
    static constexpr std::string_view kInside = "abcE1 \t\x83\\\x01";
    static constexpr std::string_view kSlips = "\" \ta";
    std::string line;
    for (int field = 0; field < 6; ++field) {
        line += '"';
        for (std::size_t i = random() % 12; i > 0; --i) line += kInside[random() % kInside.size()];
        line += "\" ";
    }
    for (std::size_t i = random() % 20; i > 0; --i) line += kInside[random() % kInside.size()];
    const std::size_t at = random() % line.size();
    switch (random() % 4) {
    case 0:
        line[at] = kSlips[random() % kSlips.size()];
        break;
    case 1:
        line.insert(at, 1, kSlips[random() % kSlips.size()]);
        break;
    case 2:
        line.erase(at);
        break;
    default:
        break;
    }
    return line;
}

TEST(ErrorLine, AsToolsWriteItAgreesWithTheFormatReadCharacterByCharacter) {
    std::mt19937 random(11);
    for (int round = 0; round < 100'000; ++round) {
        const std::string line = nearlyUsualLine(random);
        ASSERT_EQ(parse(line), slowlyParsed(line)) << testing::PrintToString(line);
    }
}

} // namespace
} // namespace cvlog::details
