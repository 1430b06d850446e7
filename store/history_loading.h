#pragma once

#include "core/globals.h"

#include <string>
#include <string_view>

namespace cvlog::store {

/// How far the list of a history window has come.
struct HistoryProgress {
    std::int32_t LastLoaded = 0;  // the number of the last record in the list
    bool SeparatorPending = true; // the row above the current session is still to come
    std::int32_t DeleteLimit = 0; // up to where deleting at the separator removes records; never moves
};

/// The icon of the row above the current session, which no record has, and the text between its dashes.
inline constexpr std::u16string_view kSessionIcon = u"Session";
inline constexpr int kCurrentSession = 514;

/// Appends the records that the list does not have yet, oldest first, and the separator before the first one above
/// `sessionStart`, or at the end when there is none. The column is widened to fit and the last row is shown.
///
/// A query that cannot be opened reaches the caller. A record that cannot be read ends the load: the rows before it
/// stay, and the next load begins with the first record, so that those rows come twice.
void LoadHistory(core::Globals& globals, widgets::ListView& list, HistoryProgress& progress,
                 std::int32_t sessionStart);

/// What a record's row tells of its object: parts of the row's tag, which has them on lines.
struct HistoryTag {
    std::u16string objectType;
    std::u16string objectName;
    std::u16string errorsFile;

    /// What a tag lacks is empty, what it has beyond is dropped: a name with a line feed in it names nothing.
    static HistoryTag parse(std::u16string_view tag);
};

} // namespace cvlog::store
