#pragma once

#include "widgets/sort_key.h"

#include <vector>

namespace cvlog::widgets {

/// Puts keys in ascending order.
void putInOrder(std::vector<const SortKey*>& keys);

} // namespace cvlog::widgets
