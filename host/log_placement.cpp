#include "host/log_placement.h"

#include "base/failure.h"
#include "core/log_resources.h"
#include "host/frm_log.h"

namespace cvlog::host {

namespace {

constexpr std::u16string_view kControlName = u"LogView";
constexpr std::u16string_view kProgramId = u"CVLog3.CVLogControl";

} // namespace

hostapi::HostWindow FindHostWindow(core::Globals& globals) noexcept {
    return base::valueOr(hostapi::HostWindow(), [&] {
        const hostapi::Collection tools = globals.store.Workspace.activeToolList();
        return hostapi::Tool(tools.item(tools.count())).window();
    });
}

hostapi::HostControl EnsureLogControl(core::Globals& globals, const hostapi::HostWindow& window) noexcept {
    hostapi::HostControl control;
    base::ignoring([&] { control = window.control(kControlName); });
    if (control) return control;
    base::ignoring([&] { control = window.addControl(kProgramId, kControlName, globals.placement.Parent); });
    if (!control) return control;
    base::ignoring([&] { control.setFont(core::ResourceFont(globals)); });
    base::ignoring([&] { control.bringToFront(); });
    return control;
}

void ShowLog(core::Globals& globals, widgets::Activation activation) noexcept {
    const hostapi::HostWindow window = FindHostWindow(globals);
    const bool& wanted = globals.LogWindowVisible; // the host may change both on the way
    const bool& docked = globals.options.DockedOption;
    const bool wasOpen = static_cast<bool>(globals.store.Workspace);
    if (window) {
        const hostapi::HostControl control = EnsureLogControl(globals, window);
        if (control) base::ignoring([&] { control.setVisible(wanted && docked); });
        base::ignoring([&] { window.displayLog(); });
    }
    if (wasOpen && !globals.store.Workspace) return; // closed on the way: nothing is to be shown any more
    if (wanted && !(window && docked))
        ShowFloatingWindow(globals, window, activation);
    else
        CloseFloatingWindow(globals, activation);
}

void ShowFloatingWindow(core::Globals& globals, const hostapi::HostWindow& owner,
                        widgets::Activation activation) noexcept {
    base::ignoring([&] {
        if (const std::shared_ptr<FrmLog> open = globals.placement.frmLog)
            return open->bringToFront(activation);
        // It is the floating window from now on: the host, asked while it loads, may want the log shown once more.
        const auto form = globals.placement.frmLog = std::make_shared<FrmLog>(globals);
        const bool loaded = base::ignoring([&] { form->load(); });
        const bool stillWanted = globals.placement.frmLog == form;
        if (loaded && stillWanted) return form->showBeside(owner, activation);
        if (stillWanted) globals.placement.frmLog.reset();
        form->unload(activation);
    });
}

void CloseFloatingWindow(core::Globals& globals, widgets::Activation activation) noexcept {
    if (const std::shared_ptr<FrmLog> form = std::exchange(globals.placement.frmLog, nullptr))
        base::ignoring([&] { form->unload(activation); });
}

bool HasScale(const automation::ObjectRef& container) noexcept {
    return base::ignoring([&] {
        if (!container) throw automation::AutomationError(automation::code::kObjectRequired);
        container->get(u"ScaleTop");
    });
}

} // namespace cvlog::host
