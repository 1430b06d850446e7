#include "view/list_face.h"

#include "automation/error.h"

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

int positionIn(int count, const Value& index, const std::function<int(std::u16string_view)>& positionOfKey) {
    if (index.is<std::u16string>()) {
        const std::u16string& key = index.as<std::u16string>();
        const int position = key.empty() ? 0 : positionOfKey(key);
        if (position == 0) throw AutomationError(code::kElementNotFound, u"Element not found: " + key);
        return position;
    }
    const std::int32_t position = automation::toInt32(index);
    if (position < 1 || position > count)
        throw AutomationError(code::kIndexOutOfBounds, u"Index out of bounds");
    return position;
}

int placeForNew(int count, const Value& index, const std::function<int(std::u16string_view)>& positionOfKey) {
    return index.isNothing() ? count + 1 : positionIn(count + 1, index, positionOfKey);
}

std::u16string iconKey(const Value& icon, const std::shared_ptr<const widgets::ImageList>& images) {
    if (icon.isNothing()) return {};
    if (icon.is<std::u16string>()) return icon.as<std::u16string>();
    const std::int32_t place = automation::toInt32(icon);
    if (place == 0) return {};
    if (!images || place < 1 || place > images->count())
        throw AutomationError(code::kIndexOutOfBounds, u"Index out of bounds");
    return std::u16string(images->key(place - 1));
}

void refuseKey() { throw AutomationError(code::kKeyNotUnique, u"Key is not unique in collection"); }

void refuseValue() { throw AutomationError(code::kInvalidPropertyValue, u"Invalid property value"); }

} // namespace cvlog::view
