#pragma once

#include "core/cv_log.h"
#include "platform/headless/headless_objects.h"
#include "platform/headless/headless_platform.h"
#include "platform/win32/list_view_window.h"
#include "platform/win32/services.h"
#include "view/log_control.h"

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace cvlog::bench {

/// Runs what waits, and then something else.
class PumpWithGuest final : public ports::MessagePump {
public:
    explicit PumpWithGuest(ports::MessagePump& pump) : pump_(pump) {}
    bool inputWaiting() override { return pump_.inputWaiting(); }
    bool yield() override {
        const bool programGoesOn = pump_.yield();
        if (guest) guest();
        return programGoesOn;
    }
    std::function<void()> guest; // none: nothing else

private:
    ports::MessagePump& pump_;
};

/// A log whose lists have windows, without a host and without a database: what an entry costs is what showing it
/// costs. A series is running, so that rows stay.
class ShownLog {
public:
    explicit ShownLog(int lists);
    ShownLog(const ShownLog&) = delete;
    ShownLog& operator=(const ShownLog&) = delete;
    ~ShownLog();

    /// Adds one entry as a host's report does.
    void add();
    /// Adds that many rows to all lists at once, of the same kind.
    void fill(int rows);
    std::shared_ptr<view::LogControl> makeControl() { return std::make_shared<view::LogControl>(globals_); }

    core::Globals& globals() noexcept { return globals_; }
    /// Files in memory, which its entries may refer to.
    platform::headless::MemoryFileSystem& files() noexcept { return platform_.files; }
    PumpWithGuest& pump() noexcept { return pump_; }
    widgets::ListView& list(int index = 0) { return controls_[static_cast<std::size_t>(index)]->lvLog(); }
    platform::win32::ListViewWindow& window(int index = 0) { return windowOf(list(index)); }
    static platform::win32::ListViewWindow& windowOf(widgets::ListView& list) {
        return *static_cast<platform::win32::ListViewWindow*>(list.peer());
    }

private:
    platform::win32::Services services_;
    PumpWithGuest pump_{services_.pump};
    platform::headless::HeadlessPlatform platform_; // what the system has no part in
    platform::headless::HeadlessObjects objects_{platform_.gate};
    std::unique_ptr<store::Engine> engine_;
    core::Globals globals_;
    std::shared_ptr<core::CVLog> log_;
    std::vector<std::shared_ptr<view::LogControl>> controls_;
};

} // namespace cvlog::bench
