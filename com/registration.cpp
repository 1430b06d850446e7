#include "com/registration.h"

#include "com/firewall.h"
#include "com/guids.h"
#include "com/misc_status.h"
#include "com/module.h"
#include "com/resource_ids.h"

#include <windows.h>

#include <comcat.h>
#include <olectl.h>

#include <string>

namespace cvlog::com {

namespace {

struct ClassEntry {
    const GUID& id;
    const wchar_t* progId;
    const wchar_t* description;
    bool control;
};

const ClassEntry kClasses[] = {
    {kLogClass, L"CVLog3.CVLog", L"Activity log", false},
    {kControlClass, L"CVLog3.CVLogControl", L"Activity log control", true},
};

std::wstring text(const GUID& id) {
    wchar_t buffer[39];
    StringFromGUID2(id, buffer, ARRAYSIZE(buffer));
    return buffer;
}

std::wstring modulePath() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(thisModule(), path.data(), static_cast<DWORD>(path.size())));
    return path;
}

HRESULT setValue(const std::wstring& key, const wchar_t* name, const std::wstring& value) {
    const DWORD size = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
    const LSTATUS status = RegSetKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), name, REG_SZ, value.c_str(), size);
    return status == ERROR_SUCCESS ? S_OK : SELFREG_E_CLASS;
}

HRESULT registerClass(const ClassEntry& entry, const std::wstring& path) {
    const std::wstring key = L"CLSID\\" + text(entry.id);
    const std::wstring progKey = entry.progId;
    HRESULT result = S_OK;
    const auto set = [&result](const std::wstring& where, const wchar_t* name, const std::wstring& value) {
        if (SUCCEEDED(result)) result = setValue(where, name, value);
    };
    set(key, nullptr, entry.description);
    set(key + L"\\InprocServer32", nullptr, path);
    set(key + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
    set(key + L"\\ProgID", nullptr, entry.progId);
    set(key + L"\\VersionIndependentProgID", nullptr, entry.progId);
    set(key + L"\\Programmable", nullptr, L"");
    set(key + L"\\TypeLib", nullptr, text(kLibraryId));
    set(key + L"\\Version", nullptr, L"4.0");
    set(progKey, nullptr, entry.description);
    set(progKey + L"\\CLSID", nullptr, text(entry.id));
    if (entry.control) {
        set(key + L"\\Control", nullptr, L"");
        set(key + L"\\Implemented Categories\\" + text(CATID_Control), nullptr, L"");
        set(key + L"\\MiscStatus", nullptr, L"0"); // of the aspects that are not shown
        set(key + L"\\MiscStatus\\1", nullptr, std::to_wstring(kControlMiscStatus));
        set(key + L"\\ToolboxBitmap32", nullptr, path + L", " + std::to_wstring(CVLOG_TOOLBOX_BITMAP));
    }
    return result;
}

} // namespace

HRESULT registerServer() noexcept {
    return firewall([]() -> HRESULT {
        const std::wstring path = modulePath();
        for (const ClassEntry& entry : kClasses) {
            const HRESULT result = registerClass(entry, path);
            if (FAILED(result)) return result;
        }
        ITypeLib* library = nullptr;
        const HRESULT result = LoadTypeLibEx(path.c_str(), REGKIND_REGISTER, &library);
        if (library) library->Release();
        return SUCCEEDED(result) ? S_OK : SELFREG_E_TYPELIB;
    });
}

HRESULT unregisterServer() noexcept {
    return firewall([]() -> HRESULT {
        HRESULT result = S_OK;
        const auto remove = [&result](const std::wstring& key) {
            const LSTATUS status = RegDeleteTreeW(HKEY_CLASSES_ROOT, key.c_str());
            if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) result = SELFREG_E_CLASS;
        };
        for (const ClassEntry& entry : kClasses) {
            remove(L"CLSID\\" + text(entry.id));
            remove(entry.progId);
        }
        UnRegisterTypeLib(kLibraryId, kLibraryMajor, kLibraryMinor, LOCALE_NEUTRAL,
                          sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32);
        return result;
    });
}

} // namespace cvlog::com
