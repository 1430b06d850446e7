// The header of a list under a real mouse, and what it shows.

#include "platform/win32/pixel_images.h"
#include "platform/win32/screen_units.h"
#include "tests/windows/list_view_peer_fixture.h"

#include <string>
#include <vector>

namespace cvlog::platform::win32 {
namespace {

constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);

struct Filled : ports::Picture {
    explicit Filled(std::uint32_t colour) : argb(colour) {}
    ports::Pixels render(int side) const override {
        return {side, std::vector<std::uint32_t>(static_cast<std::size_t>(side * side), argb)};
    }
    std::uint32_t argb;
};

class Win32ListHeader : public ListViewPeerFixture {
protected:
    Win32ListHeader() {
        model_->setColumns({column(u"One", 1500), column(u"Two", 1500), column(u"Three", 1500)});
        fill(4);
        showInWindow();
        model_->repaint();
    }

    RECT captionOf(int column) const {
        RECT area{};
        SendMessageW(header(), HDM_GETITEMRECT, static_cast<WPARAM>(column - 1),
                     reinterpret_cast<LPARAM>(&area));
        return area;
    }
    int widthOf(int column) const {
        return static_cast<int>(send(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column - 1)));
    }
    void moveTo(int x) const {
        POINT point{x, 6};
        ClientToScreen(header(), &point);
        SetCursorPos(point.x, point.y);
        takeMessages();
    }
    static void press(DWORD flags) {
        INPUT input{};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = flags;
        SendInput(1, &input, sizeof input);
        takeMessages();
    }
    /// A drag of the mouse along the header.
    void drag(int from, int to) const {
        moveTo(from);
        press(MOUSEEVENTF_LEFTDOWN);
        for (int step = 1; step <= 8; ++step) moveTo(from + (to - from) * step / 8);
        press(MOUSEEVENTF_LEFTUP);
    }
    std::vector<int> positions() const {
        std::vector<int> found;
        for (int i = 1; i <= model_->columnCount(); ++i) found.push_back(model_->column(i).position);
        return found;
    }
    /// The window and the model agree about every column.
    void expectInStepWithHeader(const char* after) const {
        std::vector<int> order(static_cast<std::size_t>(model_->columnCount()));
        send(LVM_GETCOLUMNORDERARRAY, order.size(), reinterpret_cast<LPARAM>(order.data()));
        for (int place = 1; place <= model_->columnCount(); ++place)
            EXPECT_EQ(model_->column(order[static_cast<std::size_t>(place) - 1] + 1).position, place)
                << after;
        for (int i = 1; i <= model_->columnCount(); ++i)
            EXPECT_EQ(toPixels(model_->column(i).width, windowDpi(window_->list())), widthOf(i)) << after;
    }
    /// How many pixels of the caption have the colour.
    int pixelsOf(int column, COLORREF colour) const {
        takeMessages();
        const RECT area = captionOf(column);
        const HDC dc = GetDC(header());
        int found = 0;
        for (LONG y = area.top; y < area.bottom; ++y)
            for (LONG x = area.left; x < area.right; ++x)
                if (GetPixel(dc, static_cast<int>(x), static_cast<int>(y)) == colour) ++found;
        ReleaseDC(header(), dc);
        return found;
    }
};

TEST_F(Win32ListHeader, ColumnsThatTheMouseMovesMoveInTheModel) {
    drag(20, captionOf(3).right - 10);
    EXPECT_EQ(positions(), (std::vector<int>{3, 1, 2}));
    expectInStepWithHeader("moving to the end");
    drag(captionOf(1).left + 20, captionOf(2).left + 5);
    EXPECT_EQ(positions(), (std::vector<int>{1, 2, 3}));
    expectInStepWithHeader("moving back");
}

TEST_F(Win32ListHeader, ColumnsThatTheMouseWidensWidenInTheModel) {
    const int edge = static_cast<int>(captionOf(1).right);
    drag(edge, edge + 33);
    EXPECT_EQ(widthOf(1), edge + 33);
    expectInStepWithHeader("widening");
}

TEST_F(Win32ListHeader, AColumnThatTheMouseClosesCountsAsHiddenAndStaysClosed) {
    const int before = widthOf(1);
    drag(static_cast<int>(captionOf(2).right), static_cast<int>(captionOf(2).left) - 40);
    EXPECT_EQ(widthOf(2), 0);
    EXPECT_EQ(model_->column(2).width, 0);
    expectInStepWithHeader("closing");
    const int edge = static_cast<int>(captionOf(2).left);
    drag(edge + 2, edge + 40); // where a header offers to open what is hidden there
    EXPECT_EQ(model_->column(2).width, 0);
    expectInStepWithHeader("trying to open");
    drag(edge - 3, edge + 20);
    EXPECT_EQ(widthOf(1), before + 23) << "the neighbour still widens";
    EXPECT_EQ(model_->column(2).width, 0);
    model_->setColumnWidth(2, 1500);
    expectInStepWithHeader("showing it again");
}

TEST_F(Win32ListHeader, AColumnThatAnotherProgramOpensIsShownInTheModel) {
    model_->setColumnWidth(2, 0);
    send(LVM_SETCOLUMNWIDTH, 1, 50);
    EXPECT_GT(model_->column(2).width, 0);
    expectInStepWithHeader("opening");
    send(LVM_SETCOLUMNWIDTH, 1, 0);
    EXPECT_EQ(model_->column(2).width, 0);
}

TEST_F(Win32ListHeader, ADoubleClickOnADividerFitsTheColumnInTheModelToo) {
    moveTo(static_cast<int>(captionOf(1).right));
    for (int i = 0; i < 2; ++i) {
        press(MOUSEEVENTF_LEFTDOWN);
        press(MOUSEEVENTF_LEFTUP);
    }
    EXPECT_NE(widthOf(1), toPixels(1500, windowDpi(window_->list())));
    expectInStepWithHeader("fitting");
}

TEST_F(Win32ListHeader, ShowsTheSortIconInTheCaption) {
    auto icons = std::make_shared<widgets::ImageList>();
    icons->add(u"SortUp", std::make_shared<Filled>(0xFFFF0000U));
    icons->add(u"SortDown", std::make_shared<Filled>(0xFF0000FFU));
    icons->add(u"SortEmpty", std::make_shared<Filled>(0U));
    model_->setHeaderIcons(icons);
    const int side = smallIconSide(windowDpi(window_->list()));
    for (int i = 1; i <= 3; ++i) model_->setColumnIcon(i, u"SortEmpty");
    model_->setColumnIcon(2, u"SortDown");
    EXPECT_EQ(pixelsOf(2, kBlue), side * side);
    for (const int other : {1, 3}) EXPECT_EQ(pixelsOf(other, kBlue) + pixelsOf(other, kRed), 0);
    model_->setColumnIcon(2, u"SortUp");
    EXPECT_EQ(pixelsOf(2, kRed), side * side);
    EXPECT_EQ(pixelsOf(2, kBlue), 0);
    model_->setColumnIcon(2, u"");
    EXPECT_EQ(pixelsOf(2, kRed), 0);
}

} // namespace
} // namespace cvlog::platform::win32
