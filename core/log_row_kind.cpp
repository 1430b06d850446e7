#include "core/log_row_kind.h"

namespace cvlog::core {

int OwningEntry(const widgets::ListView& list, int childPosition) noexcept {
    int position = childPosition - 1;
    while (position >= 1 && IsChildRow(list.row(position))) --position;
    return position;
}

} // namespace cvlog::core
