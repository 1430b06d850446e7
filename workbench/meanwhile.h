#pragma once

#include <windows.h>

#include <functional>

namespace workbench {

/// Acts from inside whatever loop takes the thread's messages, a menu's or a modal window's, every few milliseconds
/// until `act` answers that it is done or the object ends.
class Meanwhile {
public:
    explicit Meanwhile(std::function<bool()> act);
    ~Meanwhile() { stop(); }
    Meanwhile(const Meanwhile&) = delete;
    Meanwhile& operator=(const Meanwhile&) = delete;

    bool done() const { return timer_ == 0; }

private:
    static void CALLBACK tick(HWND, UINT, UINT_PTR timer, DWORD) noexcept;
    void stop();

    std::function<bool()> act_;
    UINT_PTR timer_;
    bool acting_ = false; // it takes messages itself
};

/// The window of the menu that the program has open, the one opened last; null without one.
HWND openMenu();
/// The menu that such a window shows.
HMENU menuOf(HWND window);

} // namespace workbench
