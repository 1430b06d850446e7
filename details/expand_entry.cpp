#include "details/expand_entry.h"

#include "base/failure.h"
#include "core/column_fit.h"

namespace cvlog::details {

namespace {

constexpr std::u16string_view kMessage = u"Message";

std::u16string errorsFileOf(const widgets::RowContent& row) {
    return std::u16string(row.cellTag(row.cellOf(kMessage)));
}

} // namespace

void ExpandEntry(core::Globals& globals, const core::LogViews::ListRef& view, int position) {
    const std::u16string path = errorsFileOf(view->row(position));
    if (!path.empty() && !globals.platform.files.fileExists(path)) view->setCellTag(position, kMessage, {});
    for (int list = globals.LogViews.count(); list > 0; --list) core::AutoSizeColumns(*view, 0);
    base::ignoring([&] { view->takeFocus(); });
}

} // namespace cvlog::details
