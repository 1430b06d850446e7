#include "platform/win32/list_selection.h"

#include "base/failure.h"

#include <algorithm>

namespace cvlog::platform::win32 {

namespace {

constexpr int kAllRows = -1;
// What changes of the window's selection cost, the change of one row being 1: changing all rows at once costs
// 1 for this many rows; and the window keeps runs of selected rows in an array, so that changing one among
// many is dearer.
constexpr int kRowsAtOnce = 50;
constexpr int kRunsPassed = 5000;
/// More changes than this are not drawn one by one.
constexpr std::size_t kDrawnOneByOne = 16;

int nextItem(HWND list, int index, UINT flags) noexcept {
    return static_cast<int>(
        SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(index), MAKELPARAM(flags, 0)));
}

int topIndex(HWND list) noexcept { return static_cast<int>(SendMessageW(list, LVM_GETTOPINDEX, 0, 0)); }

int itemTop(HWND list, int index) noexcept {
    RECT area{};
    area.left = LVIR_BOUNDS;
    SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&area));
    return area.top;
}

/// Keeps a window from drawing while it lives, then has it drawn anew.
class DrawingPause {
public:
    explicit DrawingPause(HWND window) noexcept : window_(window) {
        SendMessageW(window_, WM_SETREDRAW, FALSE, 0);
    }
    ~DrawingPause() {
        SendMessageW(window_, WM_SETREDRAW, TRUE, 0);
        InvalidateRect(window_, nullptr, TRUE);
    }
    DrawingPause(const DrawingPause&) = delete;
    DrawingPause& operator=(const DrawingPause&) = delete;

private:
    HWND window_;
};

} // namespace

void ListSelection::trackMark(HWND list) noexcept {
    if (!shifted_) mark_ = static_cast<int>(SendMessageW(list, LVM_GETSELECTIONMARK, 0, 0));
    shifted_ = true;
}

void ListSelection::rowsInserted(HWND list, int first, int count) noexcept {
    const bool atEnd = first + count - 1 == model_.rowCount();
    trackMark(list);
    moved_ = moved_ || !atEnd;
    if (mark_ >= first - 1) mark_ += count;
}

void ListSelection::rowsRemoved(HWND list, int first, int count) noexcept {
    trackMark(list);
    moved_ = true;
    if (mark_ >= first - 1 + count)
        mark_ -= count;
    else if (mark_ >= first - 1)
        mark_ = -1;
}

void ListSelection::rowsReordered(HWND list) noexcept {
    trackMark(list);
    moved_ = true;
    mark_ = model_.focusedRow() - 1;
}

void ListSelection::push(HWND list) {
    pushing_ = true;
    const base::ScopeExit done([this] { pushing_ = false; });
    const int count = model_.rowCount();
    const bool resized = static_cast<std::size_t>(count) != shown_.size();
    std::optional<DrawingPause> pause;
    if (moved_) pause.emplace(list); // rows that come at the end are drawn alone
    if (resized) {
        dropVanished(list, count);
        SendMessageW(list, LVM_SETITEMCOUNT, static_cast<WPARAM>(count),
                     LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL);
        shown_.resize(static_cast<std::size_t>(count));
    }
    const Plan plan = planSelection();
    if (!pause && (plan.all || plan.rows.size() > kDrawnOneByOne)) pause.emplace(list);
    carryOut(list, plan);
    pushFocus(list);
    if (shifted_) pushMark(list);
    shifted_ = moved_ = false;
}

void ListSelection::dropVanished(HWND list, int count) {
    std::vector<int> vanished;
    for (int i = static_cast<int>(shown_.size()) - 1; i >= count && shownSelected_ > 0; --i)
        if (shown_[static_cast<std::size_t>(i)]) vanished.push_back(i);
    if (vanished.size() > shown_.size() / kRowsAtOnce + static_cast<std::size_t>(model_.selectedCount())) {
        setAllSelected(list, false);
        return;
    }
    for (const int index : vanished) setSelected(list, index, false);
}

ListSelection::Plan ListSelection::planSelection() const {
    const int count = model_.rowCount();
    const int wanted = model_.selectedCount();
    Plan plan;
    if (wanted == 0 || wanted == count) {
        if (shownSelected_ != wanted) plan.all = wanted != 0;
        return plan;
    }
    int unseenWanted = wanted;
    int unseenShown = shownSelected_;
    int runs = 0;
    bool before = false;
    for (int i = 0; i < count && (unseenWanted > 0 || unseenShown > 0); ++i) {
        const bool want = model_.isSelected(i + 1);
        const bool have = shown_[static_cast<std::size_t>(i)];
        unseenWanted -= want ? 1 : 0;
        unseenShown -= have ? 1 : 0;
        runs += have && !before ? 1 : 0;
        before = have;
        if (want != have) plan.rows.push_back(i);
    }
    const bool mostly = wanted > count / 2;
    const std::size_t exceptions = static_cast<std::size_t>(mostly ? count - wanted : wanted);
    const std::size_t differences = plan.rows.size();
    const std::size_t dearness = static_cast<std::size_t>(runs) / kRunsPassed;
    if (static_cast<std::size_t>(count) / kRowsAtOnce + exceptions < differences * (1 + dearness)) {
        plan = {mostly, {}};
        for (int i = 0; i < count; ++i)
            if (model_.isSelected(i + 1) != mostly) plan.rows.push_back(i);
    }
    return plan;
}

void ListSelection::carryOut(HWND list, const Plan& plan) {
    if (plan.all) setAllSelected(list, *plan.all);
    for (const int index : plan.rows) setSelected(list, index, model_.isSelected(index + 1));
}

void ListSelection::pushFocus(HWND list) noexcept {
    const int wanted = model_.focusedRow() - 1;
    const int shown = nextItem(list, kAllRows, LVNI_FOCUSED);
    if (wanted == shown) return;
    const int top = topIndex(list);
    if (wanted >= 0)
        setState(list, wanted, LVIS_FOCUSED, LVIS_FOCUSED);
    else
        setState(list, shown, 0, LVIS_FOCUSED);
    // Some versions scroll to the focused row; only the component decides about scrolling.
    if (const int moved = topIndex(list); moved != top && top < model_.rowCount())
        SendMessageW(list, LVM_SCROLL, 0, itemTop(list, top) - itemTop(list, moved));
}

void ListSelection::pushMark(HWND list) noexcept {
    SendMessageW(list, LVM_SETSELECTIONMARK, 0, std::min(mark_, model_.rowCount() - 1));
}

void ListSelection::setState(HWND list, int index, UINT state, UINT mask) noexcept {
    LVITEMW item{};
    item.state = state;
    item.stateMask = mask;
    SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
}

void ListSelection::setSelected(HWND list, int index, bool selected) {
    setState(list, index, selected ? LVIS_SELECTED : 0, LVIS_SELECTED);
    remember(static_cast<std::size_t>(index), selected);
}

void ListSelection::setAllSelected(HWND list, bool selected) {
    setState(list, kAllRows, selected ? LVIS_SELECTED : 0, LVIS_SELECTED);
    shown_.assign(shown_.size(), selected);
    shownSelected_ = selected ? static_cast<int>(shown_.size()) : 0;
}

void ListSelection::remember(std::size_t index, bool selected) {
    if (shown_[index] == selected) return;
    shown_[index] = selected;
    shownSelected_ += selected ? 1 : -1;
}

void ListSelection::userChanged(int index, bool selected) {
    if (pushing_ || index < 0 || static_cast<std::size_t>(index) >= shown_.size()) return;
    remember(static_cast<std::size_t>(index), selected);
    if (!shifted_ && index < model_.rowCount()) model_.userSelected(index + 1, selected);
}

void ListSelection::pull(HWND list) {
    if (pushing_) return;
    const auto selected = static_cast<std::size_t>(SendMessageW(list, LVM_GETSELECTEDCOUNT, 0, 0));
    if (!shifted_ && (selected == 0 || selected == shown_.size())) {
        model_.userSelectedAll(selected != 0);
        shown_.assign(shown_.size(), selected != 0);
        shownSelected_ = static_cast<int>(selected);
        return;
    }
    std::vector<bool> now(shown_.size());
    for (int i = nextItem(list, kAllRows, LVNI_SELECTED); i >= 0; i = nextItem(list, i, LVNI_SELECTED))
        if (static_cast<std::size_t>(i) < now.size()) now[static_cast<std::size_t>(i)] = true;
    for (std::size_t i = 0; i < now.size(); ++i)
        if (now[i] != shown_[i]) userChanged(static_cast<int>(i), now[i]);
}

void ListSelection::pullIfMissed(HWND list) {
    if (pushing_) return;
    if (static_cast<int>(SendMessageW(list, LVM_GETSELECTEDCOUNT, 0, 0)) != shownSelected_) pull(list);
}

void ListSelection::pullFocus(HWND list) noexcept {
    if (pushing_ || shifted_) return;
    const int focused = nextItem(list, kAllRows, LVNI_FOCUSED) + 1;
    if (focused <= model_.rowCount()) model_.userFocused(focused);
}

} // namespace cvlog::platform::win32
