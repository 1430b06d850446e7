#include "host/log_visibility.h"

#include "base/failure.h"
#include "core/cv_log.h"
#include "core/options.h"
#include "host/frm_log.h"
#include "host/frm_msg.h"
#include "host/log_placement.h"

namespace cvlog::host {

bool GetVisible(const core::Globals& globals) noexcept {
    return globals.placement.Parent ? globals.LogWindowVisible : globals.placement.frmLog != nullptr;
}

void PutVisible(core::Globals& globals, bool visible) noexcept {
    if (visible == GetVisible(globals)) return;
    const bool hasParent = globals.placement.Parent != nullptr;
    const bool remembered = globals.LogWindowVisible;
    globals.LogWindowVisible = visible;
    ShowLog(globals);
    if (!hasParent) globals.LogWindowVisible = remembered;
}

void PutParent(core::Globals& globals, const automation::ObjectRef& parent) noexcept {
    if (automation::sameObject(globals.placement.Parent, parent)) return;
    const automation::ObjectRef before = std::exchange(globals.placement.Parent, parent);
    if (parent)
        ShowLog(globals);
    else
        PutVisible(globals, false);
}

bool GetDocked(const core::Globals& globals) noexcept {
    return globals.placement.Parent && globals.options.DockedOption;
}

void PutDocked(core::Globals& globals, bool docked) noexcept {
    if (docked == globals.options.DockedOption || !globals.placement.Parent) return;
    globals.options.DockedOption = docked; // first: the save below has the options read again
    core::StoreDockedOption(globals, docked);
    ShowLog(globals);
}

void FocusLog(core::Globals& globals, core::CVLog& log) noexcept {
    if (!globals.LogWindowVisible) return;
    if (globals.options.DockedOption) {
        base::ignoring([&] { log.FireEvent(u"GotFocus"); });
        base::ignoring([&] { EnsureLogControl(globals, FindHostWindow(globals)).setFocus(); });
    } else if (const std::shared_ptr<FrmLog> form = globals.placement.frmLog) {
        base::ignoring([&] { form->focusLog(); });
    }
}

void MoveHostWindow(core::Globals& globals, double left, double top, double width, double height) noexcept {
    if (const hostapi::HostWindow window = FindHostWindow(globals))
        base::ignoring([&] { window.move(left, top, width, height); });
}

void Dock(core::Globals& globals, const automation::ObjectRef& parent) {
    ShowAlert(globals);
    globals.LogWindowVisible = true;
    globals.options.DockedOption = parent != nullptr;
}

} // namespace cvlog::host
