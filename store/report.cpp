#include "store/report.h"

#include "base/failure.h"
#include "host/frm_log.h"
#include "host/log_placement.h"
#include "hostapi/report_generator.h"
#include "view/list_object.h"

namespace cvlog::store {

namespace {

using widgets::Pointer;

std::u16string joinedPath(std::u16string folder, std::u16string_view name) {
    const bool needsSeparator =
        !folder.empty() && std::u16string_view(u"\\/:").find(folder.back()) == std::u16string_view::npos;
    if (needsSeparator) folder += u'\\';
    return folder += name;
}

/// Where the list is shown: the floating window, or a window of the host.
PutMousePointer pointerOf(core::Globals& globals, const widgets::ListView& list) {
    const std::shared_ptr<host::FrmLog> floating = globals.placement.frmLog;
    if (floating && floating->LogView() && &floating->LogView()->lvLog() == &list)
        return [floating](Pointer pointer) {
            if (widgets::Form* form = floating->form()) form->setPointer(pointer);
        };
    const hostapi::HostWindow window = host::FindHostWindow(globals);
    return [window](Pointer pointer) { window.setMousePointer(static_cast<std::int16_t>(pointer)); };
}

} // namespace

void MakeReport(core::Globals& globals, const core::LogViews::ListRef& list, std::u16string_view name,
                const PutMousePointer& putPointer) {
    const auto setPointer = [&](Pointer pointer) { base::ignoring([&] { putPointer(pointer); }); };
    const base::ScopeExit usual([&] { setPointer(Pointer::Default); });
    setPointer(Pointer::Hourglass);
    const hostapi::Workspace workspace = globals.store.Workspace;
    const hostapi::ReportGenerator generator(
        globals.platform.objects.create(hostapi::ReportGenerator::kClassName));
    const auto font = std::make_shared<view::ListFont>(globals.platform.fonts, list);
    generator.createReport(view::makeListObject(list, font), name);
    setPointer(Pointer::Default);
    if (generator.interrupted()) return;
    generator.setOutputDirectory(joinedPath(workspace.name(hostapi::HostName::ProjectDirectory), u"Output"));
    base::ignoring([&] { generator.displayReport(workspace.mainWindow().object()); });
}

void MakeLogReport(core::Globals& globals, const core::LogViews::ListRef& list) {
    MakeReport(globals, list, u"Log", pointerOf(globals, *list));
}

} // namespace cvlog::store
