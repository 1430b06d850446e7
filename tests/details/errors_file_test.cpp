#include "details/errors_file.h"

#include "platform/headless/memory_file_system.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

namespace cvlog::details {
namespace {

using Lines = std::vector<std::string>;

class ErrorsFileTest : public testing::Test {
protected:
    ErrorsFile open(std::string_view content) {
        files.addFile(kPath, content);
        return ErrorsFile(files.open(kPath));
    }
    static Lines rest(ErrorsFile file) {
        Lines lines;
        for (std::span<char> line; file.nextLine(line);) lines.emplace_back(line.begin(), line.end());
        return lines;
    }
    Lines linesOf(std::string_view content) { return rest(open(content)); }

    static constexpr std::u16string_view kPath = u"C:\\a.errors";
    platform::headless::CallGate gate;
    platform::headless::MemoryFileSystem files{gate};
};

TEST_F(ErrorsFileTest, GivesTheLinesOfBothKindsOfEnds) {
    EXPECT_EQ(linesOf("a\r\nb\nc\r\n"), (Lines{"a", "b", "c"}));
    EXPECT_EQ(linesOf("a\n\n\r\nb"), (Lines{"a", "", "", "b"})) << "the last line needs no end";
    EXPECT_EQ(linesOf("a\n"), (Lines{"a"}));
    EXPECT_EQ(linesOf("\n"), (Lines{""}));
    EXPECT_EQ(linesOf(""), Lines());
}

TEST_F(ErrorsFileTest, TakesALoneCarriageReturnAsAnOrdinaryByte) {
    EXPECT_EQ(linesOf("a\rb\nc\r\r\nd\r"), (Lines{"a\rb", "c\r", "d\r"}));
}

TEST_F(ErrorsFileTest, ReadsPastEveryByteToTheEndOfTheFile) {
    using namespace std::string_literals;
    EXPECT_EQ(linesOf("a\x1A"
                      "b\nc\0d\n"s),
              (Lines{"a\x1A"
                     "b",
                     "c\0d"s}));
    EXPECT_EQ(linesOf("\xEF\xBB\xBF"
                      "a\n"),
              (Lines{"\xEF\xBB\xBF"
                     "a"}))
        << "a byte order mark is text";
    EXPECT_EQ(linesOf("\xFF\xFE"
                      "a\0\n\0"s),
              (Lines{"\xFF\xFE"
                     "a\0"s,
                     "\0"s}));
}

TEST_F(ErrorsFileTest, GivesLinesWholeWhereverTheBlocksEnd) {
    constexpr std::size_t block = 64U << 10;
    for (const std::size_t length : {block - 2, block - 1, block, block + 1, 3 * block}) {
        const std::string first(length, 'x');
        EXPECT_EQ(linesOf(first + "\r\nsecond\r\n"), (Lines{first, "second"})) << length;
        EXPECT_EQ(linesOf("zero\n" + first), (Lines{"zero", first})) << length;
    }
    Lines many;
    std::string content;
    for (int i = 0; i < 50'000; ++i) {
        many.push_back("line " + std::to_string(i));
        content += many.back() + (i % 2 == 0 ? "\n" : "\r\n");
    }
    EXPECT_EQ(linesOf(content), many);
}

TEST_F(ErrorsFileTest, LetsTheCallerChangeALineWithoutHarmToTheNext) {
    ErrorsFile file = open("first\nsecond\n");
    std::span<char> line;
    ASSERT_TRUE(file.nextLine(line));
    std::fill(line.begin(), line.end(), '\n');
    EXPECT_EQ(rest(std::move(file)), (Lines{"second"}));
}

TEST_F(ErrorsFileTest, LeavesOutWhatMakesALineTooLongToBeRead) {
    constexpr std::size_t longest = ErrorsFile::kLongestLine;
    const Lines whole = linesOf(std::string(longest, 'x') + "\nnext\n");
    ASSERT_EQ(whole.size(), 2U);
    EXPECT_EQ(whole[0].size(), longest);
    const Lines cut =
        linesOf(std::string(longest + 200'000, 'x') + "\nnext\n" + std::string(longest + 1, 'y'));
    ASSERT_EQ(cut.size(), 3U);
    EXPECT_EQ(cut[0].size(), longest);
    EXPECT_EQ(cut[1], "next");
    EXPECT_EQ(cut[2].size(), longest);
}

TEST_F(ErrorsFileTest, GivesTheCallerTheWordAtLeastEveryMegabyteOfWhatItLeavesOut) {
    constexpr std::size_t kMegabytes = 40;
    const Lines lines =
        linesOf(std::string(ErrorsFile::kLongestLine + (kMegabytes << 20) + 5, 'x') + "\nnext\r\n");
    ASSERT_GE(lines.size(), kMegabytes / 2 + 2);
    EXPECT_EQ(lines.front().size(), ErrorsFile::kLongestLine);
    EXPECT_EQ(lines.back(), "next");
    for (std::size_t i = 1; i + 1 < lines.size(); ++i) EXPECT_EQ(lines[i], "");
}

/// A line that nobody could hold in memory.
class EndlessLine : public ports::OpenFile {
public:
    explicit EndlessLine(std::size_t& mostAtOnce) : mostAtOnce_(mostAtOnce) {}
    std::uint64_t size() const noexcept override { return kSize; }
    std::size_t read(std::span<char> bytes) override {
        std::fill(bytes.begin(), bytes.end(), 'x');
        mostAtOnce_ = std::max(mostAtOnce_, bytes.size());
        return bytes.size();
    }
    static constexpr std::uint64_t kSize = 500U << 20;

private:
    std::size_t& mostAtOnce_;
};

TEST_F(ErrorsFileTest, HoldsNoMoreOfALineOfHalfAGigabyteThanItGivesOut) {
    std::size_t mostAtOnce = 0; // what is asked for at once lies in the memory that is held
    const Lines lines = rest(ErrorsFile(std::make_unique<EndlessLine>(mostAtOnce)));
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.front().size(), ErrorsFile::kLongestLine);
    for (std::size_t i = 1; i < lines.size(); ++i) EXPECT_EQ(lines[i], "");
    EXPECT_LE(mostAtOnce, ErrorsFile::kLongestLine);
}

TEST_F(ErrorsFileTest, ReadsNoMoreThanThereWasWhenItWasOpened) {
    ErrorsFile file = open("a\nb\n");
    files.append(kPath, "c\n");
    EXPECT_EQ(rest(std::move(file)), (Lines{"a", "b"}));
}

TEST_F(ErrorsFileTest, IsNotKeptGoingByAWriter) {
    ErrorsFile file = open(std::string(100'000, 'x') + "\n");
    gate.watcher = [&](std::string_view call) {
        if (call == "File.read") files.append(kPath, std::string(200'000, 'y') + "\n");
    };
    EXPECT_EQ(rest(std::move(file)), (Lines{std::string(100'000, 'x')}));
}

TEST_F(ErrorsFileTest, EndsWhereAFileWasTruncatedMeanwhile) {
    ErrorsFile file = open(std::string(100'000, 'x') + "\nlost\n");
    std::span<char> line;
    gate.watcher = [&](std::string_view call) {
        if (call == "File.read") files.truncate(kPath, 70'000);
    };
    ASSERT_TRUE(file.nextLine(line));
    EXPECT_EQ(line.size(), 70'000U);
    EXPECT_FALSE(file.nextLine(line));
    EXPECT_FALSE(file.nextLine(line));
}

TEST_F(ErrorsFileTest, GoesOnWithTheFileItOpenedWhenThatIsDeletedOrReplaced) {
    ErrorsFile deleted = open("a\nb\n");
    files.remove(kPath);
    EXPECT_EQ(rest(std::move(deleted)), (Lines{"a", "b"}));
    ErrorsFile replaced = open("a\nb\n");
    files.addFile(kPath, "other\n");
    EXPECT_EQ(rest(std::move(replaced)), (Lines{"a", "b"}));
}

TEST_F(ErrorsFileTest, TellsOfAReadThatFails) {
    ErrorsFile file = open(std::string(100'000, 'x') + "\nb\n");
    int reads = 0;
    gate.watcher = [&](std::string_view) {
        if (++reads == 2) throw std::runtime_error("no access any more");
    };
    std::span<char> line;
    EXPECT_THROW(file.nextLine(line), std::runtime_error);
}

TEST_F(ErrorsFileTest, ClosesTheFileInItsEnd) {
    {
        const ErrorsFile file = open("a\n");
        EXPECT_EQ(files.openFiles(), 1);
    }
    EXPECT_EQ(files.openFiles(), 0);
}

} // namespace
} // namespace cvlog::details
