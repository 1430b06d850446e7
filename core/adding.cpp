#include "core/adding.h"

#include "base/failure.h"
#include "core/column_fit.h"
#include "core/cv_log.h"
#include "core/log_resources.h"
#include "core/log_row.h"
#include "core/results.h"
#include "core/series_report.h"
#include "store/record_writer.h"
#include "view/list_set.h"

namespace cvlog::core {

namespace {

using hostapi::EntityType;
using hostapi::HostName;
using hostapi::RepositoryObject;
using hostapi::Workspace;

/// What a report is about.
struct Subject {
    RepositoryObject object; // none when the report names no object
    EntityType type;
    std::u16string errorsFileName;
    std::u16string errorsPath;
};

// A method that stands for another shows the other's name; an alias is followed once, so that a cycle cannot loop.
std::u16string methodName(const Workspace& workspace, const std::u16string& id) {
    if (id.empty() || !workspace) return id;
    hostapi::Method method = workspace.method(id);
    if (method) {
        if (const std::u16string alias = method.aliasId(); !alias.empty()) method = workspace.method(alias);
    }
    return method ? method.displayName() : id;
}

std::u16string derivedErrorsFileName(const RepositoryObject& object, const EntityType& type) {
    return base::valueOr(std::u16string(), [&] { return object.property(type.keyProperty()) + u".errors"; });
}

void findErrorsFile(Globals& globals, Subject& subject) {
    subject.errorsPath =
        globals.store.Workspace.name(HostName::ProjectDirectory) + u"\\" + subject.errorsFileName;
    if (!globals.platform.files.fileExists(subject.errorsPath)) {
        subject.errorsFileName.clear();
        subject.errorsPath.clear();
    }
}

// An entry about a part of the project as a whole is logged against the project.
void substituteProject(const Workspace& workspace, Subject& subject) {
    if ((subject.type.flags() & workspace.repository().erd().entityFlags(u"COMPOSITE")) != 0) {
        subject.object = workspace.projectObject();
        subject.type = subject.object.entityType();
    }
}

Subject findSubject(Globals& globals, const Report& report) {
    const Workspace& workspace = globals.store.Workspace;
    Subject subject;
    subject.errorsFileName = report.ErrorsFileName;
    if (report.ObjectID.empty()) return subject;
    subject.object = workspace.repository().object(report.ObjectID);
    subject.type = subject.object.entityType();
    if (subject.errorsFileName.empty())
        subject.errorsFileName = derivedErrorsFileName(subject.object, subject.type);
    findErrorsFile(globals, subject);
    substituteProject(workspace, subject);
    return subject;
}

LogEntry describe(const Globals& globals, const Report& report, const Subject& subject) {
    LogEntry entry;
    entry.objectId = report.ObjectID;
    if (subject.object) {
        entry.typeName = subject.type.displayName();
        entry.objectName = subject.object.name();
        entry.loggedObjectId = subject.object.id();
        entry.typeIcon = subject.type.keyName();
    }
    entry.result = ReturnCodeText(globals, report.ReturnCode);
    entry.resultIcon = ResultIconKey(report.ReturnCode);
    entry.message = report.Message;
    entry.errorsPath = subject.errorsPath;
    return entry;
}

void attachToFirstList(Globals& globals, widgets::ListView& list) {
    base::ignoring([&] {
        if (list.smallIcons()) return;
        AttachImageLists(globals, list);
        view::RefreshSortIcon(list);
    });
}

void showInLists(Globals& globals, const widgets::RowPtr& row) {
    const LogViews::ListRef list = globals.LogViews.first();
    if (!list) return;
    int position = 0;
    {
        widgets::ListView::Batch batch(*list);
        position = list->positionOf(list->append(row), list->rowCount());
        list->scrollTo(position);
        if (const int selected = list->selectedRow()) list->select(selected, false);
        AutoSizeColumns(*list, position);
    }
    view::PropagateNewRow(globals, *list, position);
}

} // namespace

void Add(Globals& globals, CVLog& log, const Report& report) {
    // The host is asked first: whatever fails here leaves no trace.
    const std::u16string method = methodName(globals.store.Workspace, report.MethodID);
    const Subject subject = findSubject(globals, report);

    store::WriteRecord(globals, log,
                       {method, report.ReturnCode, subject.object, report.Message, subject.errorsFileName});

    // The event above may have run any code: only now look which list comes first.
    const LogViews::ListRef list = globals.LogViews.first();
    if (!list) return;
    attachToFirstList(globals, *list);
    if (!globals.series.InSeries && !globals.options.KeepInSession) view::ResetLists(globals);

    const base::LocalTime now = globals.platform.clock.now();
    const bool timed = globals.series.InSeries;
    const base::LocalTime previous = std::exchange(globals.LastEntryTime, now);

    // All that the row needs of the host is collected before the row enters the lists: nothing runs in between.
    LogEntry entry = describe(globals, report, subject);
    entry.date = base::formatDateTime(now);
    entry.elapsed = timed ? base::formatElapsed(previous, now) : std::u16string();
    entry.method = method;
    showInLists(globals, MakeLogRow(entry));

    if (globals.series.InSeries) {
        globals.series.merge(report.ReturnCode);
    } else {
        globals.series.SeriesReturnCode = report.ReturnCode;
        SeriesFinish(globals);
    }
}

} // namespace cvlog::core
