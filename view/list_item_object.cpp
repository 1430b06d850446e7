// One row as others see it.

#include "automation/error.h"
#include "automation/member_builders.h"
#include "view/list_items_object.h"
#include "view/list_sub_items_object.h"

namespace cvlog::view {

using namespace automation;
using widgets::RowContent;
using widgets::RowField;

namespace {

class ListItem final : public DispatchObject {
public:
    explicit ListItem(RowRef row) : row_(std::move(row)) {}

    const DispatchTable& dispatchTable() const override;
    const RowRef& row() const noexcept { return row_; }

private:
    void put(RowField field, std::u16string_view text) const {
        const RowPlace place = row_.find();
        place.replace(place.content().with(field, text));
    }
    void setKey(const std::u16string& key) const {
        const RowPlace place = row_.find();
        if (!place.list->setRowKey(place.position, key)) refuseKey();
    }

    RowRef row_;
};

const DispatchTable& ListItem::dispatchTable() const {
    using Self = ListItem;
    const auto reads = [](base::CompactTextView (RowContent::*part)() const noexcept) {
        return [part](Self& self) {
            const RowPlace place = self.row_.find();
            return std::u16string((place.content().*part)());
        };
    };
    const auto writes = [](RowField field) {
        return [field](Self& self, const Value& value) { self.put(field, value.as<std::u16string>()); };
    };
    static const DispatchTable table = {
        readable<Self>(u"Text", 0, Type::Text, reads(&RowContent::text)),
        settable<Self>(u"Text", 0, Type::Text, writes(RowField::Text)),
        readable<Self>(u"Tag", 1, Type::Text, reads(&RowContent::tag)),
        settable<Self>(u"Tag", 1, Type::Text, writes(RowField::Tag)),
        readable<Self>(u"Key", 2, Type::Text,
                       [](Self& self) {
                           const RowPlace place = self.row_.find();
                           return place.list->rowKey(place.position);
                       }),
        settable<Self>(u"Key", 2, Type::Text,
                       [](Self& self, const Value& value) { self.setKey(value.as<std::u16string>()); }),
        readable<Self>(u"Index", 3, Type::Int32, [](Self& self) { return self.row_.find().position; }),
        readable<Self>(u"SmallIcon", 4, Type::Any, reads(&RowContent::smallIcon)),
        settable<Self>(u"SmallIcon", 4, Type::Any,
                       [](Self& self, const Value& value) {
                           const Index icon(value);
                           const ListRef list = self.row_.find().list;
                           self.put(RowField::SmallIcon, iconKey(icon, list->smallIcons()));
                       }),
        readable<Self>(u"Selected", 5, Type::Boolean,
                       [](Self& self) {
                           const RowPlace place = self.row_.find();
                           return place.list->isSelected(place.position);
                       }),
        settable<Self>(u"Selected", 5, Type::Boolean,
                       [](Self& self, const Value& value) {
                           const RowPlace place = self.row_.find();
                           place.list->select(place.position, value.as<bool>());
                       }),
        indexed<Self>(u"SubItems", 6, Type::Text, {{u"Index", Type::Int32}},
                      [](Self& self, std::span<Value> values) {
                          return subItemText(self.row_.find(), values[0].as<std::int32_t>());
                      }),
        {u"SubItems",
         6,
         MemberKind::PropertyPut,
         Type::Nothing,
         {{u"Index", Type::Int32}, {u"SubItems", Type::Text}},
         on<Self>([](Self& self, std::span<Value> values) {
             setSubItemText(self.row_.find(), values[0].as<std::int32_t>(), values[1].as<std::u16string>());
         })},
        readable<Self>(u"ListSubItems", 7, Type::Object,
                       [](Self& self) {
                           self.row_.find(); // fails when the row has gone
                           return makeListSubItems(self.row_);
                       }),
        method<Self>(u"EnsureVisible", 8, Type::Nothing, {},
                     [](Self& self, std::span<Value>) {
                         const RowPlace place = self.row_.find();
                         place.list->scrollTo(place.position);
                     }),
    };
    return table;
}

} // namespace

ObjectRef makeListItem(const ListRef& list, int position) {
    return std::make_shared<ListItem>(RowRef(list, position));
}

const RowRef& rowOfItem(const ObjectRef& item) {
    const auto* row = dynamic_cast<const ListItem*>(item.get());
    if (!row) throw AutomationError(code::kTypeMismatch, u"A list item is needed");
    return row->row();
}

} // namespace cvlog::view
