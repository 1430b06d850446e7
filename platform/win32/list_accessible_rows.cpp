#include "platform/win32/list_accessible_rows.h"

#include "platform/win32/list_columns.h"

#include <algorithm>
#include <oleacc.h>

namespace cvlog::platform::win32 {

namespace {

constexpr long kSelectionFlags =
    SELFLAG_TAKESELECTION | SELFLAG_EXTENDSELECTION | SELFLAG_ADDSELECTION | SELFLAG_REMOVESELECTION;

/// Which of the flags exclude each other.
bool isPossible(long flags) noexcept {
    const long selection = flags & kSelectionFlags;
    if ((flags & ~(kSelectionFlags | SELFLAG_TAKEFOCUS)) != 0) return false;
    if (selection & SELFLAG_TAKESELECTION) return selection == SELFLAG_TAKESELECTION;
    constexpr long kBoth = SELFLAG_ADDSELECTION | SELFLAG_REMOVESELECTION;
    return (selection & kBoth) != kBoth;
}

RECT onScreen(HWND window, RECT area) noexcept {
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&area), 2);
    return area;
}

} // namespace

std::u16string ListAccessibleRows::name(int child) const {
    const widgets::ListDescriber* describer = model_.describer();
    if (child == 0) return describer ? describer->listName() : std::u16string();
    return describer ? describer->rowName(model_, child) : std::u16string(model_.row(child).text());
}

std::u16string ListAccessibleRows::description(int child) const {
    const widgets::ListDescriber* describer = model_.describer();
    if (!describer) return {};
    return child == 0 ? describer->listDescription(model_) : describer->rowDescription(model_, child);
}

std::u16string ListAccessibleRows::action() const {
    const widgets::ListDescriber* describer = model_.describer();
    return describer ? describer->rowAction() : std::u16string();
}

LONG ListAccessibleRows::state(int child) const noexcept {
    const bool hasFocus = GetFocus() == window();
    // The list itself is out of sight for the moment in which its rows change places.
    LONG state = (IsWindowVisible(frame_->frame()) ? 0 : STATE_SYSTEM_INVISIBLE) |
                 (model_.enabled() ? STATE_SYSTEM_FOCUSABLE : STATE_SYSTEM_UNAVAILABLE);
    if (child == 0) return state | (hasFocus ? STATE_SYSTEM_FOCUSED : 0);
    if (model_.enabled()) state |= STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_MULTISELECTABLE;
    if (model_.isSelected(child)) state |= STATE_SYSTEM_SELECTED;
    if (hasFocus && model_.focusedRow() == child) state |= STATE_SYSTEM_FOCUSED;
    const RECT own = bounds(child);
    const RECT room = visibleRows();
    RECT seen{};
    if (!IntersectRect(&seen, &own, &room)) state |= STATE_SYSTEM_OFFSCREEN;
    return state;
}

RECT ListAccessibleRows::bounds(int child) const noexcept {
    RECT area{};
    area.left = LVIR_BOUNDS;
    SendMessageW(window(), LVM_GETITEMRECT, static_cast<WPARAM>(child - 1), reinterpret_cast<LPARAM>(&area));
    return area;
}

RECT ListAccessibleRows::visibleRows() const noexcept {
    RECT room{};
    GetClientRect(window(), &room);
    RECT captions{};
    GetClientRect(headerOf(window()), &captions);
    room.top = std::min(room.bottom, captions.bottom);
    return room;
}

RECT ListAccessibleRows::area(int child) const noexcept {
    if (child == 0) {
        RECT whole{};
        GetClientRect(window(), &whole);
        return onScreen(window(), whole);
    }
    const RECT own = bounds(child);
    const RECT room = visibleRows();
    RECT seen{};
    return onScreen(window(), IntersectRect(&seen, &own, &room) ? seen : own);
}

std::optional<int> ListAccessibleRows::childAt(POINT screen) const noexcept {
    LVHITTESTINFO hit{};
    hit.pt = screen;
    ScreenToClient(window(), &hit.pt);
    RECT client{};
    GetClientRect(window(), &client);
    if (!PtInRect(&client, hit.pt)) return std::nullopt;
    const RECT room = visibleRows();
    if (!PtInRect(&room, hit.pt)) return 0;
    SendMessageW(window(), LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    return hit.iItem >= 0 && hit.iItem < count() ? hit.iItem + 1 : 0;
}

std::optional<int> ListAccessibleRows::focused() const noexcept {
    if (GetFocus() != window()) return std::nullopt;
    return model_.focusedRow();
}

std::vector<LONG> ListAccessibleRows::selected() const {
    std::vector<LONG> rows;
    int left = model_.selectedCount();
    for (int row = 1; left > 0; ++row)
        if (model_.isSelected(row)) {
            rows.push_back(row);
            --left;
        }
    return rows;
}

std::optional<int> ListAccessibleRows::next(long direction, int child) const noexcept {
    int found = 0;
    if (child == 0)
        found = direction == NAVDIR_FIRSTCHILD ? 1 : direction == NAVDIR_LASTCHILD ? count() : 0;
    else if (direction == NAVDIR_NEXT || direction == NAVDIR_DOWN)
        found = child + 1;
    else if (direction == NAVDIR_PREVIOUS || direction == NAVDIR_UP)
        found = child - 1;
    return found >= 1 && found <= count() ? std::optional(found) : std::nullopt;
}

ListAccessibleRows::Done ListAccessibleRows::select(long flags, int child) {
    if (!isPossible(flags) || (child == 0 && (flags & kSelectionFlags) != 0)) return Done::Impossible;
    if (!model_.enabled()) return Done::No;
    const bool takesFocus = (flags & SELFLAG_TAKEFOCUS) != 0;
    const HWND list = window();
    if (child > 0) {
        changeSelection(flags, child);
        if (takesFocus) {
            const widgets::ListView::Batch batch(model_);
            model_.focusRow(child);
            model_.scrollTo(child);
        }
        if (takesFocus) SendMessageW(list, LVM_SETSELECTIONMARK, 0, child - 1);
    }
    if (takesFocus) SetFocus(list); // the last: a handler may destroy the list
    return Done::Yes;
}

void ListAccessibleRows::changeSelection(long flags, int child) {
    if (flags & SELFLAG_TAKESELECTION) {
        selectAlone(child);
        return;
    }
    if ((flags & kSelectionFlags) == 0) return;
    const int from = flags & SELFLAG_EXTENDSELECTION ? anchor(child) : child;
    const bool selects =
        (flags & SELFLAG_ADDSELECTION) || (!(flags & SELFLAG_REMOVESELECTION) && model_.isSelected(from));
    const widgets::ListView::Batch batch(model_);
    for (int row = std::min(from, child); row <= std::max(from, child); ++row) model_.select(row, selects);
}

void ListAccessibleRows::selectAlone(int child) {
    const widgets::ListView::Batch batch(model_);
    if (model_.selectedCount() > 0) model_.selectAll(false);
    model_.select(child, true);
}

/// Where a selection that is extended to a row starts.
int ListAccessibleRows::anchor(int child) const noexcept {
    const int mark = static_cast<int>(SendMessageW(window(), LVM_GETSELECTIONMARK, 0, 0)) + 1;
    if (mark >= 1 && mark <= count()) return mark;
    return model_.focusedRow() > 0 ? model_.focusedRow() : child;
}

ListAccessibleRows::Done ListAccessibleRows::choose(int child) {
    if (!model_.enabled()) return Done::No;
    const widgets::ListView::Batch batch(model_);
    selectAlone(child);
    model_.focusRow(child);
    return Done::Yes;
}

} // namespace cvlog::platform::win32
