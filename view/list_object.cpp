#include "view/list_object.h"

#include "automation/error.h"
#include "automation/member_builders.h"
#include "base/text.h"
#include "view/colour_bits.h"
#include "view/column_headers_object.h"
#include "view/list_items_object.h"
#include "view/log_control_ids.h"

namespace cvlog::view {

using namespace automation;
using widgets::SortOrder;

namespace {

constexpr std::int32_t kReportView = 3;
constexpr std::int32_t kNoLabelEditing = 1;

/// Where FindItem looks.
enum class SearchIn { Text = 0, SubItems = 1, Tag = 2 };

class ListObject final : public DispatchObject {
public:
    ListObject(const ListRef& list, const ListFontRef& font)
        : list_(list), font_(font), items_(makeListItems(list)), headers_(makeColumnHeaders(list)) {}

    const DispatchTable& dispatchTable() const override;
    ListRef list() const { return liveList(list_); }

    ObjectRef items() const { return list(), items_; }
    ObjectRef headers() const { return list(), headers_; }
    ListFont& font() const { return list(), *font_; }
    ObjectRef itemAt(int position) const { return position == 0 ? nullptr : makeListItem(list(), position); }
    void setSelectedItem(const ObjectRef& item) const;
    void setSortKey(std::int32_t key) const;
    void setSortOrder(std::int32_t order) const;
    ObjectRef findItem(std::span<Value> values) const;
    int firstVisible() const;

private:
    WeakList list_;
    ListFontRef font_;
    ObjectRef items_;
    ObjectRef headers_;
};

// The others keep their selection: the list selects many.
void ListObject::setSelectedItem(const ObjectRef& item) const {
    const ListRef live = list();
    if (!item) {
        live->selectAll(false);
        live->focusRow(0);
        return;
    }
    const RowPlace row = rowOfItem(item).find();
    if (row.list != live) throw AutomationError(code::kElementNotFound, u"Element not found in this list");
    widgets::ListView::Batch batch(*live);
    live->select(row.position, true);
    live->focusRow(row.position);
}

void ListObject::setSortKey(std::int32_t key) const {
    const ListRef live = list();
    if (key < 0 || key >= live->columnCount()) refuseValue();
    live->setSort(key, live->sortOrder());
}

void ListObject::setSortOrder(std::int32_t order) const {
    if (order < 0 || order > static_cast<std::int32_t>(SortOrder::Descending)) refuseValue();
    const ListRef live = list();
    live->setSort(live->sortKey(), static_cast<SortOrder>(order));
}

bool matches(base::CompactTextView text, std::u16string_view wanted, bool beginning) {
    return (beginning ? text.first(wanted.size()) : text).equalsIgnoringCase(wanted);
}

bool rowMatches(const widgets::RowContent& row, SearchIn where, std::u16string_view wanted, bool beginning) {
    if (where == SearchIn::Text) return matches(row.text(), wanted, beginning);
    if (where == SearchIn::Tag) return matches(row.tag(), wanted, false);
    for (int cell = 1; cell <= row.cellCount(); ++cell)
        if (matches(row.cellText(cell), wanted, beginning)) return true;
    return false;
}

ObjectRef ListObject::findItem(std::span<Value> values) const {
    const Index from(values[2]);
    const ListRef live = list();
    const std::u16string& wanted = values[0].as<std::u16string>();
    const std::int32_t where = values[1].as<std::int32_t>();
    if (where < 0 || where > static_cast<std::int32_t>(SearchIn::Tag)) refuseValue();
    const auto keys = [&live](std::u16string_view key) { return live->rowOf(key); };
    int position = from.given ? positionIn(live->rowCount(), from, keys) : 1;
    for (; position <= live->rowCount(); ++position)
        if (rowMatches(live->row(position), static_cast<SearchIn>(where), wanted, values[3].as<bool>()))
            return itemAt(position);
    return nullptr;
}

int ListObject::firstVisible() const {
    const ListRef live = list();
    return live->peer() ? live->peer()->topRow() : 0;
}

/// What is as it is, for as long as the list is there.
template <class Fact>
Member fixed(std::u16string_view name, std::int32_t id, Type type, Fact fact) {
    return readable<ListObject>(name, id, type, [fact](ListObject& self) {
        self.list();
        return fact;
    });
}

} // namespace

const DispatchTable& ListObject::dispatchTable() const {
    using Self = ListObject;
    static const DispatchTable table = {
        readable<Self>(u"ListItems", 1, Type::Object, [](Self& self) { return self.items(); }),
        readable<Self>(u"ColumnHeaders", 2, Type::Object, [](Self& self) { return self.headers(); }),
        readable<Self>(u"SelectedItem", 3, Type::Object,
                       [](Self& self) { return self.itemAt(self.list()->selectedRow()); }),
        settable<Self>(u"SelectedItem", 3, Type::Object,
                       [](Self& self, const Value& value) { self.setSelectedItem(value.as<ObjectRef>()); }),
        // Each put sorts again; what changes a row's text leaves it in its place until then.
        readable<Self>(u"Sorted", 4, Type::Boolean, [](Self& self) { return self.list()->sorted(); }),
        settable<Self>(u"Sorted", 4, Type::Boolean,
                       [](Self& self, const Value& value) { self.list()->setSorted(value.as<bool>()); }),
        readable<Self>(u"SortKey", 5, Type::Int32, [](Self& self) { return self.list()->sortKey(); }),
        settable<Self>(u"SortKey", 5, Type::Int32,
                       [](Self& self, const Value& value) { self.setSortKey(value.as<std::int32_t>()); }),
        readable<Self>(u"SortOrder", 6, Type::Int32,
                       [](Self& self) { return static_cast<std::int32_t>(self.list()->sortOrder()); }),
        settable<Self>(u"SortOrder", 6, Type::Int32,
                       [](Self& self, const Value& value) { self.setSortOrder(value.as<std::int32_t>()); }),
        fixed(u"View", 7, Type::Int32, kReportView),
        fixed(u"MultiSelect", 8, Type::Boolean, true),
        fixed(u"LabelEdit", 9, Type::Int32, kNoLabelEditing),
        fixed(u"HideSelection", 10, Type::Boolean, false),
        fixed(u"FullRowSelect", 11, Type::Boolean, true),
        method<Self>(u"FindItem", 12, Type::Object,
                     {{u"Text", Type::Text},
                      optional(u"Where", Type::Int32),
                      optional(u"Index", Type::Any),
                      optional(u"Partial", Type::Boolean)},
                     [](Self& self, std::span<Value> values) { return self.findItem(values); }),
        method<Self>(u"GetFirstVisible", 13, Type::Object, {},
                     [](Self& self, std::span<Value>) { return self.itemAt(self.firstVisible()); }),
        method<Self>(u"SetFocus", 14, Type::Nothing, {},
                     [](Self& self, std::span<Value>) { self.list()->takeFocus(); }),
        // Looks and window, with the ids that every control has for them.
        readable<Self>(u"BackColor", kBackColorId, Type::Colour,
                       [](Self& self) { return toBits(self.list()->colours().back); }),
        settable<Self>(u"BackColor", kBackColorId, Type::Colour,
                       [](Self& self, const Value& value) {
                           const ListRef list = self.list();
                           list->setColours({fromBits(value), list->colours().fore});
                       }),
        readable<Self>(u"ForeColor", kForeColorId, Type::Colour,
                       [](Self& self) { return toBits(self.list()->colours().fore); }),
        settable<Self>(u"ForeColor", kForeColorId, Type::Colour,
                       [](Self& self, const Value& value) {
                           const ListRef list = self.list();
                           list->setColours({list->colours().back, fromBits(value)});
                       }),
        readable<Self>(u"Font", kFontId, Type::Object, [](Self& self) { return self.font().object(); }),
        settable<Self>(u"Font", kFontId, Type::Object,
                       [](Self& self, const Value& value) { self.font().put(value.as<ObjectRef>()); }),
        readable<Self>(u"Enabled", kEnabledId, Type::Boolean,
                       [](Self& self) { return self.list()->enabled(); }),
        settable<Self>(u"Enabled", kEnabledId, Type::Boolean,
                       [](Self& self, const Value& value) { self.list()->setEnabled(value.as<bool>()); }),
        readable<Self>(u"hWnd", kHwndId, Type::Int32, [](Self& self) { return self.list()->windowHandle(); }),
        method<Self>(u"Refresh", kRefreshId, Type::Nothing, {},
                     [](Self& self, std::span<Value>) { self.list()->repaint(); }),
    };
    return table;
}

ObjectRef makeListObject(const ListRef& list, const ListFontRef& font) {
    return std::make_shared<ListObject>(list, font);
}

} // namespace cvlog::view
