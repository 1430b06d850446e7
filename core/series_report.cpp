#include "core/series_report.h"

#include "core/results.h"
#include "host/log_placement.h"
#include "view/list_set.h"

namespace cvlog::core {

namespace {

std::u16string text(const Globals& globals, int id) {
    return std::u16string(resources::text(globals.platform.language, id));
}

// A log that the user has in view needs no report. The host is asked only when its answer matters.
bool mustTellUser(const Globals& globals) {
    if (!globals.LogWindowVisible) return true;
    if (globals.placement.frmLog || globals.placement.Parent) return false;
    return globals.store.Workspace &&
           globals.store.Workspace.activeToolList().count() != globals.LogViews.count();
}

std::u16string boxTitle(const Globals& globals) {
    return globals.store.Workspace ? globals.store.Workspace.workbenchName() : text(globals, 513);
}

} // namespace

void SeriesStart(Globals& globals) {
    globals.series.start();
    if (!globals.options.KeepInSession) view::ResetLists(globals);
    globals.LastEntryTime = globals.platform.clock.now();
}

void SeriesFinish(Globals& globals) {
    const std::int32_t code = globals.series.finish();
    if (!mustTellUser(globals)) return;
    const std::u16string title = boxTitle(globals);
    const std::u16string outcome = OutcomeMessage(globals.platform.language, code);
    if (code == 0) {
        globals.platform.messages.inform(title, outcome, OutcomeBoxIcon(code));
        return;
    }
    const std::u16string question = outcome + u"\r\n" + text(globals, 510) + u"\r\n" + text(globals, 511);
    if (globals.platform.messages.ask(title, question, OutcomeBoxIcon(code))) {
        globals.LogWindowVisible = true;
        host::ShowLog(globals);
    }
}

std::u16string ReturnCodeText(const Globals& globals, std::int32_t code) {
    return globals.store.Workspace ? globals.store.Workspace.returnCodeText(code)
                                   : OutcomeMessage(globals.platform.language, code);
}

} // namespace cvlog::core
