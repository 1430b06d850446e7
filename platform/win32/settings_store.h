#pragma once

#include "ports/settings_store.h"

namespace cvlog::platform::win32 {

/// Settings in the user's registry, where Basic programs of the classic kind keep theirs. Values are texts; a
/// number that something else stored is read in decimal. Any other type, and a value of more than a million
/// bytes, throws, as does a name with a NUL.
class SettingsStore : public ports::SettingsStore {
public:
    std::u16string get(std::u16string_view application, std::u16string_view section, std::u16string_view key,
                       std::u16string_view defaultValue) override;
    void save(std::u16string_view application, std::u16string_view section, std::u16string_view key,
              std::u16string_view value) override;
};

} // namespace cvlog::platform::win32
