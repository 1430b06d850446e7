// The list's window shows the model's columns, icons, texts and colours.

#include "platform/win32/screen_units.h"
#include "tests/windows/list_view_peer_fixture.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace cvlog::platform::win32 {
namespace {

class Win32ListViewLook : public ListViewPeerFixture {};

TEST_F(Win32ListViewLook, AnswersTextFromTheModel) {
    model_->append(widgets::makeRow(
        {u"a\tb" + std::u16string(1, u'\0') + u"c", u"", u"", {{u"Text", u"second", u"", u"", u""}}}));
    const auto textOf = [this](int column, int room) {
        std::vector<wchar_t> buffer(static_cast<std::size_t>(room), L'#');
        LVITEMW item{};
        item.iSubItem = column;
        item.pszText = buffer.data();
        item.cchTextMax = room;
        send(LVM_GETITEMTEXTW, 0, reinterpret_cast<LPARAM>(&item));
        return std::wstring(item.pszText);
    };
    EXPECT_EQ(textOf(0, 50), L"a b c");
    EXPECT_EQ(textOf(1, 50), L"second");
    EXPECT_EQ(textOf(1, 4), L"sec");
    EXPECT_EQ(textOf(2, 50), L"");
}

TEST_F(Win32ListViewLook, ShowsColumns) {
    const int dpi = windowDpi(window_->list());
    const auto widthOf = [this](int column) {
        return static_cast<int>(send(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column - 1)));
    };
    EXPECT_EQ(widthOf(1), toPixels(1500, dpi));
    EXPECT_EQ(widthOf(2), toPixels(3000, dpi));
    EXPECT_EQ(widthOf(3), 0);
    model_->setColumnWidth(2, 2250);
    EXPECT_EQ(widthOf(2), toPixels(2250, dpi));

    model_->setColumnPosition(3, 1);
    std::vector<int> order(3);
    send(LVM_GETCOLUMNORDERARRAY, 3, reinterpret_cast<LPARAM>(order.data()));
    EXPECT_EQ(order, (std::vector<int>{2, 0, 1}));

    model_->setColumnAlignment(2, widgets::Alignment::Right);
    LVCOLUMNW shown{};
    shown.mask = LVCF_FMT;
    send(LVM_GETCOLUMNW, 1, reinterpret_cast<LPARAM>(&shown));
    EXPECT_EQ(shown.fmt & LVCFMT_JUSTIFYMASK, LVCFMT_RIGHT);

    model_->setColumns({column(u"Only", 700)});
    EXPECT_EQ(SendMessageW(header(), HDM_GETITEMCOUNT, 0, 0), 1);
    EXPECT_EQ(widthOf(1), toPixels(700, dpi));
}

TEST_F(Win32ListViewLook, ShowsIconsInTheHeader) {
    struct Filled : ports::Picture {
        ports::Pixels render(int side) const override {
            return {side, std::vector<std::uint32_t>(static_cast<std::size_t>(side * side), 0xFFFF0000U)};
        }
    };
    auto icons = std::make_shared<widgets::ImageList>();
    icons->add(u"up", std::make_shared<Filled>());
    icons->add(u"down", std::make_shared<Filled>());
    model_->setHeaderIcons(icons);
    const auto shown = [this](int column) {
        HDITEMW item{};
        item.mask = HDI_FORMAT | HDI_IMAGE;
        SendMessageW(header(), HDM_GETITEMW, static_cast<WPARAM>(column - 1),
                     reinterpret_cast<LPARAM>(&item));
        return (item.fmt & HDF_IMAGE) && (item.fmt & HDF_BITMAP_ON_RIGHT) ? item.iImage : -1;
    };
    EXPECT_EQ(shown(1), -1);
    model_->setColumnIcon(1, u"down");
    EXPECT_EQ(shown(1), 1);
    model_->setColumnAlignment(1, widgets::Alignment::Center);
    EXPECT_EQ(shown(1), 1);
    model_->setColumnIcon(1, u"");
    EXPECT_EQ(shown(1), -1);
}

TEST_F(Win32ListViewLook, RendersIconsThatAreAddedLater) {
    struct Filled : ports::Picture {
        ports::Pixels render(int side) const override {
            return {side, std::vector<std::uint32_t>(static_cast<std::size_t>(side * side), 0xFF00FF00U)};
        }
    };
    struct Broken : ports::Picture {
        ports::Pixels render(int) const override { throw std::runtime_error("broken"); }
    };
    auto icons = std::make_shared<widgets::ImageList>();
    icons->add(u"one", std::make_shared<Filled>());
    model_->setSmallIcons(icons);
    icons->add(u"broken", std::make_shared<Broken>());
    icons->add(u"three", std::make_shared<Filled>());
    model_->append(widgets::makeRow({u"a", u"", u"THREE", {{u"Text", u"b", u"", u"one", u""}}}));
    const auto iconOf = [this](int column) {
        LVITEMW item{};
        item.mask = LVIF_IMAGE;
        item.iSubItem = column - 1;
        send(LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        return item.iImage;
    };
    EXPECT_EQ(iconOf(1), 2);
    EXPECT_EQ(iconOf(2), 0);
    EXPECT_EQ(iconOf(3), I_IMAGENONE);
    const auto images = reinterpret_cast<HIMAGELIST>(send(LVM_GETIMAGELIST, LVSIL_SMALL));
    EXPECT_EQ(ImageList_GetImageCount(images), 3);

    showInWindow();
    model_->repaint();
    RECT icon{};
    icon.left = LVIR_ICON;
    send(LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&icon));
    const HDC dc = GetDC(window_->list());
    const COLORREF middle = GetPixel(dc, (icon.left + icon.right) / 2, (icon.top + icon.bottom) / 2);
    ReleaseDC(window_->list(), dc);
    EXPECT_EQ(middle, RGB(0, 255, 0));
}

TEST_F(Win32ListViewLook, ShowsColoursFontAndEnabledState) {
    model_->setColours({0x00112233U, 0x80000011U});
    EXPECT_EQ(static_cast<COLORREF>(send(LVM_GETBKCOLOR)), 0x00112233U);
    EXPECT_EQ(static_cast<COLORREF>(send(LVM_GETTEXTCOLOR)), GetSysColor(COLOR_GRAYTEXT));
    model_->setEnabled(false);
    EXPECT_FALSE(IsWindowEnabled(window_->list()));
    model_->setEnabled(true);
    EXPECT_TRUE(IsWindowEnabled(window_->list()));
    model_->setFont({u"Tahoma", 20.0F, 700, true});
    LOGFONTW shown{};
    GetObjectW(reinterpret_cast<HFONT>(send(WM_GETFONT)), sizeof shown, &shown);
    EXPECT_STREQ(shown.lfFaceName, L"Tahoma");
    EXPECT_EQ(shown.lfHeight, -MulDiv(20, windowDpi(window_->list()), 72));
    EXPECT_EQ(shown.lfWeight, 700);
    EXPECT_TRUE(shown.lfItalic);
}

TEST_F(Win32ListViewLook, FollowsTheSystemsColoursInsideAnyParent) {
    showInWindow();
    const int element = COLOR_WINDOW;
    const COLORREF before = GetSysColor(element);
    const COLORREF other = before ^ 0x00010101U;
    ASSERT_TRUE(SetSysColors(1, &element, &other));
    SendMessageW(services_.host.handle(), WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_EQ(static_cast<COLORREF>(send(LVM_GETBKCOLOR)), other);
    SetSysColors(1, &element, &before);
    SendMessageW(services_.host.handle(), WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_EQ(static_cast<COLORREF>(send(LVM_GETBKCOLOR)), before);
}

} // namespace
} // namespace cvlog::platform::win32
