#pragma once

#include "core/globals.h"
#include "widgets/form.h"

#include <memory>

namespace cvlog::details {

/// The window in which the log lies: that of the host's last tool when the log is docked, else the floating one, else
/// none. A docked log never falls back to the floating window.
class LogOwner {
public:
    /// May run foreign code of the host.
    static LogOwner find(core::Globals& globals) noexcept;

    void setEnabled(bool enabled) const noexcept;
    void setPointer(widgets::Pointer pointer) const noexcept;

private:
    hostapi::HostWindow window_;
    std::shared_ptr<host::FrmLog> form_;
};

/// Gives the window the input and the usual pointer in its end, on every path, also when it was never frozen.
class FrozenOwner {
public:
    explicit FrozenOwner(LogOwner owner) noexcept : owner_(std::move(owner)) {}
    ~FrozenOwner() {
        owner_.setEnabled(true);
        owner_.setPointer(widgets::Pointer::Default);
    }
    FrozenOwner(const FrozenOwner&) = delete;
    FrozenOwner& operator=(const FrozenOwner&) = delete;

    /// Takes the input from the window.
    void freeze() const noexcept {
        owner_.setEnabled(false);
        showBusy();
    }
    /// Others may have changed the pointer.
    void showBusy() const noexcept { owner_.setPointer(widgets::Pointer::Busy); }

private:
    LogOwner owner_;
};

} // namespace cvlog::details
