#include "tests/windows/com_test.h"

#include <sqlite3.h>

#include <atomic>
#include <filesystem>
#include <vector>

namespace cvlog::tests {

std::wstring binFolder() {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return std::filesystem::path(path).parent_path().wstring();
}

ProjectFolder::ProjectFolder() {
    wchar_t base[MAX_PATH];
    GetTempPathW(MAX_PATH, base);
    static std::atomic<int> number{0};
    path_ = std::wstring(base) + L"cvlog-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
            std::to_wstring(++number);
    std::filesystem::remove_all(path_); // a process that was ended may have had this one's number
    std::filesystem::create_directories(path_);
    const std::string file = std::filesystem::path(path_ + L"\\PrjData.mdb").string();
    sqlite3* database = nullptr;
    EXPECT_EQ(sqlite3_open(file.c_str(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(
                  database,
                  "create table LogInfo (MethodName text, ObjectName text, ObjectType text, LogMessage text, "
                  "ReturnMessage integer)",
                  nullptr, nullptr, nullptr),
              SQLITE_OK);
    sqlite3_close(database);
}

ProjectFolder::~ProjectFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

HRESULT callByName(IDispatch* object, const wchar_t* name, WORD flags,
                   std::initializer_list<Variant> arguments, VARIANT* result) {
    DISPID id = DISPID_UNKNOWN;
    auto* text = const_cast<OLECHAR*>(name);
    const HRESULT known = object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id);
    EXPECT_EQ(known, S_OK) << "unknown member";
    std::vector<VARIANT> reversed(std::rbegin(arguments), std::rend(arguments));
    DISPPARAMS parameters = {reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    DISPID put = DISPID_PROPERTYPUT;
    if (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) {
        parameters.rgdispidNamedArgs = &put;
        parameters.cNamedArgs = 1;
    }
    return object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, result, nullptr, nullptr);
}

void ComTest::SetUp() {
    ASSERT_TRUE(SUCCEEDED(OleInitialize(nullptr)));
    const std::wstring folder = binFolder();
    const std::wstring manifest = folder + L"\\CVLog3.manifest";
    ACTCTXW request = {};
    request.cbSize = sizeof request;
    request.lpSource = manifest.c_str();
    request.lpAssemblyDirectory = folder.c_str();
    request.dwFlags = ACTCTX_FLAG_ASSEMBLY_DIRECTORY_VALID;
    context_ = CreateActCtxW(&request);
    ASSERT_NE(context_, INVALID_HANDLE_VALUE) << "the manifest does not lie beside the test";
    ASSERT_TRUE(ActivateActCtx(context_, &cookie_));
}

void ComTest::TearDown() {
    CoFreeUnusedLibrariesEx(0, 0);
    if (cookie_ != 0) DeactivateActCtx(0, cookie_);
    if (context_ != INVALID_HANDLE_VALUE) ReleaseActCtx(context_);
    OleUninitialize();
}

ComPtr<IDispatch> ComTest::create(const wchar_t* progId) {
    CLSID id = {};
    EXPECT_EQ(CLSIDFromProgID(progId, &id), S_OK);
    ComPtr<IDispatch> object;
    EXPECT_EQ(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, &object), S_OK);
    return object;
}

bool ComTest::openDb(IDispatch* log, IDispatch* workspace) {
    IDispatch* reference = workspace;
    Variant argument;
    argument.vt = VT_DISPATCH | VT_BYREF;
    argument.ppdispVal = &reference;
    DISPID id = 0x60030011;
    DISPPARAMS parameters = {&argument, nullptr, 1, 0};
    Variant result;
    const HRESULT outcome = log->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                        &result, nullptr, nullptr);
    argument.vt = VT_EMPTY;
    EXPECT_EQ(outcome, S_OK);
    return SUCCEEDED(outcome) && result.vt == VT_BOOL && result.boolVal == VARIANT_TRUE;
}

} // namespace cvlog::tests
