#include "automation/error.h"
#include "platform/win32/settings_store.h"
#include "platform/win32/windows_headers.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace cvlog::platform::win32 {
namespace {

constexpr std::u16string_view kApplication = u"CVLog settings test";
constexpr wchar_t kPath[] = L"Software\\VB and VBA Program Settings\\CVLog settings test";

class Win32SettingsStore : public testing::Test {
protected:
    Win32SettingsStore() { forget(); }
    ~Win32SettingsStore() override { forget(); }

    static void forget() { RegDeleteTreeW(HKEY_CURRENT_USER, kPath); }
    std::u16string get(std::u16string_view key) {
        return store_.get(kApplication, u"Window", key, u"default");
    }
    void save(std::u16string_view key, std::u16string_view value) {
        store_.save(kApplication, u"Window", key, value);
    }
    static void setRaw(const wchar_t* name, DWORD type, const void* data, DWORD size) {
        RegSetKeyValueW(HKEY_CURRENT_USER, (std::wstring(kPath) + L"\\Window").c_str(), name, type, data,
                        size);
    }

    SettingsStore store_;
};

TEST_F(Win32SettingsStore, GivesBackWhatWasSaved) {
    EXPECT_EQ(get(u"Left"), u"default");
    save(u"Left", u"1200");
    EXPECT_EQ(get(u"Left"), u"1200");
    EXPECT_EQ(get(u"left"), u"1200");
    EXPECT_EQ(get(u"Top"), u"default");
    save(u"Left", u"");
    EXPECT_EQ(get(u"Left"), u"");
    const std::u16string odd =
        std::u16string(u"\u65E5 nul \0 end", 10) + char16_t(0xD800) + std::u16string(5000, u'x');
    save(u"Odd", odd);
    EXPECT_EQ(get(u"Odd"), odd);
}

TEST_F(Win32SettingsStore, KeepsTextsWhereOtherProgramsLookForThem) {
    save(u"Left", u"77");
    wchar_t text[8] = L"";
    DWORD size = sizeof text;
    ASSERT_EQ(RegGetValueW(HKEY_CURRENT_USER, (std::wstring(kPath) + L"\\Window").c_str(), L"Left",
                           RRF_RT_REG_SZ, nullptr, text, &size),
              ERROR_SUCCESS);
    EXPECT_STREQ(text, L"77");
}

TEST_F(Win32SettingsStore, ReadsWhatOthersStoredOrSaysThatItCannot) {
    save(u"Left", u"1");
    const DWORD number = 4'000'000'000U;
    setRaw(L"Number", REG_DWORD, &number, sizeof number);
    EXPECT_EQ(get(u"Number"), u"4000000000");
    setRaw(L"Bytes", REG_BINARY, &number, sizeof number);
    EXPECT_THROW(get(u"Bytes"), automation::AutomationError);
    const wchar_t unended[] = {L'a', L'b'};
    setRaw(L"Unended", REG_SZ, unended, sizeof unended);
    EXPECT_EQ(get(u"Unended"), u"ab");
    EXPECT_THROW(get(std::u16string_view(u"a\0b", 3)), std::invalid_argument);
    EXPECT_THROW(save(u"Huge", std::u16string(600'000, u'x')), automation::AutomationError);
}

TEST_F(Win32SettingsStore, GivesALongTextWhole) {
    const std::u16string text(70'000, u'x');
    save(u"Long", text);
    EXPECT_EQ(get(u"Long"), text);
}

TEST_F(Win32SettingsStore, SaysThatItMayNotRead) {
    save(u"Left", u"1");
    HKEY section = nullptr;
    const std::wstring path = std::wstring(kPath) + L"\\Window";
    ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, WRITE_DAC, &section), ERROR_SUCCESS);
    ACL nobody{};
    InitializeAcl(&nobody, sizeof nobody, ACL_REVISION);
    SECURITY_DESCRIPTOR closed{};
    InitializeSecurityDescriptor(&closed, SECURITY_DESCRIPTOR_REVISION);
    SetSecurityDescriptorDacl(&closed, TRUE, &nobody, FALSE);
    ASSERT_EQ(RegSetKeySecurity(section, DACL_SECURITY_INFORMATION, &closed), ERROR_SUCCESS);
    EXPECT_THROW(get(u"Left"), automation::AutomationError);
    EXPECT_THROW(save(u"Left", u"2"), automation::AutomationError);
    SetSecurityDescriptorDacl(&closed, TRUE, nullptr, FALSE);
    RegSetKeySecurity(section, DACL_SECURITY_INFORMATION, &closed);
    RegCloseKey(section);
    EXPECT_EQ(get(u"Left"), u"1");
}

} // namespace
} // namespace cvlog::platform::win32
