#include "host/menu_help_hook.h"

#include "base/failure.h"
#include "host/context_help.h"

namespace cvlog::host {

namespace {

constexpr std::uint32_t kKeyDownMessage = 0x100;
constexpr std::uint64_t kKeyF1 = 0x70;

} // namespace

void InstallMenuHelpHook(core::Globals& globals, std::u16string_view context) noexcept {
    core::MenuHelpState& help = globals.menuHelp;
    if (help.MenuHelpHook) return;
    help.MenuHelpShown = false;
    base::ignoring([&] {
        help.MenuHelpContext = context;
        help.MenuHelpHook = globals.platform.messageFilters.install(
            [&globals](const ports::FilteredMessage& message) { return MenuHelpTakes(globals, message); });
    });
}

void RemoveMenuHelpHook(core::Globals& globals) noexcept {
    core::MenuHelpState& help = globals.menuHelp;
    if (!help.MenuHelpHook) return;
    help.MenuHelpHook.reset();
    help.MenuHelpContext.clear();
}

bool MenuHelpTakes(core::Globals& globals, const ports::FilteredMessage& message) noexcept {
    core::MenuHelpState& help = globals.menuHelp;
    const bool isHelpKey = message.source == ports::kFromMenu && message.message == kKeyDownMessage &&
                           message.parameter == kKeyF1;
    if (!isHelpKey || help.MenuHelpShown) return false;
    help.MenuHelpShown = true;
    const std::shared_ptr<void> apartment = globals.hold(); // the host is asked for its file
    base::ignoring([&] {
        const std::u16string context = help.MenuHelpContext; // the host may have the hook removed
        if (!context.empty()) ShowContextHelp(globals, context);
    });
    return true;
}

} // namespace cvlog::host
