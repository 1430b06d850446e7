#pragma once

#include "core/globals.h"

#include <string_view>

// F1 in an open menu. The menu's own loop takes all keys, so a filter looks at them first: F1 opens help for the menu,
// once, and is taken away from the menu.

namespace cvlog::host {

/// Begins to look at the thread's menus, with a help context (decimal). While that is done already nothing happens, the
/// context included. A system that refuses leaves the menus without help.
void InstallMenuHelpHook(core::Globals& globals, std::u16string_view context) noexcept;
void RemoveMenuHelpHook(core::Globals& globals) noexcept;

/// What the filter does with a message: true when it takes it away.
bool MenuHelpTakes(core::Globals& globals, const ports::FilteredMessage& message) noexcept;

/// Help for the menus that are shown while it lives.
class MenuHelp {
public:
    MenuHelp(core::Globals& globals, std::u16string_view context) noexcept : globals_(globals) {
        InstallMenuHelpHook(globals, context);
    }
    ~MenuHelp() { RemoveMenuHelpHook(globals_); }
    MenuHelp(const MenuHelp&) = delete;
    MenuHelp& operator=(const MenuHelp&) = delete;

private:
    core::Globals& globals_;
};

} // namespace cvlog::host
