#include "platform/win32/handles.h"
#include "platform/win32/module.h"
#include "platform/win32/pictures.h"
#include "platform/win32/pixel_images.h"
#include "platform/win32/wide_text.h"

#include <gtest/gtest.h>
#include <objbase.h>

#include <initializer_list>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace cvlog::platform::win32 {
namespace {

constexpr std::uint32_t kOpaqueRed = 0xFFFF0000U;
constexpr std::uint32_t kOpaqueBlue = 0xFF0000FFU;

template <class Part>
void append(std::string& bytes, const Part& part) {
    bytes.append(reinterpret_cast<const char*>(&part), sizeof part);
}

BITMAPINFOHEADER bitmapHeader(int width, int height) {
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = width;
    header.biHeight = height;
    header.biPlanes = 1;
    header.biBitCount = 32;
    return header;
}

/// The left half red, the right half blue.
std::string bmpFile(int width, int height) {
    std::string pixels;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) append(pixels, x < width / 2 ? kOpaqueRed : kOpaqueBlue);
    const BITMAPINFOHEADER header = bitmapHeader(width, height);
    BITMAPFILEHEADER file{};
    file.bfType = 0x4D42;
    file.bfOffBits = sizeof file + sizeof header;
    file.bfSize = static_cast<DWORD>(file.bfOffBits + pixels.size());
    std::string bytes;
    append(bytes, file);
    append(bytes, header);
    return bytes + pixels;
}

/// An icon of images of one colour each, 32 bits with alpha.
std::string icoFile(std::initializer_list<std::pair<int, std::uint32_t>> images) {
    std::string directory;
    std::string data;
    append(directory, std::uint16_t{0});
    append(directory, std::uint16_t{1});
    append(directory, static_cast<std::uint16_t>(images.size()));
    const std::size_t start = 6 + 16 * images.size();
    for (const auto& [side, colour] : images) {
        std::string image;
        append(image, bitmapHeader(side, side * 2));
        for (int i = 0; i < side * side; ++i) append(image, colour);
        image.append(static_cast<std::size_t>((side + 31) / 32 * 4 * side), '\0');
        directory += static_cast<char>(side);
        directory += static_cast<char>(side);
        append(directory, std::uint16_t{0});
        append(directory, std::uint16_t{1});
        append(directory, std::uint16_t{32});
        append(directory, static_cast<std::uint32_t>(image.size()));
        append(directory, static_cast<std::uint32_t>(start + data.size()));
        data += image;
    }
    return directory + data;
}

class Win32Pictures : public testing::Test {
protected:
    Win32Pictures() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    ~Win32Pictures() override {
        DeleteFileW(path().c_str());
        CoUninitialize();
    }

    static std::wstring path() {
        wchar_t folder[MAX_PATH];
        GetTempPathW(MAX_PATH, folder);
        return std::wstring(folder) + L"cvlog picture " + std::to_wstring(GetCurrentProcessId());
    }

    std::shared_ptr<const ports::Picture> loaded(const std::string& bytes) {
        {
            const FileHandle file(CreateFileW(path().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                              FILE_ATTRIBUTE_NORMAL, nullptr));
            DWORD written = 0;
            WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
        }
        return pictures_.load(fromWide(path()));
    }

    Pictures pictures_{thisModule()};
};

std::uint32_t at(const ports::Pixels& pixels, int x, int y) {
    return pixels.argb.at(static_cast<std::size_t>(y * pixels.side + x));
}

TEST_F(Win32Pictures, LoadsBitmapsAtAnySize) {
    const auto picture = loaded(bmpFile(40, 40));
    for (const int side : {1, 16, 20, 40, 100}) {
        const ports::Pixels pixels = picture->render(side);
        ASSERT_EQ(pixels.side, side);
        ASSERT_EQ(pixels.argb.size(), static_cast<std::size_t>(side * side));
        if (side == 1) continue;
        EXPECT_EQ(at(pixels, 0, 0), kOpaqueRed) << side;
        EXPECT_EQ(at(pixels, side - 1, side - 1), kOpaqueBlue) << side;
        EXPECT_EQ(at(pixels, side / 2 - 1, side / 2), kOpaqueRed) << side;
        EXPECT_EQ(at(pixels, side / 2, side / 2), kOpaqueBlue) << side;
    }
    EXPECT_EQ(at(picture->render(1), 0, 0), 0xFF800080U);
}

TEST_F(Win32Pictures, KeepsProportions) {
    const ports::Pixels pixels = loaded(bmpFile(40, 20))->render(16);
    EXPECT_EQ(at(pixels, 0, 0), 0U);
    EXPECT_EQ(at(pixels, 0, 3), 0U);
    EXPECT_EQ(at(pixels, 0, 4), kOpaqueRed);
    EXPECT_EQ(at(pixels, 15, 11), kOpaqueBlue);
    EXPECT_EQ(at(pixels, 15, 12), 0U);
}

TEST_F(Win32Pictures, TakesTheBestImageOfAnIcon) {
    const auto picture = loaded(icoFile({{32, kOpaqueBlue}, {16, kOpaqueRed}}));
    EXPECT_EQ(at(picture->render(16), 8, 8), kOpaqueRed);
    EXPECT_EQ(at(picture->render(12), 6, 6), kOpaqueRed);
    EXPECT_EQ(at(picture->render(20), 8, 8), kOpaqueBlue);
    EXPECT_EQ(at(picture->render(64), 8, 8), kOpaqueBlue);
}

TEST_F(Win32Pictures, MultipliesColoursByAlpha) {
    const std::uint32_t half = at(loaded(icoFile({{16, 0x80FF0000U}}))->render(16), 8, 8);
    EXPECT_EQ(half >> 24, 0x80U);
    EXPECT_NEAR(static_cast<int>(half >> 16 & 0xFFU), 0x80, 1);
}

TEST_F(Win32Pictures, RefusesWhatIsNoPicture) {
    EXPECT_THROW(loaded("no picture"), std::runtime_error);
    EXPECT_THROW(loaded(""), std::runtime_error);
    EXPECT_THROW(loaded(bmpFile(40, 40).substr(0, 30)), std::runtime_error);
    EXPECT_THROW(pictures_.load(u"C:\\no such file.png"), std::runtime_error);
    EXPECT_THROW(pictures_.load(u""), std::runtime_error);
    EXPECT_THROW(pictures_.load(std::u16string_view(u"a\0b", 3)), std::invalid_argument);
    EXPECT_THROW(pictures_.builtIn(u"no such icon"), std::runtime_error);
    EXPECT_THROW(pictures_.builtIn(u""), std::runtime_error);
    EXPECT_THROW(pictures_.builtIn(u"#1"), std::runtime_error);
}

TEST_F(Win32Pictures, FindsIconsOfTheModuleByName) {
    // A program of its own with one more icon: this one, with an icon added to its resources.
    wchar_t self[MAX_PATH];
    GetModuleFileNameW(thisModule(), self, MAX_PATH);
    ASSERT_TRUE(CopyFileW(self, path().c_str(), FALSE));
    const std::string icon = icoFile({{16, kOpaqueRed}});
    std::string group = icon.substr(0, 18); // the directory, with a resource number in place of the offset
    append(group, std::uint16_t{900});
    std::string image = icon.substr(22);
    const HANDLE update = BeginUpdateResourceW(path().c_str(), FALSE);
    ASSERT_NE(update, nullptr);
    UpdateResourceW(update, RT_ICON, MAKEINTRESOURCEW(900), 0, image.data(),
                    static_cast<DWORD>(image.size()));
    UpdateResourceW(update, RT_GROUP_ICON, L"TEST ICON", 0, group.data(), static_cast<DWORD>(group.size()));
    ASSERT_TRUE(EndUpdateResourceW(update, FALSE));

    const HMODULE module = LoadLibraryExW(path().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(module, nullptr);
    Pictures own(module);
    const auto picture = own.builtIn(u"Test Icon");
    EXPECT_EQ(at(picture->render(16), 8, 8), kOpaqueRed);
    EXPECT_EQ(picture->render(24).side, 24);
    EXPECT_EQ(at(picture->render(24), 12, 12), kOpaqueRed);
    FreeLibrary(module);
}

TEST(Win32PixelImages, IconsKeepTheirPixels) {
    ports::Pixels pixels{8, std::vector<std::uint32_t>(64, 0x80800000U)};
    pixels.argb[0] = 0;
    pixels.argb[9] = kOpaqueBlue;
    const Image back = iconImage(makeIcon(pixels).get());
    ASSERT_EQ(back.width, 8);
    EXPECT_EQ(back.argb[0], 0U);
    EXPECT_EQ(back.argb[9], kOpaqueBlue);
    EXPECT_EQ(back.argb[20], 0x80800000U);
}

} // namespace
} // namespace cvlog::platform::win32
