#include "details/repository_tracking.h"

#include "base/failure.h"
#include "core/log_resources.h"
#include "core/log_row_kind.h"
#include "details/expansion.h"

#include <utility>
#include <vector>

namespace cvlog::details {

namespace {

constexpr std::int32_t kObjectModified = 1;
constexpr std::u16string_view kName = u"Name";
constexpr std::u16string_view kMessageTag = u"Message";

class RepositorySink : public automation::EventSink {
public:
    explicit RepositorySink(core::Globals& globals) : globals_(globals) {}
    void onEvent(std::int32_t id, std::span<automation::Value> arguments) override {
        const auto keep = globals_.hold();
        if (id != kObjectModified || arguments.empty()) return;
        base::ignoring([&] { RepositoryObjectModified(globals_, automation::toText(arguments[0])); });
    }

private:
    core::Globals& globals_;
};

base::CompactTextView tagOf(const widgets::RowContent& row, std::u16string_view key) {
    return row.cellTag(row.cellOf(key));
}

/// Asks for a file once while the same one is meant, as the messages of one entry all name one.
class FileLookup {
public:
    explicit FileLookup(ports::FileSystem& files) noexcept : files_(files) {}
    bool exists(base::CompactTextView path) {
        if (path != path_) {
            std::u16string wanted(path);
            exists_ = files_.fileExists(wanted);
            path_ = std::move(wanted);
        }
        return exists_;
    }

private:
    ports::FileSystem& files_;
    std::u16string path_;
    bool exists_ = false;
};

// The open entries among the rows that lost their file, from the last to the first.
std::vector<widgets::RowId> clearReferences(core::Globals& globals, widgets::ListView& list,
                                            std::u16string_view objectId) {
    std::vector<widgets::RowId> open;
    FileLookup files(globals.platform.files);
    for (int row = list.rowCount(); row >= 1; --row) {
        const base::CompactTextView path = tagOf(list.row(row), kMessageTag);
        const bool concerned = !path.empty() && tagOf(list.row(row), kName).equalsIgnoringCase(objectId);
        if (!concerned || files.exists(path)) continue;
        list.setCellTag(row, kMessageTag, {});
        if (core::IsExpanded(list, row)) open.push_back(list.idAt(row));
    }
    return open;
}

} // namespace

void FollowRepository(core::Globals& globals, hostapi::Repository repository) {
    core::LogResources& form = core::LoadLogResources(globals);
    auto eventsBefore = std::exchange(form.repositoryEvents, nullptr);
    form.Repository = repository;
    eventsBefore.reset(); // its end may run code that unloads the form
    std::unique_ptr<automation::Connection> events;
    base::ignoring([&] {
        if (const automation::ObjectRef& source = repository.LateBound::object())
            events = source->connect(std::make_shared<RepositorySink>(globals));
    });
    // What connected may have run code that unloaded the form or gave it another repository.
    if (globals.frmLogResources &&
        globals.frmLogResources->Repository.LateBound::object() == repository.LateBound::object())
        globals.frmLogResources->repositoryEvents = std::move(events);
}

void RepositoryObjectModified(core::Globals& globals, std::u16string_view objectId) {
    const core::LogViews::ListRef view = globals.LogViews.first();
    if (!view) return;
    // No foreign code runs while references are cleared; closing an entry tells the host of it.
    for (const widgets::RowId entry : clearReferences(globals, *view, objectId))
        if (const int row = view->positionOf(entry)) CollapseEntry(globals, view, row);
}

} // namespace cvlog::details
