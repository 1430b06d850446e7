#pragma once

#include "details/expand_entry.h"
#include "details/frm_cancel.h"
#include "platform/win32/handles.h"
#include "platform/win32/wide_text.h"
#include "tests/support/fake_window.h"
#include "tests/windows/com_test.h"
#include "tests/windows/from_the_loop.h"
#include "tests/windows/log_window_fixture.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cvlog::platform::win32 {

struct HostsSink : automation::EventSink {
    static constexpr std::int32_t kShowErrors = 4;

    void onEvent(std::int32_t id, std::span<automation::Value> arguments) override {
        ids.push_back(id);
        if (id == kShowErrors)
            errors.emplace_back(automation::toText(arguments[0]), automation::toInt32(arguments[1]));
    }
    std::vector<std::int32_t> ids;
    std::vector<std::pair<std::u16string, std::int32_t>> errors; // the objects and numbers of ShowErrors
};

/// A log in a window, with a real file for an entry to be opened into.
class ExpansionFixture : public LogWindowTest {
protected:
    static constexpr std::int32_t kGotFocus = 2;
    static constexpr int kLong = 5'000; // lines, enough for the strip to be seen

    ExpansionFixture() : path_(folder_.path() + L"\\given.errors") {}
    void SetUp() override {
        LogWindowTest::SetUp();
        log_->events().advise(sink_);
    }
    void TearDown() override {
        EXPECT_FALSE(globals_.ExpansionBusy);
        EXPECT_EQ(globals_.frmCancel, nullptr);
        expectReleased(path_);
        LogWindowTest::TearDown();
    }
    /// Nobody has the file open, if there is one.
    static void expectReleased(const std::wstring& path) {
        if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES) return;
        const FileHandle alone(CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                           FILE_FLAG_BACKUP_SEMANTICS, nullptr));
        EXPECT_TRUE(alone.isOpen()) << "the file is released";
    }

    void write(std::string_view content) {
        std::ofstream(std::filesystem::path(path_), std::ios::binary) << content;
    }
    static std::string lines(int count) {
        std::string all;
        for (int line = 1; line <= count; ++line) all += "line " + std::to_string(line) + "\n";
        return all;
    }
    void writeLines(int count) { write(lines(count)); }
    void addOpenable() { addOpenable(path_); }
    void addOpenable(const std::wstring& path) { addEntry(fromWide(path).c_str()); }
    widgets::ListView& list() { return control_->lvLog(); }
    std::u16string message(int row) {
        const widgets::RowContent& content = list().row(row);
        return std::u16string(content.cellText(content.cellOf(u"Message")));
    }
    /// The errors file that the row refers to.
    std::u16string reference(int row) {
        const widgets::RowContent& content = list().row(row);
        return std::u16string(content.cellTag(content.cellOf(u"Message")));
    }
    void expand() { details::ExpandEntry(globals_, globals_.LogViews.first(), 1); }

    HWND strip() const {
        return globals_.frmCancel ? static_cast<FormWindow*>(globals_.frmCancel->form().peer())->window()
                                  : nullptr;
    }
    bool stripIsUp() const { return strip() && IsWindowVisible(strip()); }
    /// Opens the entry and acts once when the strip has come up.
    void expandAndMeanwhile(const std::function<void()>& act) {
        tests::FromTheLoop meanwhile([&] {
            if (!stripIsUp()) return false;
            act();
            return true;
        });
        expand();
        EXPECT_TRUE(meanwhile.done()) << "the strip was there";
    }

    void choose(int row) {
        list().selectAll(false);
        list().select(row, true);
        list().focusRow(row);
    }
    POINT middleOf(int row) {
        list().scrollTo(row);
        takeMessages();
        RECT area{};
        area.left = LVIR_LABEL;
        SendMessageW(window().list(), LVM_GETITEMRECT, static_cast<WPARAM>(row - 1),
                     reinterpret_cast<LPARAM>(&area));
        POINT middle{area.left + 20, (area.top + area.bottom) / 2};
        ClientToScreen(window().list(), &middle);
        return middle;
    }
    /// As a mouse does it, over a row.
    void press(int row, std::initializer_list<DWORD> buttons) {
        const POINT place = middleOf(row);
        SetCursorPos(place.x, place.y);
        takeMessages();
        for (const DWORD button : buttons) {
            INPUT input{};
            input.type = INPUT_MOUSE;
            input.mi.dwFlags = button;
            SendInput(1, &input, sizeof input);
        }
        takeMessages();
    }
    void doubleClick(int row) {
        press(row, {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP, MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP});
    }
    int countOf(std::int32_t event) const {
        return static_cast<int>(std::count(sink_->ids.begin(), sink_->ids.end(), event));
    }

    tests::ProjectFolder folder_;
    std::wstring path_;
    std::shared_ptr<HostsSink> sink_ = std::make_shared<HostsSink>();
};

} // namespace cvlog::platform::win32
