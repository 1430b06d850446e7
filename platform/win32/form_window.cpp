// The window's side of a form: how it follows its model. What the user does is in form_events.cpp.

#include "platform/win32/form_window.h"

#include "base/failure.h"
#include "platform/win32/form_owner.h"
#include "platform/win32/form_placement.h"
#include "platform/win32/list_images.h"
#include "platform/win32/list_view_window.h"
#include "platform/win32/module.h"
#include "platform/win32/pictures.h"
#include "platform/win32/pixel_images.h"
#include "platform/win32/screen_units.h"
#include "platform/win32/wide_text.h"

#include <stdexcept>

namespace cvlog::platform::win32 {

namespace {

constexpr DWORD kSizableStyle = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
constexpr DWORD kDialogStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
constexpr DWORD kStripStyle = WS_POPUP | WS_CLIPCHILDREN;
constexpr std::u16string_view kWindowIcon = u"Session";

std::shared_ptr<FormFrame> makeFrame(HostWindow& host, widgets::Border border) {
    if (border == widgets::Border::Strip)
        return FormFrame::make(host, kStripStyle, WS_EX_CONTROLPARENT | WS_EX_TOOLWINDOW);
    const bool isDialog = border == widgets::Border::FixedDialog;
    return FormFrame::make(host, isDialog ? kDialogStyle : kSizableStyle,
                           WS_EX_CONTROLPARENT | (isDialog ? WS_EX_DLGMODALFRAME : 0U));
}

ListViewWindow& windowOf(const widgets::ListView& list) noexcept {
    return *static_cast<ListViewWindow*>(list.peer());
}

/// Coming up, a window takes the focus only from windows of its own program.
bool programIsInFront() noexcept {
    const HWND front = GetForegroundWindow();
    DWORD process = 0;
    if (front) GetWindowThreadProcessId(front, &process);
    return !front || process == GetCurrentProcessId();
}

} // namespace

FormWindow::FormWindow(widgets::Form& model, HostWindow& host)
    : form_(model), frame_(makeFrame(host, model.border())), controls_(*frame_), dpi_(windowDpi(window())) {
    const base::ScopeExit closing([this] {
        if (!frame_->tells(this)) frame_->close(); // it was not made to the end
    });
    controls_.setLook(form_.font(), dpi_);
    captionChanged();
    applyIcons();
    frame_->setEvents(this);
}

FormWindow::~FormWindow() {
    frame_->setEvents(nullptr);
    if (run_)
        run_->end();
    else
        activateFrozenOwner(window());
    if (window()) {
        SendMessageW(window(), WM_SETICON, ICON_SMALL, 0);
        SendMessageW(window(), WM_SETICON, ICON_BIG, 0);
    }
    frame_->close();
}

void FormWindow::applyIcons() {
    if (form_.border() != widgets::Border::Sizable) return;
    base::ignoring([this] {
        const auto picture = Pictures(thisModule()).builtIn(kWindowIcon);
        const int side = smallIconSide(dpi_);
        IconHandle smallOne = makeIcon(picture->render(side));
        IconHandle largeOne = makeIcon(picture->render(2 * side));
        SendMessageW(window(), WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(smallOne.get()));
        SendMessageW(window(), WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(largeOne.get()));
        smallIcon_ = std::move(smallOne); // those before go only now
        largeIcon_ = std::move(largeOne);
    });
}

std::int32_t FormWindow::windowHandle() const {
    return static_cast<std::int32_t>(
        reinterpret_cast<std::intptr_t>(window())); // handles have 32 significant bits
}

void FormWindow::captionChanged() { SetWindowTextW(window(), shownText(form_.caption()).c_str()); }

void FormWindow::placementChanged() {
    const std::shared_ptr<FormFrame> frame = frame_;
    const widgets::WindowState state = form_.state(); // moving tells the form the one that is
    if (form_.placement()) setNormalPlacement(window(), toPixels(*form_.placement(), screenDpi()));
    if (!frame->tells(this)) return;
    if (IsWindowVisible(window())) setWindowState(window(), state);
    if (frame->tells(this)) tellClientSize();
}

void FormWindow::clientSizeChanged() {
    const RECT client = toPixels(form_.clientArea(), dpi_);
    const SIZE size = sizeAround(window(), {client.right, client.bottom}, dpi_);
    RECT place = normalPlacement(window());
    place.right = place.left + size.cx;
    place.bottom = place.top + size.cy;
    setNormalPlacement(window(), place);
}

void FormWindow::listPlaced(widgets::ListView& list, const base::Area& area) {
    ListViewWindow& placed = windowOf(list);
    const bool isNew = GetAncestor(placed.frame(), GA_PARENT) != window();
    placed.moveTo(window(), toPixels(area, dpi_));
    placed.setForm(window());
    if (isNew) // the last so far that Tab reaches
        SetWindowPos(placed.frame(), HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    if (GetFocus() == window()) focusChild();
}

void FormWindow::listTakenOff(widgets::ListView& list) noexcept {
    windowOf(list).setForm(nullptr);
    windowOf(list).park();
}

void FormWindow::show(std::int32_t owner, widgets::Activation activation) {
    const HWND wanted = ownerWindow(owner);
    setOwner(window(), wanted);
    present(wanted, activation == widgets::Activation::Take && programIsInFront());
}

void FormWindow::runModal(std::int32_t owner) {
    const HWND wanted = ownerWindow(owner);
    setOwner(window(), wanted);
    const std::shared_ptr<FormFrame> frame = frame_; // the peer goes while the form is run
    const auto run = std::make_shared<ModalRun>(window());
    const base::ScopeExit ending([&run] { run->end(); });
    run_ = run;
    present(wanted, true);
    if (!run->takeMessages() && frame->tells(this)) form_.unload();
}

void FormWindow::present(HWND owner, bool activate) {
    if (IsWindowVisible(window())) return;
    const std::shared_ptr<FormFrame> frame = frame_;
    if (!form_.placement() && form_.border() == widgets::Border::FixedDialog)
        setNormalPlacement(window(), centredPlacement(window(), owner));
    sizeTold_ = false;
    const int plainly = activate ? SW_SHOW : SW_SHOWNA;
    showWindow(form_.state() == widgets::WindowState::Maximised ? SW_SHOWMAXIMIZED : plainly, activate);
    if (!frame->tells(this)) return;
    tellPlacement();
    if (!sizeTold_) tellClientSize(true);
}

void FormWindow::showWindow(int command, bool activate) {
    const std::shared_ptr<FormFrame> frame = frame_;
    const HWND focus = GetFocus();
    quiet_ = !activate;
    ShowWindow(window(), command);
    // Some systems give a window that comes out of the task bar the focus all the same.
    if (!activate && GetFocus() != focus && IsWindow(focus)) SetFocus(focus);
    if (frame->tells(this)) quiet_ = false;
}

void FormWindow::focusButton(const widgets::Button& button) {
    const HWND control = controls_.windowOf(button);
    if (!control) return;
    lastFocus_ = control;
    if (GetActiveWindow() == window()) SetFocus(control);
}

void FormWindow::enabledChanged() { EnableWindow(window(), form_.enabled()); }

void FormWindow::pointerChanged() {
    POINT place{};
    const HWND under = GetCursorPos(&place) ? WindowFromPoint(place) : nullptr;
    if (under && (under == window() || IsChild(window(), under)))
        SendMessageW(under, WM_SETCURSOR, reinterpret_cast<WPARAM>(under), MAKELONG(HTCLIENT, WM_MOUSEMOVE));
}

bool FormWindow::isActive() const { return window() && GetActiveWindow() == window(); }

void FormWindow::bringToFront(widgets::Activation activation) {
    const std::shared_ptr<FormFrame> frame = frame_;
    const bool activate = activation == widgets::Activation::Take;
    const bool wasHidden = form_.visible() && !IsWindowVisible(window());
    if (wasHidden) present(GetWindow(window(), GW_OWNER), activate);
    if (!frame->tells(this)) return;
    if (IsIconic(window())) showWindow(activate ? SW_RESTORE : SW_SHOWNOACTIVATE, activate);
    if (!frame->tells(this)) return;
    SetWindowPos(window(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    if (activate && IsWindowVisible(window()) && IsWindowEnabled(window())) SetForegroundWindow(window());
}

void FormWindow::tellPlacement() noexcept {
    const bool isShown = IsWindowVisible(window()) != FALSE;
    if (!isShown && !form_.placement()) return;
    const int dpi = screenDpi();
    const RECT place = normalPlacement(window());
    base::Area told = toTwips(place, dpi);
    if (form_.placement()) { // what the program gave stays as exact as it was
        const RECT known = toPixels(*form_.placement(), dpi);
        if (EqualRect(&known, &place)) told = *form_.placement();
    }
    form_.userMoved(told, isShown ? windowState(window()) : form_.state());
}

void FormWindow::tellClientSize(bool always) {
    if (IsIconic(window())) return;
    RECT client{};
    GetClientRect(window(), &client);
    const RECT known = toPixels(form_.clientArea(), dpi_);
    const bool isKnown = EqualRect(&known, &client) != FALSE;
    if (isKnown && !always) return;
    const base::Area told = isKnown ? form_.clientArea() : toTwips(client, dpi_);
    sizeTold_ = true;
    form_.userResized(told.width, told.height);
}

} // namespace cvlog::platform::win32
