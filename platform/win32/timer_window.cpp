#include "platform/win32/timer_window.h"

#include <algorithm>
#include <utility>

namespace cvlog::platform::win32 {

void TimerWindow::start(int milliseconds) {
    const UINT_PTR started = host_.startTimer(static_cast<UINT>(std::max(milliseconds, 1)), *this);
    stop(); // the one before runs on when there is no new one
    running_ = started;
}

void TimerWindow::stop() noexcept { host_.stopTimer(std::exchange(running_, 0)); }

} // namespace cvlog::platform::win32
