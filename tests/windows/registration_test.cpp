// What the library writes about itself for the system, in a registry of the test's own.

#include "com/guids.h"
#include "tests/windows/loaded_library.h"

#include <filesystem>
#include <string>

namespace cvlog::tests {
namespace {

constexpr wchar_t kStage[] = L"Software\\CVLog3 registration test";

class Registration : public ComTest {
protected:
    void SetUp() override {
        ComTest::SetUp();
        RegDeleteTreeW(HKEY_CURRENT_USER, kStage);
        ASSERT_EQ(RegCreateKeyW(HKEY_CURRENT_USER, kStage, &stage_), ERROR_SUCCESS);
        ASSERT_EQ(RegOverridePredefKey(HKEY_CLASSES_ROOT, stage_), ERROR_SUCCESS);
        library_ = std::make_unique<LoadedLibrary>();
        ASSERT_TRUE(library_->loaded());
    }
    void TearDown() override {
        library_.reset();
        RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
        RegCloseKey(stage_);
        RegDeleteTreeW(HKEY_CURRENT_USER, kStage);
        ComTest::TearDown();
    }
    static std::wstring text(const GUID& id) {
        wchar_t buffer[39];
        StringFromGUID2(id, buffer, 39);
        return buffer;
    }
    /// "none" where there is no such value.
    std::wstring value(const std::wstring& key, const wchar_t* name = nullptr) const {
        wchar_t buffer[1024] = {};
        DWORD size = sizeof buffer;
        const LSTATUS found = RegGetValueW(stage_, key.c_str(), name, RRF_RT_REG_SZ, nullptr, buffer, &size);
        return found == ERROR_SUCCESS ? buffer : L"none";
    }
    std::wstring ofControl(const wchar_t* key) const {
        return value(L"CLSID\\" + text(com::kControlClass) + L"\\" + key);
    }

    HKEY stage_ = nullptr;
    std::unique_ptr<LoadedLibrary> library_;
};

TEST_F(Registration, TheClassesAreFoundByTheirNames) {
    ASSERT_EQ(library_->registers(), S_OK);
    const struct {
        const wchar_t* name;
        const GUID& id;
    } classes[] = {{L"CVLog3.CVLog", com::kLogClass}, {L"CVLog3.CVLogControl", com::kControlClass}};
    for (const auto& [name, id] : classes) {
        const std::wstring key = L"CLSID\\" + text(id);
        EXPECT_EQ(value(std::wstring(name) + L"\\CLSID"), text(id));
        EXPECT_EQ(value(key + L"\\ProgID"), name);
        EXPECT_EQ(value(key + L"\\VersionIndependentProgID"), name) << "the name has no version";
        EXPECT_EQ(value(key + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
        EXPECT_EQ(std::filesystem::path(value(key + L"\\InprocServer32")).filename(), L"CVLog3.dll");
        EXPECT_EQ(value(key + L"\\TypeLib"), text(com::kLibraryId));
    }
    EXPECT_NE(value(L"TypeLib\\" + text(com::kLibraryId) + L"\\4.0"), L"none");
}

TEST_F(Registration, TheControlSaysHowItIsToBeTreated) {
    ASSERT_EQ(library_->registers(), S_OK);
    EXPECT_EQ(ofControl(L"Control"), L"");
    EXPECT_EQ(ofControl(L"Implemented Categories\\{40FC6ED4-2438-11CF-A3DB-080036F12502}"), L"");
    EXPECT_EQ(ofControl(L"MiscStatus"), L"0");
    const ComPtr<IDispatch> control = library_->create(com::kControlClass);
    ComPtr<IOleObject> object;
    DWORD status = 0;
    ASSERT_EQ(control.As(&object), S_OK);
    EXPECT_EQ(object->GetMiscStatus(DVASPECT_CONTENT, &status), S_OK);
    EXPECT_EQ(ofControl(L"MiscStatus\\1"), std::to_wstring(status));
    EXPECT_EQ(value(L"CLSID\\" + text(com::kLogClass) + L"\\Control"), L"none");
}

TEST_F(Registration, TheToolboxFindsThePictureOfTheControl) {
    ASSERT_EQ(library_->registers(), S_OK);
    const std::wstring place = ofControl(L"ToolboxBitmap32");
    const auto comma = place.rfind(L',');
    ASSERT_NE(comma, std::wstring::npos) << "the file and the number of its picture";
    const HMODULE file = LoadLibraryExW(place.substr(0, comma).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(file, nullptr);
    const HANDLE picture = LoadImageW(file, MAKEINTRESOURCEW(std::stoi(place.substr(comma + 1))),
                                      IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION);
    ASSERT_NE(picture, nullptr);
    BITMAP shape{};
    EXPECT_EQ(GetObjectW(picture, sizeof shape, &shape), static_cast<int>(sizeof shape));
    EXPECT_EQ(shape.bmWidth, 16);
    EXPECT_EQ(shape.bmHeight, 16);
    const HDC dc = CreateCompatibleDC(nullptr);
    const HGDIOBJ before = SelectObject(dc, picture);
    EXPECT_EQ(GetPixel(dc, 0, 15), RGB(0xC0, 0xC0, 0xC0)) << "around it is what toolboxes leave out";
    EXPECT_EQ(GetPixel(dc, 1, 1), RGB(0, 0, 0));
    EXPECT_EQ(GetPixel(dc, 4, 5), RGB(0x2E, 0x8B, 0x3D)) << "good entries come first";
    EXPECT_EQ(GetPixel(dc, 4, 12), RGB(0xC6, 0x28, 0x28));
    SelectObject(dc, before);
    DeleteDC(dc);
    DeleteObject(picture);
    FreeLibrary(file);
}

TEST_F(Registration, NothingIsLeftOfItAfterwards) {
    ASSERT_EQ(library_->registers(), S_OK);
    ASSERT_EQ(library_->unregisters(), S_OK);
    for (const GUID* id : {&com::kLogClass, &com::kControlClass})
        EXPECT_EQ(value(L"CLSID\\" + text(*id)), L"none");
    EXPECT_EQ(value(L"CVLog3.CVLog"), L"none");
    EXPECT_EQ(value(L"CVLog3.CVLogControl"), L"none");
    EXPECT_EQ(value(L"TypeLib\\" + text(com::kLibraryId) + L"\\4.0"), L"none");
    EXPECT_EQ(library_->unregisters(), S_OK) << "also where there is nothing";
}

} // namespace
} // namespace cvlog::tests
