#pragma once

#include "automation/value.h"
#include "widgets/list_view.h"

#include <functional>
#include <memory>
#include <string>

// What the automation objects of a list and of its parts have in common. They hold the list weakly and its rows by
// identity, so they may be kept for any time: what has gone answers with an error.

namespace cvlog::view {

using ListRef = std::shared_ptr<widgets::ListView>;
using WeakList = std::weak_ptr<widgets::ListView>;

/// The list, for the time of one call. Throws when its control has gone.
ListRef liveList(const WeakList& list);

/// A row that was just found.
struct RowPlace {
    ListRef list;
    int position;

    const widgets::RowContent& content() const noexcept { return list->row(position); }
    /// Shows other content in this list; all others keep theirs.
    void replace(widgets::RowPtr content) const { list->replace(position, std::move(content)); }
};

/// A row of a list, by its identity. Where it was last is where it is looked for first.
class RowRef {
public:
    RowRef(const ListRef& list, int position);

    /// Throws when the row is no longer in its list, or the list has gone.
    RowPlace find() const;

private:
    WeakList list_;
    widgets::RowId id_;
    mutable int guess_;
};

/// What names an element: a key, or a place from 1. Reading it may run foreign code, as an object stands for its default
/// value; so it is read before the list is looked at.
struct Index {
    explicit Index(const automation::Value& value);

    bool given = false;
    bool isKey = false;
    std::u16string key;
    std::int32_t place = 0;
};

using KeyLookup = std::function<int(std::u16string_view)>; // 0 for an unknown key

/// The 1-based position of the element. Throws "index out of bounds" or "element not found".
int positionIn(int count, const Index& index, const KeyLookup& positionOfKey);

/// Where a new element goes: to the place of the one that is named, or to the end when none is.
int placeForNew(int count, const Index& index, const KeyLookup& positionOfKey);

/// The key of an icon that is given by its key or its place in the images; 0 and nothing mean no icon.
std::u16string iconKey(const Index& icon, const std::shared_ptr<const widgets::ImageList>& images);

[[noreturn]] void refuseKey();
[[noreturn]] void refuseValue();

} // namespace cvlog::view
