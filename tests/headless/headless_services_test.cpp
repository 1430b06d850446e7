#include "platform/headless/disk_file_system.h"
#include "platform/headless/headless_platform.h"

#include <gtest/gtest.h>

#include <random>

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace cvlog::platform::headless {
namespace {

TEST(HeadlessTextMeasurerTest, GivesEqualFontsEqualNumbersThatAreNotZero) {
    HeadlessTextMeasurer measurer;
    base::Font bold;
    bold.weight = 700;
    const auto plain = measurer.fontNumber({});
    EXPECT_NE(plain, 0U);
    EXPECT_NE(plain, measurer.fontNumber(bold));
    EXPECT_EQ(plain, measurer.fontNumber({}));
    EXPECT_LT(measurer.width(plain, u"text"), measurer.width(measurer.fontNumber(bold), u"text"));
}

TEST(HeadlessTextMeasurerTest, IsProportionalAndAddsUp) {
    HeadlessTextMeasurer measurer;
    const auto font = measurer.fontNumber({});
    EXPECT_EQ(measurer.width(font, u""), 0);
    EXPECT_LT(measurer.width(font, u"i"), measurer.width(font, u"n"));
    EXPECT_LT(measurer.width(font, u"n"), measurer.width(font, u"W"));
    EXPECT_EQ(measurer.width(font, u"inW"),
              measurer.width(font, u"i") + measurer.width(font, u"n") + measurer.width(font, u"W"));
}

TEST(MemoryFileSystemTest, KnowsFilesFromFolders) {
    const CallGate gate;
    MemoryFileSystem files(gate);
    files.addFile(u"C:\\Proj\\a.errors", "content");
    files.addFolder(u"C:\\Proj\\folder");
    EXPECT_TRUE(files.fileExists(u"c:\\proj\\A.ERRORS"));
    EXPECT_FALSE(files.fileExists(u"C:\\Proj\\folder"));
    EXPECT_FALSE(files.fileExists(u"C:\\Proj\\"));
    EXPECT_EQ(files.firstBytes(u"C:\\Proj\\a.errors", 3).size(), 3U);
    EXPECT_EQ(files.firstBytes(u"C:\\Proj\\a.errors", 99).size(), 7U);
    EXPECT_THROW(files.firstBytes(u"C:\\none", 1), std::runtime_error);
    files.remove(u"C:\\Proj\\a.errors");
    EXPECT_FALSE(files.fileExists(u"C:\\Proj\\a.errors"));
}

TEST(DiskFileSystemTest, ReadsRealFilesByTheHostsPaths) {
    const auto folder =
        std::filesystem::temp_directory_path() / ("cvlog-files-" + std::to_string(std::random_device{}()));
    std::filesystem::create_directories(folder / "inner");
    std::ofstream(folder / "inner" / "file") << "0123456789";
    DiskFileSystem files;
    const std::string native = (folder / "inner").string();
    const std::u16string path(native.begin(), native.end());
    EXPECT_TRUE(files.fileExists(path + u"\\file"));
    EXPECT_FALSE(files.fileExists(path));
    EXPECT_FALSE(files.fileExists(path + u"\\none"));
    EXPECT_EQ(files.firstBytes(path + u"\\file", 4),
              (std::vector<std::byte>{std::byte{'0'}, std::byte{'1'}, std::byte{'2'}, std::byte{'3'}}));
    EXPECT_THROW(files.firstBytes(path + u"\\none", 4), std::runtime_error);
    std::filesystem::remove_all(folder);
}

TEST(MemorySettingsTest, KeepsOneTextAnApplicationSectionAndKey) {
    CallGate gate;
    MemorySettings settings(gate);
    EXPECT_EQ(settings.get(u"App", u"Section", u"Key", u"default"), u"default");
    settings.save(u"App", u"Section", u"Key", u"");
    EXPECT_EQ(settings.get(u"app", u"SECTION", u"key", u"default"), u"");
    EXPECT_EQ(settings.get(u"App", u"Other", u"Key", u"default"), u"default");
    gate.watcher = [](std::string_view) { throw std::runtime_error("no access"); };
    EXPECT_THROW(settings.save(u"App", u"Section", u"Key", u"x"), std::runtime_error);
    EXPECT_THROW(settings.get(u"App", u"Section", u"Key", u"x"), std::runtime_error);
}

TEST(HeadlessPicturesTest, DrawsBuiltInIconsAndFilesAtAnySize) {
    const CallGate gate;
    MemoryFileSystem files(gate);
    HeadlessPictures pictures(gate, files);
    const ports::Pixels pixels = pictures.builtIn(u"Good")->render(20);
    EXPECT_EQ(pixels.side, 20);
    EXPECT_EQ(pixels.argb.size(), 400U);
    EXPECT_NE(pixels.argb, pictures.builtIn(u"Bad")->render(20).argb);
    EXPECT_THROW(pictures.builtIn(u"Nothing"), std::runtime_error);
    EXPECT_THROW(pictures.load(u"C:\\a.ico"), std::runtime_error);
    files.addFile(u"C:\\a.ico");
    EXPECT_NE(pictures.load(u"C:\\a.ico"), nullptr);
}

TEST(RecordingMessageBoxesTest, AnswersFromItsScriptThenNo) {
    const CallGate gate;
    RecordingMessageBoxes boxes(gate);
    boxes.answers = {true};
    bool sawItsBox = false;
    boxes.whileOpen = [&] { sawItsBox = !boxes.shown.empty(); };
    EXPECT_TRUE(boxes.ask(u"title", u"text", ports::BoxIcon::Critical));
    EXPECT_FALSE(boxes.ask(u"title", u"text", ports::BoxIcon::Critical));
    boxes.inform(u"title", u"text", ports::BoxIcon::Information);
    EXPECT_TRUE(sawItsBox);
    EXPECT_EQ(boxes.shown.size(), 3U);
}

TEST(HeadlessListViewPeerTest, SeesAChangeThatItWasNotTold) {
    HeadlessPlatform platform;
    widgets::ListView list(platform.collator, platform.measurer);
    list.setColumns({{u"A", u"A", 100, 0, u"", widgets::Alignment::Left}});
    HeadlessListViewPeer outsider(list, platform.gate, platform.peers.book, true);
    list.append(widgets::makeRow({u"a", {}, {}, {}}));
    outsider.repaint();
    EXPECT_EQ(platform.peers.book.faults.size(), 1U);
    outsider.rowsInserted(1, 1);
    EXPECT_EQ(platform.peers.book.faults.size(), 1U);
    list.setColumnWidth(1, 5);
    outsider.verify();
    EXPECT_EQ(platform.peers.book.faults.size(), 2U);
    outsider.scrollTo(2);
    EXPECT_EQ(platform.peers.book.faults.size(), 3U);
}

TEST(HeadlessListViewPeerTest, HasAHandleOfItsOwnThatATestMayGiveAgain) {
    HeadlessPlatform platform;
    widgets::ListView first(platform.collator, platform.measurer);
    widgets::ListView second(platform.collator, platform.measurer);
    first.attach(platform.peers.makeListView(first));
    second.attach(platform.peers.makeListView(second));
    EXPECT_NE(first.windowHandle(), second.windowHandle());
    const std::int32_t handle = first.windowHandle();
    first.attach(nullptr);
    platform.peers.book.handlesToGive = {handle};
    first.attach(platform.peers.makeListView(first));
    EXPECT_EQ(first.windowHandle(), handle);
    EXPECT_EQ(platform.peers.book.faults, std::vector<std::string>());
}

} // namespace
} // namespace cvlog::platform::headless
