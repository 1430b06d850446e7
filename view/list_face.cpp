#include "view/list_face.h"

#include "automation/error.h"
#include "automation/object.h"

namespace cvlog::view {

using automation::AutomationError;
using automation::Value;
namespace code = automation::code;

ListRef liveList(const WeakList& list) {
    ListRef live = list.lock();
    if (!live) throw AutomationError(code::kElementGone, u"This list's control has been deleted");
    return live;
}

RowRef::RowRef(const ListRef& list, int position)
    : list_(list), id_(list->idAt(position)), guess_(position) {}

RowPlace RowRef::find() const {
    RowPlace place{liveList(list_), 0};
    place.position = place.list->positionOf(id_, guess_);
    if (place.position == 0)
        throw AutomationError(code::kElementGone, u"This item has been removed from its list");
    guess_ = place.position;
    return place;
}

Index::Index(const Value& value) {
    const bool isObject = value.is<automation::ObjectRef>() && !value.isNothing();
    const Value plain = isObject ? value.as<automation::ObjectRef>()->get(u"") : value;
    given = !plain.isNothing();
    isKey = plain.is<std::u16string>();
    if (isKey)
        key = plain.as<std::u16string>();
    else if (given)
        place = automation::toInt32(plain);
}

int positionIn(int count, const Index& index, const KeyLookup& positionOfKey) {
    if (index.isKey) {
        const int position = index.key.empty() ? 0 : positionOfKey(index.key);
        if (position == 0) throw AutomationError(code::kElementNotFound, u"Element not found: " + index.key);
        return position;
    }
    if (index.place < 1 || index.place > count)
        throw AutomationError(code::kIndexOutOfBounds, u"Index out of bounds");
    return index.place;
}

int placeForNew(int count, const Index& index, const KeyLookup& positionOfKey) {
    return index.given ? positionIn(count + 1, index, positionOfKey) : count + 1;
}

std::u16string iconKey(const Index& icon, const std::shared_ptr<const widgets::ImageList>& images) {
    if (icon.isKey || icon.place == 0) return icon.key;
    if (!images || icon.place < 1 || icon.place > images->count())
        throw AutomationError(code::kIndexOutOfBounds, u"Index out of bounds");
    return std::u16string(images->key(icon.place - 1));
}

void refuseKey() { throw AutomationError(code::kKeyNotUnique, u"Key is not unique in collection"); }

void refuseValue() { throw AutomationError(code::kInvalidPropertyValue, u"Invalid property value"); }

} // namespace cvlog::view
