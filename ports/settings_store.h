#pragma once

#include <string>
#include <string_view>

namespace cvlog::ports {

/// The per-user settings: one text for an application, a section and a key. Both calls throw when the store cannot
/// be reached; an absent setting gives the default.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    virtual std::u16string get(std::u16string_view application, std::u16string_view section,
                               std::u16string_view key, std::u16string_view defaultValue) = 0;
    virtual void save(std::u16string_view application, std::u16string_view section, std::u16string_view key,
                      std::u16string_view value) = 0;
};

} // namespace cvlog::ports
