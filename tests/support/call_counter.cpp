#include "tests/support/call_counter.h"

#include <algorithm>

namespace cvlog::tests {

void CallCounter::call(std::string name) {
    journal_.push_back(std::move(name));
    const bool fails =
        (mode_ == Fail::Once && count() == armed_) || (mode_ == Fail::FromOn && count() >= armed_);
    if (fails) {
        failed_.push_back(journal_.back());
        throw injectedError();
    }
    if (insideCall) insideCall(std::string(journal_.back()));
}

void CallCounter::restart() {
    journal_.clear();
    failed_.clear();
    mode_ = Fail::Never;
}

void CallCounter::arm(int number, Fail mode) {
    armed_ = number;
    mode_ = mode;
}

std::vector<std::string> CallCounter::journalOf(std::initializer_list<std::string_view> prefixes) const {
    std::vector<std::string> calls;
    for (const std::string& name : journal_)
        if (std::any_of(prefixes.begin(), prefixes.end(),
                        [&](std::string_view prefix) { return name.starts_with(prefix); }))
            calls.push_back(name);
    return calls;
}

int CallCounter::countOf(std::string_view prefix) const {
    return static_cast<int>(journalOf({prefix}).size());
}

bool CallCounter::hasFailed(std::string_view prefix) const {
    return std::any_of(failed_.begin(), failed_.end(),
                       [&](const std::string& name) { return name.starts_with(prefix); });
}

automation::AutomationError CallCounter::injectedError() {
    return automation::AutomationError(automation::code::of(0x800A0BAD), u"injected failure", u"Fault");
}

} // namespace cvlog::tests
