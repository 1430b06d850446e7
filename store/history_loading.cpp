#include "store/history_loading.h"

#include "automation/error.h"
#include "base/failure.h"
#include "base/text.h"
#include "core/column_fit.h"
#include "core/results.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <vector>

namespace cvlog::store {

namespace {

constexpr std::u16string_view kDashes =
    u"--------------------------------------------------------------------";

// Views, as the length of a literal of this kind is counted each time.
constexpr std::u16string_view kNumber = u"RecordNum";
constexpr std::u16string_view kMessage = u"LogMessage";
constexpr std::u16string_view kCode = u"ReturnMessage";
constexpr std::u16string_view kType = u"ObjectType";
constexpr std::u16string_view kName = u"ObjectName";
constexpr std::u16string_view kErrors = u"Errors";

std::shared_ptr<Recordset> openRecords(core::Globals& globals, std::int32_t after) {
    const std::shared_ptr<Database> database = globals.store.LogDatabase;
    if (!database) throw automation::AutomationError(automation::code::kObjectRequired, u"Object required");
    return database->openSnapshot(u"select * from LogInfo where RecordNum > " + base::decimal(after) +
                                  u" order by RecordNum");
}

/// Appends rows to the list of a history, many at a time.
class HistoryRows {
public:
    HistoryRows(widgets::ListView& list, resources::Language language) : list_(list), language_(language) {
        waiting_.reserve(kRun);
    }

    void appendSeparator() {
        flush();
        const std::u16string session(resources::text(language_, kCurrentSession));
        const std::u16string dashes(kDashes);
        list_.append(widgets::makeRow(dashes + u" " + session + u" " + dashes, {}, kSessionIcon));
    }

    void append(Recordset& record, std::int32_t number) {
        message_.clear();
        if (!record.appendText(kMessage, message_)) throw std::invalid_argument("no message");
        const widgets::RowPtr& model = modelOf(record.readNumber(kCode));
        tag_.clear();
        record.appendText(kType, tag_);
        tag_.appendAscii('\n');
        record.appendText(kName, tag_);
        tag_.appendAscii('\n');
        record.appendText(kErrors, tag_);
        const widgets::OwnText own[] = {{widgets::RowField::Text, cleanedMessage()},
                                        {widgets::RowField::Tag, tag_.view()}};
        waiting_.push_back(widgets::makeRowLike(model, own, &memory_));
        numbers_[waiting_.size() - 1] = number;
        if (waiting_.size() == kRun) flush();
    }

    /// Brings the rows that wait into the list.
    void flush() {
        if (waiting_.empty()) return;
        const auto count = static_cast<widgets::RowId>(waiting_.size());
        const widgets::RowId behind = list_.insertRun(list_.rowCount() + 1, waiting_) + 1;
        waiting_.clear();
        for (widgets::RowId i = 0; i < count; ++i) list_.setNumberedKey(behind - count + i, numbers_[i]);
    }

private:
    static constexpr std::size_t kRun = 64;
    static constexpr std::size_t kMostModels = 16; // there are few codes, but any number may come

    struct Model {
        std::int32_t code;
        widgets::RowPtr row;
    };

    base::CompactTextView cleanedMessage() noexcept {
        if (message_.isAscii()) return core::CleanMessageInPlace(message_.ascii());
        return core::CleanMessageInPlace(message_.wide());
    }

    // The rows of one result are alike but for their texts.
    const widgets::RowPtr& modelOf(std::int32_t code) {
        const auto known = std::ranges::find(models_, code, &Model::code);
        if (known != models_.end()) return known->row;
        if (models_.size() == kMostModels) models_.clear();
        models_.push_back({code, widgets::makeRow({}, {}, core::ResultIconKey(code))});
        return models_.back().row;
    }

    widgets::ListView& list_;
    resources::Language language_;
    base::CompactText message_;
    base::CompactText tag_;
    std::vector<Model> models_;
    widgets::RowMemory memory_;
    std::vector<widgets::RowPtr> waiting_;
    std::array<std::int32_t, kRun> numbers_{};
};

void appendRecords(Recordset& records, HistoryRows& rows, HistoryProgress& progress,
                   std::int32_t sessionStart) {
    for (; !records.atEnd(); records.moveNext()) {
        progress.LastLoaded = records.readNumber(kNumber);
        if (progress.SeparatorPending && progress.LastLoaded > sessionStart) {
            rows.appendSeparator();
            progress.SeparatorPending = false;
        }
        rows.append(records, progress.LastLoaded);
    }
}

void fitColumn(widgets::ListView& list) {
    const base::Twips needed = list.widestCell(1) + core::kCaptionPadding;
    if (needed > list.column(1).width) list.setColumnWidth(1, needed);
}

void loadRecords(Recordset& records, widgets::ListView& list, HistoryProgress& progress,
                 std::int32_t sessionStart, resources::Language language) {
    widgets::ListView::Batch batch(list);
    list.widestCell(1); // measured row by row from here on
    HistoryRows rows(list, language);
    try {
        appendRecords(records, rows, progress, sessionStart);
    } catch (...) {
        base::ignoring([&] { rows.flush(); }); // what came before the failure stays
        throw;
    }
    rows.flush();
    // Nothing was above the session's start: the session has no record yet, or there is no record at all.
    if (progress.SeparatorPending) {
        rows.appendSeparator();
        progress.SeparatorPending = false;
    }
    fitColumn(list);
}

} // namespace

void LoadHistory(core::Globals& globals, widgets::ListView& list, HistoryProgress& progress,
                 std::int32_t sessionStart) {
    if (progress.SeparatorPending) progress.LastLoaded = 0;
    const std::shared_ptr<Recordset> records = openRecords(globals, progress.LastLoaded);
    const bool complete = base::ignoring(
        [&] { loadRecords(*records, list, progress, sessionStart, globals.platform.language); });
    if (complete && list.rowCount() > 0) list.scrollTo(list.rowCount());
    base::ignoring([&] { records->close(); });
    if (complete)
        list.repaint();
    else
        progress.LastLoaded = 0;
}

HistoryTag HistoryTag::parse(std::u16string_view tag) {
    HistoryTag parts;
    for (std::u16string* part : {&parts.objectType, &parts.objectName, &parts.errorsFile}) {
        const std::size_t end = tag.find(u'\n');
        *part = tag.substr(0, end);
        if (end == std::u16string_view::npos) break;
        tag.remove_prefix(end + 1);
    }
    return parts;
}

} // namespace cvlog::store
