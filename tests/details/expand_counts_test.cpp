// Files as a compiler's messages make them open completely: as many rows as a plain count of their lines gives.

#include "tests/support/expansion_world.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace cvlog::details {
namespace {

using tests::ExpansionWorld;

constexpr const char* kSource =
    R"("PROG" "PAYROLL" "12" "9" "Warning" "W1003" 'rate' loses its fraction in 'int'
"PROG" "PAYROLL" "12" "22" "Note" "I1011" 'rate' was declared here
"PROG" "PAYROLL" "31" "1" "Error" "E1009" 'sum_of' was not declared in this scope

"PROG" "PAYROLL" "40" "17" "Warning" "W1001" the cast to "char *" drops a qualifier
The compiler stopped: too many errors
)";

constexpr const char* kLinker =
    "\"GRP\" \"BATCH\" \"0\" \"0\" \"Error\" \"E2001\" nothing defines 'start_of_day'\r\n"
    "   \r\n"
    "\"GRP\" \"BATCH\" \"0\" \"0\" \"Note\" \"I2002\" it is used in batch.o\r\n"
    "\t\r\n"
    "\"GRP\" \"UNKNOWN\" \"0\" \"0\" \"warning\" \"W2\" an old archive, read all the same";

std::string oftenRepeated(const std::string& text) {
    std::string all;
    for (int i = 0; i < 100; ++i) all += text;
    return all;
}

/// The code of a line whose fields all stand in quotes with one blank between, none with a quote inside.
std::string codeOf(const std::string& line) {
    if (line.empty() || line.front() != '"') return {};
    std::size_t end = std::string::npos;
    std::size_t begin = 0;
    for (int quote = 0; quote < 12; ++quote) {
        begin = end == std::string::npos ? 0 : end + 1;
        end = line.find('"', begin);
    }
    return line.substr(begin, end - begin);
}

struct Counted {
    int shown = 0;
    bool anyHidden = false;
};

// What anybody would count with the file in front of them.
Counted plainCount(const std::string& text, const std::string& hiddenKinds) {
    Counted counted;
    std::istringstream file(text);
    for (std::string line; std::getline(file, line);) {
        line.erase(std::remove(line.begin(), line.end(), '\r'), line.end());
        if (line.find_first_not_of(' ') == std::string::npos) continue;
        const std::string code = codeOf(line);
        const bool hidden = !code.empty() && hiddenKinds.find(code.front()) != std::string::npos;
        counted.anyHidden = counted.anyHidden || hidden;
        counted.shown += hidden ? 0 : 1;
    }
    return counted;
}

class ExpandCounts : public testing::TestWithParam<const char*> {};

TEST_P(ExpandCounts, AreThoseOfThePlainFile) {
    const std::string text = GetParam();
    for (const std::string hiddenKinds : {"", "I", "W", "EW", "EWI"}) {
        ExpansionWorld world{2};
        for (const char kind : hiddenKinds)
            world.globals.options.ErrorsListFilter.add(static_cast<char16_t>(kind), true);
        world.writeErrors(text);
        world.expand();
        const Counted expected = plainCount(text, hiddenKinds);
        for (const std::size_t list : {0U, 1U}) {
            const std::vector<std::string> messages = world.messages(list);
            EXPECT_EQ(messages.size(),
                      static_cast<std::size_t>(expected.shown + (expected.anyHidden ? 1 : 0)))
                << "hidden kinds: " << hiddenKinds;
            EXPECT_EQ(std::ranges::count(messages, "... Some records are hidden ..."),
                      expected.anyHidden ? 1 : 0);
        }
        EXPECT_EQ(world.list().rowCount(),
                  ExpansionWorld::kEntries + static_cast<int>(world.messages().size()));
        tests::expectNothingLeft(world);
    }
}

const std::string kLongSource = oftenRepeated(kSource);
const std::string kLongLinker = oftenRepeated(std::string(kLinker) + "\r\n");

INSTANTIATE_TEST_SUITE_P(Excerpts, ExpandCounts,
                         testing::Values(kSource, kLinker, "", kLongSource.c_str(), kLongLinker.c_str()));

TEST(PlainCount, CountsAsOneDoesByHand) {
    EXPECT_EQ(plainCount(kSource, "").shown, 5);
    EXPECT_EQ(plainCount(kSource, "W").shown, 3);
    EXPECT_EQ(plainCount(kLinker, "EWI").shown, 1) << "the line of a tab is no empty one";
    EXPECT_FALSE(plainCount(kLinker, "X").anyHidden);
}

} // namespace
} // namespace cvlog::details
