#pragma once

#include "core/cv_log.h"
#include "platform/headless/headless_fonts.h"
#include "platform/headless/headless_objects.h"
#include "platform/headless/recording_help_viewer.h"
#include "tests/support/fake_engine.h"
#include "tests/support/fake_host.h"
#include "tests/windows/form_window_fixture.h"
#include "tests/windows/real_input.h"
#include "view/log_control.h"

#include <gtest/gtest.h>

#include <memory>

namespace cvlog::platform::win32 {

/// The services of Windows, but help that nobody has to close.
struct LogWindowServices : Services {
    headless::CallGate gate;
    headless::HeadlessFonts fonts{gate};
    headless::RecordingHelpViewer helpViewer{gate};
    headless::HeadlessObjects objects{gate};
};

using tests::menuWindow;
using tests::pressKey;
using tests::typeKey;

/// A log in a window of its own, with the focus and a host, to be used with real keys and the mouse.
class LogWindowTest : public testing::Test {
protected:
    void SetUp() override {
        globals_.store.Workspace = hostapi::Workspace(host_.workspace);
        globals_.store.CurrentLog = log_;
        control_ = std::make_shared<view::LogControl>(globals_);
        parent_ = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 60, 40, 500, 200, nullptr,
                                  nullptr, nullptr, nullptr);
        window().moveTo(parent_, {0, 0, 500, 200});
        SetForegroundWindow(parent_);
        control_->lvLog().takeFocus();
        takeMessages();
    }
    void TearDown() override {
        takeMessages();
        EXPECT_EQ(menuWindow(), nullptr);
        EXPECT_EQ(globals_.menuHelp.MenuHelpHook, nullptr);
        control_.reset();
        globals_.store.CurrentLog.reset();
        if (IsWindow(parent_)) DestroyWindow(parent_);
        takeMessages();
        host_.workspace.reset();
    }
    ListViewWindow& window() { return *static_cast<ListViewWindow*>(control_->lvLog().peer()); }
    void addEntry(const char16_t* errorsFile) {
        control_->lvLog().append(widgets::makeRow(
            {u"2024-05-17 10:00:00", u"P1", u"Bad", {{u"Message", u"message", errorsFile, {}, {}}}}));
        const int row = control_->lvLog().rowCount();
        control_->lvLog().select(row, true);
        control_->lvLog().focusRow(row);
    }
    static void shiftF10() {
        pressKey(VK_SHIFT, true);
        typeKey(VK_F10);
        pressKey(VK_SHIFT, false);
    }

    LogWindowServices services_;
    tests::CallCounter calls_;
    tests::FakeEngine engine_{calls_};
    tests::FakeHost host_{calls_};
    core::Globals globals_{core::Platform::of(services_, engine_)};
    std::shared_ptr<core::CVLog> log_ = std::make_shared<core::CVLog>(globals_);
    std::shared_ptr<view::LogControl> control_;
    HWND parent_ = nullptr;
};

} // namespace cvlog::platform::win32
