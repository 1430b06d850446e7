// Errors files that no tool should write, and files that others change while they are read.

#include "base/text.h"
#include "tests/support/expansion_world.h"

#include <gtest/gtest.h>

namespace cvlog::details {
namespace {

using namespace std::string_literals;
using tests::ExpansionWorld;
using Texts = std::vector<std::string>;

struct OddFile {
    const char* name;
    std::string content;
    Texts messages;
};

void PrintTo(const OddFile& file, std::ostream* out) { *out << file.name; }

class ExpandOddFile : public testing::TestWithParam<OddFile> {};

TEST_P(ExpandOddFile, ShowsARowForEachLineThatIsNotBlank) {
    ExpansionWorld world{2};
    world.writeErrors(GetParam().content);
    world.expand();
    EXPECT_EQ(world.messages(0), GetParam().messages);
    EXPECT_EQ(world.messages(1), GetParam().messages);
    for (int n = 1; n <= static_cast<int>(GetParam().messages.size()); ++n)
        EXPECT_EQ(world.child(n).cellTag(2), base::decimal(n));
    tests::expectNothingLeft(world);
}

const std::string kFields = R"("PROG" "PAYROLL" "x" "y" "Error" "E1" )";

INSTANTIATE_TEST_SUITE_P(
    Files, ExpandOddFile,
    testing::Values(
        OddFile{"Empty", "", {}}, OddFile{"OfBlankLines", "\r\n\n    \r\n ", {}},
        OddFile{"WithALineOfATab", "one\n\t\ntwo\n", {"one", "", "two"}},
        OddFile{"WithABlankAroundATab", " \t \r\n", {""}}, OddFile{"OfNuls", std::string(5'000, '\0'), {""}},
        OddFile{"Binary", "\x7F\x45\0\x01 a\0b\n\x02\x03\n\x1B[m\n"s, {"\x7F\x45   a b", "", "[m"}},
        OddFile{"InUtf16", "\xFF\xFEo\0n\0e\0\r\0\n\0t\0w\0o\0"s, {"\xEF\xBF\xBD\xEF\xBF\xBDo n e", "t w o"}},
        OddFile{"WithAByteOrderMark", "\xEF\xBB\xBFone\ntwo", {"\xEF\xBB\xBFone", "two"}},
        OddFile{"WithAByteOrderMarkBeforeAQuote",
                "\xEF\xBB\xBF" + kFields + "m",
                {"\xEF\xBB\xBF" + kFields + "m"}},
        OddFile{"WithLoneCarriageReturns",
                "one\rtwo\n" + kFields + "a\rb\r\r\n\r\rend\n",
                {"one two", "a b", "end"}},
        OddFile{"WithCtrlZ", "one\x1A\nt\x1Awo\n\x1A\nend", {"one", "t wo", "", "end"}},
        OddFile{"WithoutALastLineEnd", "one\n" + kFields + "two", {"one", "two"}},
        OddFile{"WithHalfALastLineEnd", "one\r\ntwo\r", {"one", "two"}}, OddFile{"OfOneQuote", "\"", {""}},
        OddFile{"OfQuotes", std::string(200'000, '"'), {""}},
        OddFile{"OfOneLongLine", kFields + std::string(300'000, 'x'), {std::string(300'000, 'x')}},
        OddFile{"OfBytesThatStandForNothing", "\xFF\x80 a\n", {"\xEF\xBF\xBD\xEF\xBF\xBD a"}}),
    [](const auto& instance) { return std::string(instance.param.name); });

struct Meddling {
    const char* name;
    void (*run)(platform::headless::MemoryFileSystem& files);
    int leastRows;
    int mostRows;
};

void PrintTo(const Meddling& meddling, std::ostream* out) { *out << meddling.name; }

class ExpandFileOfOthers : public testing::TestWithParam<Meddling> {
protected:
    static constexpr int kLines = 120;
    static constexpr std::size_t kLineSize = 2'000;

    static std::string content() {
        std::string lines;
        for (int i = 1; i <= kLines; ++i) {
            const std::string text = std::to_string(i) + " ";
            lines += text + std::string(kLineSize - 1 - text.size(), 'x') + "\n";
        }
        return lines;
    }
};

// By the first checkpoint 100 KB were taken, and no more than 128 KB read.
TEST_P(ExpandFileOfOthers, ShowsWhatItHadWhenItWasOpenedAndIsStillThere) {
    ExpansionWorld world{2};
    world.writeErrors(content());
    world.atYield(1, [&] { GetParam().run(world.platform.files); });
    world.expand();
    const Texts messages = world.messages();
    ASSERT_GE(static_cast<int>(messages.size()), GetParam().leastRows);
    ASSERT_LE(static_cast<int>(messages.size()), GetParam().mostRows);
    for (std::size_t n = 1; n <= messages.size(); ++n)
        EXPECT_TRUE(messages[n - 1].starts_with(std::to_string(n) + " ")) << messages[n - 1].substr(0, 20);
    EXPECT_EQ(world.list().row(ExpansionWorld::kEntry).cellTag(6), tests::kErrorsPath);
    tests::expectNothingLeft(world);
}

INSTANTIATE_TEST_SUITE_P(
    Others, ExpandFileOfOthers,
    testing::Values(
        Meddling{"WriteMoreLines", [](auto& files) { files.append(tests::kErrorsPath, "more\nand more\n"); },
                 120, 120},
        Meddling{"CutALine", [](auto& files) { files.truncate(tests::kErrorsPath, 75 * 2'000 + 1'000); }, 76,
                 76},
        Meddling{"CutWhatWasRead", [](auto& files) { files.truncate(tests::kErrorsPath, 10); }, 50, 66},
        Meddling{"ReplaceIt", [](auto& files) { files.addFile(tests::kErrorsPath, "other\n"); }, 120, 120},
        Meddling{"DeleteIt", [](auto& files) { files.remove(tests::kErrorsPath); }, 120, 120}),
    [](const auto& instance) { return std::string(instance.param.name); });

} // namespace
} // namespace cvlog::details
