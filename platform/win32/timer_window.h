#pragma once

#include "platform/win32/host_window.h"
#include "widgets/timer.h"

namespace cvlog::platform::win32 {

/// A timer of the system on the host window, which outlives it: it calls from whatever loop takes messages.
class TimerWindow : public widgets::TimerPeer, private TimerReceiver {
public:
    TimerWindow(widgets::Timer& model, HostWindow& host) noexcept : model_(model), host_(host) {}
    ~TimerWindow() override { stop(); }
    TimerWindow(const TimerWindow&) = delete;
    TimerWindow& operator=(const TimerWindow&) = delete;

    void start(int milliseconds) override;
    void stop() noexcept override;

private:
    void timeCame() override { model_.tick(); } // which may end this

    widgets::Timer& model_;
    HostWindow& host_;
    UINT_PTR running_ = 0;
};

} // namespace cvlog::platform::win32
