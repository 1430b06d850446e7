// The list's window shows the rows and the selection that the model holds, after every change.

#include "tests/windows/list_view_peer_fixture.h"

#include <random>
#include <string>
#include <utility>
#include <vector>

namespace cvlog::platform::win32 {
namespace {

class Win32ListViewPeer : public ListViewPeerFixture {};

TEST_F(Win32ListViewPeer, ShowsRowsThatComeAndGo) {
    fill(10);
    expectInStep("filling");
    model_->insert(1, row(11));
    expectInStep("inserting");
    model_->remove(5);
    expectInStep("removing");
    model_->clear();
    expectInStep("clearing");
}

TEST_F(Win32ListViewPeer, KeepsTheUsersSelectionOnItsRowsWhenPositionsShift) {
    fill(20);
    userSets(4, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    userSets(9, LVIS_SELECTED, LVIS_SELECTED);
    ASSERT_EQ(model_->selectedCount(), 2);
    ASSERT_EQ(model_->focusedRow(), 5);
    const widgets::RowId first = model_->idAt(5);
    const widgets::RowId second = model_->idAt(10);

    model_->insert(1, row(100));
    model_->insert(8, row(101));
    model_->insert(22, row(102));
    expectInStep("inserting above, between and below");
    EXPECT_TRUE(model_->isSelected(model_->positionOf(first)));
    EXPECT_TRUE(model_->isSelected(model_->positionOf(second)));
    EXPECT_EQ(model_->focusedRow(), model_->positionOf(first));

    model_->remove(model_->positionOf(first));
    expectInStep("removing a selected row");
    EXPECT_EQ(model_->selectedCount(), 1);
    EXPECT_TRUE(model_->isSelected(model_->positionOf(second)));
}

TEST_F(Win32ListViewPeer, SortingMovesTheSelectionAlong) {
    fill(50);
    userSets(30, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    const widgets::RowId chosen = model_->idAt(31);
    model_->setSort(0, widgets::SortOrder::Descending);
    model_->setSorted(true);
    expectInStep("sorting");
    EXPECT_EQ(model_->selectedRow(), model_->positionOf(chosen));
    EXPECT_NE(model_->selectedRow(), 31);
}

TEST_F(Win32ListViewPeer, RowsThatVanishLeaveTheSelection) {
    fill(10);
    userSets(-1, LVIS_SELECTED, LVIS_SELECTED);
    EXPECT_EQ(model_->selectedCount(), 10);
    {
        const widgets::ListView::Batch batch(*model_);
        while (model_->rowCount() > 3) model_->remove(model_->rowCount());
    }
    expectInStep("shrinking");
    fill(7);
    expectInStep("growing again");
    EXPECT_EQ(model_->selectedCount(), 3);
    model_->clear();
    fill(5);
    expectInStep("refilling");
    EXPECT_EQ(model_->selectedCount(), 0);
}

TEST_F(Win32ListViewPeer, StaysInStepThroughRandomChanges) {
    std::mt19937 random(7);
    const auto pick = [&random](int count) {
        return static_cast<int>(random() % static_cast<unsigned>(count));
    };
    fill(30);
    for (int step = 0; step < 1500; ++step) {
        const widgets::ListView::Batch batch(*model_);
        const int rows = model_->rowCount();
        switch (rows == 0 ? 0 : pick(9)) {
        case 0:
            model_->insert(pick(rows + 1) + 1, row(step), pick(3) == 0);
            break;
        case 1:
            model_->remove(pick(rows) + 1);
            break;
        case 2:
            userSets(pick(rows), LVIS_SELECTED, LVIS_SELECTED);
            break;
        case 3:
            userSets(pick(rows), 0, LVIS_SELECTED);
            break;
        case 4:
            userSets(pick(rows), LVIS_FOCUSED, LVIS_FOCUSED);
            break;
        case 5:
            model_->select(pick(rows) + 1, pick(2) == 0);
            break;
        case 6:
            model_->focusRow(pick(rows + 1));
            break;
        case 7:
            if (pick(20) == 0) userSets(-1, pick(2) == 0 ? LVIS_SELECTED : 0, LVIS_SELECTED);
            if (pick(40) == 0) model_->clear();
            break;
        default:
            for (int i = pick(4); i > 0; --i) model_->insert(pick(rows + 1) + 1, row(step));
            break;
        }
        if (testing::Test::HasFatalFailure()) break;
    }
    expectInStep("the last step");
}

TEST_F(Win32ListViewPeer, IsInStepAfterEveryRandomChange) {
    std::mt19937 random(11);
    const auto pick = [&random](int count) {
        return static_cast<int>(random() % static_cast<unsigned>(count));
    };
    fill(12);
    for (int step = 0; step < 600 && !HasFatalFailure(); ++step) {
        const int rows = model_->rowCount();
        switch (rows == 0 ? 0 : pick(7)) {
        case 0:
        case 1:
            model_->insert(pick(rows + 1) + 1, row(step), pick(3) == 0);
            break;
        case 2:
            model_->remove(pick(rows) + 1);
            break;
        case 3:
            userSets(pick(rows), pick(2) == 0 ? LVIS_SELECTED : 0, LVIS_SELECTED);
            break;
        case 4:
            userSets(pick(rows), LVIS_FOCUSED, LVIS_FOCUSED);
            break;
        case 5:
            model_->select(pick(rows) + 1, pick(2) == 0);
            break;
        default:
            model_->focusRow(pick(rows + 1));
            break;
        }
        expectInStep(("step " + std::to_string(step)).c_str());
    }
}

TEST_F(Win32ListViewPeer, KeepsAHundredThousandRowsInStep) {
    fill(100'000);
    {
        const widgets::ListView::Batch batch(*model_);
        for (int i = 1; i <= 100'000; i += 2) model_->select(i, true);
    }
    expectInStep("selecting every other row");
    model_->insert(1, row(0));
    expectInStep("inserting above");
    model_->insert(50'000, row(0));
    expectInStep("inserting in the middle");
    model_->append(row(0));
    expectInStep("inserting below");
    {
        const widgets::ListView::Batch batch(*model_);
        for (int i = model_->rowCount(); i >= 1; --i)
            if (model_->isSelected(i)) model_->remove(i);
    }
    expectInStep("removing the selected rows");
    userSets(-1, LVIS_SELECTED, LVIS_SELECTED);
    EXPECT_EQ(model_->selectedCount(), model_->rowCount());
    model_->insert(10, row(0));
    expectInStep("inserting into a whole selection");
    model_->clear();
    expectInStep("clearing");
}

TEST_F(Win32ListViewPeer, KeepsItsHandleFromParentToParent) {
    fill(100);
    const std::int32_t handle = model_->windowHandle();
    const HWND list = window_->list();
    EXPECT_NE(handle, 0);
    for (int round = 0; round < 3; ++round) {
        const HWND parent = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 300, 200, nullptr,
                                            nullptr, nullptr, nullptr);
        window_->moveTo(parent, {10, 20, 210, 120});
        EXPECT_TRUE(IsChild(parent, list));
        EXPECT_TRUE(IsWindowVisible(list));
        RECT area{};
        GetWindowRect(list, &area);
        MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&area), 2);
        EXPECT_EQ(area.left, 10);
        EXPECT_EQ(area.top, 20);
        EXPECT_EQ(area.right, 210);
        EXPECT_EQ(area.bottom, 120);
        model_->select(round + 1, true);
        expectInStep("moving");
        window_->park();
        EXPECT_FALSE(IsWindowVisible(list));
        DestroyWindow(parent);
        EXPECT_EQ(model_->windowHandle(), handle);
        EXPECT_TRUE(IsWindow(list));
        expectInStep("parking");
    }
}

TEST_F(Win32ListViewPeer, OutlivesAParentThatTookItsWindowAlong) {
    showInWindow();
    fill(3);
    DestroyWindow(std::exchange(parent_, nullptr));
    EXPECT_EQ(window_->list(), nullptr);
    EXPECT_EQ(model_->windowHandle(), 0);
    model_->append(row(4));
    model_->repaint();
    EXPECT_EQ(model_->rowCount(), 4);
}

TEST_F(Win32ListViewPeer, ScrollsOnlyWhenAsked) {
    fill(500);
    EXPECT_EQ(model_->peer()->topRow(), 1);
    model_->scrollTo(400);
    const int top = model_->peer()->topRow();
    EXPECT_GT(top, 300);
    EXPECT_LE(top, 400);
    model_->focusRow(1);
    model_->select(1, true);
    EXPECT_EQ(model_->peer()->topRow(), top);
    model_->clear();
    EXPECT_EQ(model_->peer()->topRow(), 0);
    {
        const widgets::ListView::Batch batch(*model_);
        fill(500);
        model_->scrollTo(250);
        for (int i = 0; i < 100; ++i) model_->insert(1, row(i));
    }
    EXPECT_GT(model_->peer()->topRow(), 300);
    EXPECT_LE(model_->peer()->topRow(), 350);
}

TEST_F(Win32ListViewPeer, ScrollsInTurnInABatchSoThatARowFromAboveComesToTheTop) {
    {
        const widgets::ListView::Batch batch(*model_);
        fill(500);
        model_->scrollTo(500);
        model_->scrollTo(250);
    }
    EXPECT_EQ(model_->peer()->topRow(), 250);
}

TEST_F(Win32ListViewPeer, GivesBackEveryHandle) {
    const auto rounds = [this](int count) {
        for (int i = 0; i < count; ++i) {
            Services services;
            widgets::ListView model(services.collator, services.measurer);
            model.setColumns({column(u"A", 1000)});
            struct Filled : ports::Picture {
                ports::Pixels render(int side) const override {
                    return {side,
                            std::vector<std::uint32_t>(static_cast<std::size_t>(side * side), 0xFF00FF00U)};
                }
            };
            auto icons = std::make_shared<widgets::ImageList>();
            icons->add(u"one", std::make_shared<Filled>());
            model.setSmallIcons(icons);
            model.setHeaderIcons(icons);
            model.attach(services.peers.makeListView(model));
            model.setFont({u"Tahoma", 12.0F});
            model.append(row(i));
            model.repaint();
            takeMessages();
        }
    };
    rounds(3);
    const DWORD gdi = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    const DWORD user = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    rounds(100);
    EXPECT_LE(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS), gdi + 2);
    EXPECT_LE(GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS), user + 2);
}

} // namespace
} // namespace cvlog::platform::win32
