#pragma once

#include "platform/win32/windows_headers.h"

#include <memory>
#include <vector>

namespace cvlog::platform::win32 {

/// The time in which a window alone takes input: from its making on, all other visible windows of the thread are
/// disabled, and enabled again at the end.
class ModalRun {
public:
    explicit ModalRun(HWND window);
    ~ModalRun() { end(); }
    ModalRun(const ModalRun&) = delete;
    ModalRun& operator=(const ModalRun&) = delete;

    bool ended() const noexcept { return ended_; }
    /// Before the window goes, so that another of the program's windows is there to be active next: its owner, or
    /// the one that was active before.
    void end() noexcept;
    /// Takes messages until the end. False when the program is to end first; that message is posted again.
    bool takeMessages();

private:
    void activateNext() const noexcept;

    HWND window_;
    HWND activeBefore_;
    std::vector<HWND> disabled_;
    bool ended_ = false;
};

} // namespace cvlog::platform::win32
