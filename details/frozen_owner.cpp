#include "details/frozen_owner.h"

#include "base/failure.h"
#include "host/frm_log.h"
#include "host/log_placement.h"
#include "host/log_visibility.h"

namespace cvlog::details {

LogOwner LogOwner::find(core::Globals& globals) noexcept {
    LogOwner owner;
    if (host::GetDocked(globals))
        owner.window_ = host::FindHostWindow(globals);
    else
        owner.form_ = globals.placement.frmLog;
    return owner;
}

void LogOwner::setEnabled(bool enabled) const noexcept {
    base::ignoring([&] {
        if (window_) window_.setEnabled(enabled);
    });
    base::ignoring([&] {
        if (form_ && form_->form()) form_->form()->setEnabled(enabled);
    });
}

void LogOwner::setPointer(widgets::Pointer pointer) const noexcept {
    base::ignoring([&] {
        if (window_) window_.setMousePointer(static_cast<std::int16_t>(pointer));
    });
    base::ignoring([&] {
        if (form_ && form_->form()) form_->form()->setPointer(pointer);
    });
}

} // namespace cvlog::details
