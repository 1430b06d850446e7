#include "host/context_help.h"

#include "base/failure.h"

namespace cvlog::host {

void ShowContextHelp(core::Globals& globals, std::u16string_view context) noexcept {
    const std::int32_t owner = base::valueOr(0, [&] { return globals.store.Workspace.mainWindow().hwnd(); });
    base::ignoring([&] {
        const std::u16string file = globals.store.Workspace.helpFile();
        const std::int32_t number = automation::toInt32(automation::Value(context));
        globals.platform.helpViewer.showContext(owner, file, number);
    });
}

} // namespace cvlog::host
