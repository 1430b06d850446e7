#pragma once

#include "base/text.h"
#include "widgets/list_view.h"

namespace cvlog::core {

/// The tag by which a row is known as one of the messages of the entry above it. There is no other mark.
inline constexpr std::u16string_view kChildRowTag = u"expansion";

inline bool IsChildRow(const widgets::RowContent& row) noexcept {
    return row.tag().equalsIgnoringCase(kChildRowTag);
}

/// The row at this place is an entry whose messages are shown below it.
inline bool IsExpanded(const widgets::ListView& list, int position) noexcept {
    return !IsChildRow(list.row(position)) && position < list.rowCount() &&
           IsChildRow(list.row(position + 1));
}

/// The entry that a child row belongs to: the nearest entry above; 0 when there is none.
int OwningEntry(const widgets::ListView& list, int childPosition) noexcept;

} // namespace cvlog::core
