#include "workbench/options_dialog.h"

#include "workbench/com_call.h"
#include "workbench/failure.h"
#include "workbench/menu_ids.h"
#include "workbench/screen_scale.h"
#include "workbench/text.h"
#include "workbench/xml_attribute.h"

namespace workbench {

namespace {

// The layout of the checkboxes that the template has no place for, in dialog units.
constexpr int kKindLeft = 16;
constexpr int kKindTop = 50;
constexpr int kKindWidth = 158;
constexpr int kKindPitch = 13;

ComPtr<IDispatch> select(IDispatch* options, const wchar_t* query) {
    return call(options, L"selectSingleNode", {query}).object();
}

void growDown(HWND window, int pixels) {
    RECT area;
    GetWindowRect(window, &area);
    SetWindowPos(window, nullptr, 0, 0, area.right - area.left, area.bottom - area.top + pixels,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void moveDown(HWND dialog, HWND control, int pixels) {
    RECT area;
    GetWindowRect(control, &area);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&area), 2);
    SetWindowPos(control, nullptr, area.left, area.top + pixels, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

} // namespace

OptionsDialog::OptionsDialog(HWND owner, ComPtr<IDispatch> options)
    : owner_(owner), options_(std::move(options)) {
    window_ = CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_OPTIONS), owner_,
                                 &OptionsDialog::dialogProcedure, reinterpret_cast<LPARAM>(this));
    if (!window_) {
        throw Failure(L"The options dialog cannot be created");
    }
    try {
        fill();
    } catch (const Failure&) {
        DestroyWindow(window_);
        throw;
    }
}

OptionsDialog::~OptionsDialog() {
    EnableWindow(owner_, TRUE); // first, or the focus would go to another program
    DestroyWindow(window_);
}

void OptionsDialog::show() {
    centreOver(window_, owner_);
    EnableWindow(owner_, FALSE);
    ShowWindow(window_, SW_SHOW);
}

void OptionsDialog::fill() {
    addBox(GetDlgItem(window_, IDC_KEEP), select(options_.Get(), L"//BOOL[@ID='LogKeepInSession']"));
    addBox(GetDlgItem(window_, IDC_DOCKED), select(options_.Get(), L"//BOOL[@ID='LogDocked']"));
    addKinds();
}

/// An option that the document does not have cannot be set.
void OptionsDialog::addBox(HWND window, ComPtr<IDispatch> node) {
    const bool checked = node && sameName(attribute(node.Get(), L"VALUE"), L"true");
    SendMessageW(window, BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED, 0);
    EnableWindow(window, node != nullptr);
    boxes_.push_back({window, std::move(node)});
}

/// A checkbox for each kind of errors that the document lists.
void OptionsDialog::addKinds() {
    int count = 0;
    HWND last = GetDlgItem(window_, IDC_KINDS);
    auto node = select(options_.Get(), L"//*[@ID='Editor']/GROUP[@NAME='ErrorsList']/BOOL");
    while (node) {
        last = makeKindBox(count++, attribute(node.Get(), L"NAME"), last);
        addBox(last, node);
        node = get(node.Get(), L"nextSibling").object();
    }
    makeRoom(count * kKindPitch);
}

HWND OptionsDialog::makeKindBox(int index, const std::wstring& text, HWND before) const {
    RECT area{kKindLeft, kKindTop + index * kKindPitch, kKindLeft + kKindWidth,
              kKindTop + index * kKindPitch + 10};
    MapDialogRect(window_, &area);
    const HWND box = CreateWindowExW(
        0, L"BUTTON", text.c_str(), WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_AUTOCHECKBOX, area.left, area.top,
        area.right - area.left, area.bottom - area.top, window_,
        reinterpret_cast<HMENU>(INT_PTR{IDC_KIND_FIRST} + index), GetModuleHandleW(nullptr), nullptr);
    SendMessageW(box, WM_SETFONT, static_cast<WPARAM>(SendMessageW(window_, WM_GETFONT, 0, 0)), FALSE);
    // Tab goes by the order of the windows.
    SetWindowPos(box, before, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    return box;
}

void OptionsDialog::makeRoom(int dialogUnits) const {
    RECT room{0, 0, 0, dialogUnits};
    MapDialogRect(window_, &room);
    growDown(window_, room.bottom);
    growDown(GetDlgItem(window_, IDC_KINDS), room.bottom);
    moveDown(window_, GetDlgItem(window_, IDOK), room.bottom);
    moveDown(window_, GetDlgItem(window_, IDCANCEL), room.bottom);
}

void OptionsDialog::save() {
    for (const Box& box : boxes_) {
        if (box.node) {
            const bool checked = SendMessageW(box.window, BM_GETCHECK, 0, 0) == BST_CHECKED;
            call(box.node.Get(), L"setAttribute", {L"VALUE", checked ? L"true" : L"false"});
        }
    }
    call(options_.Get(), L"Save");
}

void OptionsDialog::finish(WORD button) {
    if (button == IDOK) {
        save();
    }
    closed_ = true;
    PostMessageW(window_, WM_NULL, 0, 0); // so that the loop looks again
}

INT_PTR CALLBACK OptionsDialog::dialogProcedure(HWND window, UINT message, WPARAM wParam,
                                                LPARAM lParam) noexcept {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(window, DWLP_USER, lParam);
        return TRUE;
    }
    auto* self = reinterpret_cast<OptionsDialog*>(GetWindowLongPtrW(window, DWLP_USER));
    const WORD button = LOWORD(wParam);
    if (!self || message != WM_COMMAND || (button != IDOK && button != IDCANCEL)) {
        return FALSE;
    }
    try {
        self->finish(button);
    } catch (const Failure& failure) {
        MessageBoxW(window, failure.message().c_str(), L"Workbench", MB_OK | MB_ICONERROR);
    } catch (const std::exception&) {
        self->closed_ = true;
    }
    return TRUE;
}

} // namespace workbench
