#include "view/log_control.h"

#include "automation/error.h"
#include "base/failure.h"
#include "core/cv_log.h"
#include "core/log_resources.h"
#include "view/controls_object.h"
#include "view/list_object.h"
#include "view/log_columns.h"
#include "view/log_control_ids.h"
#include "view/row_copy.h"

namespace cvlog::view {

LogControl::LogControl(core::Globals& globals)
    : globals_(globals),
      lvLog_(std::make_shared<widgets::ListView>(globals.platform.collator, globals.platform.measurer)),
      controls_(makeControls({{u"lvLog", makeListObject(lvLog_)}})) {
    LocaliseColumns(globals_, *lvLog_);
    lvLog_->attach(globals_.platform.peers.makeListView(*lvLog_));
    viewKey_ = core::LogViews::keyOf(*lvLog_);
    base::ignoring([&] { globals_.LogViews.add(lvLog_); });
    try {
        fillList();
    } catch (...) {
        leaveViews(); // a control that was never made must not stay among the lists
        throw;
    }
    lvLog_->setOwner(this);
}

void LogControl::fillList() {
    SetUpColumns(globals_, *lvLog_);
    if (globals_.store.CurrentLog && globals_.LogViews.count() > 1) {
        core::AttachImageLists(globals_, *lvLog_);
        CopyAllRows(*globals_.LogViews.first(), *lvLog_);
    }
}

void LogControl::leaveViews() noexcept {
    base::ignoring([&] { globals_.LogViews.remove(viewKey_); });
    lvLog_->setOwner(nullptr);
    lvLog_->attach(nullptr); // the window goes now, even if someone still holds the list
}

LogControl::~LogControl() { leaveViews(); }

void LogControl::setBackColor(std::uint32_t colour) {
    lvLog_->setColours({colour, lvLog_->colours().fore});
    markChanged(kBackColorId);
}

void LogControl::setForeColor(std::uint32_t colour) {
    lvLog_->setColours({lvLog_->colours().back, colour});
    markChanged(kForeColorId);
}

void LogControl::setEnabled(bool enabled) {
    lvLog_->setEnabled(enabled);
    markChanged(kEnabledId);
}

void LogControl::markChanged(std::int32_t property) const {
    if (propertyChanged) propertyChanged(property);
}

void LogControl::passFocus(bool got, std::u16string_view event) noexcept {
    // A handler may destroy this control: what comes after it is copied first.
    const std::shared_ptr<core::CVLog> log = globals_.store.CurrentLog;
    if (const auto handler = focusChanged) base::ignoring([&] { handler(got); });
    if (log) base::ignoring([&] { log->FireEvent(event); });
}

void LogControl::gotFocus() { passFocus(true, u"GotFocus"); }

void LogControl::lostFocus() { passFocus(false, u"LostFocus"); }

void LogControl::mouseReleased(widgets::MouseButton) { lvLog_->repaint(); }

} // namespace cvlog::view
