#pragma once

#include "widgets/list_view.h"

namespace cvlog::view {

/// Brings `target` into step with `source`, position by position: a row that is missing there, or differs in text or
/// tag, is inserted as a copy with its selected state; rows that match are left alone, and none is removed. The target
/// then takes over the source's sorting, so that all lists stay in one order, and shows the same rows at the top.
void CopyAllRows(const widgets::ListView& source, widgets::ListView& target);

} // namespace cvlog::view
