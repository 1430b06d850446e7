#pragma once

#include "automation/dispatch_table.h"
#include "view/list_face.h"

namespace cvlog::view {

/// The sub-items of a row, ListSubItems: Count, Item by key or by place from 1, Add, Remove, Clear. Its sub-items are
/// found by their keys, those without one by their places.
automation::ObjectRef makeListSubItems(RowRef row);

/// The text of a row's sub-item. Throws "index out of bounds" for one that the list has no column for.
std::u16string subItemText(const RowPlace& row, int index);
/// Cells that the row lacks up to there are made, with the keys of their columns.
void setSubItemText(const RowPlace& row, int index, std::u16string_view text);

} // namespace cvlog::view
