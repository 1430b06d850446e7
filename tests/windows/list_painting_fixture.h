#pragma once

#include "core/column_fit.h"
#include "platform/win32/pixel_images.h"
#include "platform/win32/screen_units.h"
#include "platform/win32/system_font.h"
#include "tests/windows/list_view_peer_fixture.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <ostream>
#include <string>
#include <vector>

namespace cvlog::platform::win32 {

inline constexpr RECT kArea{0, 0, 900, 200};
inline constexpr std::uint32_t kGreen = 0xFF00C000U;
inline constexpr std::uint32_t kStain = 0x123456;

/// An icon that is a green square.
struct Filled : ports::Picture {
    ports::Pixels render(int side) const override {
        return {side, std::vector<std::uint32_t>(static_cast<std::size_t>(side * side), kGreen)};
    }
};

/// Pixels as 0xRRGGBB, rows from the top.
struct Shown {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    std::uint32_t at(int x, int y) const {
        return pixels.at(static_cast<std::size_t>(y * width + x)) & 0xFFFFFFU;
    }
    Shown part(int left, int count) const {
        Shown result{count, height, {}};
        for (int y = 0; y < height; ++y)
            for (int x = left; x < left + count; ++x) result.pixels.push_back(at(x, y));
        return result;
    }
    bool has(std::uint32_t colour) const {
        return std::any_of(pixels.begin(), pixels.end(),
                           [colour](std::uint32_t pixel) { return (pixel & 0xFFFFFFU) == colour; });
    }
    /// The columns, from the left, that show anything but one colour.
    std::vector<int> columnsNot(std::uint32_t colour) const {
        std::vector<int> found;
        for (int x = 0; x < width; ++x) {
            bool other = false;
            for (int y = 0; y < height; ++y) other = other || at(x, y) != colour;
            if (other) found.push_back(x);
        }
        return found;
    }
    friend bool operator==(const Shown&, const Shown&) = default;
    friend void PrintTo(const Shown& shown, std::ostream* out) {
        const auto sum = std::accumulate(shown.pixels.begin(), shown.pixels.end(), std::uint64_t{});
        *out << shown.width << " x " << shown.height << " pixels that add up to " << sum;
    }
};

/// 0xRRGGBB of a system colour.
inline std::uint32_t systemColour(int index) {
    const COLORREF colour = GetSysColor(index);
    return static_cast<std::uint32_t>(GetRValue(colour)) << 16 |
           static_cast<std::uint32_t>(GetGValue(colour)) << 8 | GetBValue(colour);
}

struct Texts {
    std::u16string date;
    std::u16string name;
    std::u16string message;
};

/// A list of three columns and a green icon, wide enough for the widest cell, and what is seen of it.
class Win32ListPainting : public ListViewPeerFixture {
protected:
    Win32ListPainting() {
        // What the pointer lies over is drawn in another way, after a while.
        SetCursorPos(GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1);
        model_->setColumns({column(u"Date", 1500), column(u"Name", 1500), column(u"Message", 1500)});
        auto icons = std::make_shared<widgets::ImageList>();
        icons->add(u"green", std::make_shared<Filled>());
        model_->setSmallIcons(icons);
        SetWindowPos(showInWindow(), nullptr, 0, 0, kArea.right, kArea.bottom, SWP_NOZORDER);
        window_->moveTo(parent_, kArea); // large enough for the widest cell
    }

    static widgets::RowPtr rowOf(const Texts& texts, std::u16string_view icon) {
        const std::u16string key(icon);
        return widgets::makeRow(
            {texts.date,
             u"",
             key,
             {{u"Name", texts.name, u"", key, u""}, {u"Message", texts.message, u"", u"", u""}}});
    }

    int pixels(base::Twips twips) const { return toPixels(twips, windowDpi(window_->list())); }

    RECT areaOf(int row, int column) const {
        RECT bounds{};
        bounds.left = LVIR_BOUNDS;
        send(LVM_GETITEMRECT, static_cast<WPARAM>(row - 1), reinterpret_cast<LPARAM>(&bounds));
        RECT item{};
        SendMessageW(header(), HDM_GETITEMRECT, static_cast<WPARAM>(column - 1),
                     reinterpret_cast<LPARAM>(&item));
        return {item.left, bounds.top, item.right, bounds.bottom};
    }

    /// A cell, painted anew.
    Shown cell(int row, int column) const {
        takeMessages();
        RedrawWindow(window_->list(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        return cellAsItIs(row, column);
    }

    /// A cell as it is on the screen.
    Shown cellAsItIs(int row, int column) const { return shownIn(areaOf(row, column)); }

    /// What is on the screen in a part of the list, without having it drawn.
    Shown shownIn(const RECT& area) const {
        Shown shown{static_cast<int>(area.right - area.left), static_cast<int>(area.bottom - area.top), {}};
        const BITMAPINFO info = topDownBitmap(shown.width, shown.height);
        void* bits = nullptr;
        const BitmapHandle bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
        const MemoryDc dc(CreateCompatibleDC(nullptr));
        const HGDIOBJ previous = SelectObject(dc.get(), bitmap.get());
        const HDC screen = GetDC(window_->list());
        BitBlt(dc.get(), 0, 0, shown.width, shown.height, screen, area.left, area.top, SRCCOPY);
        ReleaseDC(window_->list(), screen);
        GdiFlush();
        const auto* first = static_cast<const std::uint32_t*>(bits);
        for (int i = 0; i < shown.width * shown.height; ++i) shown.pixels.push_back(first[i] & 0xFFFFFFU);
        SelectObject(dc.get(), previous);
        return shown;
    }

    std::vector<int> inked(int row, int column) const {
        return cell(row, column).columnsNot(systemColour(COLOR_WINDOW));
    }

    Shown allRows() const {
        takeMessages();
        RECT area{};
        GetClientRect(window_->list(), &area);
        RECT captions{};
        GetClientRect(header(), &captions);
        area.top = captions.bottom;
        return shownIn(area);
    }

    /// Colours a part of the list on the screen, so that its next drawing shows.
    void stain(const RECT& spot) const {
        const HDC screen = GetDC(window_->list());
        SetDCBrushColor(screen, RGB(0x12, 0x34, 0x56));
        FillRect(screen, &spot, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
        ReleaseDC(window_->list(), screen);
    }

    /// As a log shows an entry.
    void appendInSight(const Texts& texts) {
        const widgets::ListView::Batch batch(*model_);
        model_->append(rowOf(texts, u"green"));
        model_->scrollTo(model_->rowCount());
    }

    void widen(base::Twips width) {
        for (int i = 1; i <= model_->columnCount(); ++i) model_->setColumnWidth(i, width);
    }
};

} // namespace cvlog::platform::win32
