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

void appendText(std::u16string& text, const Value& value) {
    if (value.is<std::u16string>())
        text += value.as<std::u16string>();
    else if (!value.isNothing())
        text += automation::toText(value);
}

std::u16string cleanText(const Value& value) {
    return core::CleanMessage(value.is<std::u16string>() ? value.as<std::u16string>()
                                                         : automation::toText(value));
}

/// Appends rows to the list of a history.
class HistoryRows {
public:
    HistoryRows(widgets::ListView& list, resources::Language language) : list_(list), language_(language) {}

    void appendSeparator() {
        const std::u16string session(resources::text(language_, kCurrentSession));
        row_ = {std::u16string(kDashes) + u" " + session + u" " + std::u16string(kDashes),
                {},
                std::u16string(kSessionIcon),
                {}};
        list_.append(widgets::makeRow(row_, keys_));
    }

    void append(Recordset& record, std::int32_t number) {
        row_.text = cleanText(record.value(u"LogMessage"));
        row_.smallIcon = core::ResultIconKey(automation::toInt32(record.value(u"ReturnMessage")));
        row_.tag.clear();
        appendText(row_.tag, record.value(u"ObjectType"));
        row_.tag += u'\n';
        appendText(row_.tag, record.value(u"ObjectName"));
        row_.tag += u'\n';
        appendText(row_.tag, record.value(u"Errors"));
        list_.setNumberedKey(list_.append(widgets::makeRow(row_, keys_)), number);
    }

private:
    widgets::ListView& list_;
    resources::Language language_;
    widgets::Row row_;
    widgets::RowKeys keys_ = std::make_shared<const std::vector<std::u16string>>(); // one column: no cells
};

void appendRecords(Recordset& records, HistoryRows& rows, HistoryProgress& progress,
                   std::int32_t sessionStart) {
    for (; !records.atEnd(); records.moveNext()) {
        progress.LastLoaded = automation::toInt32(records.value(u"RecordNum"));
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
