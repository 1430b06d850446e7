#include "view/list_items_object.h"

#include "automation/member_builders.h"
#include "automation/object.h"

namespace cvlog::view {

using namespace automation;

namespace {

class ListItems final : public DispatchObject {
public:
    explicit ListItems(WeakList list) : list_(std::move(list)) {}

    const DispatchTable& dispatchTable() const override;
    std::optional<std::int32_t> firstElement() const override { return 1; }

private:
    static int rowIn(const widgets::ListView& list, const Index& index) {
        return positionIn(list.rowCount(), index, keysOf(list));
    }
    static KeyLookup keysOf(const widgets::ListView& list) {
        return [&list](std::u16string_view key) { return list.rowOf(key); };
    }
    ObjectRef add(std::span<Value> values) const;

    WeakList list_;
};

// The icon of the large views, values[3], has no place in a report.
ObjectRef ListItems::add(std::span<Value> values) const {
    const Index before(values[0]);
    const Index icon(values[4]);
    const ListRef list = liveList(list_);
    const std::u16string& key = values[1].as<std::u16string>();
    if (list->rowOf(key) != 0) refuseKey();
    const int wanted = placeForNew(list->rowCount(), before, keysOf(*list));
    const widgets::RowPtr content =
        widgets::makeRow({values[2].as<std::u16string>(), {}, iconKey(icon, list->smallIcons()), {}});
    widgets::ListView::Batch batch(*list); // the peer's work comes when the row is complete
    const widgets::RowId id = list->insert(wanted, content);
    const int position = list->positionOf(id, wanted);
    list->setRowKey(position, key);
    return makeListItem(list, position);
}

const DispatchTable& ListItems::dispatchTable() const {
    using Self = ListItems;
    static const DispatchTable table = {
        indexed<Self>(u"Item", 0, Type::Object, {{u"Index", Type::Any}},
                      [](Self& self, std::span<Value> values) {
                          const Index index(values[0]);
                          const ListRef list = liveList(self.list_);
                          return makeListItem(list, rowIn(*list, index));
                      }),
        readable<Self>(u"Count", 1, Type::Int32, [](Self& self) { return liveList(self.list_)->rowCount(); }),
        method<Self>(u"Add", 2, Type::Object,
                     {optional(u"Index", Type::Any), optional(u"Key", Type::Text),
                      optional(u"Text", Type::Text), optional(u"Icon", Type::Any),
                      optional(u"SmallIcon", Type::Any)},
                     [](Self& self, std::span<Value> values) { return self.add(values); }),
        method<Self>(u"Remove", 3, Type::Nothing, {{u"Index", Type::Any}},
                     [](Self& self, std::span<Value> values) {
                         const Index index(values[0]);
                         const ListRef list = liveList(self.list_);
                         list->remove(rowIn(*list, index));
                     }),
        method<Self>(u"Clear", 4, Type::Nothing, {},
                     [](Self& self, std::span<Value>) { liveList(self.list_)->clear(); }),
    };
    return table;
}

} // namespace

ObjectRef makeListItems(WeakList list) { return std::make_shared<ListItems>(std::move(list)); }

} // namespace cvlog::view
