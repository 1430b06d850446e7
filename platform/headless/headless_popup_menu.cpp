#include "platform/headless/headless_popup_menu.h"

#include "base/failure.h"
#include "base/text.h"

#include <algorithm>

namespace cvlog::platform::headless {

namespace {

std::u16string fullName(const widgets::MenuItem& item) {
    return item.index ? item.name + u"(" + base::decimal(*item.index) + u")" : item.name;
}

} // namespace

HeadlessPopupMenu::HeadlessPopupMenu(const widgets::MenuItem& menu, const widgets::MenuItem* defaultItem,
                                     const CallGate& gate, MenuBook& book)
    : gate_(gate), book_(book) {
    gate_.pass("Menu.create");
    items_ = record(menu, defaultItem, true);
    ++book_.live;
}

std::vector<MenuBook::Item> HeadlessPopupMenu::record(const widgets::MenuItem& menu,
                                                      const widgets::MenuItem* defaultItem, bool enabled) {
    std::vector<MenuBook::Item> items;
    for (const widgets::MenuItemRef& item : menu.items) {
        if (!item->visible) continue;
        const bool reachable = enabled && item->enabled && !item->separator;
        if (reachable && item->items.empty()) choices_.push_back({fullName(*item), item});
        items.push_back({.name = fullName(*item),
                         .caption = item->caption,
                         .separator = item->separator,
                         .enabled = item->enabled,
                         .checked = item->checked,
                         .isDefault = item.get() == defaultItem,
                         .items = record(*item, nullptr, reachable)});
    }
    return items;
}

widgets::MenuItemRef HeadlessPopupMenu::popUp(std::int32_t ownerWindow) {
    gate_.pass("Menu.popUp");
    book_.shown.push_back({ownerWindow, items_});
    ++book_.open;
    const base::ScopeExit closed([this] { --book_.open; });
    if (const auto action = book_.whileOpen) action();
    return chosen();
}

widgets::MenuItemRef HeadlessPopupMenu::chosen() {
    if (book_.choices.empty()) return nullptr;
    const std::u16string name = book_.choices.front();
    book_.choices.pop_front();
    if (name.empty()) return nullptr;
    const auto found = std::ranges::find(choices_, name, &Choice::name);
    if (found == choices_.end()) {
        book_.faults.push_back(base::toUtf8(name) + " cannot be chosen");
        return nullptr;
    }
    return found->item;
}

} // namespace cvlog::platform::headless
