#include "workbench/meanwhile.h"

#include <exception>
#include <map>

namespace workbench {

namespace {

constexpr UINT kPeriod = 20; // milliseconds

std::map<UINT_PTR, Meanwhile*>& running() {
    static std::map<UINT_PTR, Meanwhile*> all;
    return all;
}

} // namespace

Meanwhile::Meanwhile(std::function<bool()> act)
    : act_(std::move(act)), timer_(SetTimer(nullptr, 0, kPeriod, &Meanwhile::tick)) {
    running()[timer_] = this;
}

void Meanwhile::stop() {
    if (timer_) {
        KillTimer(nullptr, timer_);
        running().erase(timer_);
        timer_ = 0;
    }
}

void CALLBACK Meanwhile::tick(HWND, UINT, UINT_PTR timer, DWORD) noexcept {
    const auto found = running().find(timer);
    if (found == running().end() || found->second->acting_) {
        return;
    }
    Meanwhile& self = *found->second;
    self.acting_ = true;
    bool done = true;
    try {
        done = self.act_();
    } catch (const std::exception&) {
        done = true; // who waits for the outcome finds that there is none
    }
    self.acting_ = false;
    if (done) {
        self.stop();
    }
}

HWND openMenu() {
    HWND found = nullptr;
    while ((found = FindWindowExW(nullptr, found, L"#32768", nullptr))) {
        if (IsWindowVisible(found) && GetWindowThreadProcessId(found, nullptr) == GetCurrentThreadId()) {
            return found;
        }
    }
    return nullptr;
}

HMENU menuOf(HWND window) {
    constexpr UINT kGetMenu = 0x01E1; // MN_GETHMENU
    return reinterpret_cast<HMENU>(SendMessageW(window, kGetMenu, 0, 0));
}

} // namespace workbench
