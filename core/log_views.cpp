#include "core/log_views.h"

#include "base/text.h"

#include <algorithm>

namespace cvlog::core {

std::u16string LogViews::keyOf(const widgets::ListView& list) {
    return base::decimal(list.windowHandle()) + u"k";
}

void LogViews::add(ListRef list) {
    const std::u16string key = keyOf(*list);
    const bool known = std::any_of(entries_.begin(), entries_.end(),
                                   [&key](const Entry& entry) { return entry.key == key; });
    if (!known) entries_.push_back({key, std::move(list)});
}

void LogViews::remove(std::u16string_view key) {
    std::erase_if(entries_, [key](const Entry& entry) { return base::equalsIgnoringCase(entry.key, key); });
}

std::vector<LogViews::ListRef> LogViews::all() const {
    std::vector<ListRef> lists;
    lists.reserve(entries_.size());
    for (const Entry& entry : entries_) lists.push_back(entry.list);
    return lists;
}

} // namespace cvlog::core
