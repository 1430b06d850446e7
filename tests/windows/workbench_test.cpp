// The workbench from outside: a whole host that replays a project into the log, through COM alone.

#include "tests/windows/com_test.h"

#include <sqlite3.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <vector>

namespace cvlog::tests {
namespace {

namespace fs = std::filesystem;

constexpr int kReports = 300;
constexpr int kErrorLines = 150;
constexpr int kHiddenLines = kErrorLines / 7;

class Workbench : public ::testing::Test {
protected:
    Workbench() : folder_(fs::path(project_.path())) {
        fs::remove(folder_ / "PrjData.mdb"); // the workbench makes its own
        file("host.tsv", "Key\tValue\nProjectName\tsample\nProductName\tCVLog3 Tests\nCompositeMask\t8\n");
        file("entities.tsv",
             "ID\tKeyName\tDisplayName\tIconFile\tFlags\tKeyProperty\n"
             "1\tSOURCE\tSource\tsource.png\t1\tName\n8\tPROJECT\tProject\tproject.png\t8\tName\n");
        file("objects.tsv",
             "ID\tEntityKey\tName\tDisplayName\nP1\tPROJECT\tsample\tsample\nO1\tSOURCE\ta.c\ta.c\n");
        file("methods.tsv", "ID\tDisplayName\tAliasID\nverify\tVerify\t\ncheck\t\tverify\n");
        file("codes.tsv", "Code\tText\nW1\tunused variable\n");
        std::string session =
            "Command\tMethodID\tReturnCode\tObjectID\tMessage\tErrorsFileName\nSeriesStart\tverify\n";
        for (int i = 0; i < kReports; ++i)
            session += "Add\tcheck\t" + std::to_string(i % 3) + "\tO1\tmessage " + std::to_string(i) + "\t\n";
        session += "Add\tverify\t2\tO1\tmany\tmany.errors\nAdd\tverify\t2\tO1\tfew\tfew.errors\n";
        file("session.tsv", session + "SeriesFinish\t1\n");
        file("many.errors", manyErrors());
        file("few.errors", "\r\none\r\n   \r\n  two\n\nthree without an end");
        file("options.xml", "<OPTIONS><BOOL ID=\"LogKeepInSession\" VALUE=\"true\"/>"
                            "<BOOL ID=\"LogDocked\" VALUE=\"true\"/><GROUP ID=\"Editor\">"
                            "<GROUP NAME=\"ErrorsList\"><BOOL NAME=\"Errors\" VALUE=\"true\"/>"
                            "<BOOL NAME=\"Information\" VALUE=\"false\"/></GROUP></GROUP></OPTIONS>");
    }

    void file(const char* name, const std::string& content) {
        std::ofstream(folder_ / name, std::ios::binary) << content;
    }

    /// Every seventh line is of a kind that the options hide.
    static std::string manyErrors() {
        std::string all;
        for (int i = 1; i <= kErrorLines; ++i)
            all += "\"Source\" \"a.c\" \"" + std::to_string(i) + "\" \"1\" \"Error\" \"" +
                   (i % 7 == 0 ? "I2" : "E1") + "\" message\r\n";
        return all;
    }

    static PROCESS_INFORMATION start(const std::wstring& arguments) {
        std::wstring command = L"\"" + binFolder() + L"\\workbench.exe\" " + arguments;
        STARTUPINFOW startup = {};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION process = {};
        EXPECT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                   &startup, &process));
        return process;
    }

    /// Waits for the end, and answers the exit code.
    static DWORD end(const PROCESS_INFORMATION& process) {
        DWORD code = STILL_ACTIVE;
        const DWORD ended = WaitForSingleObject(process.hProcess, 60'000);
        EXPECT_EQ(ended, static_cast<DWORD>(WAIT_OBJECT_0));
        if (ended != WAIT_OBJECT_0) TerminateProcess(process.hProcess, STILL_ACTIVE);
        GetExitCodeProcess(process.hProcess, &code);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
        return code;
    }

    /// Runs it until it is ready, lets it end, and answers its exit code.
    DWORD run(const fs::path& project) {
        const fs::path ready = folder_ / "ready.txt";
        const PROCESS_INFORMATION process =
            start(L"/auto \"" + ready.wstring() + L"\" \"" + project.wstring() + L"\"");
        // Until the file has its line, or the program ends without it.
        while (WaitForSingleObject(process.hProcess, 50) == WAIT_TIMEOUT && line_.empty()) {
            std::ifstream in(ready);
            std::getline(in, line_);
        }
        std::error_code ignored;
        fs::remove(ready, ignored);
        return end(process);
    }

    static std::string contentOf(const fs::path& path) {
        std::ifstream in(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }

    /// Runs it in a mode that shows one thing after another; answers what it showed after the replayed session.
    std::vector<std::string> pictures(const wchar_t* mode) {
        const fs::path ready = folder_ / "ready.txt";
        const PROCESS_INFORMATION process =
            start(mode + (L" \"" + ready.wstring()) + L"\" \"" + folder_.wstring() + L"\"");
        std::vector<std::string> shown;
        while (WaitForSingleObject(process.hProcess, 20) == WAIT_TIMEOUT) {
            std::string line;
            std::ifstream in(ready);
            std::getline(in, line);
            in.close();
            std::error_code failed;
            if (!line.empty() && fs::remove(ready, failed)) shown.push_back(line);
        }
        EXPECT_EQ(end(process), 0U);
        EXPECT_FALSE(shown.empty());
        if (!shown.empty()) shown.erase(shown.begin());
        return shown;
    }

    int recordsByStockTools() {
        sqlite3* database = nullptr;
        sqlite3_stmt* statement = nullptr;
        EXPECT_EQ(sqlite3_open((folder_ / "PrjData.mdb").string().c_str(), &database), SQLITE_OK);
        EXPECT_EQ(sqlite3_prepare_v2(
                      database, "select count(*) from LogInfo where MethodName = 'Verify' and Errors = ''",
                      -1, &statement, nullptr),
                  SQLITE_OK);
        EXPECT_EQ(sqlite3_step(statement), SQLITE_ROW);
        const int count = sqlite3_column_int(statement, 0);
        sqlite3_finalize(statement);
        sqlite3_close(database);
        return count;
    }

    ProjectFolder project_;
    fs::path folder_;
    std::string line_;
};

TEST_F(Workbench, ShowsARowStoresARecordAndHearsAnEventForEachReport) {
    EXPECT_EQ(run(folder_), 0U);
    EXPECT_EQ(line_.rfind("302 rows shown, 302 records stored, 302 events received, ", 0), 0U) << line_;
    EXPECT_EQ(recordsByStockTools(), kReports);
}

TEST_F(Workbench, KeepsTheRecordsOfEarlierRuns) {
    EXPECT_EQ(run(folder_), 0U);
    line_.clear();
    EXPECT_EQ(run(folder_), 0U);
    EXPECT_EQ(line_.rfind("302 rows shown, 302 records stored, 302 events received, ", 0), 0U) << line_;
    EXPECT_EQ(recordsByStockTools(), 2 * kReports);
}

TEST_F(Workbench, RefusesAFolderThatIsNoProject) {
    EXPECT_EQ(run(folder_ / "none"), 2U);
    EXPECT_EQ(line_, "");
}

// The workbench calls its own members as the log calls them, and compares with what its windows show. It holds two
// controls against each other, opens the log's menu, and follows errors files.
TEST_F(Workbench, HoldsWhatItAndTheLogPromise) {
    const fs::path report = folder_ / "report.txt";
    const DWORD code = end(start(L"/check \"" + report.wstring() + L"\" \"" + folder_.wstring() + L"\""));
    const std::string lines = contentOf(report);
    EXPECT_EQ(code, 0U) << lines;
    int held = 0;
    int made = 0;
    ASSERT_EQ(std::sscanf(lines.c_str(), "%d of %d checks hold", &held, &made), 2) << lines;
    EXPECT_EQ(held, made);
    EXPECT_GT(made, 150); // it has not ended half way
    EXPECT_NE(lines.find("302 entries, 2 opened: " + std::to_string(kErrorLines + 3) + " lines, " +
                         std::to_string(kHiddenLines) + " hidden, " +
                         std::to_string(kErrorLines - kHiddenLines + 1 + 3) + " rows"),
              std::string::npos)
        << lines;
    const std::string written = contentOf(folder_ / "generated-5.errors");
    EXPECT_EQ(std::count(written.begin(), written.end(), '\n'), 5) << "as many lines as were asked for";
    EXPECT_FALSE(fs::exists(folder_ / "generated-8.errors")) << "it went with the change of its object";
}

TEST_F(Workbench, ShowsEverythingThatTheLogOpensOrChanges) {
    const std::vector<std::string> expected = {"menu-entry",      "menu-no-selection",
                                               "menu-columns",    "menu-entry-with-errors",
                                               "open-entry",      "menu-open-entry",
                                               "menu-message",    "errors-of-entry",
                                               "errors",          "errors-question",
                                               "strip-1",         "strip-2",
                                               "strip-3",         "strip-4",
                                               "strip-5",         "hidden-records",
                                               "menu-floating",   "menu-without-parent",
                                               "sorted",          "sorted-down",
                                               "hidden-columns",  "history",
                                               "history-session", "history-menu",
                                               "history-empty",   "history-empty-menu",
                                               "menu-empty-log"};
    EXPECT_EQ(pictures(L"/tour"), expected);
    EXPECT_NE(contentOf(folder_ / "Output" / "Log.html").find("</html>"), std::string::npos);
}

// The keys that choose in a menu are those of its language.
using JapaneseWorkbench = Workbench;
using KoreanWorkbench = Workbench;
const std::vector<std::string> kGlance = {"menu",    "errors",          "strip-1",
                                          "history", "history-session", "history-menu"};

TEST_F(JapaneseWorkbench, ShowsTheSame) {
    ASSERT_EQ(PRIMARYLANGID(GetUserDefaultUILanguage()), LANG_JAPANESE);
    EXPECT_EQ(pictures(L"/glance"), kGlance);
}

TEST_F(KoreanWorkbench, ShowsTheSame) {
    ASSERT_EQ(PRIMARYLANGID(GetUserDefaultUILanguage()), LANG_KOREAN);
    EXPECT_EQ(pictures(L"/glance"), kGlance);
}

} // namespace
} // namespace cvlog::tests
