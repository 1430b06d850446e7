#include "store/log_database.h"

#include "base/failure.h"
#include "base/text.h"
#include "core/log_resources.h"
#include "core/options.h"
#include "details/frm_cancel.h"
#include "details/repository_tracking.h"
#include "host/log_placement.h"
#include "host/log_visibility.h"
#include "store/frm_log_history.h"
#include "view/list_set.h"

namespace cvlog::store {

namespace {

using core::Globals;
using hostapi::HostName;

constexpr std::u16string_view kLogSection = u"Activity Log";
constexpr std::u16string_view kVisible = u"Visible";

bool hasColumn(Database& database, std::u16string_view column) {
    return base::ignoring([&] { database.requireColumn(u"LogInfo", column); });
}

// Projects made by earlier versions lack the columns; every statement here is on its own.
void upgradeSchema(Globals& globals, const std::u16string& path) {
    core::StoreState& state = globals.store;
    if (!hasColumn(*state.LogDatabase, u"RecordNum"))
        base::ignoring(
            [&] { state.LogDatabase->execute(u"alter table LogInfo add column RecordNum Counter"); });
    if (!hasColumn(*state.LogDatabase, u"Errors"))
        base::ignoring(
            [&] { state.LogDatabase->execute(u"alter table LogInfo add column Errors Text(254)"); });
    const bool allowed =
        base::valueOr(true, [&] { return state.LogDatabase->allowsZeroLength(u"LogInfo", u"Errors"); });
    if (allowed) return;
    base::ignoring([&] { state.LogDatabase->close(); });
    base::ignoring([&] { state.LogDatabase = globals.platform.engine.open(path); });
    base::ignoring([&] { state.LogDatabase->allowZeroLength(u"LogInfo", u"Errors"); });
}

std::int32_t highestRecordNum(Database& database) {
    const auto rows = database.openSnapshot(u"Select RecordNum From LogInfo order by RecordNum desc");
    const std::int32_t highest = rows->atEnd() ? 0 : automation::toInt32(rows->value(u"RecordNum"));
    rows->close();
    return highest;
}

void openDatabase(Globals& globals) {
    core::StoreState& state = globals.store;
    state.HelpFile = state.Workspace.helpFile();
    const std::u16string path = state.Workspace.name(HostName::ProjectDirectory) + u"\\PrjData.mdb";
    state.LogDatabase = globals.platform.engine.open(path);
    upgradeSchema(globals, path);
    state.LastRecordNum = highestRecordNum(*state.LogDatabase);
    state.LogRecordset = state.LogDatabase->openTable(u"LogInfo");
}

// Answers how many entity types the repository lists.
std::int32_t loadEntityIcons(Globals& globals) {
    core::StoreState& state = globals.store;
    state.IconsDir = state.Workspace.name(HostName::ProductDirectory) + u"\\Repository\\Icons\\";
    const std::shared_ptr<widgets::ImageList> icons = core::LoadLogResources(globals).ilLog;
    host::PutParent(globals, nullptr);
    const hostapi::Repository repository = state.Workspace.repository();
    details::FollowRepository(globals, repository);
    const hostapi::Collection entities = repository.erd().entities();
    const std::int32_t count = entities.count();
    for (std::int32_t i = 1; i <= count; ++i) {
        base::ignoring([&] {
            const hostapi::EntityType type(entities.item(i));
            const std::u16string file = state.IconsDir + type.iconFile();
            icons->add(type.keyName(), globals.platform.pictures.load(file));
        });
    }
    return count;
}

void restoreVisibility(Globals& globals) {
    const std::u16string product = globals.store.Workspace.productName();
    globals.LogWindowVisible =
        base::equalsIgnoringCase(globals.platform.settings.get(product, kLogSection, kVisible, u"1"), u"1");
}

void saveVisibility(Globals& globals) {
    const hostapi::Workspace& workspace = globals.store.Workspace;
    if (!workspace.name(HostName::ProjectName).empty())
        globals.platform.settings.save(workspace.productName(), kLogSection, kVisible,
                                       globals.LogWindowVisible ? u"1" : u"0");
}

} // namespace

bool OpenDB(Globals& globals, const std::shared_ptr<core::CVLog>& log,
            const automation::ObjectRef& workspace) {
    globals.store.Workspace = hostapi::Workspace(workspace);
    core::HoldOptions(globals, hostapi::OptionsDocument(globals.store.Workspace.userOptions()));

    std::int32_t entityTypes = 0;
    const bool opened = base::ignoring([&] {
        openDatabase(globals);
        entityTypes = loadEntityIcons(globals);
    });
    if (!opened) return false;

    // Reading the icons one by one ends the guarded stretch, so that from the first entity type on a failure here is
    // the caller's.
    if (entityTypes > 0)
        restoreVisibility(globals);
    else if (!base::ignoring([&] { restoreVisibility(globals); }))
        return false;
    if (!globals.store.Workspace) return false; // closed by the host on the way
    globals.store.CurrentLog = log;
    return true;
}

void CloseDB(Globals& globals) {
    core::StoreState& state = globals.store;
    if (!state.Workspace) return;
    view::ClearLists(globals);
    saveVisibility(globals);
    host::PutParent(globals, nullptr);
    host::CloseFloatingWindow(globals);
    if (const auto dialog = globals.frmCancel) dialog->unload();
    for (const auto& list : globals.LogViews.all()) {
        list->setSmallIcons(nullptr);
        list->setHeaderIcons(nullptr);
    }
    if (const auto history = state.frmLogHistory) history->lvHistory()->setSmallIcons(nullptr);
    globals.frmLogResources.reset();
    UnloadHistory(globals);
    state.Workspace = {};
    state.CurrentLog.reset();
    core::ReleaseOptions(globals);
    if (const auto rows = std::exchange(state.LogRecordset, nullptr)) base::ignoring([&] { rows->close(); });
    if (const auto database = std::exchange(state.LogDatabase, nullptr))
        base::ignoring([&] { database->close(); });
}

} // namespace cvlog::store
