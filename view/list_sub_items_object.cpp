#include "view/list_sub_items_object.h"

#include "automation/error.h"
#include "automation/member_builders.h"
#include "base/text.h"

#include <algorithm>

namespace cvlog::view {

using namespace automation;
using widgets::CellField;

namespace {

bool hasKey(const widgets::RowContent& row, std::u16string_view key) {
    return !key.empty() && row.cellOf(key) != 0;
}

class ListSubItem final : public DispatchObject {
public:
    ListSubItem(RowRef row, int cell, std::u16string_view key)
        : row_(std::move(row)), cell_(cell), key_(key) {}

    const DispatchTable& dispatchTable() const override;

private:
    struct Place {
        RowPlace row;
        int cell;
        const widgets::RowContent& content() const noexcept { return row.content(); }
    };
    Place find();
    void put(CellField field, std::u16string_view text);
    void setKey(const std::u16string& key);

    RowRef row_;
    int cell_;
    std::u16string key_;
};

ListSubItem::Place ListSubItem::find() {
    Place place{row_.find(), cell_};
    const widgets::RowContent& row = place.content();
    const bool stillThere = cell_ <= row.cellCount() && base::equalsIgnoringCase(row.cellKey(cell_), key_);
    if (!stillThere) place.cell = key_.empty() ? 0 : row.cellOf(key_);
    if (place.cell == 0)
        throw AutomationError(code::kElementGone, u"This sub-item has been removed from its row");
    cell_ = place.cell;
    return place;
}

void ListSubItem::put(CellField field, std::u16string_view text) {
    const Place place = find();
    place.row.replace(place.content().withCell(place.cell, field, text));
}

void ListSubItem::setKey(const std::u16string& key) {
    const Place place = find();
    const int owner = key.empty() ? 0 : place.content().cellOf(key);
    if (owner != 0 && owner != place.cell) refuseKey();
    widgets::Row changed = place.content().edit();
    changed.cells[static_cast<std::size_t>(place.cell - 1)].key = key;
    place.row.replace(widgets::makeRow(changed));
    key_ = key;
}

const DispatchTable& ListSubItem::dispatchTable() const {
    using Self = ListSubItem;
    using widgets::RowContent;
    const auto reads = [](auto part) {
        return [part](Self& self) {
            const Place place = self.find();
            return std::u16string((place.content().*part)(place.cell));
        };
    };
    const auto writes = [](CellField field) {
        return [field](Self& self, const Value& value) { self.put(field, value.as<std::u16string>()); };
    };
    static const DispatchTable table = {
        readable<Self>(u"Text", 0, Type::Text, reads(&RowContent::cellText)),
        settable<Self>(u"Text", 0, Type::Text, writes(CellField::Text)),
        readable<Self>(u"Tag", 1, Type::Text, reads(&RowContent::cellTag)),
        settable<Self>(u"Tag", 1, Type::Text, writes(CellField::Tag)),
        readable<Self>(u"Key", 2, Type::Text, reads(&RowContent::cellKey)),
        settable<Self>(u"Key", 2, Type::Text,
                       [](Self& self, const Value& value) { self.setKey(value.as<std::u16string>()); }),
        readable<Self>(u"Index", 3, Type::Int32, [](Self& self) { return self.find().cell; }),
        readable<Self>(u"ReportIcon", 4, Type::Any, reads(&RowContent::cellIcon)),
        settable<Self>(u"ReportIcon", 4, Type::Any,
                       [](Self& self, const Value& value) {
                           const Index icon(value);
                           const ListRef list = self.find().row.list;
                           self.put(CellField::Icon, iconKey(icon, list->smallIcons()));
                       }),
        readable<Self>(u"ToolTipText", 5, Type::Text, reads(&RowContent::cellToolTip)),
        settable<Self>(u"ToolTipText", 5, Type::Text, writes(CellField::ToolTip)),
    };
    return table;
}

class ListSubItems final : public DispatchObject {
public:
    explicit ListSubItems(RowRef row) : row_(std::move(row)) {}

    const DispatchTable& dispatchTable() const override;
    std::optional<std::int32_t> firstElement() const override { return 1; }

private:
    static int cellIn(const widgets::RowContent& row, const Index& index) {
        return positionIn(row.cellCount(), index,
                          [&row](std::u16string_view key) { return row.cellOf(key); });
    }
    ObjectRef itemAt(const RowPlace& row, int cell) const {
        return std::make_shared<ListSubItem>(row_, cell, row.content().cellKey(cell));
    }
    ObjectRef add(std::span<Value> values) const;
    void remove(const Index& index) const;

    RowRef row_;
};

ObjectRef ListSubItems::add(std::span<Value> values) const {
    const Index before(values[0]);
    const Index icon(values[3]);
    const RowPlace place = row_.find();
    const widgets::RowContent& row = place.content();
    const std::u16string& key = values[1].as<std::u16string>();
    if (hasKey(row, key)) refuseKey();
    const int cell = placeForNew(row.cellCount(), before,
                                 [&row](std::u16string_view wanted) { return row.cellOf(wanted); });
    widgets::Row changed = row.edit();
    changed.cells.insert(changed.cells.begin() + cell - 1, {key,
                                                            values[2].as<std::u16string>(),
                                                            {},
                                                            iconKey(icon, place.list->smallIcons()),
                                                            values[4].as<std::u16string>()});
    place.replace(widgets::makeRow(changed));
    return itemAt(place, cell);
}

void ListSubItems::remove(const Index& index) const {
    const RowPlace place = row_.find();
    const int cell = cellIn(place.content(), index);
    widgets::Row changed = place.content().edit();
    changed.cells.erase(changed.cells.begin() + cell - 1);
    place.replace(widgets::makeRow(changed));
}

const DispatchTable& ListSubItems::dispatchTable() const {
    using Self = ListSubItems;
    static const DispatchTable table = {
        indexed<Self>(u"Item", 0, Type::Object, {{u"Index", Type::Any}},
                      [](Self& self, std::span<Value> values) {
                          const Index index(values[0]);
                          const RowPlace place = self.row_.find();
                          return self.itemAt(place, cellIn(place.content(), index));
                      }),
        readable<Self>(u"Count", 1, Type::Int32,
                       [](Self& self) { return self.row_.find().content().cellCount(); }),
        method<Self>(u"Add", 2, Type::Object,
                     {optional(u"Index", Type::Any), optional(u"Key", Type::Text),
                      optional(u"Text", Type::Text), optional(u"ReportIcon", Type::Any),
                      optional(u"ToolTipText", Type::Text)},
                     [](Self& self, std::span<Value> values) { return self.add(values); }),
        method<Self>(u"Remove", 3, Type::Nothing, {{u"Index", Type::Any}},
                     [](Self& self, std::span<Value> values) { self.remove(Index(values[0])); }),
        method<Self>(u"Clear", 4, Type::Nothing, {},
                     [](Self& self, std::span<Value>) {
                         const RowPlace place = self.row_.find();
                         widgets::Row changed = place.content().edit();
                         changed.cells.clear();
                         place.replace(widgets::makeRow(changed));
                     }),
    };
    return table;
}

void requireColumn(const RowPlace& row, int index) {
    if (index < 1 || index >= row.list->columnCount())
        throw AutomationError(code::kIndexOutOfBounds, u"Index out of bounds");
}

} // namespace

ObjectRef makeListSubItems(RowRef row) { return std::make_shared<ListSubItems>(std::move(row)); }

std::u16string subItemText(const RowPlace& row, int index) {
    requireColumn(row, index);
    return std::u16string(row.content().cellText(index));
}

void setSubItemText(const RowPlace& row, int index, std::u16string_view text) {
    requireColumn(row, index);
    if (index <= row.content().cellCount()) {
        row.replace(row.content().withCell(index, CellField::Text, text));
        return;
    }
    widgets::Row changed = row.content().edit();
    while (static_cast<int>(changed.cells.size()) < index) {
        const std::u16string& key = row.list->column(static_cast<int>(changed.cells.size()) + 2).key;
        changed.cells.push_back({changed.cell(key) ? std::u16string() : key, {}, {}, {}, {}});
    }
    changed.cells.back().text = text;
    row.replace(widgets::makeRow(changed));
}

} // namespace cvlog::view
