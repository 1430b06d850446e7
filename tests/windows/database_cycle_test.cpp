// A project's database through COM from its opening to its closing: over and over, closed by the host behind the log's
// back, and with a remembered visibility that is no text.

#include "tests/windows/com_test.h"
#include "tests/windows/live_objects.h"
#include "tests/windows/script_host.h"

#include <sqlite3.h>

#include <filesystem>

namespace cvlog::tests {
namespace {

constexpr wchar_t kSettings[] = L"Software\\VB and VBA Program Settings\\CVLog3 Tests";
constexpr wchar_t kSection[] = L"Software\\VB and VBA Program Settings\\CVLog3 Tests\\Activity Log";

int recordsIn(const ProjectFolder& project) {
    sqlite3* database = nullptr;
    sqlite3_stmt* rows = nullptr;
    const std::string file = std::filesystem::path(project.path() + L"\\PrjData.mdb").string();
    EXPECT_EQ(sqlite3_open_v2(file.c_str(), &database, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
    EXPECT_EQ(sqlite3_prepare_v2(database, "select count(*) from LogInfo", -1, &rows, nullptr), SQLITE_OK);
    const int count = sqlite3_step(rows) == SQLITE_ROW ? sqlite3_column_int(rows, 0) : -1;
    sqlite3_finalize(rows);
    sqlite3_close(database);
    return count;
}

struct Held {
    int handles = platform::win32::openHandles();
    DWORD userObjects = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    DWORD gdiObjects = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    int hostObjects = ScriptedDispatch::alive();
};

class DatabaseThroughCom : public ComTest {
protected:
    DatabaseThroughCom() { RegDeleteTreeW(HKEY_CURRENT_USER, kSettings); }
    ~DatabaseThroughCom() override { RegDeleteTreeW(HKEY_CURRENT_USER, kSettings); }

    static void call(IDispatch* object, const wchar_t* name) {
        EXPECT_EQ(callByName(object, name, DISPATCH_METHOD, {}), S_OK);
    }
    static void addEntry(IDispatch* log) {
        EXPECT_EQ(callByName(log, L"Add", DISPATCH_METHOD,
                             {Variant(L"verify"), Variant(1L), Variant(L"O1"), Variant(L"message")}),
                  S_OK);
    }
    static void startSeries(IDispatch* log) { // so that no box is shown
        EXPECT_EQ(callByName(log, L"SeriesStart", DISPATCH_METHOD, {Variant(L"verify")}), S_OK);
    }
    static ComPtr<IDispatch> objectOf(IDispatch* owner, const wchar_t* member) {
        Variant result;
        EXPECT_EQ(callByName(owner, member, DISPATCH_PROPERTYGET, {}, &result), S_OK);
        return result.vt == VT_DISPATCH ? ComPtr<IDispatch>(result.pdispVal) : ComPtr<IDispatch>();
    }
    static LRESULT rowsOf(IDispatch* control) {
        Variant window;
        EXPECT_EQ(callByName(control, L"hwnd", DISPATCH_PROPERTYGET, {}, &window), S_OK);
        return SendMessageW(reinterpret_cast<HWND>(static_cast<LONG_PTR>(window.lVal)),
                            0x1004 /* LVM_GETITEMCOUNT */, 0, 0);
    }
    static void store(DWORD type, const void* data, DWORD size) {
        ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, kSection, L"Visible", type, data, size), ERROR_SUCCESS);
    }
    static std::wstring storedVisible() {
        wchar_t text[16] = L"";
        DWORD size = sizeof text;
        RegGetValueW(HKEY_CURRENT_USER, kSection, L"Visible", RRF_RT_REG_SZ, nullptr, text, &size);
        return text;
    }

    void runCycle() {
        const ProjectFolder project;
        const ComPtr<IDispatch> workspace = com::adopt<IDispatch>(makeWorkspace(project.path()));
        const ComPtr<IDispatch> log = create(L"CVLog3.CVLog");
        const ComPtr<IDispatch> control = create(L"CVLog3.CVLogControl");
        ASSERT_TRUE(openDb(log.Get(), workspace.Get()));
        startSeries(log.Get());
        for (int i = 0; i < 5; ++i) addEntry(log.Get());
        EXPECT_EQ(rowsOf(control.Get()), 5);
        ASSERT_TRUE(objectOf(log.Get(), L"LogDB"));
        const std::wstring file = project.path() + L"\\PrjData.mdb";
        EXPECT_FALSE(MoveFileW(file.c_str(), (file + L".moved").c_str())) << "the log has it open";
        call(log.Get(), L"CloseDB");
        EXPECT_FALSE(objectOf(log.Get(), L"LogDB"));
        EXPECT_EQ(recordsIn(project), 5);
        EXPECT_TRUE(MoveFileW(file.c_str(), (file + L".moved").c_str())) << "nobody has it open";
        EXPECT_TRUE(DeleteFileW((file + L".moved").c_str()));
    }
    static HRESULT libraryCanUnload() {
        const HMODULE library = GetModuleHandleW(L"CVLog3.dll");
        if (!library) return S_OK;
        const FARPROC entry = GetProcAddress(library, "DllCanUnloadNow");
        return reinterpret_cast<HRESULT(WINAPI*)()>(reinterpret_cast<void*>(entry))();
    }
};

TEST_F(DatabaseThroughCom, OpenedUsedAndClosedTwentyTimesLeavesNothingBehind) {
    for (int round = 0; round < 5; ++round) runCycle(); // caches of the system fill
    const Held before;
    for (int round = 0; round < 20; ++round) runCycle();
    const Held after;
    EXPECT_GT(before.handles, 0);
    EXPECT_LE(after.handles, before.handles);
    EXPECT_LE(after.userObjects, before.userObjects);
    EXPECT_LE(after.gdiObjects, before.gdiObjects);
    EXPECT_EQ(after.hostObjects, before.hostObjects);
    EXPECT_EQ(libraryCanUnload(), S_OK);
}

TEST_F(DatabaseThroughCom, ClosedByTheHostLosesTheRecordAndShowsTheRow) {
    const ProjectFolder project;
    const ComPtr<IDispatch> workspace = com::adopt<IDispatch>(makeWorkspace(project.path()));
    const ComPtr<IDispatch> log = create(L"CVLog3.CVLog");
    const ComPtr<IDispatch> control = create(L"CVLog3.CVLogControl");
    ASSERT_TRUE(openDb(log.Get(), workspace.Get()));
    startSeries(log.Get());
    addEntry(log.Get());
    const ComPtr<IDispatch> database = objectOf(log.Get(), L"LogDB");
    ASSERT_TRUE(database);
    call(database.Get(), L"Close");
    addEntry(log.Get());
    EXPECT_EQ(rowsOf(control.Get()), 2);
    call(log.Get(), L"CloseDB");
    EXPECT_EQ(recordsIn(project), 1);
    EXPECT_TRUE(openDb(log.Get(), workspace.Get()));
    call(log.Get(), L"CloseDB");
}

TEST_F(DatabaseThroughCom, ReadsAStoredVisibilityOfAnyKindOrRaises) {
    const ProjectFolder project;
    const ComPtr<IDispatch> workspace = com::adopt<IDispatch>(makeWorkspace(project.path()));
    const ComPtr<IDispatch> log = create(L"CVLog3.CVLog");
    const auto visibleAfter = [&] {
        EXPECT_TRUE(openDb(log.Get(), workspace.Get()));
        call(log.Get(), L"CloseDB");
        return storedVisible();
    };
    EXPECT_EQ(visibleAfter(), L"1") << "nothing was stored";
    const DWORD one = 1;
    store(REG_DWORD, &one, sizeof one);
    EXPECT_EQ(visibleAfter(), L"1");
    store(REG_SZ, L"yes", 8);
    EXPECT_EQ(visibleAfter(), L"0");
    store(REG_BINARY, &one, sizeof one);
    EXPECT_NE(callByName(log.Get(), L"OpenDB", DISPATCH_METHOD, {[&] {
                             Variant host;
                             host.vt = VT_DISPATCH;
                             host.pdispVal = (workspace.Get()->AddRef(), workspace.Get());
                             return host;
                         }()}),
              S_OK)
        << "an entity type is listed";
    RegDeleteTreeW(HKEY_CURRENT_USER, kSettings);
    call(log.Get(), L"CloseDB");
}

TEST_F(DatabaseThroughCom, IsNotOpenedWithAStoredVisibilityThatIsNoTextWhenNoEntityTypeIsListed) {
    const ProjectFolder project;
    ScriptedDispatch* host = makeWorkspace(project.path());
    const ComPtr<IDispatch> workspace = com::adopt<IDispatch>(host);
    const ComPtr<IDispatch> erd = objectOf(objectOf(host, L"Repository").Get(), L"ERD");
    const ComPtr<IDispatch> entities = objectOf(erd.Get(), L"Entities");
    static_cast<ScriptedDispatch*>(entities.Get())
        ->replace(L"Count", [](ScriptedDispatch::Arguments&, VARIANT* result) {
            result->vt = VT_I4;
            result->lVal = 0;
            return S_OK;
        });
    const DWORD one = 1;
    store(REG_BINARY, &one, sizeof one);
    const ComPtr<IDispatch> log = create(L"CVLog3.CVLog");
    EXPECT_FALSE(openDb(log.Get(), workspace.Get()));
    RegDeleteTreeW(HKEY_CURRENT_USER, kSettings);
    call(log.Get(), L"CloseDB");
}

} // namespace
} // namespace cvlog::tests
