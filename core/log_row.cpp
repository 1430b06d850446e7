#include "core/log_row.h"

#include "core/results.h"

namespace cvlog::core {

namespace {

const widgets::RowKeys& logRowKeys() {
    static const widgets::RowKeys keys =
        std::make_shared<const std::vector<std::u16string>>(kLogCellKeys.begin(), kLogCellKeys.end());
    return keys;
}

} // namespace

widgets::RowPtr MakeLogRow(const LogEntry& entry) {
    widgets::Row row{entry.date, entry.objectId, entry.resultIcon, {}};
    for (const std::u16string_view key : kLogCellKeys)
        row.cells.push_back({std::u16string(key), {}, {}, {}, {}});
    row.cell(u"Elapsed")->text = entry.elapsed;
    row.cell(u"Method")->text = entry.method;
    row.cell(u"Type")->text = entry.typeName;
    widgets::Cell& name = *row.cell(u"Name");
    name.text = entry.objectName;
    name.tag = entry.loggedObjectId;
    name.icon = entry.typeIcon;
    widgets::Cell& result = *row.cell(u"Result");
    result.text = entry.result;
    result.icon = entry.resultIcon;
    if (!entry.message.empty()) {
        widgets::Cell& message = *row.cell(u"Message");
        message.text = CleanMessage(entry.message);
        message.tag = entry.errorsPath;
    }
    return makeRow(row, logRowKeys());
}

} // namespace cvlog::core
