#pragma once

#include <string>
#include <vector>

#include "workbench/log_list.h"

namespace workbench {

/// How a log control's list looks: what it says of itself, and what its window shows. A line for each column and row.
class ListLook {
public:
    explicit ListLook(IDispatch* control);

    /// The first line in which the other list differs, with both versions; "" when they look alike.
    std::wstring differenceFrom(const ListLook& other) const;
    size_t lineCount() const { return lines_.size(); }

private:
    void readColumns(const LogList& list);
    void readRows(const LogList& list);

    std::vector<std::wstring> lines_;
};

} // namespace workbench
