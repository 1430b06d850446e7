#include "tests/windows/report_class.h"

#include "tests/windows/class_factory.h"

#include <utility>

namespace cvlog::tests {

namespace {

constexpr CLSID kSampleClass = {0x4e0d7a52, 0x8c1b, 0x4f3a, {0x9d, 0x6e, 0x51, 0xc2, 0xb7, 0xf0, 0xa9, 0x38}};
constexpr CLSID kOwnClass = {0x7b6c2f10, 0x5d3e, 0x4a91, {0xb2, 0x08, 0x1f, 0x6d, 0xe3, 0x94, 0x5c, 0x77}};
constexpr wchar_t kNameKey[] = L"Software\\Classes\\Tabulite.TLReport";

void setText(const std::wstring& key, const wchar_t* name, const std::wstring& text) {
    EXPECT_EQ(RegSetKeyValueW(HKEY_LOCAL_MACHINE, key.c_str(), name, REG_SZ, text.c_str(),
                              static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))),
              ERROR_SUCCESS);
}

std::wstring textOf(const CLSID& id) {
    wchar_t text[64];
    StringFromGUID2(id, text, 64);
    return text;
}

} // namespace

ReportClass::ReportClass() : turn_(CreateMutexW(nullptr, FALSE, L"CVLog3 tests: Tabulite.TLReport")) {
    WaitForSingleObject(turn_, INFINITE);
    SetEnvironmentVariableW(kUnattended, L"1");
    classKey_ = L"Software\\Classes\\CLSID\\" + textOf(kSampleClass);
    setText(classKey_ + L"\\InprocServer32", nullptr, binFolder() + L"\\TLReport.dll");
    setText(classKey_ + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
    registerAs(kSampleClass);
}

ReportClass::ReportClass(Make make)
    : turn_(CreateMutexW(nullptr, FALSE, L"CVLog3 tests: Tabulite.TLReport")) {
    WaitForSingleObject(turn_, INFINITE);
    auto* factory = new ClassFactory(
        [make = std::move(make)](REFIID id, void** result) { return make()->QueryInterface(id, result); });
    EXPECT_EQ(CoRegisterClassObject(kOwnClass, factory, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_),
              S_OK);
    factory->Release();
    registerAs(kOwnClass);
}

ReportClass::~ReportClass() {
    if (cookie_ != 0) CoRevokeClassObject(cookie_);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, kNameKey);
    if (!classKey_.empty()) RegDeleteTreeW(HKEY_LOCAL_MACHINE, classKey_.c_str());
    SetEnvironmentVariableW(kUnattended, nullptr);
    ReleaseMutex(turn_);
    CloseHandle(turn_);
}

void ReportClass::registerAs(const CLSID& id) {
    setText(std::wstring(kNameKey) + L"\\CLSID", nullptr, textOf(id));
}

} // namespace cvlog::tests
