#pragma once

#include "base/text.h"
#include "platform/headless/call_gate.h"
#include "ports/settings_store.h"

#include <map>
#include <tuple>

namespace cvlog::platform::headless {

/// Settings that live as long as this object. Names ignore case.
class MemorySettings : public ports::SettingsStore {
public:
    explicit MemorySettings(const CallGate& gate) : gate_(gate) {}

    std::u16string get(std::u16string_view application, std::u16string_view section, std::u16string_view key,
                       std::u16string_view defaultValue) override {
        gate_.pass("Settings.get");
        const auto found = values_.find(nameOf(application, section, key));
        return found == values_.end() ? std::u16string(defaultValue) : found->second;
    }

    void save(std::u16string_view application, std::u16string_view section, std::u16string_view key,
              std::u16string_view value) override {
        gate_.pass("Settings.save");
        values_[nameOf(application, section, key)] = value;
    }

    void forget() noexcept { values_.clear(); }
    std::size_t count() const noexcept { return values_.size(); }

private:
    using Name = std::tuple<std::u16string, std::u16string, std::u16string>;

    static Name nameOf(std::u16string_view application, std::u16string_view section,
                       std::u16string_view key) {
        return {base::folded(application), base::folded(section), base::folded(key)};
    }

    const CallGate& gate_;
    std::map<Name, std::u16string> values_;
};

} // namespace cvlog::platform::headless
