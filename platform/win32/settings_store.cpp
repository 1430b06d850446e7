#include "platform/win32/settings_store.h"

#include "automation/error.h"
#include "base/text.h"
#include "platform/win32/handles.h"
#include "platform/win32/wide_text.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace cvlog::platform::win32 {

namespace {

constexpr wchar_t kRoot[] = L"Software\\VB and VBA Program Settings\\";
constexpr DWORD kLargestValue = 1'000'000;

std::wstring sectionPath(std::u16string_view application, std::u16string_view section) {
    return kRoot + nameText(application) + L"\\" + nameText(section);
}

[[noreturn]] void fail(LSTATUS status) {
    throw automation::AutomationError(HRESULT_FROM_WIN32(static_cast<DWORD>(status)),
                                      u"The settings cannot be reached.");
}

struct RawValue {
    DWORD type = REG_NONE;
    std::vector<BYTE> bytes;
};

/// False when there is no such value.
bool readValue(HKEY section, const std::wstring& name, RawValue& value) {
    LSTATUS status = ERROR_MORE_DATA;
    DWORD size = 512;
    while (status == ERROR_MORE_DATA && size <= kLargestValue) {
        value.bytes.resize(size);
        status = RegQueryValueExW(section, name.c_str(), nullptr, &value.type, value.bytes.data(), &size);
    }
    if (status == ERROR_FILE_NOT_FOUND) return false;
    if (status != ERROR_SUCCESS) fail(status);
    value.bytes.resize(size);
    return true;
}

std::u16string textOf(const RawValue& value) {
    switch (value.type) {
    case REG_SZ:
    case REG_EXPAND_SZ: {
        std::u16string text(value.bytes.size() / sizeof(char16_t), u'\0');
        std::memcpy(text.data(), value.bytes.data(), text.size() * sizeof(char16_t));
        if (!text.empty() && text.back() == u'\0') text.pop_back();
        return text;
    }
    case REG_DWORD: {
        DWORD number = 0;
        std::memcpy(&number, value.bytes.data(), std::min(sizeof number, value.bytes.size()));
        return base::decimal(number);
    }
    default:
        throw automation::AutomationError(automation::code::kTypeMismatch, u"The setting is not a text.");
    }
}

} // namespace

std::u16string SettingsStore::get(std::u16string_view application, std::u16string_view section,
                                  std::u16string_view key, std::u16string_view defaultValue) {
    HKEY opened = nullptr;
    const LSTATUS status = RegOpenKeyExW(HKEY_CURRENT_USER, sectionPath(application, section).c_str(), 0,
                                         KEY_QUERY_VALUE, &opened);
    if (status == ERROR_FILE_NOT_FOUND || status == ERROR_PATH_NOT_FOUND) return std::u16string(defaultValue);
    if (status != ERROR_SUCCESS) fail(status);
    const RegistryKey owned(opened);
    RawValue value;
    return readValue(opened, nameText(key), value) ? textOf(value) : std::u16string(defaultValue);
}

void SettingsStore::save(std::u16string_view application, std::u16string_view section,
                         std::u16string_view key, std::u16string_view value) {
    HKEY opened = nullptr;
    LSTATUS status = RegCreateKeyExW(HKEY_CURRENT_USER, sectionPath(application, section).c_str(), 0, nullptr,
                                     0, KEY_SET_VALUE, nullptr, &opened, nullptr);
    if (status != ERROR_SUCCESS) fail(status);
    const RegistryKey owned(opened);
    const std::u16string ended(value); // its terminator is stored as well
    const std::size_t size = (ended.size() + 1) * sizeof(char16_t);
    if (size > kLargestValue) fail(ERROR_MORE_DATA);
    status = RegSetValueExW(opened, nameText(key).c_str(), 0, REG_SZ,
                            reinterpret_cast<const BYTE*>(ended.c_str()), static_cast<DWORD>(size));
    if (status != ERROR_SUCCESS) fail(status);
}

} // namespace cvlog::platform::win32
