#include "details/error_line.h"

#include <gtest/gtest.h>

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

TEST(ErrorLine, IsTakenApartHoweverLongItsFieldsAndItselfAre) {
    const auto quoted = [](const std::string& text) { return '"' + text + "\" "; };
    for (std::size_t size = 0; size <= 140; ++size) {
        const std::string text(size, 'x');
        const std::string head =
            quoted("PROG") + quoted(text) + quoted("12") + quoted("3") + quoted("Error") + quoted("E" + text);
        EXPECT_EQ(parse(head + "message"), (Parsed{"PROG", text, "Error", "E" + text, "message"})) << size;
        EXPECT_EQ(parse(head + quoted("message") + text),
                  (Parsed{"PROG", text, "Error", "E" + text, size == 0 ? "message\"" : "message\" " + text}))
            << size;
        EXPECT_EQ(parse(quoted(text)), (Parsed{text, "", "", "", ""})) << size;
        EXPECT_EQ(parse('"' + text), (Parsed{text, "", "", "", ""})) << size << ", a quote is never closed";
        const std::string split = quoted(text + "\"\"y") + "b c d e f m"; // a quote within a field
        EXPECT_EQ(parse(split), (Parsed{text + "y", "b", "e", "f", "m"})) << size;
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

} // namespace
} // namespace cvlog::details
