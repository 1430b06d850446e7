#include "platform/win32/clock.h"

#include "platform/win32/windows_headers.h"

namespace cvlog::platform::win32 {

base::LocalTime Clock::now() {
    SYSTEMTIME time{};
    GetLocalTime(&time);
    return base::localTime(time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond);
}

} // namespace cvlog::platform::win32
