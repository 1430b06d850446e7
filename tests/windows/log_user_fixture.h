#pragma once

#include "tests/windows/placement_fixture.h"
#include "tests/windows/real_input.h"
#include "tests/windows/scenes.h"

namespace cvlog::tests {

/// An open log whose user goes by its menus, with the mouse and the keys. The host has a main window.
class LogUserTest : public PlacementTest {
protected:
    void SetUp() override {
        PlacementTest::SetUp();
        auto* workspace = static_cast<ScriptedDispatch*>(host_->workspace());
        workspace->object(L"CalvettaWindow", (host_->window()->AddRef(), host_->window()));
    }

    using PlacementTest::add;
    void add(LONG code, const wchar_t* message, const wchar_t* errorsFile = L"") {
        call(L"Add",
             {Variant(L"verify"), Variant(code), Variant(L"O1"), Variant(message), Variant(errorsFile)});
    }
    static bool menuIsOpen() { return menuWindow() != nullptr; }
    static bool menuIsClosed() { return menuWindow() == nullptr; }
    static HWND history() { return windowTitled(L"Activity Log History"); }
    HWND list() const { return listIn(floating()); }

    /// Over the list's first row, where it has one.
    static void rightClick(HWND list) {
        RECT row{};
        row.left = LVIR_LABEL;
        SendMessageW(list, LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row));
        const LPARAM spot = MAKELPARAM(row.left + 5, (row.top + row.bottom) / 2);
        PostMessageW(list, WM_RBUTTONDOWN, MK_RBUTTON, spot);
        PostMessageW(list, WM_RBUTTONUP, 0, spot);
    }
    /// Opens the log's menu and acts; comes back when nothing is open any more.
    void inMenu(std::vector<Scenes::Scene> scenes) {
        const HWND log = list();
        Scenes user(std::move(scenes));
        rightClick(log);
        EXPECT_TRUE(takeMessagesUntil([&] { return user.played() && menuIsClosed() && !history(); }));
        takeMessages();
    }
    void choose(WORD letter) {
        inMenu({{menuIsOpen, [letter] { typeKey(letter); }}});
    }
    void reportLog() { choose('R'); }
    /// History in the log's menu, Report in the menu there, and Esc.
    void reportHistory() {
        inMenu({{menuIsOpen, [] { typeKey('I'); }},
                {[] { return history() && menuIsClosed(); }, [] { rightClick(listIn(history())); }},
                {menuIsOpen, [] { typeKey('R'); }},
                {menuIsClosed, [] { PostMessageW(listIn(history()), WM_KEYDOWN, VK_ESCAPE, 1); }}});
    }
};

} // namespace cvlog::tests
