#include "view/show_errors.h"

#include "core/cv_log.h"
#include "view/log_menu_state.h"

namespace cvlog::view {

void ShowErrors(core::Globals& globals, const hostapi::RowFace& row) {
    const RowFacts facts = ReadRow(row);
    const automation::Value number =
        facts.isChild ? automation::toInt32(automation::Value(row.cellTag(u"Num"))) : std::int32_t{0};
    const std::shared_ptr<core::CVLog> log = globals.store.CurrentLog;
    if (!log) return;
    automation::Value arguments[] = {facts.objectId, number};
    log->FireEvent(u"ShowErrors", arguments);
}

} // namespace cvlog::view
