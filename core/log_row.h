#pragma once

#include "widgets/row_content.h"

#include <array>
#include <string>
#include <string_view>

namespace cvlog::core {

/// The cells of an entry's row, in this order; the columns after the first have the same keys.
inline constexpr std::array<std::u16string_view, 6> kLogCellKeys = {u"Elapsed", u"Method", u"Type",
                                                                    u"Name",    u"Result", u"Message"};

/// A log entry as its row shows it. Cells of what the entry does not have stay empty.
struct LogEntry {
    std::u16string date;
    std::u16string objectId; // of the object that was reported
    std::u16string elapsed;
    std::u16string method;
    std::u16string typeName;
    std::u16string typeIcon;
    std::u16string objectName;
    std::u16string loggedObjectId; // of the object that the entry is logged against
    std::u16string result;
    std::u16string resultIcon;
    std::u16string message;    // as the host gave it
    std::u16string errorsPath; // kept only beside a message
};

widgets::RowPtr MakeLogRow(const LogEntry& entry);

} // namespace cvlog::core
