// The window's side of a list: how it follows its model. What the user does is in list_view_events.cpp.

#include "platform/win32/list_view_window.h"

#include "base/failure.h"
#include "platform/win32/list_accessible_events.h"
#include "platform/win32/list_colours.h"
#include "platform/win32/screen_units.h"
#include "platform/win32/system_font.h"
#include "platform/win32/unseen_change.h"

#include <algorithm>

namespace cvlog::platform::win32 {

ListViewWindow::ListViewWindow(widgets::ListView& model, HostWindow& host)
    : model_(model), owner_(model), frame_(ListFrame::make(host)), selection_(model), columns_(model),
      input_(owner_), painter_(model, icons_), accessibleRows_(model, frame_) {
    pending_.rows = pending_.columns = pending_.appearance = true;
    flush();
    frame_->setEvents(this);
}

ListViewWindow::~ListViewWindow() {
    frame_->setEvents(nullptr);
    releaseResources();
    frame_->close();
}

void ListViewWindow::releaseResources() noexcept {
    if (!list()) return;
    send(WM_SETFONT);
    send(LVM_SETIMAGELIST, LVSIL_SMALL);
    SendMessageW(reinterpret_cast<HWND>(send(LVM_GETHEADER)), HDM_SETIMAGELIST, 0, 0);
}

void ListViewWindow::moveTo(HWND parent, RECT area) {
    frame_->moveTo(parent, area);
    if (frame() && resolution() != dpi_) appearanceChanged();
}

void ListViewWindow::fixResolution(int dpi) {
    fixedDpi_ = dpi;
    appearanceChanged();
}

int ListViewWindow::resolution() const noexcept { return fixedDpi_ > 0 ? fixedDpi_ : windowDpi(frame()); }

void ListViewWindow::batchEnded() {
    inBatch_ = false;
    changed();
}

void ListViewWindow::rowsInserted(int first, int count) {
    pending_.rows = true;
    selection_.rowsInserted(list(), first, count);
    changed();
}

void ListViewWindow::rowsRemoved(int first, int count) {
    pending_.rows = true;
    selection_.rowsRemoved(list(), first, count);
    changed();
}

void ListViewWindow::rowsReordered() {
    pending_.rows = true;
    selection_.rowsReordered(list());
    changed();
}

void ListViewWindow::cleared() { rowsReordered(); }

void ListViewWindow::rowChanged(int row) {
    const bool first = pending_.firstChanged == 0;
    pending_.firstChanged = first ? row : std::min(pending_.firstChanged, row);
    pending_.lastChanged = first ? row : std::max(pending_.lastChanged, row);
    changed();
}

void ListViewWindow::selectionChanged() {
    pending_.selection = true;
    changed();
}

void ListViewWindow::columnChanged(int) {
    pending_.columns = true;
    changed();
}

void ListViewWindow::appearanceChanged() {
    pending_.appearance = true;
    changed();
}

void ListViewWindow::scrollTo(int row) {
    if (row < 1 || row > model_.rowCount()) return;
    pending_.scrolledBefore = pending_.scroll;
    pending_.scroll = {model_.idAt(row), row};
    changed();
}

void ListViewWindow::repaint() {
    pending_.repaint = true;
    changed();
}

void ListViewWindow::takeFocus() { SetFocus(list()); }

std::int32_t ListViewWindow::windowHandle() const {
    return static_cast<std::int32_t>(
        reinterpret_cast<std::intptr_t>(list())); // handles have 32 significant bits
}

int ListViewWindow::topRow() const {
    return std::min(static_cast<int>(send(LVM_GETTOPINDEX)) + 1, model_.rowCount());
}

void ListViewWindow::changed() {
    if (!inBatch_) base::ignoring([this] { flush(); });
}

void ListViewWindow::flush() {
    if (!list()) return;
    const Pending work = std::exchange(pending_, Pending());
    if (work.appearance) applyAppearance();
    if (work.columns || work.appearance) columns_.push(list(), dpi_);
    showRows(work);
    if (work.columns || work.appearance) InvalidateRect(list(), nullptr, TRUE);
    if (work.firstChanged > 0)
        send(LVM_REDRAWITEMS, static_cast<WPARAM>(work.firstChanged - 1),
             std::min(work.lastChanged, model_.rowCount()) - 1);
    if (work.rows) tellRowsChanged(list());
    if (work.selection) tellSelectionChanged(list());
    if (work.selection) tellFocus();
    if (work.repaint)
        RedrawWindow(list(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    const bool moved = work.scrolledBefore.row != 0 || work.scroll.row != 0;
    if (work.appearance || work.columns || work.rows || work.selection || work.firstChanged > 0 || moved)
        tellViewChanged();
}

void ListViewWindow::showRows(const Pending& work) {
    std::optional<UnseenChange> unseen;
    if (selection_.moved()) unseen.emplace(list()); // the scrolling, too
    if (work.rows || work.selection) selection_.push(list());
    scroll(work.scrolledBefore);
    scroll(work.scroll);
}

void ListViewWindow::tellViewChanged() const noexcept {
    if (viewChanged) base::ignoring([this] { viewChanged(); });
}

void ListViewWindow::scroll(const Scroll& wanted) {
    const int row = wanted.row != 0 ? model_.positionOf(wanted.row, wanted.guess) : 0;
    if (row > 0) send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(row - 1), FALSE);
}

void ListViewWindow::applyAppearance() {
    const int dpi = resolution();
    if (dpi != dpi_) {
        dpi_ = dpi;
        shownFont_.reset();
        columns_.forget();
    }
    base::ignoring([this] { applyFont(); });
    base::ignoring([this] { applyImages(); });
    applyColours();
    const bool enabled = IsWindowEnabled(list()) != FALSE;
    if (enabled != model_.enabled()) EnableWindow(list(), model_.enabled());
}

void ListViewWindow::applyFont() {
    if (shownFont_ == model_.font()) return;
    FontHandle made = makeFont(model_.font(), dpi_);
    send(WM_SETFONT, reinterpret_cast<WPARAM>(made.get()), TRUE);
    font_ = std::move(made); // the one before goes only now
    painter_.useFont(font_.get());
    shownFont_ = model_.font();
}

void ListViewWindow::applyImages() {
    const int side = smallIconSide(dpi_);
    icons_.assign(model_.smallIcons(), side);
    headerIcons_.assign(model_.headerIcons(), side);
    send(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(icons_.handle()));
    SendMessageW(reinterpret_cast<HWND>(send(LVM_GETHEADER)), HDM_SETIMAGELIST, 0,
                 reinterpret_cast<LPARAM>(headerIcons_.handle()));
}

void ListViewWindow::applyColours() {
    const RowColours plain = plainColours(model_);
    send(LVM_SETBKCOLOR, 0, static_cast<LPARAM>(plain.back));
    send(LVM_SETTEXTBKCOLOR, 0, static_cast<LPARAM>(plain.back));
    send(LVM_SETTEXTCOLOR, 0, static_cast<LPARAM>(plain.text));
}

} // namespace cvlog::platform::win32
