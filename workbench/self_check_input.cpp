// The part of the check that does what a user does: keys, the options dialog, the Log menu.

#include "workbench/self_check.h"

#include "workbench/com_call.h"
#include "workbench/failure.h"
#include "workbench/keyboard.h"
#include "workbench/menu_ids.h"
#include "workbench/options_document.h"

namespace workbench {

namespace {

std::wstring keepsRows(IDispatch* options) {
    const Variant node = call(options, L"selectSingleNode", {L"//BOOL[@ID='LogKeepInSession']"});
    return call(node.object().Get(), L"getAttribute", {L"VALUE"}).text();
}

} // namespace

void SelfCheck::press(BYTE key, BYTE modifier) { pressKey(frame(), key, modifier); }

void SelfCheck::checkTabs() {
    const ToolWindow& tool = *tools().active();
    const ComPtr<IDispatch> view = tool.findControl(L"LogView")->object();
    const auto list = reinterpret_cast<HWND>(static_cast<LONG_PTR>(get(view.Get(), L"hwnd").integer()));
    put(view.Get(), L"Visible", true);
    SetFocus(tool.panel().list());
    press(VK_TAB);
    expect(GetFocus() == tool.panel().button(), L"Tab goes from the list to the button");
    press(VK_TAB);
    expect(GetFocus() == list, L"Tab goes from the button into the log");
    press(VK_TAB);
    expect(GetFocus() == tool.panel().list(), L"Tab goes out of the log");
    press(VK_TAB, VK_SHIFT);
    expect(GetFocus() == list, L"Shift+Tab goes into the log");
    press(VK_TAB, VK_SHIFT);
    expect(GetFocus() == tool.panel().button(), L"Shift+Tab goes out of the log");
    frame().showStatus(FrameWindow::kChanges, L"");
    press(VK_TAB, VK_SHIFT);
    press(VK_RETURN);
    expect(frame().status(FrameWindow::kChanges).starts_with(L"Changes: "),
           L"Enter checks the chosen object");
}

void SelfCheck::checkWindowKeys() {
    ToolWindow& first = *tools().active();
    first.findControl(L"LogView")->focus();
    const HWND list = GetFocus();
    expect(frame().status(FrameWindow::kFocus) == L"Focus: log", L"the log tells that it has the focus");
    press('N', VK_CONTROL);
    ToolWindow& second = *tools().active();
    expect(&second != &first && tools().count() == 2, L"Ctrl+N opens a tool window");
    expect(frame().status(FrameWindow::kFocus).empty(), L"the log tells that it has lost the focus");
    press(VK_F6, VK_CONTROL);
    expect(tools().active() == &first, L"Ctrl+F6 goes to the next window");
    expect(GetFocus() == list, L"a window finds its focus again");
    press(VK_TAB, VK_CONTROL);
    expect(tools().active() == &second, L"so does Ctrl+Tab");
    if (!second.findControl(L"LogView")) {
        second.addControl(L"CVLog3.CVLogControl", L"LogView").show(true);
    }
    second.findControl(L"LogView")->focus();
    press('W', VK_CONTROL);
    expect(tools().active() == &first && tools().count() == 1, L"Ctrl+W closes the window");
    expect(frame().status(FrameWindow::kFocus) == (GetFocus() == list ? L"Focus: log" : L""),
           L"a log that goes with its window has no focus any more");
    expect(IsChild(first.handle(), GetFocus()), L"the focus goes to the window that is left");
}

void SelfCheck::checkOptions() {
    int saved = 0;
    const EventConnection events(application_.options(), kOptionsEvents,
                                 [&](DISPID event, const Arguments&) { saved += event == kSaved; });
    const std::wstring before = keepsRows(application_.options());
    const auto change = [&](UINT button) {
        const HWND dialog = application_.showOptions().handle();
        expect(!IsWindowEnabled(frame().handle()), L"the dialog is modal");
        SendDlgItemMessageW(dialog, IDC_KEEP, BM_CLICK, 0, 0);
        SendMessageW(dialog, WM_COMMAND, button, 0);
        frame().pump();
        expect(!IsWindow(dialog) && IsWindowEnabled(frame().handle()), L"the dialog closes");
    };
    change(IDCANCEL);
    expect(saved == 0 && keepsRows(application_.options()) == before, L"Cancel changes nothing");
    change(IDOK);
    expect(saved == 1 && keepsRows(application_.options()) != before, L"OK saves, and tells it once");
    change(IDOK);
    expect(saved == 2 && keepsRows(application_.options()) == before, L"and again");
}

/// The log follows the dialog a moment later, and the focus stays where the user has it.
void SelfCheck::checkPlaces() {
    constexpr ULONGLONG kAmple = 20'000;
    const ToolWindow& tool = *tools().active();
    const ComPtr<IDispatch> view = tool.findControl(L"LogView")->object();
    for (const bool docked : {true, false, true}) {
        SetFocus(tool.panel().list());
        const HWND dialog = application_.showOptions().handle();
        const bool isChecked = SendDlgItemMessageW(dialog, IDC_DOCKED, BM_GETCHECK, 0, 0) == BST_CHECKED;
        if (isChecked != docked) {
            SendDlgItemMessageW(dialog, IDC_DOCKED, BM_CLICK, 0, 0);
        }
        SendMessageW(dialog, WM_COMMAND, IDOK, 0);
        const ULONGLONG end = GetTickCount64() + kAmple;
        const auto moved = [&] { return get(view.Get(), L"Visible").boolean() == docked; };
        frame().runUntil([&] { return moved() || GetTickCount64() > end; });
        expect(moved(), docked ? L"the dialog docks the log" : L"the dialog floats the log");
        expect(get(application_.log(), L"Docked").boolean() == docked, L"and the log knows");
        expect(GetFocus() == tool.panel().list(), L"the focus stays");
    }
}

void SelfCheck::checkMenu() {
    choose(IDM_LOG_VISIBLE);
    expect(!get(application_.log(), L"Visible").boolean(), L"the menu hides the log");
    choose(IDM_LOG_VISIBLE);
    expect(get(application_.log(), L"Visible").boolean(), L"the menu shows the log");
    frame().showStatus(FrameWindow::kChanges, L"");
    choose(IDM_LOG_START);
    choose(IDM_REPORT_FIRST + 1);
    expect(frame().status(FrameWindow::kChanges).starts_with(L"Changes: "), L"a report reaches the log");
    choose(IDM_LOG_CLOSE);
    choose(IDM_LOG_OPEN);
    expect(!get(application_.log(), L"LogDB").isEmptyResult(), L"the database opens again");
}

} // namespace workbench
