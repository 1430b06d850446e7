#include "platform/win32/form_controls.h"

#include "base/failure.h"
#include "platform/win32/common_controls_context.h"
#include "platform/win32/module.h"
#include "platform/win32/screen_units.h"
#include "platform/win32/system_font.h"
#include "platform/win32/wide_text.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace cvlog::platform::win32 {

namespace {

constexpr int kFirstButton = 100; // the commands below are the system's
constexpr int kFirstPicture = 10'000;

} // namespace

void FormControls::setLook(const base::Font& font, int dpi) {
    FontHandle made = makeFont(font, dpi);
    std::swap(font_, made); // the one before goes when nobody uses it any more
    dpi_ = dpi;
    for (const Placed& control : placed_) settle(control);
}

HWND FormControls::makeControl(const wchar_t* windowClass, std::u16string_view text, DWORD style,
                               const base::Area& area, int command) {
    const CommonControlsContext context;
    const HWND made = CreateWindowExW(
        0, windowClass, shownText(text).c_str(), style | WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS, 0, 0, 0, 0,
        frame_.window(), reinterpret_cast<HMENU>(static_cast<std::intptr_t>(command)), thisModule(), nullptr);
    if (!made) throw std::runtime_error("no window for a control");
    placed_.push_back({made, area});
    settle(placed_.back());
    return made;
}

void FormControls::settle(const Placed& control) const noexcept {
    const RECT area = toPixels(control.area, dpi_);
    SendMessageW(control.window, WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), TRUE);
    SetWindowPos(control.window, nullptr, area.left, area.top, area.right - area.left, area.bottom - area.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    InvalidateRect(control.window, nullptr, TRUE);
}

void FormControls::add(const widgets::Label& label) {
    makeControl(L"STATIC", label.caption, SS_LEFT | SS_NOPREFIX | SS_EDITCONTROL, label.area, 0);
}

void FormControls::add(const widgets::Button& button) {
    const int command = button.isCancel ? IDCANCEL : kFirstButton + static_cast<int>(buttons_.size());
    const HWND made =
        makeControl(L"BUTTON", button.caption, BS_PUSHBUTTON | BS_NOTIFY | WS_TABSTOP, button.area, command);
    buttons_.push_back({made, &button});
    frame_.watchKeys(made);
    markEnterButton();
}

void FormControls::add(const widgets::PictureBox& picture) {
    const int command = kFirstPicture + static_cast<int>(pictures_.size());
    pictures_.push_back({nullptr, &picture, {}});
    pictures_.back().window = makeControl(L"STATIC", u"", SS_OWNERDRAW, picture.area, command);
}

void FormControls::moveTo(HWND control, const base::Area& area) noexcept {
    const auto found = std::ranges::find(placed_, control, &Placed::window);
    if (found == placed_.end()) return;
    found->area = area;
    settle(*found);
}

HWND FormControls::windowOf(const widgets::Button& button) const noexcept {
    const auto found = std::ranges::find(buttons_, &button, &PushButton::button);
    return found == buttons_.end() ? nullptr : found->window;
}

void FormControls::moved(const widgets::Button& button) noexcept { moveTo(windowOf(button), button.area); }

void FormControls::moved(const widgets::PictureBox& picture) noexcept {
    const auto found = std::ranges::find(pictures_, &picture, &Picture::picture);
    if (found != pictures_.end()) moveTo(found->window, picture.area);
}

void FormControls::changed(const widgets::PictureBox& picture) noexcept {
    const auto found = std::ranges::find(pictures_, &picture, &Picture::picture);
    if (found == pictures_.end() || found->outdated) return; // it is going to be drawn anyway
    found->outdated = true;
    InvalidateRect(found->window, nullptr, FALSE);
}

int FormControls::commandOf(const PushButton& button) const noexcept {
    return static_cast<int>(GetWindowLongPtrW(button.window, GWLP_ID));
}

const widgets::Button* FormControls::pressed(int command) const noexcept {
    const auto found = std::ranges::find_if(buttons_, [&](const PushButton& each) {
        return commandOf(each) == command || (command == IDOK && each.button->isDefault);
    });
    return found == buttons_.end() ? nullptr : found->button;
}

int FormControls::enterCommand() const noexcept {
    const HWND focus = GetFocus();
    const PushButton* entered = nullptr;
    for (const PushButton& each : buttons_) {
        if (each.window == focus) return commandOf(each);
        if (each.button->isDefault) entered = &each;
    }
    return entered ? commandOf(*entered) : 0;
}

void FormControls::markEnterButton() const noexcept {
    const int entered = enterCommand();
    for (const PushButton& each : buttons_) {
        const WPARAM wanted = commandOf(each) == entered ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
        const bool isMarked = (GetWindowLongPtrW(each.window, GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
        if (isMarked != (wanted == BS_DEFPUSHBUTTON)) SendMessageW(each.window, BM_SETSTYLE, wanted, TRUE);
    }
}

void FormControls::draw(const DRAWITEMSTRUCT& request) {
    FillRect(request.hDC, &request.rcItem, GetSysColorBrush(COLOR_BTNFACE));
    const auto found = std::ranges::find(pictures_, request.hwndItem, &Picture::window);
    if (found == pictures_.end()) return;
    const bool isOther = std::exchange(found->outdated, false);
    if (!found->picture->picture) return;
    const int width = static_cast<int>(request.rcItem.right - request.rcItem.left);
    const int height = static_cast<int>(request.rcItem.bottom - request.rcItem.top);
    const int side = std::min(width, height);
    if (side <= 0) return;
    if (isOther || found->drawn.side() != side) {
        found->drawn.reset(side);
        found->drawn.put(0, found->picture->picture->render(side));
    }
    const POINT place{request.rcItem.left + (width - side) / 2, request.rcItem.top + (height - side) / 2};
    found->drawn.draw(request.hDC, 0, place, side, 255);
}

} // namespace cvlog::platform::win32
