#pragma once

#include "automation/dispatch_table.h"
#include "view/list_face.h"

namespace cvlog::view {

/// A row as others see it, ListItem.
automation::ObjectRef makeListItem(const ListRef& list, int position);
/// The row that an object made by makeListItem stands for; throws a type mismatch for any other object.
const RowRef& rowOfItem(const automation::ObjectRef& item);

/// The rows of a list, ListItems: Count, Item by key or by place from 1, Add, Remove, Clear. What is done here is done
/// in this list only.
automation::ObjectRef makeListItems(WeakList list);

} // namespace cvlog::view
