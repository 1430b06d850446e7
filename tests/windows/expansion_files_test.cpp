// Entries that refer to whatever a file system holds, opened through the system's own calls, and files that change while
// the strip is up.

#include "details/expansion.h"
#include "tests/windows/expansion_fixture.h"

namespace cvlog::platform::win32 {
namespace {

class Win32ErrorsFiles : public ExpansionFixture {
protected:
    static constexpr int kRows = 8'000; // so many lines are several blocks

    /// The messages of the entry in row 1.
    int messages() { return list().rowCount() - 1; }
    void expectOpens(const std::wstring& path, int count) {
        addOpenable(path);
        expand();
        EXPECT_EQ(messages(), count);
        EXPECT_EQ(reference(1), fromWide(path));
        list().clear();
    }
    void expectCountsAsNoFile(const std::wstring& path) {
        addOpenable(path);
        expand();
        EXPECT_EQ(messages(), 0) << readable(path);
        EXPECT_EQ(reference(1), u"") << readable(path);
        list().clear();
    }
    static std::string readable(const std::wstring& path) { return base::toUtf8(fromWide(path)); }
    FileHandle openToWrite(DWORD share) {
        return FileHandle(
            CreateFileW(path_.c_str(), GENERIC_WRITE, share, nullptr, OPEN_EXISTING, 0, nullptr));
    }
};

TEST_F(Win32ErrorsFiles, MayLieDeeperThanTheSystemsUsualCallsReach) {
    std::wstring folder = folder_.path();
    for (int depth = 0; depth < 3; ++depth) {
        folder += L"\\" + std::wstring(100, static_cast<wchar_t>(L'a' + depth));
        ASSERT_TRUE(CreateDirectoryW((L"\\\\?\\" + folder).c_str(), nullptr));
    }
    const std::wstring path = folder + L"\\deep.errors";
    ASSERT_GT(path.size(), static_cast<std::size_t>(MAX_PATH));
    {
        const FileHandle file(
            CreateFileW((L"\\\\?\\" + path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
        DWORD written = 0;
        ASSERT_TRUE(WriteFile(file.get(), "one\ntwo\n", 8, &written, nullptr));
    }
    expectOpens(path, 2);
    expectReleased(L"\\\\?\\" + path);
    EXPECT_TRUE(DeleteFileW((L"\\\\?\\" + path).c_str()));
    expectCountsAsNoFile(path);
    for (; folder.size() > folder_.path().size(); folder.resize(folder.rfind(L'\\')))
        EXPECT_TRUE(RemoveDirectoryW((L"\\\\?\\" + folder).c_str()));
}

TEST_F(Win32ErrorsFiles, ThatAreFoldersOrOfNoHostOrOfNoDriveCountAsGone) {
    expectCountsAsNoFile(folder_.path());
    expectCountsAsNoFile(folder_.path() + L"\\");
    expectCountsAsNoFile(folder_.path() + L"\\none\\given.errors");
    expectCountsAsNoFile(L"\\\\nowhere.invalid\\share\\given.errors");
    expectCountsAsNoFile(L"1:\\given.errors");
    expectCountsAsNoFile(L"*?<>|\"");
}

// Whether a device is there is for the system to say: what is there and cannot be read keeps its entry's reference.
TEST_F(Win32ErrorsFiles, ThatAreDevicesShowNothing) {
    for (const wchar_t* device : {L"NUL", L"CON", L"COM1", L"PRN", L"\\\\.\\NUL", L"\\\\.\\PhysicalDrive0"})
        for (const std::wstring& path : {std::wstring(device), folder_.path() + L"\\" + device}) {
            addOpenable(path);
            expand();
            EXPECT_EQ(messages(), 0) << readable(path);
            const bool isThere = services_.files.fileExists(fromWide(path));
            EXPECT_EQ(reference(1), isThere ? fromWide(path) : u"") << readable(path);
            list().clear();
        }
}

TEST_F(Win32ErrorsFiles, ThatOthersKeepToThemselvesAreOpenedWhenTheyLetGo) {
    writeLines(3);
    addOpenable();
    {
        const FileHandle locked = openToWrite(0);
        ASSERT_TRUE(locked.isOpen());
        expand();
        EXPECT_EQ(messages(), 0);
        EXPECT_EQ(reference(1), fromWide(path_));
    }
    expand();
    EXPECT_EQ(messages(), 3);
}

TEST_F(Win32ErrorsFiles, MayBeStreamsOfAFileWhereTheSystemHasThose) {
    writeLines(1);
    const std::wstring stream = path_ + L":messages";
    bool hasStreams = false;
    {
        const FileHandle file(
            CreateFileW(stream.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
        DWORD written = 0;
        hasStreams = file.isOpen() && WriteFile(file.get(), "one\ntwo\n", 8, &written, nullptr);
    }
    if (hasStreams)
        expectOpens(stream, 2);
    else
        expectCountsAsNoFile(stream);
    expectOpens(path_, 1);
}

TEST_F(Win32ErrorsFiles, AreReadOnWhenTheyAreReplacedMeanwhile) {
    writeLines(kRows);
    addOpenable();
    const std::wstring old = path_ + L".old";
    expandAndMeanwhile([&] {
        EXPECT_TRUE(MoveFileW(path_.c_str(), old.c_str()));
        write("other\n");
    });
    EXPECT_EQ(messages(), kRows);
    EXPECT_EQ(message(1 + kRows), u"line 8000");
    expectReleased(old);
}

TEST_F(Win32ErrorsFiles, AreReadOnWhenTheyAreDeletedMeanwhile) {
    writeLines(kRows);
    addOpenable();
    expandAndMeanwhile([&] { EXPECT_TRUE(DeleteFileW(path_.c_str())); });
    EXPECT_EQ(messages(), kRows);
    EXPECT_EQ(GetFileAttributesW(path_.c_str()), INVALID_FILE_ATTRIBUTES)
        << "gone with its last reader at the latest";
    details::CollapseEntry(globals_, globals_.LogViews.first(), 1);
    expand();
    EXPECT_EQ(messages(), 0);
    EXPECT_EQ(reference(1), u"");
}

TEST_F(Win32ErrorsFiles, EndWhereTheyAreCutOffMeanwhile) {
    constexpr int kLeft = 7'500;
    writeLines(kRows);
    addOpenable();
    expandAndMeanwhile([&] {
        const FileHandle file = openToWrite(FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);
        ASSERT_TRUE(file.isOpen());
        const auto left = static_cast<LONG>((lines(kLeft) + "line").size());
        SetFilePointer(file.get(), left, nullptr, FILE_BEGIN);
        EXPECT_TRUE(SetEndOfFile(file.get()));
    });
    EXPECT_EQ(messages(), kLeft + 1);
    EXPECT_EQ(message(list().rowCount()), u"line") << "what is left of the next one";
}

TEST_F(Win32ErrorsFiles, AreReadAsFarAsTheyWentWhenTheyWereOpened) {
    writeLines(kLong);
    addOpenable();
    int times = 0;
    tests::FromTheLoop writer([&] {
        if (!stripIsUp()) return false;
        std::ofstream(std::filesystem::path(path_), std::ios::binary | std::ios::app) << lines(kLong);
        ++times;
        return false; // as long as the entry is being opened
    });
    expand();
    EXPECT_GE(times, 1);
    EXPECT_EQ(messages(), kLong);
    EXPECT_EQ(message(1 + kLong), u"line 5000");
}

TEST_F(Win32ErrorsFiles, MayHoldOneLineOfAHundredMegabytes) {
    constexpr std::size_t kMegabyte = 1U << 20;
    {
        std::ofstream file(std::filesystem::path(path_), std::ios::binary);
        const std::string part(kMegabyte, 'x');
        for (int i = 0; i < 100; ++i) file << part;
        file << "\nnext\n";
    }
    addOpenable();
    expand();
    ASSERT_EQ(messages(), 2);
    EXPECT_EQ(message(2).size(), 16 * kMegabyte) << "nobody reads more of it";
    EXPECT_EQ(message(3), u"next");
}

} // namespace
} // namespace cvlog::platform::win32
