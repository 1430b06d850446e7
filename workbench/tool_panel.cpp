#include "workbench/tool_panel.h"

#include <algorithm>

#include "workbench/failure.h"
#include "workbench/screen_scale.h"

namespace workbench {

ToolPanel::ToolPanel(HWND parent, SharedProject project) : parent_(parent), project_(std::move(project)) {
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    list_ =
        CreateWindowExW(WS_EX_CLIENTEDGE, L"LISTBOX", nullptr,
                        WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | LBS_NOINTEGRALHEIGHT | LBS_NOTIFY,
                        0, 0, 0, 0, parent_, nullptr, instance, nullptr);
    button_ =
        CreateWindowExW(0, L"BUTTON", L"&Check", WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_DEFPUSHBUTTON, 0, 0,
                        0, 0, parent_, reinterpret_cast<HMENU>(UINT_PTR{kCheckButton}), instance, nullptr);
    if (!list_ || !button_) {
        throw Failure(L"The tool window cannot be furnished");
    }
    for (const RepositoryEntry& object : project_->objects) {
        const std::wstring& name = object.displayName.empty() ? object.name : object.displayName;
        const std::wstring line = name + L"  -  " + project_->entityTypes[object.entityType].displayName;
        SendMessageW(list_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.c_str()));
    }
    SendMessageW(list_, LB_SETCURSEL, 0, 0);
    updateFont();
}

ToolPanel::~ToolPanel() { DeleteObject(font_); }

std::wstring ToolPanel::chosenObject() const {
    const LRESULT chosen = SendMessageW(list_, LB_GETCURSEL, 0, 0);
    return chosen == LB_ERR ? L"" : project_->objects[static_cast<size_t>(chosen)].id;
}

void ToolPanel::place(const RECT& area) {
    const int margin = scaled(parent_, 8);
    const int buttonWidth = scaled(parent_, 88);
    const int buttonHeight = scaled(parent_, 26);
    const int listWidth = area.right - area.left - buttonWidth - 3 * margin;
    const int listHeight = area.bottom - area.top - 2 * margin;
    MoveWindow(list_, area.left + margin, area.top + margin, std::max(listWidth, 0), std::max(listHeight, 0),
               TRUE);
    MoveWindow(button_, area.right - margin - buttonWidth, area.top + margin, buttonWidth, buttonHeight,
               TRUE);
}

void ToolPanel::updateFont() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0,
                               GetDpiForWindow(parent_));
    const HFONT font = CreateFontIndirectW(&metrics.lfMessageFont);
    SendMessageW(list_, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    SendMessageW(button_, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    DeleteObject(font_);
    font_ = font;
}

} // namespace workbench
