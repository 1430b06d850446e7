#include "store/record_writer.h"

#include "base/failure.h"
#include "core/cv_log.h"
#include "core/series_report.h"

#include <array>
#include <optional>

namespace cvlog::store {

namespace {

std::u16string objectText(const core::Globals& globals, const Record& record) {
    std::u16string text = record.Object.displayName();
    const hostapi::EntityType type = record.Object.entityType();
    const std::int32_t composite = globals.store.Workspace.repository().erd().entityFlags(u"COMPOSITE");
    if ((composite & type.id()) != 0) return text + u" (Project) ";
    return text + u" (" + type.displayName() + u") ";
}

/// One column of a record. Nothing when its value could not be had: the column then keeps its default.
struct ColumnValue {
    std::u16string_view column;
    std::optional<automation::Value> value;
};

template <class Read>
ColumnValue guarded(std::u16string_view column, Read&& read) {
    ColumnValue result{column, std::nullopt};
    base::ignoring([&] { result.value = read(); });
    return result;
}

// All that the host has to be asked is asked here, before the row is begun: what the host runs meanwhile may write
// records of its own.
std::array<ColumnValue, 6> columnValues(const Record& record, const std::u16string& message) {
    const hostapi::RepositoryObject& object = record.Object;
    return {
        {{u"MethodName", record.MethodName},
         guarded(u"ObjectName", [&] { return object ? object.property(u"Name") : std::u16string(); }),
         guarded(u"ObjectType", [&] { return object ? object.entityType().keyName() : std::u16string(); }),
         {u"LogMessage", message},
         {u"ReturnMessage", record.ReturnCode},
         {u"Errors", record.ErrorsFileName}}};
}

void appendRow(Recordset& rows, const std::array<ColumnValue, 6>& values) {
    base::ignoring([&] { rows.addNew(); });
    for (const ColumnValue& item : values)
        if (item.value) base::ignoring([&] { rows.assign(item.column, *item.value); });
    base::ignoring([&] { rows.update(); });
}

} // namespace

std::u16string ComposeMessage(const core::Globals& globals, const Record& record) {
    std::u16string text;
    if (!record.MethodName.empty()) {
        text = record.MethodName;
        text += resources::text(globals.platform.language, record.Object ? 516 : 515);
    }
    if (record.Object) text += objectText(globals, record);
    if (!record.MethodName.empty()) text += u"- " + core::ReturnCodeText(globals, record.ReturnCode);
    if (!record.Message.empty()) {
        if (!text.empty()) text += u". ";
        text += record.Message;
    }
    return text;
}

void WriteRecord(core::Globals& globals, core::CVLog& log, const Record& record) {
    const std::u16string description = ComposeMessage(globals, record);
    const std::u16string message = base::formatDateTime(globals.platform.clock.now()) + u" " + description;
    const std::array<ColumnValue, 6> values = columnValues(record, message);
    if (const std::shared_ptr<Recordset> rows = globals.store.LogRecordset) appendRow(*rows, values);
    log.FireEvent(u"LogChanged");
}

} // namespace cvlog::store
