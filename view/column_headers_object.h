#pragma once

#include "automation/dispatch_table.h"
#include "view/list_face.h"

namespace cvlog::view {

/// The columns of a list, ColumnHeaders: Count, and Item by key or by place from 1. The columns of a list are fixed.
automation::ObjectRef makeColumnHeaders(WeakList list);

} // namespace cvlog::view
