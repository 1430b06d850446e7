#pragma once

#include "platform/win32/windows_headers.h"

namespace cvlog::platform::win32 {

/// While it lives, windows are created from version 6 of the common controls, whatever the host's own
/// manifest asks for: activates the manifest that is resource 2 of our module. Without that resource nothing
/// changes.
class CommonControlsContext {
public:
    CommonControlsContext() noexcept;
    ~CommonControlsContext();
    CommonControlsContext(const CommonControlsContext&) = delete;
    CommonControlsContext& operator=(const CommonControlsContext&) = delete;
    bool isActive() const noexcept { return active_; }

private:
    HANDLE context_;
    ULONG_PTR cookie_ = 0;
    bool active_ = false;
};

} // namespace cvlog::platform::win32
