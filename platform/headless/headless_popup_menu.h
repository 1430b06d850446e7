#pragma once

#include "platform/headless/call_gate.h"
#include "widgets/menu_item.h"

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace cvlog::platform::headless {

/// What all headless menus of one platform share.
struct MenuBook {
    struct Item {
        std::u16string name; // of an array's element with its place: "mnuColumn(2)"
        std::u16string caption;
        bool separator = false;
        bool enabled = true;
        bool checked = false;
        bool isDefault = false;
        std::vector<Item> items = {};
        friend bool operator==(const Item&, const Item&) = default;
    };
    struct Showing {
        std::int32_t owner;
        std::vector<Item> items;
    };

    std::vector<Showing> shown;
    /// What the user chooses, one name a menu; "" and none left: nothing.
    std::deque<std::u16string> choices;
    /// Runs while a menu is open, as other code of a program does.
    std::function<void()> whileOpen;
    int live = 0;
    int open = 0;
    /// What no user could do: empty as long as tests choose what can be chosen.
    std::vector<std::string> faults;
};

/// A menu that nobody sees.
class HeadlessPopupMenu : public widgets::PopupMenuPeer {
public:
    HeadlessPopupMenu(const widgets::MenuItem& menu, const widgets::MenuItem* defaultItem,
                      const CallGate& gate, MenuBook& book);
    ~HeadlessPopupMenu() override { --book_.live; }
    HeadlessPopupMenu(const HeadlessPopupMenu&) = delete;
    HeadlessPopupMenu& operator=(const HeadlessPopupMenu&) = delete;

    widgets::MenuItemRef popUp(std::int32_t ownerWindow) override;

private:
    struct Choice {
        std::u16string name;
        widgets::MenuItemRef item;
    };
    std::vector<MenuBook::Item> record(const widgets::MenuItem& menu, const widgets::MenuItem* defaultItem,
                                       bool enabled);
    widgets::MenuItemRef chosen();

    const CallGate& gate_;
    MenuBook& book_;
    std::vector<MenuBook::Item> items_;
    std::vector<Choice> choices_; // what can be chosen
};

} // namespace cvlog::platform::headless
