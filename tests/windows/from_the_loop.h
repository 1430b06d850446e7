#pragma once

#include <windows.h>

#include <functional>
#include <map>

namespace cvlog::tests {

/// Acts from inside whatever loop takes messages, again and again until `act` answers that it is done.
class FromTheLoop {
public:
    explicit FromTheLoop(std::function<bool()> act)
        : act_(std::move(act)), timer_(SetTimer(nullptr, 0, 10, &tick)) {
        running()[timer_] = this;
    }
    ~FromTheLoop() { stop(); }
    FromTheLoop(const FromTheLoop&) = delete;
    FromTheLoop& operator=(const FromTheLoop&) = delete;

    bool done() const noexcept { return timer_ == 0; }

private:
    static std::map<UINT_PTR, FromTheLoop*>& running() {
        static std::map<UINT_PTR, FromTheLoop*> all;
        return all;
    }
    static void CALLBACK tick(HWND, UINT, UINT_PTR timer, DWORD) {
        const auto found = running().find(timer);
        if (found == running().end()) return;
        FromTheLoop& self = *found->second;
        if (self.busy_) return; // it takes messages itself
        self.busy_ = true;
        const bool finished = self.act_();
        self.busy_ = false;
        if (finished) self.stop();
    }
    void stop() {
        if (timer_ == 0) return;
        KillTimer(nullptr, timer_);
        running().erase(timer_);
        timer_ = 0;
    }

    std::function<bool()> act_;
    UINT_PTR timer_;
    bool busy_ = false;
};

} // namespace cvlog::tests
