#pragma once

#include "base/text.h"
#include "platform/win32/list_view_window.h"
#include "platform/win32/services.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace cvlog::platform::win32 {

inline widgets::Column column(std::u16string_view caption, base::Twips width) {
    widgets::Column made;
    made.key = made.caption = caption;
    made.width = width;
    return made;
}

inline void takeMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

/// A list with its window, and questions to both.
class ListViewPeerFixture : public testing::Test {
protected:
    ListViewPeerFixture() {
        model_ = makeModel();
        window_ = static_cast<ListViewWindow*>(model_->peer());
    }

    std::unique_ptr<widgets::ListView> makeModel() {
        auto model = std::make_unique<widgets::ListView>(services_.collator, services_.measurer);
        model->setColumns({column(u"Date", 1500), column(u"Text", 3000), column(u"Hidden", 0)});
        model->attach(services_.peers.makeListView(*model));
        return model;
    }

    static widgets::RowPtr row(int number) {
        const std::u16string text = u"row " + base::decimal(number);
        return widgets::makeRow({text, u"", u"", {{u"Text", u"cell of " + text, u"", u"", u""}}});
    }

    void fill(int count) {
        const widgets::ListView::Batch batch(*model_);
        for (int i = 1; i <= count; ++i) model_->append(row(i));
    }

    LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return SendMessageW(window_->list(), message, wParam, lParam);
    }
    HWND header() const { return reinterpret_cast<HWND>(send(LVM_GETHEADER)); }

    /// Everything of selection and focus, asked from the window as any client would.
    void expectInStep(const char* after) const {
        ASSERT_EQ(send(LVM_GETITEMCOUNT), model_->rowCount()) << after;
        ASSERT_EQ(send(LVM_GETSELECTEDCOUNT), model_->selectedCount()) << after;
        int previous = -1;
        for (;;) {
            const int next =
                static_cast<int>(send(LVM_GETNEXTITEM, static_cast<WPARAM>(previous), LVNI_SELECTED));
            const int end = next < 0 ? model_->rowCount() : next;
            for (int i = previous + 1; i < end; ++i)
                ASSERT_FALSE(model_->isSelected(i + 1)) << after << ": row " << i + 1;
            if (next < 0) break;
            ASSERT_TRUE(model_->isSelected(next + 1)) << after << ": row " << next + 1;
            previous = next;
        }
        ASSERT_EQ(send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED) + 1, model_->focusedRow())
            << after;
    }

    /// What a client other than the component does to the window; for the component that is the user.
    void userSets(int index, UINT state, UINT mask) const {
        LVITEMW item{};
        item.state = state;
        item.stateMask = mask;
        send(LVM_SETITEMSTATE, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
    }

    /// A visible top-level window with the list in it and the keyboard focus.
    HWND showInWindow() {
        parent_ = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 50, 50, 400, 300, nullptr,
                                  nullptr, nullptr, nullptr);
        window_->moveTo(parent_, {0, 0, 400, 300});
        SetForegroundWindow(parent_);
        model_->takeFocus();
        takeMessages();
        return parent_;
    }

    void key(WORD code) const {
        PostMessageW(window_->list(), WM_KEYDOWN, code, 1);
        PostMessageW(window_->list(), WM_KEYUP, code, static_cast<LPARAM>(0xC0000001U));
        takeMessages();
    }

    LPARAM middleOfRow(int position) const {
        RECT area{};
        area.left = LVIR_LABEL;
        send(LVM_GETITEMRECT, static_cast<WPARAM>(position - 1), reinterpret_cast<LPARAM>(&area));
        return MAKELPARAM(area.left + 5, (area.top + area.bottom) / 2);
    }

    void TearDown() override {
        model_.reset();
        if (parent_) DestroyWindow(parent_);
        takeMessages();
    }

    Services services_;
    std::unique_ptr<widgets::ListView> model_;
    ListViewWindow* window_ = nullptr;
    HWND parent_ = nullptr;
};

} // namespace cvlog::platform::win32
