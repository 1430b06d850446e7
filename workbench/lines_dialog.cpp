#include "workbench/lines_dialog.h"

#include <commctrl.h>

#include "workbench/failure.h"
#include "workbench/menu_ids.h"
#include "workbench/screen_scale.h"

namespace workbench {

namespace {

constexpr long kUsual = 1000;

} // namespace

LinesDialog::LinesDialog(HWND owner, std::function<void(long lines)> onAnswer)
    : owner_(owner), onAnswer_(std::move(onAnswer)) {
    window_ = CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_LINES), owner_,
                                 &LinesDialog::dialogProcedure, reinterpret_cast<LPARAM>(this));
    if (!window_) {
        throw Failure(L"The dialog cannot be created");
    }
    SendDlgItemMessageW(window_, IDC_LINES_SPIN, UDM_SETRANGE32, 1, kMost);
    SendDlgItemMessageW(window_, IDC_LINES, EM_SETLIMITTEXT, 8, 0);
    SetDlgItemInt(window_, IDC_LINES, kUsual, FALSE);
}

LinesDialog::~LinesDialog() {
    EnableWindow(owner_, TRUE); // first, or the focus would go to another program
    DestroyWindow(window_);
}

void LinesDialog::show() {
    centreOver(window_, owner_);
    EnableWindow(owner_, FALSE);
    ShowWindow(window_, SW_SHOW);
    SendMessageW(window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(window_, IDC_LINES)), TRUE);
}

void LinesDialog::tellAnswer() const {
    if (answer_ > 0) {
        onAnswer_(answer_);
    }
}

void LinesDialog::finish(WORD button) {
    if (button == IDOK) {
        BOOL isNumber = FALSE;
        const UINT lines = GetDlgItemInt(window_, IDC_LINES, &isNumber, FALSE);
        if (!isNumber || lines < 1 || lines > UINT{kMost}) {
            MessageBeep(MB_ICONWARNING);
            const HWND field = GetDlgItem(window_, IDC_LINES);
            SendMessageW(window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(field), TRUE);
            return;
        }
        answer_ = static_cast<long>(lines);
    }
    closed_ = true;
    PostMessageW(window_, WM_NULL, 0, 0); // so that the loop looks again
}

INT_PTR CALLBACK LinesDialog::dialogProcedure(HWND window, UINT message, WPARAM wParam,
                                              LPARAM lParam) noexcept {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(window, DWLP_USER, lParam);
        return TRUE;
    }
    auto* self = reinterpret_cast<LinesDialog*>(GetWindowLongPtrW(window, DWLP_USER));
    const WORD button = LOWORD(wParam);
    if (!self || message != WM_COMMAND || (button != IDOK && button != IDCANCEL)) {
        return FALSE;
    }
    self->finish(button);
    return TRUE;
}

} // namespace workbench
