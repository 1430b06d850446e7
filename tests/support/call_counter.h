#pragma once

#include "automation/error.h"

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace cvlog::tests {

/// The one place that every outward call of the component passes: host, engine, lists, settings, files, boxes. It
/// numbers the calls from 1, keeps a journal of them, and can fail one of them, or all from one on.
class CallCounter {
public:
    enum class Fail { Never, Once, FromOn };

    /// Throws injectedError() when this call is to fail; the call must then have no effect.
    void call(std::string name);

    void restart();
    void arm(int number, Fail mode);
    void disarm() noexcept { mode_ = Fail::Never; }

    int count() const noexcept { return static_cast<int>(journal_.size()); }
    const std::vector<std::string>& journal() const noexcept { return journal_; }
    /// The calls whose names start with one of the prefixes, in order.
    std::vector<std::string> journalOf(std::initializer_list<std::string_view> prefixes) const;
    int countOf(std::string_view prefix) const;
    /// The calls that were failed, in order.
    const std::vector<std::string>& failed() const noexcept { return failed_; }
    bool hasFailed(std::string_view prefix) const;

    /// Runs inside every call, after it was noted.
    std::function<void(const std::string& name)> insideCall;

    static automation::AutomationError injectedError();

private:
    std::vector<std::string> journal_;
    std::vector<std::string> failed_;
    int armed_ = 0;
    Fail mode_ = Fail::Never;
};

} // namespace cvlog::tests
