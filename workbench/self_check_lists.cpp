// The part of the check that holds two controls of the log against each other, step by step, and opens the log's menu.

#include "workbench/self_check.h"

#include "workbench/com_call.h"
#include "workbench/failure.h"
#include "workbench/keyboard.h"
#include "workbench/list_look.h"
#include "workbench/meanwhile.h"
#include "workbench/menu_ids.h"

namespace workbench {

namespace {

// Columns of the log.
constexpr long kDate = 1;
constexpr long kResultHeader = 6;
// Columns, its sixth item: the items have no letters of their own.
const std::vector<BYTE> kToggleResult = {'U', VK_DOWN, VK_DOWN, VK_DOWN, VK_DOWN, VK_DOWN, VK_RETURN};

wchar_t lowered(wchar_t letter) { return letter >= L'A' && letter <= L'Z' ? letter + (L'a' - L'A') : letter; }

/// An item in short: its access key, small when it is grey, with "*" for the default and "+" for a check mark.
std::wstring itemInShort(HMENU menu, UINT place) {
    wchar_t text[80] = L"";
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_STRING;
    info.dwTypeData = text;
    info.cch = static_cast<UINT>(std::size(text));
    if (!GetMenuItemInfoW(menu, place, TRUE, &info)) {
        return L"?";
    }
    if (info.fType & MFT_SEPARATOR) {
        return L"-";
    }
    const wchar_t* const mark = wcschr(text, L'&');
    const wchar_t letter = mark ? lowered(mark[1]) : L'?';
    std::wstring item(1, info.fState & MFS_GRAYED ? letter : static_cast<wchar_t>(letter - (L'a' - L'A')));
    item += info.fState & MFS_DEFAULT ? L"*" : L"";
    return item + (info.fState & MFS_CHECKED ? L"+" : L"");
}

std::wstring menuInShort(HMENU menu) {
    std::wstring line;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        line += (i ? L" " : L"") + itemInShort(menu, static_cast<UINT>(i));
    }
    return line;
}

ComPtr<IDispatch> viewOf(ToolWindow& tool) {
    if (!tool.findControl(L"LogView")) {
        tool.addControl(L"CVLog3.CVLogControl", L"LogView").show(true);
        tool.layOut();
    }
    return tool.findControl(L"LogView")->object();
}

} // namespace

/// Opens the menu over the list that has the focus, and presses keys in it: the first in the menu, the others in the one
/// that it opens. Answers what the menu offers.
std::wstring SelfCheck::withMenu(const std::vector<BYTE>& keys) {
    std::wstring offer;
    HWND first = nullptr;
    Meanwhile inMenu([&] {
        const HWND open = openMenu();
        if (!open || open == first) {
            return false;
        }
        if (!first) {
            first = open;
            offer = menuInShort(menuOf(open));
            postKey(keys.front());
            return keys.size() == 1;
        }
        for (size_t i = 1; i < keys.size(); ++i) {
            postKey(keys[i]);
        }
        return true;
    });
    typeKey(frame(), VK_F10, VK_SHIFT);
    expect(inMenu.done(), L"Shift+F10 opens the menu");
    return offer;
}

void SelfCheck::expectMenu(const std::wstring& expected, const std::wstring& what) {
    const std::wstring offer = withMenu({VK_ESCAPE});
    expect(offer == expected, L"the menu of " + what + L": " + offer + L" and not " + expected);
}

void SelfCheck::checkLists() {
    ToolWindow& first = *tools().active();
    const ComPtr<IDispatch> view = viewOf(first);
    ToolWindow& second = tools().open(ToolKind::kMdiChild);
    const ComPtr<IDispatch> other = viewOf(second);
    tools().at(1).activate();
    const auto step = [&](const wchar_t* what, const std::function<void()>& act) {
        act();
        const std::wstring difference = ListLook(view.Get()).differenceFrom(ListLook(other.Get()));
        expect(difference.empty(), std::wstring(L"two lists look alike after ") + what + L": " + difference);
    };
    const LogList list(view.Get());
    SetFocus(list.window());
    expectMenu(L"d a c - r - I U K+ H", L"an empty list");
    step(L"reports", [&] { reportAll(); });
    step(L"a report with errors", [&] { application_.errors().reportErrors(12); });
    checkEntries(list, step);
    step(L"sorting by result", [&] { clickHeader(list, kResultHeader); });
    step(L"sorting the other way", [&] { clickHeader(list, kResultHeader); });
    checkThatDifferencesShow(view.Get(), other.Get());
    step(L"sorting by date", [&] { clickHeader(list, kDate); });
    step(L"hiding a column", [&] { withMenu(kToggleResult); });
    expect(get(list.column(kResultHeader).Get(), L"Width").number() == 0, L"the menu hides a column");
    step(L"showing it again", [&] { withMenu(kToggleResult); });
    expect(get(list.column(kResultHeader).Get(), L"Width").number() > 0, L"the menu shows a column");
    const long rows = list.rowCount();
    list.select(2);
    step(L"deleting a row", [&] { typeKey(frame(), VK_DELETE); });
    expect(list.rowCount() == rows - 1, L"Delete deletes a row");
    step(L"clearing", [&] { withMenu({'A'}); });
    expect(list.rowCount() == 0, L"the menu clears the log");
    tools().close(second);
}

void SelfCheck::reportAll() {
    for (int id = IDM_REPORT_FIRST; id <= IDM_REPORT_LAST; ++id) {
        SendMessageW(frame().handle(), WM_COMMAND, static_cast<WPARAM>(id), 0);
    }
}

void SelfCheck::clickHeader(const LogList& list, long column) {
    click(frame(), reinterpret_cast<HWND>(SendMessageW(list.window(), LVM_GETHEADER, 0, 0)),
          list.headerPoint(column));
    expect(get(list.object(), L"SortKey").integer() == column - 1, L"a click on a header sorts by it");
}

/// The menu in each of its states, and what it does with an entry that has errors: the last row.
void SelfCheck::checkEntries(const LogList& list, const Step& step) {
    const long entry = list.rowCount();
    list.select(0);
    expectMenu(L"d A c - R - I U K+ H", L"a list without a selection");
    list.select(1);
    expectMenu(L"D A C - R - I U K+ H", L"an entry without errors");
    list.select(entry);
    expectMenu(L"X* - D A C - R - I U K+ H", L"an entry with errors");
    step(L"opening an entry", [&] { withMenu({'X'}); });
    expect(list.rowCount() > entry, L"the menu opens an entry");
    list.select(entry);
    expectMenu(L"L* - D A C - R - I U K+ H", L"an open entry");
    list.select(entry + 1);
    expectMenu(L"L* - D A C - R - I U K+ H", L"a message");
    step(L"closing it", [&] { withMenu({'L'}); });
    expect(list.rowCount() == entry && list.selected() == entry, L"the menu closes an entry and selects it");
}

/// Puts the second list out of step in each way, and back: a comparison that finds nothing would be worth nothing.
void SelfCheck::checkThatDifferencesShow(IDispatch* view, IDispatch* other) {
    const LogList list(other);
    const auto differ = [&] { return !ListLook(view).differenceFrom(ListLook(other)).empty(); };
    const auto tryPut = [&](IDispatch* object, const wchar_t* property, const Variant& value) {
        const Variant before = get(object, property);
        put(object, property, value);
        expect(differ(), std::wstring(L"the comparison finds another ") + property);
        put(object, property, before);
        expect(!differ(), std::wstring(L"and the same ") + property);
    };
    const ComPtr<IDispatch> row = list.row(1);
    const ComPtr<IDispatch> cell = item(get(row.Get(), L"ListSubItems").object().Get(), L"Message").object();
    tryPut(row.Get(), L"Text", L"another text");
    tryPut(row.Get(), L"SmallIcon", L"SOURCE");
    tryPut(cell.Get(), L"Text", L"another text");
    tryPut(cell.Get(), L"ReportIcon", L"Bad");
    tryPut(list.column(kDate).Get(), L"Icon", L"SortUp");
    tryPut(list.column(kDate).Get(), L"Text", L"another text");
    tryPut(list.object(), L"SortOrder", 1 - get(list.object(), L"SortOrder").integer());
}

} // namespace workbench
