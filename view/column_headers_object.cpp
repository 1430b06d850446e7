#include "view/column_headers_object.h"

#include "automation/error.h"
#include "automation/member_builders.h"
#include "automation/object.h"

namespace cvlog::view {

using namespace automation;
using widgets::Column;

namespace {

constexpr base::Twips kWidestColumn = 1'000'000; // some 17 metres: what comes above is a mistake

class ColumnHeader final : public DispatchObject {
public:
    ColumnHeader(WeakList list, int index) : list_(std::move(list)), index_(index) {}

    const DispatchTable& dispatchTable() const override;

private:
    ListRef list() const {
        ListRef live = liveList(list_);
        if (index_ > live->columnCount())
            throw AutomationError(code::kElementGone, u"This column has been removed from its list");
        return live;
    }
    void setWidth(base::Twips width) const {
        if (!(width >= 0 && width <= kWidestColumn)) refuseValue();
        list()->setColumnWidth(index_, width);
    }
    void setPosition(int position) const {
        const ListRef live = list();
        if (position < 1 || position > live->columnCount()) refuseValue();
        live->setColumnPosition(index_, position);
    }
    void setAlignment(int alignment) const {
        if (alignment < 0 || alignment > static_cast<int>(widgets::Alignment::Center)) refuseValue();
        list()->setColumnAlignment(index_, static_cast<widgets::Alignment>(alignment));
    }

    WeakList list_;
    int index_;
};

const DispatchTable& ColumnHeader::dispatchTable() const {
    using Self = ColumnHeader;
    const auto reads = [](auto Column::*part) {
        return [part](Self& self) { return self.list()->column(self.index_).*part; };
    };
    static const DispatchTable table = {
        readable<Self>(u"Text", 0, Type::Text, reads(&Column::caption)),
        settable<Self>(u"Text", 0, Type::Text,
                       [](Self& self, const Value& value) {
                           self.list()->setColumnCaption(self.index_, value.as<std::u16string>());
                       }),
        readable<Self>(u"Key", 1, Type::Text, reads(&Column::key)), // fixed: settings and cells go by it
        readable<Self>(u"Index", 2, Type::Int32,
                       [](Self& self) {
                           self.list(); // fails when the column has gone
                           return self.index_;
                       }),
        readable<Self>(u"SubItemIndex", 3, Type::Int32,
                       [](Self& self) {
                           self.list();
                           return self.index_ - 1;
                       }),
        readable<Self>(u"Position", 4, Type::Int32, reads(&Column::position)),
        settable<Self>(u"Position", 4, Type::Int32,
                       [](Self& self, const Value& value) { self.setPosition(value.as<std::int32_t>()); }),
        readable<Self>(u"Width", 5, Type::Single, reads(&Column::width)),
        settable<Self>(u"Width", 5, Type::Single,
                       [](Self& self, const Value& value) { self.setWidth(value.as<float>()); }),
        readable<Self>(
            u"Alignment", 6, Type::Int32,
            [](Self& self) { return static_cast<std::int32_t>(self.list()->column(self.index_).alignment); }),
        settable<Self>(u"Alignment", 6, Type::Int32,
                       [](Self& self, const Value& value) { self.setAlignment(value.as<std::int32_t>()); }),
        readable<Self>(u"Icon", 7, Type::Any, reads(&Column::icon)),
        settable<Self>(u"Icon", 7, Type::Any,
                       [](Self& self, const Value& value) {
                           const Index icon(value);
                           const ListRef list = self.list();
                           list->setColumnIcon(self.index_, iconKey(icon, list->headerIcons()));
                       }),
        readable<Self>(u"Tag", 8, Type::Text, reads(&Column::tag)),
        settable<Self>(u"Tag", 8, Type::Text,
                       [](Self& self, const Value& value) {
                           self.list()->setColumnTag(self.index_, value.as<std::u16string>());
                       }),
    };
    return table;
}

class ColumnHeaders final : public DispatchObject {
public:
    explicit ColumnHeaders(WeakList list) : list_(std::move(list)) {}

    const DispatchTable& dispatchTable() const override;
    std::optional<std::int32_t> firstElement() const override { return 1; }

private:
    ObjectRef item(const Index& index) const {
        const ListRef list = liveList(list_);
        const auto columnOf = [&list](std::u16string_view key) { return list->columnOf(key); };
        return std::make_shared<ColumnHeader>(list_, positionIn(list->columnCount(), index, columnOf));
    }

    WeakList list_;
};

const DispatchTable& ColumnHeaders::dispatchTable() const {
    using Self = ColumnHeaders;
    static const DispatchTable table = {
        indexed<Self>(u"Item", 0, Type::Object, {{u"Index", Type::Any}},
                      [](Self& self, std::span<Value> values) { return self.item(Index(values[0])); }),
        readable<Self>(u"Count", 1, Type::Int32,
                       [](Self& self) { return liveList(self.list_)->columnCount(); }),
    };
    return table;
}

} // namespace

ObjectRef makeColumnHeaders(WeakList list) { return std::make_shared<ColumnHeaders>(std::move(list)); }

} // namespace cvlog::view
