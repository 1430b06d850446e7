#include "view/menu_object.h"

#include "automation/error.h"
#include "automation/member_builders.h"

namespace cvlog::view {

using namespace automation;
using widgets::MenuItem;
using widgets::MenuItemRef;

namespace {

MenuItemRef liveItem(const std::weak_ptr<MenuItem>& item) {
    if (MenuItemRef live = item.lock()) return live;
    throw AutomationError(code::kElementGone, u"This menu's control has been deleted");
}

class MenuItemObject final : public DispatchObject {
public:
    explicit MenuItemObject(const MenuItemRef& item) : item_(item) {}

    const DispatchTable& dispatchTable() const override;
    MenuItemRef item() const { return liveItem(item_); }
    std::int32_t index() const {
        if (const auto index = item()->index) return *index;
        throw AutomationError(code::kNotAnArray, u"Object not an array");
    }

private:
    std::weak_ptr<MenuItem> item_;
};

template <class Field>
Member reads(std::u16string_view name, std::int32_t id, Type type, Field MenuItem::*field) {
    return readable<MenuItemObject>(name, id, type,
                                    [field](MenuItemObject& self) { return (*self.item()).*field; });
}

template <class Field>
Member puts(std::u16string_view name, std::int32_t id, Type type, Field MenuItem::*field) {
    return settable<MenuItemObject>(name, id, type, [field](MenuItemObject& self, const Value& value) {
        (*self.item()).*field = value.as<Field>();
    });
}

const DispatchTable& MenuItemObject::dispatchTable() const {
    static const DispatchTable table = {
        reads(u"Name", 1, Type::Text, &MenuItem::name),
        reads(u"Caption", 2, Type::Text, &MenuItem::caption),
        puts(u"Caption", 2, Type::Text, &MenuItem::caption),
        reads(u"Visible", 3, Type::Boolean, &MenuItem::visible),
        puts(u"Visible", 3, Type::Boolean, &MenuItem::visible),
        reads(u"Enabled", 4, Type::Boolean, &MenuItem::enabled),
        puts(u"Enabled", 4, Type::Boolean, &MenuItem::enabled),
        reads(u"Checked", 5, Type::Boolean, &MenuItem::checked),
        puts(u"Checked", 5, Type::Boolean, &MenuItem::checked),
        reads(u"Tag", 6, Type::Text, &MenuItem::tag),
        puts(u"Tag", 6, Type::Text, &MenuItem::tag),
        readable<MenuItemObject>(u"Index", 7, Type::Int32, [](MenuItemObject& self) { return self.index(); }),
        reads(u"HelpContextID", 8, Type::Int32, &MenuItem::helpContext),
        puts(u"HelpContextID", 8, Type::Int32, &MenuItem::helpContext),
    };
    return table;
}

class MenuArrayObject final : public DispatchObject {
public:
    explicit MenuArrayObject(const MenuItemRef& menu) : menu_(menu) {}

    const DispatchTable& dispatchTable() const override;
    std::optional<std::int32_t> firstElement() const override { return 0; }

    std::int32_t first() const { return liveItem(menu_), 0; }
    std::int32_t count() const { return static_cast<std::int32_t>(liveItem(menu_)->items.size()); }
    ObjectRef item(std::int32_t index) const {
        const MenuItemRef menu = liveItem(menu_);
        if (index < 0 || static_cast<std::size_t>(index) >= menu->items.size())
            throw AutomationError(code::kNoArrayElement, u"Control array element doesn't exist");
        return makeMenuItemObject(menu->items[static_cast<std::size_t>(index)]);
    }

private:
    std::weak_ptr<MenuItem> menu_;
};

const DispatchTable& MenuArrayObject::dispatchTable() const {
    using Self = MenuArrayObject;
    static const DispatchTable table = {
        indexed<Self>(
            u"Item", 0, Type::Object, {{u"Index", Type::Int32}},
            [](Self& self, std::span<Value> values) { return self.item(values[0].as<std::int32_t>()); }),
        readable<Self>(u"Count", 1, Type::Int32, [](Self& self) { return self.count(); }),
        readable<Self>(u"LBound", 2, Type::Int32, [](Self& self) { return self.first(); }),
        readable<Self>(u"UBound", 3, Type::Int32, [](Self& self) { return self.count() - 1; }),
    };
    return table;
}

} // namespace

ObjectRef makeMenuItemObject(const MenuItemRef& item) { return std::make_shared<MenuItemObject>(item); }

ObjectRef makeMenuArrayObject(const MenuItemRef& menu) { return std::make_shared<MenuArrayObject>(menu); }

} // namespace cvlog::view
