#include "platform/win32/message_filters.h"

#include "platform/win32/firewall.h"
#include "platform/win32/windows_headers.h"

#include <stdexcept>
#include <unordered_map>

namespace cvlog::platform::win32 {

namespace {

static_assert(ports::kFromMenu == MSGF_MENU);

struct Hook {
    explicit Hook(std::function<bool(const ports::FilteredMessage&)> answering)
        : receiver(std::move(answering)) {}
    std::function<bool(const ports::FilteredMessage&)> receiver;
    HHOOK handle = nullptr;
};
using HookRef = std::shared_ptr<Hook>;

// The hooks of all threads: a hook procedure is told nothing of its own.
SRWLOCK hooksLock = SRWLOCK_INIT;
std::unordered_map<DWORD, HookRef>& hooks() {
    static std::unordered_map<DWORD, HookRef> all;
    return all;
}

class HooksLock {
public:
    HooksLock() noexcept { AcquireSRWLockExclusive(&hooksLock); }
    ~HooksLock() { ReleaseSRWLockExclusive(&hooksLock); }
    HooksLock(const HooksLock&) = delete;
    HooksLock& operator=(const HooksLock&) = delete;
};

HookRef hookOfThread() {
    const HooksLock lock;
    const auto found = hooks().find(GetCurrentThreadId());
    return found == hooks().end() ? nullptr : found->second;
}

LRESULT CALLBACK hookProcedure(int code, WPARAM wParam, LPARAM lParam) {
    const HookRef hook = firewall(HookRef(), [] { return hookOfThread(); });
    const bool taken = firewall(false, [&] {
        const auto* message = reinterpret_cast<const MSG*>(lParam);
        return code >= 0 && message && hook && hook->receiver({code, message->message, message->wParam});
    });
    constexpr LRESULT kTaken = -1;
    return taken ? kTaken : CallNextHookEx(hook ? hook->handle : nullptr, code, wParam, lParam);
}

class Filter : public ports::MessageFilter {
public:
    explicit Filter(HookRef hook) : thread_(GetCurrentThreadId()), hook_(std::move(hook)) {
        const HooksLock lock;
        if (!hooks().try_emplace(thread_, hook_).second) throw std::logic_error("there is a filter");
        hook_->handle = SetWindowsHookA(WH_MSGFILTER, hookProcedure);
        if (hook_->handle) return;
        hooks().erase(thread_);
        throw std::runtime_error("no hook");
    }
    ~Filter() override {
        UnhookWindowsHookEx(hook_->handle);
        const HooksLock lock;
        hooks().erase(thread_);
    }
    Filter(const Filter&) = delete;
    Filter& operator=(const Filter&) = delete;

private:
    DWORD thread_;
    HookRef hook_;
};

} // namespace

std::unique_ptr<ports::MessageFilter>
MessageFilters::install(std::function<bool(const ports::FilteredMessage&)> receiver) {
    return std::make_unique<Filter>(std::make_shared<Hook>(std::move(receiver)));
}

} // namespace cvlog::platform::win32
