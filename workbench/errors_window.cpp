#include "workbench/errors_window.h"

#include <uxtheme.h>

#include <algorithm>

#include "workbench/failure.h"
#include "workbench/menu_ids.h"
#include "workbench/screen_scale.h"
#include "workbench/text.h"

namespace workbench {

namespace {

constexpr const wchar_t* kErrorsClass = L"WorkbenchErrors";
constexpr int kWidth = 760; // at 96 pixels an inch, as all measures here
constexpr int kHeight = 300;
constexpr int kLeastWidth = 420;
constexpr int kLeastHeight = 160;
constexpr int kMargin = 10;
constexpr int kLeastTextWidth = 220;

struct ColumnLook {
    const wchar_t* caption;
    int width;
    int format;
};

// The last one takes the width that is left.
constexpr ColumnLook kLooks[ErrorsWindow::kColumns] = {{L"Severity", 90, LVCFMT_LEFT},
                                                       {L"Object", 150, LVCFMT_LEFT},
                                                       {L"Line", 60, LVCFMT_RIGHT},
                                                       {L"Code", 70, LVCFMT_LEFT},
                                                       {L"Message", 0, LVCFMT_LEFT}};

enum SeverityIcon { kErrorIcon, kWarningIcon, kNoteIcon };

int iconOf(const std::wstring& severity) {
    if (sameName(severity, L"Error")) {
        return kErrorIcon;
    }
    return sameName(severity, L"Warning") ? kWarningIcon : kNoteIcon;
}

void registerErrorsClass(WNDPROC procedure) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = procedure;
    description.hInstance = GetModuleHandleW(nullptr);
    description.hIcon = LoadIconW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_WORKBENCH));
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    description.lpszClassName = kErrorsClass;
    RegisterClassExW(&description);
}

std::wstring counted(size_t count, const wchar_t* word) {
    return std::to_wstring(count) + L" " + word + (count == 1 ? L"" : L"s");
}

std::wstring textOf(HWND window) {
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

HFONT messageFont(HWND window, LONG weight, int percent) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, GetDpiForWindow(window));
    metrics.lfMessageFont.lfWeight = weight;
    metrics.lfMessageFont.lfHeight = MulDiv(metrics.lfMessageFont.lfHeight, percent, 100);
    return CreateFontIndirectW(&metrics.lfMessageFont);
}

int heightOf(HFONT font, HWND window) {
    const HDC device = GetDC(window);
    const HGDIOBJ before = SelectObject(device, font);
    TEXTMETRICW metrics{};
    GetTextMetricsW(device, &metrics);
    SelectObject(device, before);
    ReleaseDC(window, device);
    return metrics.tmHeight;
}

} // namespace

ErrorsWindow::ErrorsWindow(HWND owner, SharedProject project) : project_(std::move(project)) {
    registerErrorsClass(&ErrorsWindow::windowProcedure);
    create(owner);
    createParts();
    addColumns();
    updateResolution();
}

ErrorsWindow::~ErrorsWindow() {
    SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
    DestroyWindow(window_);
    ImageList_Destroy(icons_);
    DeleteObject(font_);
    DeleteObject(titleFont_);
}

void ErrorsWindow::create(HWND owner) {
    RECT around;
    GetWindowRect(owner, &around);
    CreateWindowExW(0, kErrorsClass, L"Errors", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                    around.left + scaled(owner, 210), around.top + scaled(owner, 64), scaled(owner, kWidth),
                    scaled(owner, kHeight), owner, nullptr, GetModuleHandleW(nullptr), this);
    if (!window_) {
        throw Failure(L"The errors window cannot be created");
    }
}

void ErrorsWindow::createParts() {
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    const DWORD label = WS_CHILD | WS_VISIBLE | SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS;
    title_ = CreateWindowExW(0, L"STATIC", nullptr, label, 0, 0, 0, 0, window_, nullptr, instance, nullptr);
    summary_ = CreateWindowExW(0, L"STATIC", nullptr, label, 0, 0, 0, 0, window_, nullptr, instance, nullptr);
    list_ = CreateWindowExW(WS_EX_CLIENTEDGE, WC_LISTVIEWW, L"Messages",
                            WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL |
                                LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS | LVS_NOSORTHEADER,
                            0, 0, 0, 0, window_, nullptr, instance, nullptr);
    if (!title_ || !summary_ || !list_) {
        throw Failure(L"The errors window cannot be furnished");
    }
    SetWindowTheme(list_, L"Explorer", nullptr);
    ListView_SetExtendedListViewStyle(list_, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
}

void ErrorsWindow::addColumns() {
    for (int i = 0; i < kColumns; ++i) {
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT | LVCF_SUBITEM;
        column.pszText = const_cast<wchar_t*>(kLooks[i].caption);
        column.cx = scaled(window_, kLooks[i].width);
        column.fmt = kLooks[i].format;
        column.iSubItem = i;
        SendMessageW(list_, LVM_INSERTCOLUMNW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&column));
    }
}

/// Fonts, icons and columns for the resolution that the window has now.
void ErrorsWindow::updateResolution() {
    const HFONT font = messageFont(window_, FW_NORMAL, 100);
    const HFONT titleFont = messageFont(window_, FW_SEMIBOLD, 130);
    SendMessageW(title_, WM_SETFONT, reinterpret_cast<WPARAM>(titleFont), TRUE);
    for (const HWND part : {summary_, list_}) {
        SendMessageW(part, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    }
    DeleteObject(font_);
    DeleteObject(titleFont_);
    font_ = font;
    titleFont_ = titleFont;
    updateIcons();
    for (int i = 0; i < kText; ++i) {
        SendMessageW(list_, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(i), scaled(window_, kLooks[i].width));
    }
    layOut();
}

void ErrorsWindow::updateIcons() {
    const int side = scaled(window_, 16);
    const HIMAGELIST icons = ImageList_Create(side, side, ILC_COLOR32, 3, 0);
    for (const wchar_t* name : {IDI_ERROR, IDI_WARNING, IDI_INFORMATION}) {
        const HANDLE icon = LoadImageW(nullptr, name, IMAGE_ICON, side, side, LR_SHARED);
        ImageList_ReplaceIcon(icons, -1, static_cast<HICON>(icon));
    }
    SendMessageW(list_, LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(icons));
    ImageList_Destroy(icons_);
    icons_ = icons;
}

void ErrorsWindow::layOut() {
    if (!list_ || !font_ || IsIconic(window_)) {
        return;
    }
    RECT area;
    GetClientRect(window_, &area);
    const int margin = scaled(window_, kMargin);
    const int width = std::max(static_cast<int>(area.right) - 2 * margin, 0);
    int top = margin;
    const int titleHeight = heightOf(titleFont_, window_);
    MoveWindow(title_, margin, top, width, titleHeight, TRUE);
    top += titleHeight + margin / 4;
    const int summaryHeight = heightOf(font_, window_);
    MoveWindow(summary_, margin, top, width, summaryHeight, TRUE);
    top += summaryHeight + margin;
    MoveWindow(list_, 0, top, area.right, std::max(static_cast<int>(area.bottom) - top, 0), TRUE);
    placeColumns();
}

/// The messages get what the other columns leave.
void ErrorsWindow::placeColumns() {
    RECT area;
    GetClientRect(list_, &area);
    int left = area.right;
    for (int i = 0; i < kText; ++i) {
        left -= static_cast<int>(SendMessageW(list_, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(i), 0));
    }
    SendMessageW(list_, LVM_SETCOLUMNWIDTH, kText, std::max(left, scaled(window_, kLeastTextWidth)));
}

void ErrorsWindow::show(const std::wstring& name, ErrorMessages messages, long number) {
    messages_ = std::move(messages);
    readRow_ = static_cast<size_t>(-1);
    SetWindowTextW(window_, (name + L" - Errors").c_str());
    SetWindowTextW(title_, (L"Errors of " + name).c_str());
    SetWindowTextW(summary_, summary().c_str());
    SendMessageW(list_, LVM_SETITEMCOUNT, messages_.count(), 0);
    InvalidateRect(list_, nullptr, TRUE);
    const HWND focus = GetFocus();
    if (focus != list_) {
        focusBefore_ = focus;
    }
    if (IsIconic(window_)) {
        ShowWindow(window_, SW_RESTORE);
    }
    SetWindowPos(window_, HWND_TOP, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW | (number > 0 ? 0U : UINT{SWP_NOACTIVATE}));
    layOut(); // the scroll bar may have come or gone
    choose(number);
    if (number > 0) {
        SetFocus(list_);
    }
}

void ErrorsWindow::choose(long number) {
    LVITEMW state{};
    state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageW(list_, LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&state));
    const bool known = number > 0 && static_cast<size_t>(number) <= messages_.count();
    if (known) {
        state.state = state.stateMask;
        SendMessageW(list_, LVM_SETITEMSTATE, static_cast<WPARAM>(number - 1),
                     reinterpret_cast<LPARAM>(&state));
    }
    SendMessageW(list_, LVM_ENSUREVISIBLE, known ? static_cast<WPARAM>(number - 1) : 0, FALSE);
}

void ErrorsWindow::close() {
    if (!visible()) {
        return;
    }
    const bool wasActive = GetActiveWindow() == window_;
    if (wasActive && IsWindow(focusBefore_) && IsWindowVisible(focusBefore_)) {
        SetFocus(focusBefore_);
    }
    ShowWindow(window_, SW_HIDE);
}

std::wstring ErrorsWindow::title() const { return textOf(title_); }

std::wstring ErrorsWindow::summary() const {
    std::wstring text =
        counted(messages_.errorCount(), L"error") + L", " + counted(messages_.warningCount(), L"warning");
    const size_t others = messages_.count() - messages_.errorCount() - messages_.warningCount();
    if (others) {
        text += L", " + counted(others, L"note");
    }
    if (messages_.hiddenCount()) {
        text += L". The options hide " + counted(messages_.hiddenCount(), L"more message") + L".";
    }
    return text;
}

bool ErrorsWindow::translate(const MSG& message) {
    const bool ours = message.hwnd == window_ || IsChild(window_, message.hwnd);
    if (!ours || message.message != WM_KEYDOWN || message.wParam != VK_ESCAPE) {
        return false;
    }
    close();
    return true;
}

const ErrorMessage& ErrorsWindow::messageAt(size_t row) {
    if (readRow_ != row) {
        read_ = messages_.at(row);
        readRow_ = row;
    }
    return read_;
}

/// As the project calls the object; a file may name objects that the project does not have.
std::wstring ErrorsWindow::objectName(const ErrorMessage& message) const {
    const EntityType* type = project_->findEntityType(message.type);
    const RepositoryEntry* object = type ? project_->findObject(*type, message.object) : nullptr;
    return object && !object->displayName.empty() ? object->displayName : message.object;
}

std::wstring ErrorsWindow::cellText(size_t row, int column) {
    const ErrorMessage& message = messageAt(row);
    switch (column) {
    case kSeverity:
        return message.severity;
    case kObject:
        return objectName(message);
    case kLine:
        return message.line == L"-1" ? L"" : message.line;
    case kCode:
        return message.code;
    default:
        return message.text;
    }
}

void ErrorsWindow::fillItem(LVITEMW& item) {
    const auto row = static_cast<size_t>(item.iItem);
    if (item.iItem < 0 || row >= messages_.count()) {
        return;
    }
    if (item.mask & LVIF_TEXT) {
        lstrcpynW(item.pszText, cellText(row, item.iSubItem).c_str(), item.cchTextMax);
    }
    if ((item.mask & LVIF_IMAGE) && item.iSubItem == 0) {
        item.iImage = iconOf(messageAt(row).severity);
    }
}

void ErrorsWindow::resize(const RECT& area) {
    SetWindowPos(window_, nullptr, area.left, area.top, area.right - area.left, area.bottom - area.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

LRESULT ErrorsWindow::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SIZE:
        layOut();
        return 0;
    case WM_SETFOCUS:
        SetFocus(list_);
        return 0;
    case WM_GETMINMAXINFO:
        reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {scaled(window_, kLeastWidth),
                                                                 scaled(window_, kLeastHeight)};
        return 0;
    case WM_NOTIFY:
        if (reinterpret_cast<const NMHDR*>(lParam)->code == LVN_GETDISPINFOW) {
            fillItem(reinterpret_cast<NMLVDISPINFOW*>(lParam)->item);
            return 0;
        }
        break;
    case WM_DPICHANGED:
        resize(*reinterpret_cast<const RECT*>(lParam));
        updateResolution();
        return 0;
    case WM_CLOSE:
        close();
        return 0;
    default:
        break;
    }
    return DefWindowProcW(window_, message, wParam, lParam);
}

LRESULT CALLBACK ErrorsWindow::windowProcedure(HWND window, UINT message, WPARAM wParam,
                                               LPARAM lParam) noexcept {
    if (message == WM_NCCREATE) {
        auto* self = static_cast<ErrorsWindow*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
        self->window_ = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* self = reinterpret_cast<ErrorsWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    try {
        return self ? self->handle(message, wParam, lParam) : DefWindowProcW(window, message, wParam, lParam);
    } catch (const std::exception&) {
        return 0; // a cell stays empty
    }
}

} // namespace workbench
