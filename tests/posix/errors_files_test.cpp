// Errors files as an operating system has them: huge ones, such as may not be read, things that are no files, and what
// other programs do to a file while it is read.

#include "base/text.h"
#include "details/expand_entry.h"
#include "tests/posix/child_process.h"
#include "tests/store/store_files.h"
#include "tests/support/expansion_world.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sys/resource.h>
#include <sys/stat.h>

namespace cvlog::details {
namespace {

namespace fs = std::filesystem;
using store::testbed::writeWhole;
using tests::exitCodeOf;
using tests::ExpansionWorld;
using tests::startChild;
using Texts = std::vector<std::string>;

constexpr const char* kHidden = "... Some records are hidden ...";

/// A log with one more entry, whose errors file is a real one.
class ErrorsFileOnDisk : public testing::Test {
protected:
    ErrorsFileOnDisk() {
        world.platform.files.goOnToDisk();
        useFolder(u"project");
    }
    ~ErrorsFileOnDisk() override {
        EXPECT_EQ(openFiles(), openBefore_);
        world.platform.pump.hasInput = nullptr;
        tests::expectNothingLeft(world);
    }

    void useFolder(std::u16string_view inside) { world.host.names[4] = folder_.path(inside); }
    void addEntry(std::string_view content) {
        path = world.host.names[4] + u"\\real.errors";
        native = platform::headless::DiskFileSystem().nativePath(path);
        fs::create_directories(fs::path(native).parent_path());
        writeWhole(native, content);
        world.add({u"M1", 2, u"P1", u"on disk", u"real.errors"});
        EXPECT_EQ(reference(), path);
        world.calls.restart();
    }
    void expand() { ExpandEntry(world.globals, world.view(), kOnDisk); }
    Texts messages(std::size_t list = 0) { return world.messages(list, kOnDisk); }
    base::CompactTextView reference(std::size_t list = 0) { return world.list(list).row(kOnDisk).cellTag(6); }

    static constexpr int kOnDisk = ExpansionWorld::kEntries + 1;
    ExpansionWorld world{2};
    std::u16string path;
    std::string native;

private:
    static std::ptrdiff_t openFiles() {
        return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
    }

    store::testbed::TestFolder folder_;
    std::ptrdiff_t openBefore_ = openFiles();
};

TEST_F(ErrorsFileOnDisk, IsReadAndClosedAgain) {
    addEntry("one\r\n\"PROG\" \"PAYROLL\" x y Error E1 two");
    expand();
    for (const std::size_t list : {0U, 1U}) EXPECT_EQ(messages(list), (Texts{"one", "two"}));
    EXPECT_TRUE(fs::remove(native));
}

TEST_F(ErrorsFileOnDisk, MayHaveAPathOfMoreThan260Characters) {
    std::u16string folders = u"project";
    for (int depth = 0; depth < 5; ++depth) folders += u"\\" + std::u16string(100, u'd');
    useFolder(folders);
    addEntry("one\ntwo");
    ASSERT_GT(path.size(), 500U);
    expand();
    EXPECT_EQ(messages(), (Texts{"one", "two"}));
}

struct NoFile {
    const char* name;
    std::function<bool(const std::string& path)> make;
};

void PrintTo(const NoFile& thing, std::ostream* out) { *out << thing.name; }

bool link(const std::string& path, const char* to) {
    std::error_code failure;
    fs::create_symlink(to, path, failure);
    return !failure;
}

class NoErrorsFileOnDisk : public ErrorsFileOnDisk, public testing::WithParamInterface<NoFile> {};

TEST_P(NoErrorsFileOnDisk, IsAsGoodAsGoneAndNeverOpened) {
    addEntry("one");
    fs::remove(native);
    ASSERT_TRUE(GetParam().make(native));
    world.list().setSorted(true);
    world.calls.restart();
    expand();
    EXPECT_EQ(messages(), Texts());
    EXPECT_EQ(world.calls.countOf("FileReader.open"), 0);
    EXPECT_EQ(reference(0), u"");
    EXPECT_EQ(reference(1), path);
    EXPECT_TRUE(world.list().sorted());
    EXPECT_EQ(world.calls.journal().back(), "List.takeFocus");
}

INSTANTIATE_TEST_SUITE_P(
    Things, NoErrorsFileOnDisk,
    testing::Values(NoFile{"Nothing", [](const auto&) { return true; }},
                    NoFile{"AFolder", [](const auto& path) { return fs::create_directory(path); }},
                    NoFile{"AnEmptyDevice", [](const auto& path) { return link(path, "/dev/null"); }},
                    NoFile{"AnEndlessDevice", [](const auto& path) { return link(path, "/dev/zero"); }},
                    NoFile{"APipe", [](const auto& path) { return mkfifo(path.c_str(), 0600) == 0; }},
                    NoFile{"ALinkToNothing", [](const auto& path) { return link(path, "nowhere"); }}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST_F(ErrorsFileOnDisk, ThatMayNotBeReadLeavesTheEntryAndTheSortingAsTheyWere) {
    addEntry("one");
    ASSERT_EQ(chmod(native.c_str(), 0), 0);
    world.list().setSorted(true);
    const int code = exitCodeOf(startChild([this] {
        if (!tests::becomeNobody()) return 50;
        expand();
        if (world.calls.countOf("FileReader.open") != 1) return 1;
        if (!messages().empty()) return 2;
        if (reference() != path) return 3;
        return world.list().sorted() && world.calls.journal().back() == "List.takeFocus" ? 0 : 4;
    }));
    EXPECT_EQ(code, 0) << "50: the test could not become another user";
}

std::string lines(int count) {
    std::string content;
    for (int i = 1; i <= count; ++i) content += "line " + std::to_string(i) + "\n";
    return content;
}

TEST_F(ErrorsFileOnDisk, OfFiveGigabytesCanBeStoppedWhereItIs) {
    constexpr std::uintmax_t kSize = std::uintmax_t{5} << 30;
    addEntry(lines(60));
    fs::resize_file(native, kSize); // NULs, which take no room on the disk
    int asked = 0;
    world.platform.pump.hasInput = [&] { return ++asked == 70; };
    world.atYield(2, [&] { world.pressCancel(); });
    expand();
    EXPECT_EQ(asked, 70) << "it was to end here";
    const Texts texts = messages();
    ASSERT_EQ(texts.size(), 62U);
    EXPECT_EQ(texts[59], "line 60");
    EXPECT_EQ(texts[60], "") << "the begin of a line of NULs";
    EXPECT_EQ(texts[61], kHidden);
    EXPECT_EQ(messages(1), texts);
}

long peakMegabytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

TEST_F(ErrorsFileOnDisk, OfOneLineOfHalfAGigabyteTakesOnlyTheMemoryOfWhatIsShown) {
    constexpr std::uintmax_t kSize = std::uintmax_t{500} << 20;
    constexpr int kMost = 200; // the line's begin as it was read, as text, and in the row
    constexpr std::size_t kShown = 16U << 20;
    addEntry(std::string(kShown + 1'000, 'x'));
    fs::resize_file(native, kSize);
    const int grown = exitCodeOf(startChild([this] {
        const long before = peakMegabytes();
        expand();
        const bool right = world.list().rowCount() == kOnDisk + 1 &&
                           world.list().row(kOnDisk + 1).cellText(6).size() == kShown;
        return right ? static_cast<int>(std::min(peakMegabytes() - before, 250L)) : 255;
    }));
    EXPECT_LE(grown, kMost) << "megabytes; 255: the row is another one";
}

struct MeddlingOnDisk {
    const char* name;
    std::function<void(const std::string& path)> run;
    std::size_t leastRows;
    std::size_t mostRows;
};

void PrintTo(const MeddlingOnDisk& meddling, std::ostream* out) { *out << meddling.name; }

class ErrorsFileOfOthersOnDisk : public ErrorsFileOnDisk, public testing::WithParamInterface<MeddlingOnDisk> {
protected:
    static constexpr int kLines = 120;
    static constexpr std::size_t kLineSize = 2'000;
};

// By the first checkpoint 100 KB were taken, and no more than 128 KB read.
TEST_P(ErrorsFileOfOthersOnDisk, ShowsWhatItHadWhenItWasOpenedAndIsStillThere) {
    std::string content;
    for (int i = 1; i <= kLines; ++i) {
        std::string line = std::to_string(i) + " ";
        line.resize(kLineSize - 1, 'x');
        content += line + "\n";
    }
    addEntry(content);
    world.atYield(1, [&] { GetParam().run(native); });
    expand();
    const Texts texts = messages();
    ASSERT_GE(texts.size(), GetParam().leastRows);
    ASSERT_LE(texts.size(), GetParam().mostRows);
    for (std::size_t n = 1; n <= texts.size(); ++n)
        EXPECT_TRUE(texts[n - 1].starts_with(std::to_string(n) + " ")) << texts[n - 1].substr(0, 20);
    EXPECT_EQ(reference(), path);
}

INSTANTIATE_TEST_SUITE_P(
    Others, ErrorsFileOfOthersOnDisk,
    testing::Values(
        MeddlingOnDisk{"WriteMoreLines",
                       [](const auto& path) { std::ofstream(path, std::ios::app) << lines(100); }, 120, 120},
        MeddlingOnDisk{"CutALine", [](const auto& path) { fs::resize_file(path, 151'000); }, 76, 76},
        MeddlingOnDisk{"EmptyIt", [](const auto& path) { fs::resize_file(path, 0); }, 50, 66},
        MeddlingOnDisk{"ReplaceIt",
                       [](const auto& path) {
                           writeWhole(path + ".new", "other\n");
                           fs::rename(path + ".new", path);
                       },
                       120, 120},
        MeddlingOnDisk{"DeleteIt", [](const auto& path) { fs::remove(path); }, 120, 120}),
    [](const auto& instance) { return std::string(instance.param.name); });

} // namespace
} // namespace cvlog::details
