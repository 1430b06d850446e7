#include "core/log_views.h"

#include "base/text.h"

#include <algorithm>

namespace cvlog::core {

std::u16string LogViews::keyOf(const widgets::ListView& list) {
    return base::decimal(list.windowHandle()) + u"k";
}

void LogViews::add(ListRef list) {
    const std::u16string key = keyOf(*list);
    // A list that a container robbed of its window has its key no longer: the next window may have the handle.
    const bool known = std::any_of(entries_.begin(), entries_.end(), [&key](const Entry& entry) {
        return entry.key == key && keyOf(*entry.list) == key;
    });
    if (!known) entries_.push_back({key, std::move(list)});
}

void LogViews::remove(const widgets::ListView& list) {
    std::erase_if(entries_, [&list](const Entry& entry) { return entry.list.get() == &list; });
}

std::vector<LogViews::ListRef> LogViews::all() const {
    std::vector<ListRef> lists;
    lists.reserve(entries_.size());
    for (const Entry& entry : entries_) lists.push_back(entry.list);
    return lists;
}

} // namespace cvlog::core
