// The whole of a log's life through the library, over and over: written, opened up, reported, its history opened,
// reported and closed. Nothing is left of it at the end of any, and the library goes.

#include "tests/windows/import_spy.h"
#include "tests/windows/live_objects.h"
#include "tests/windows/log_user_fixture.h"
#include "tests/windows/report_class.h"

#include <filesystem>
#include <fstream>

namespace cvlog::tests {
namespace {

namespace win32 = platform::win32;

constexpr int kLines = 1'000; // more than fifty, so that the strip comes up

// Without keys of the registry: the font object of some systems writes its type library there, and leaves keys open.
int handlesButKeys() {
    return win32::openHandles([](HANDLE handle) {
        return RegQueryInfoKeyW(static_cast<HKEY>(handle), nullptr, nullptr, nullptr, nullptr, nullptr,
                                nullptr, nullptr, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS;
    });
}

/// What this process and its thread have of the system.
struct SystemHoldings {
    int windows = win32::liveWindows();
    int graphics = win32::liveGraphicsObjects();
    int handles = handlesButKeys();
};

class HistoryCycle : public LogUserTest {
protected:
    void SetUp() override {
        std::ofstream file{std::filesystem::path(errorsFile())};
        for (int line = 1; line <= kLines; ++line) file << "line " << line << "\n";
        file.close();
        ASSERT_TRUE(SUCCEEDED(OleInitialize(nullptr))); // the system's own libraries stay
        beginCycle();
    }
    void TearDown() override {
        endCycle();
        kept_.reset();
        EXPECT_EQ(GetModuleHandleW(L"CVLog3.dll"), nullptr);
        OleUninitialize();
    }

    void beginCycle() {
        if (!kept_) kept_.emplace(); // so that it is watched before it does anything
        spy_.emplace(kept_->module());
        LogUserTest::SetUp();
        floats();
    }
    void endCycle() {
        taken_ = ImportSpy::taken();
        LogUserTest::TearDown(); // which finds the host's objects released, and that the library can go
        for (const auto& [kind, count] : ImportSpy::held()) EXPECT_EQ(count, 0) << kind;
        EXPECT_EQ(kept_->canUnload(), S_OK);
        spy_.reset();
    }
    void nextCycle() {
        endCycle();
        beginCycle();
    }

    void useEverything() {
        add(1, L"message", L"long.errors");
        add(0, L"another");
        EXPECT_EQ(rowsOf(list()), 2);
        expand();
        EXPECT_EQ(rowsOf(list()), 2 + kLines);
        host_->options().errors = L"false";
        host_->options().fireSaved(); // a timer has the log follow
        EXPECT_EQ(ImportSpy::held()["timers"], 1);
        EXPECT_TRUE(takeMessagesUntil([] { return ImportSpy::held()["timers"] == 0; }));
        choose('L');
        EXPECT_EQ(rowsOf(list()), 2);
        reportLog();
        reportHistory();
        for (const wchar_t* page : {L"Log", L"LogHistory"})
            EXPECT_TRUE(std::filesystem::remove(project_.path() + L"\\Output\\" + page + L".html")) << page;
        EXPECT_TRUE(isFree(errorsFile()));
        EXPECT_FALSE(isFree(project_.path() + L"\\PrjData.mdb")) << "the log has it open";
        call(L"CloseDB");
        EXPECT_TRUE(isFree(project_.path() + L"\\PrjData.mdb"));
    }

    std::map<std::string, int> taken_;

private:
    std::wstring errorsFile() const { return project_.path() + L"\\long.errors"; }
    void expand() {
        bool stripSeen = false;
        inMenu({{menuIsOpen, [] { typeKey('X'); }},
                {[] { return windowTitled(L"Cancel") != nullptr; }, [&] { stripSeen = true; }}});
        EXPECT_TRUE(stripSeen);
    }
    /// Nobody has the file open.
    static bool isFree(const std::wstring& path) {
        const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file != INVALID_HANDLE_VALUE) CloseHandle(file);
        return file != INVALID_HANDLE_VALUE;
    }

    std::optional<LoadedLibrary> kept_;
    std::optional<ImportSpy> spy_;
};

TEST_F(HistoryCycle, LeavesNothingBehindAndLetsTheLibraryGo) {
    const ReportClass sample;
    std::optional<SystemHoldings> before;
    for (int round = 0; round < 5; ++round) {
        SCOPED_TRACE(round);
        useEverything();
        nextCycle();
        for (const char* kind :
             {"hooks", "timers", "menus", "icons", "icon lists", "window classes", "registry keys"})
            EXPECT_GT(taken_[kind], 0) << kind << " are watched";
        if (round == 1) before.emplace(); // caches of the system have filled
    }
    const SystemHoldings after;
    EXPECT_EQ(after.windows, before->windows);
    EXPECT_EQ(after.graphics, before->graphics);
    EXPECT_EQ(after.handles, before->handles);
}

} // namespace
} // namespace cvlog::tests
