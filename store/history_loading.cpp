#include "store/history_loading.h"

#include "automation/error.h"
#include "base/failure.h"
#include "base/text.h"
#include "core/column_fit.h"
#include "core/results.h"

namespace cvlog::store {

namespace {

using automation::Value;

constexpr std::u16string_view kDashes =
    u"--------------------------------------------------------------------";

std::shared_ptr<Recordset> openRecords(core::Globals& globals, std::int32_t after) {
    const std::shared_ptr<Database> database = globals.store.LogDatabase;
    if (!database) throw automation::AutomationError(automation::code::kObjectRequired, u"Object required");
    return database->openSnapshot(u"select * from LogInfo where RecordNum > " + base::decimal(after) +
                                  u" order by RecordNum");
}

/// A column of the records, read into the same memory again and again.
class ColumnReader {
public:
    explicit ColumnReader(std::u16string_view column) : column_(column) {}

    std::int32_t number(Recordset& record) { return automation::toInt32(read(record)); }
    /// The reader's own, until the next reading.
    std::u16string& text(Recordset& record) {
        read(record);
        return asText();
    }
    /// The same, empty for a column without a value.
    std::u16string_view textOrNothing(Recordset& record) {
        return read(record).isNothing() ? std::u16string_view() : asText();
    }

private:
    std::u16string& asText() {
        if (!value_.is<std::u16string>()) value_ = automation::toText(value_);
        return value_.makeText();
    }
    const Value& read(Recordset& record) {
        record.read(column_, value_);
        return value_;
    }

    std::u16string_view column_;
    Value value_;
};

/// Appends rows to the list of a history.
class HistoryRows {
public:
    HistoryRows(widgets::ListView& list, resources::Language language) : list_(list), language_(language) {}

    void appendSeparator() {
        const std::u16string session(resources::text(language_, kCurrentSession));
        const std::u16string dashes(kDashes);
        list_.append(widgets::makeRow(dashes + u" " + session + u" " + dashes, {}, kSessionIcon));
    }

    std::int32_t numberOf(Recordset& record) { return number_.number(record); }

    void append(Recordset& record, std::int32_t number) {
        const std::u16string_view text = core::CleanMessageInPlace(message_.text(record));
        const std::u16string_view icon = core::ResultIconKey(code_.number(record));
        tag_ = type_.textOrNothing(record);
        tag_ += u'\n';
        tag_ += name_.textOrNothing(record);
        tag_ += u'\n';
        tag_ += errors_.textOrNothing(record);
        list_.setNumberedKey(list_.append(widgets::makeRow(text, tag_, icon)), number);
    }

private:
    widgets::ListView& list_;
    resources::Language language_;
    ColumnReader number_{u"RecordNum"};
    ColumnReader message_{u"LogMessage"};
    ColumnReader code_{u"ReturnMessage"};
    ColumnReader type_{u"ObjectType"};
    ColumnReader name_{u"ObjectName"};
    ColumnReader errors_{u"Errors"};
    std::u16string tag_;
};

void appendRecords(Recordset& records, HistoryRows& rows, HistoryProgress& progress,
                   std::int32_t sessionStart) {
    for (; !records.atEnd(); records.moveNext()) {
        progress.LastLoaded = rows.numberOf(records);
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
    appendRecords(records, rows, progress, sessionStart);
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
