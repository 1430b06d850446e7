#pragma once

#include "automation/error.h"
#include "base/text.h"
#include "tests/support/placed_log.h"
#include "view/list_set.h"
#include "view/log_menu.h"

#include <string>
#include <utility>
#include <vector>

namespace cvlog::view {

/// The host's window has a pointer; the one before is always the arrow.
inline void givePointer(tests::LogWorld& world) {
    world.host.workspace->on(u"SetMainWindowCursor",
                             [](std::span<automation::Value>) { return automation::Value(std::int32_t{0}); });
}

/// An open log with controls, whose host knows the object "P1" and has tools.
class LogMenuFixture : public tests::PlacedLog {
protected:
    using Shift = std::int16_t;

    LogMenuFixture() {
        givePointer(world);
        world.addControl();
        world.log->events().advise(sink);
        sink->handler = [this](std::int32_t id, std::span<automation::Value> arguments) {
            if (id == 4)
                errorsShown.emplace_back(automation::toText(arguments[0]), automation::toInt32(arguments[1]));
        };
    }
    ~LogMenuFixture() override {
        menus().whileOpen = nullptr;
        sink->handler = nullptr;
        expectListsInStep();
        EXPECT_EQ(menus().faults, std::vector<std::string>());
        EXPECT_EQ(menus().live, 0) << "a menu is left";
        EXPECT_FALSE(world.platform.messageFilters.isInstalled()) << "a hook is left";
    }

    widgets::ListView& list(std::size_t control = 0) { return world.list(control); }
    platform::headless::MenuBook& menus() { return world.platform.peers.menus; }
    core::CommandState& commands() { return globals().commands; }
    widgets::MenuItemRef item(std::u16string_view name, std::size_t control = 0) {
        return findMenuItem(world.controls.at(control)->mnuPopUpLog(), name);
    }

    void expectListsInStep() {
        EXPECT_FALSE(globals().ExpansionBusy);
        const auto lists = globals().LogViews.all();
        for (const auto& one : lists) {
            ASSERT_EQ(one->rowCount(), lists.front()->rowCount());
            for (int row = 1; row <= one->rowCount(); ++row)
                ASSERT_EQ(one->idAt(row), lists.front()->idAt(row)) << row;
        }
    }

    static widgets::RowPtr entryRow(std::u16string text, std::u16string id, std::u16string errorsFile) {
        return widgets::makeRow({std::move(text),
                                 std::move(id),
                                 u"Bad",
                                 {{u"Elapsed", {}, {}, {}, {}},
                                  {u"Method", {}, {}, {}, {}},
                                  {u"Type", {}, {}, {}, {}},
                                  {u"Name", {}, {}, {}, {}},
                                  {u"Result", u"RC 2", {}, u"Bad", {}},
                                  {u"Message", u"message", std::move(errorsFile), {}, {}}}});
    }
    static widgets::RowPtr childRow(std::u16string id, std::u16string number,
                                    std::u16string tag = u"expansion") {
        return widgets::makeRow({u"",
                                 std::move(tag),
                                 u"",
                                 {{u"ObjID", u"", std::move(id), {}, {}},
                                  {u"Num", number, number, {}, {}},
                                  {u"Type", {}, {}, {}, {}},
                                  {u"Name", {}, {}, {}, {}},
                                  {u"Result", {}, {}, {}, {}},
                                  {u"Message", u"an error", kErrors, {}, {}}}});
    }
    /// A row at the end of every list.
    void add(const widgets::RowPtr& row) {
        list().append(row);
        PropagateNewRow(globals(), list(), list().rowCount());
    }
    void addEntry(std::u16string id = u"P1", std::u16string errorsFile = kErrors) {
        add(entryRow(u"2024-05-17 10:00:00", std::move(id), std::move(errorsFile)));
    }
    /// An open entry with two errors.
    void addOpenEntry() {
        addEntry();
        add(childRow(u"P1", u"1"));
        add(childRow(u"P1", u"2"));
    }
    void select(int row, std::size_t control = 0) {
        list(control).selectAll(false);
        list(control).select(row, true);
        list(control).focusRow(row);
    }
    void makeErrorsFile() { world.platform.files.addFile(kErrors); }

    void rightClick(std::size_t control = 0) {
        platform::headless::peerOf(list(control)).userReleasesButton(widgets::MouseButton::Right);
    }
    /// Opens the menu by the mouse and chooses.
    void choose(std::u16string name, std::size_t control = 0) {
        menus().choices = {std::move(name)};
        rightClick(control);
    }
    void doubleClick() { platform::headless::peerOf(list()).userDoubleClicks(); }
    widgets::KeyEvent release(int code, Shift shift = 0) {
        widgets::KeyEvent key{static_cast<std::int16_t>(code), shift};
        platform::headless::peerOf(list()).userReleases(key);
        return key;
    }
    widgets::KeyEvent press(int code, Shift shift = 0) {
        widgets::KeyEvent key{static_cast<std::int16_t>(code), shift};
        platform::headless::peerOf(list()).userPresses(key);
        return key;
    }

    /// The last menu that was shown: "Expand* | Delete Clear-": * bold, - disabled, + checked.
    std::string shown() { return menus().shown.empty() ? "none" : describe(menus().shown.back().items); }
    static std::string describe(const std::vector<platform::headless::MenuBook::Item>& items) {
        std::string text;
        for (const auto& item : items) {
            if (!text.empty()) text += ' ';
            std::string name = base::toUtf8(item.name);
            for (const char* prefix : {"mnuLog", "mnu"})
                if (name.starts_with(prefix)) name.erase(0, std::string(prefix).size());
            text += item.separator ? "|" : name;
            if (item.isDefault) text += '*';
            if (!item.enabled) text += '-';
            if (item.checked) text += '+';
        }
        return text;
    }
    /// The code of the error that the action raises, 0 for none.
    template <class Action>
    static std::int32_t codeOf(Action&& action) {
        try {
            action();
        } catch (const automation::AutomationError& error) {
            return error.code();
        }
        return 0;
    }

    using Errors = std::vector<std::pair<std::u16string, std::int32_t>>;
    static inline const std::u16string kErrors = u"C:\\Proj\\payroll.errors";

    std::shared_ptr<tests::RecordingSink> sink = std::make_shared<tests::RecordingSink>();
    Errors errorsShown;
};

} // namespace cvlog::view
