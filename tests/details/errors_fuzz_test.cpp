// Lines and files of any bytes. The fuzz programs try the same kinds of input without end.

#include "tests/support/error_line_fuzz.h"
#include "tests/support/errors_file_fuzz.h"

#include <gtest/gtest.h>

namespace cvlog::details {
namespace {

using tests::faultOfErrorLine;
using tests::faultOfErrorsFile;

std::string shortened(const std::string& input) {
    return testing::PrintToString(input.substr(0, 200)) + ", " + std::to_string(input.size()) + " bytes";
}

TEST(ErrorLineFuzz, GivesEveryLineThePartsOfTheFormatAndACleanMessage) {
    constexpr int kLines = 100'000;
    tests::RandomErrorLines lines(20'261'121);
    int whole = 0;
    std::size_t longest = 0;
    for (int i = 0; i < kLines; ++i) {
        const std::string line = lines.next();
        ASSERT_EQ(faultOfErrorLine(line), "") << "line " << i << ": " << shortened(line);
        std::string memory = line;
        const ErrorLine parts = ParseErrorLine(memory);
        whole += !parts.code.empty() && !parts.message.empty();
        longest = std::max(longest, line.size());
    }
    EXPECT_GT(whole, kLines / 20) << "too few lines have all their parts";
    EXPECT_GT(longest, 500'000U);
}

struct BrokenParser {
    const char* name;
    void (*harm)(std::span<char> line, ErrorLine& parts);
    const char* fault;
};

void PrintTo(const BrokenParser& broken, std::ostream* out) { *out << broken.name; }

class ErrorLineFuzzOfABrokenParser : public testing::TestWithParam<BrokenParser> {};

TEST_P(ErrorLineFuzzOfABrokenParser, SeesTheFault) {
    const auto parse = [](std::span<char> line) {
        ErrorLine parts = ParseErrorLine(line);
        GetParam().harm(line, parts);
        return parts;
    };
    EXPECT_EQ(faultOfErrorLine(R"("type" "object" "x" "y" "Error" "E1" text of it)", parse),
              GetParam().fault);
}

INSTANTIATE_TEST_SUITE_P(
    Parsers, ErrorLineFuzzOfABrokenParser,
    testing::Values(
        BrokenParser{"PartsElsewhere", [](std::span<char>, ErrorLine& parts) { parts.code = "elsewhere"; },
                     "a part lies outside of the line"},
        BrokenParser{"PartsTooLong",
                     [](std::span<char> line, ErrorLine& parts) {
                         parts.typeName = parts.objectName = {line.data(), line.size()};
                     },
                     "the parts are longer than the line"},
        BrokenParser{"ControlCharacters", [](std::span<char> line, ErrorLine&) { line.back() = '\t'; },
                     "a control character in the message"},
        BrokenParser{"BlanksAtTheEnds", [](std::span<char> line, ErrorLine&) { line.back() = ' '; },
                     "the message is not clean"},
        BrokenParser{"MessageThatIsNone",
                     [](std::span<char>, ErrorLine& parts) {
                         if (parts.code.empty()) parts.message.remove_suffix(1);
                     },
                     "the message alone is another message"},
        BrokenParser{"OtherParts", [](std::span<char>, ErrorLine& parts) { parts.severity = {}; },
                     "the parts are not those of the format"}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST(ErrorsFileFuzz, GivesTheLinesOfEveryFileWhateverTheBlocksAre) {
    tests::RandomErrorsFiles files(20'261'121);
    for (int i = 0; i < 50'000; ++i) {
        const std::string input = files.next();
        ASSERT_EQ(faultOfErrorsFile(input), "") << "file " << i << ": " << shortened(input);
    }
}

} // namespace
} // namespace cvlog::details
