#include "platform/win32/clock.h"
#include "platform/win32/file_system.h"
#include "platform/win32/handles.h"
#include "platform/win32/wide_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace cvlog::platform::win32 {
namespace {

class Win32FileSystem : public testing::Test {
protected:
    Win32FileSystem() {
        wchar_t folder[MAX_PATH];
        GetTempPathW(MAX_PATH, folder);
        folder_ = std::wstring(folder) + L"cvlog file test " + std::to_wstring(GetCurrentProcessId());
        CreateDirectoryW(folder_.c_str(), nullptr);
    }
    ~Win32FileSystem() override {
        for (const auto& file : written_) DeleteFileW(file.c_str());
        for (auto folder = folders_.rbegin(); folder != folders_.rend(); ++folder)
            RemoveDirectoryW(folder->c_str());
        RemoveDirectoryW(folder_.c_str());
    }

    void write(const std::wstring& path, std::string_view bytes) {
        const FileHandle file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                          FILE_ATTRIBUTE_NORMAL, nullptr));
        ASSERT_TRUE(file.isOpen());
        DWORD written = 0;
        WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
        written_.push_back(path);
    }

    FileSystem files_;
    std::wstring folder_;
    std::vector<std::wstring> written_;
    std::vector<std::wstring> folders_;
};

TEST_F(Win32FileSystem, TellsFilesFromFoldersAndFromNothing) {
    const std::wstring path = folder_ + L"\\\u65E5\u672C.txt";
    write(path, "x");
    EXPECT_TRUE(files_.fileExists(fromWide(path)));
    EXPECT_FALSE(files_.fileExists(fromWide(folder_)));
    EXPECT_FALSE(files_.fileExists(fromWide(path) + u".none"));
    EXPECT_FALSE(files_.fileExists(fromWide(path) + std::u16string(u"\0x", 2)));
    EXPECT_FALSE(files_.fileExists(u""));
    EXPECT_EQ(files_.nativePath(u"C:\\\u00E9.txt"), "C:\\\xC3\xA9.txt");
}

TEST_F(Win32FileSystem, ReadsTheStartOfAFile) {
    const std::wstring path = folder_ + L"\\bytes";
    write(path, std::string_view("a\0b\xFF", 4));
    const auto bytes = files_.firstBytes(fromWide(path), 3);
    ASSERT_EQ(bytes.size(), 3U);
    EXPECT_EQ(static_cast<char>(bytes[0]), 'a');
    EXPECT_EQ(static_cast<char>(bytes[1]), '\0');
    EXPECT_EQ(files_.firstBytes(fromWide(path), 100).size(), 4U);
    EXPECT_THROW(files_.firstBytes(fromWide(path) + u".none", 3), std::runtime_error);
    EXPECT_THROW(files_.firstBytes(fromWide(folder_), 3), std::runtime_error);
}

TEST_F(Win32FileSystem, ReachesDeepPaths) {
    std::wstring path = folder_;
    for (int depth = 0; depth < 4; ++depth) {
        path += L"\\" + std::wstring(100, L'd');
        folders_.push_back(L"\\\\?\\" + path);
        ASSERT_TRUE(CreateDirectoryW(folders_.back().c_str(), nullptr));
    }
    path += L"\\file";
    write(L"\\\\?\\" + path, "deep");
    EXPECT_TRUE(files_.fileExists(fromWide(path)));
    EXPECT_EQ(files_.firstBytes(fromWide(path), 10).size(), 4U);
}

TEST(Win32Clock, GivesTheLocalTime) {
    SYSTEMTIME before{};
    GetLocalTime(&before);
    Clock clock;
    const base::LocalTime now = clock.now();
    const base::LocalTime earliest = base::localTime(before.wYear, before.wMonth, before.wDay, before.wHour,
                                                     before.wMinute, before.wSecond);
    EXPECT_GE(now, earliest);
    EXPECT_LE(now.seconds, earliest.seconds + 60);
}

} // namespace
} // namespace cvlog::platform::win32
