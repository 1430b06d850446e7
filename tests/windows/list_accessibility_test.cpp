// What assistive technology gets of a list's window through the system's interfaces.

#include "platform/win32/list_accessible_events.h"
#include "platform/win32/wide_text.h"
#include "tests/windows/list_view_peer_fixture.h"
#include "view/log_describer.h"

#include <oleacc.h>
#include <wrl/client.h>

#include <algorithm>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace cvlog::platform::win32 {
namespace {

using Microsoft::WRL::ComPtr;

VARIANT child(LONG number) {
    VARIANT value{};
    value.vt = VT_I4;
    value.lVal = number;
    return value;
}

std::u16string takeText(BSTR text) {
    const std::u16string taken = text ? fromWide({text, SysStringLen(text)}) : std::u16string();
    SysFreeString(text);
    return taken;
}

/// What was told of a window while this lives.
class ToldEvents {
public:
    using Event = std::tuple<DWORD, LONG>; // event, child
    explicit ToldEvents(HWND window)
        : hook_(SetWinEventHook(EVENT_OBJECT_REORDER, EVENT_OBJECT_SELECTIONWITHIN, GetModuleHandleW(nullptr),
                                hear, GetCurrentProcessId(), GetCurrentThreadId(), WINEVENT_INCONTEXT)) {
        told().clear();
        heard() = window;
    }
    ~ToldEvents() { UnhookWinEvent(hook_); }
    ToldEvents(const ToldEvents&) = delete;
    ToldEvents& operator=(const ToldEvents&) = delete;

    std::vector<Event> take() { return std::exchange(told(), {}); }
    static bool has(const std::vector<Event>& events, DWORD event, LONG row) {
        return std::count(events.begin(), events.end(), Event{event, row}) == 1;
    }

private:
    static std::vector<Event>& told() {
        static std::vector<Event> events;
        return events;
    }
    static HWND& heard() {
        static HWND window = nullptr;
        return window;
    }
    static void CALLBACK hear(HWINEVENTHOOK, DWORD event, HWND window, LONG object, LONG row, DWORD, DWORD) {
        if (window == heard() && object == OBJID_CLIENT) told().emplace_back(event, row);
    }
    HWINEVENTHOOK hook_;
};

class Win32ListAccessibility : public ListViewPeerFixture {
protected:
    Win32ListAccessibility() { CoInitialize(nullptr); }
    ~Win32ListAccessibility() override { CoUninitialize(); }

    void describe() {
        model_->setDescriber(std::make_shared<view::LogDescriber>(resources::Language::English));
    }

    ComPtr<IAccessible> accessible() const {
        ComPtr<IAccessible> object;
        EXPECT_EQ(AccessibleObjectFromWindow(window_->list(), static_cast<DWORD>(OBJID_CLIENT),
                                             __uuidof(IAccessible),
                                             reinterpret_cast<void**>(object.GetAddressOf())),
                  S_OK);
        return object;
    }
    std::u16string name(LONG which) const {
        BSTR text = nullptr;
        EXPECT_HRESULT_SUCCEEDED(accessible()->get_accName(child(which), &text));
        return takeText(text);
    }
    std::u16string description(LONG which) const {
        BSTR text = nullptr;
        EXPECT_HRESULT_SUCCEEDED(accessible()->get_accDescription(child(which), &text));
        return takeText(text);
    }
    LONG role(LONG which) const {
        VARIANT value{};
        EXPECT_EQ(accessible()->get_accRole(child(which), &value), S_OK);
        EXPECT_EQ(value.vt, VT_I4);
        return value.lVal;
    }
    LONG state(LONG which) const {
        VARIANT value{};
        EXPECT_EQ(accessible()->get_accState(child(which), &value), S_OK);
        EXPECT_EQ(value.vt, VT_I4);
        return value.lVal;
    }
    RECT location(LONG which) const {
        LONG left = 0, top = 0, width = 0, height = 0;
        EXPECT_EQ(accessible()->accLocation(&left, &top, &width, &height, child(which)), S_OK);
        return {left, top, left + width, top + height};
    }
    HRESULT select(LONG flags, LONG which) const { return accessible()->accSelect(flags, child(which)); }
    std::vector<int> selectedRows() const {
        std::vector<int> rows;
        for (int row = 1; row <= model_->rowCount(); ++row)
            if (model_->isSelected(row)) rows.push_back(row);
        return rows;
    }
    /// -1 for nothing.
    LONG navigate(LONG direction, LONG from) const {
        VARIANT end{};
        const HRESULT done = accessible()->accNavigate(direction, child(from), &end);
        EXPECT_EQ(done, end.vt == VT_I4 ? S_OK : S_FALSE);
        return end.vt == VT_I4 ? end.lVal : -1;
    }
};

using Rows = std::vector<int>;

TEST_F(Win32ListAccessibility, IsAListWithARowForEachChild) {
    describe();
    fill(3);
    EXPECT_EQ(role(0), ROLE_SYSTEM_LIST);
    EXPECT_EQ(role(3), ROLE_SYSTEM_LISTITEM);
    EXPECT_EQ(name(0), u"Activity Log");
    EXPECT_EQ(name(2), u"row 2");
    EXPECT_EQ(description(2), u"Text: cell of row 2");
    EXPECT_EQ(description(0), u"");
    model_->setSorted(true);
    EXPECT_EQ(description(0), u"sorted by Date, ascending");
    LONG count = 0;
    EXPECT_EQ(accessible()->get_accChildCount(&count), S_OK);
    EXPECT_EQ(count, 3);
    ComPtr<IDispatch> row;
    EXPECT_EQ(accessible()->get_accChild(child(1), row.GetAddressOf()), S_FALSE);
    EXPECT_EQ(row.Get(), nullptr) << "a row is no object of its own";
}

TEST_F(Win32ListAccessibility, GivesItselfToWhoeverAsksTheWindow) {
    const LRESULT answer = send(WM_GETOBJECT, 0, static_cast<LPARAM>(OBJID_CLIENT));
    ASSERT_GT(answer, 0);
    ComPtr<IAccessible> object;
    ASSERT_EQ(
        ObjectFromLresult(answer, __uuidof(IAccessible), 0, reinterpret_cast<void**>(object.GetAddressOf())),
        S_OK);
    VARIANT value{};
    EXPECT_EQ(object->get_accRole(child(0), &value), S_OK);
    EXPECT_EQ(value.lVal, ROLE_SYSTEM_LIST);
    HWND found = nullptr;
    ComPtr<IDispatch> parent;
    ASSERT_EQ(object->get_accParent(parent.GetAddressOf()), S_OK);
    ComPtr<IAccessible> parentWindow;
    ASSERT_EQ(parent.As(&parentWindow), S_OK);
    EXPECT_EQ(WindowFromAccessibleObject(parentWindow.Get(), &found), S_OK);
    EXPECT_EQ(found, window_->list());
}

TEST_F(Win32ListAccessibility, NamesRowsByTheirTextWhereNobodyKnowsMore) {
    fill(1);
    EXPECT_EQ(name(1), u"row 1");
    EXPECT_EQ(name(0), u"");
    EXPECT_EQ(description(1), u"");
}

TEST_F(Win32ListAccessibility, RefusesChildrenThatTheListDoesNotHave) {
    fill(2);
    const ComPtr<IAccessible> list = accessible();
    BSTR text = nullptr;
    for (const LONG none : {-1L, 3L}) EXPECT_EQ(list->get_accName(child(none), &text), E_INVALIDARG);
    VARIANT word{};
    word.vt = VT_BSTR;
    EXPECT_EQ(list->get_accName(word, &text), E_INVALIDARG);
    EXPECT_EQ(list->get_accName(child(1), nullptr), E_POINTER);
    EXPECT_EQ(list->get_accValue(child(1), &text), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(list->put_accName(child(1), nullptr), DISP_E_MEMBERNOTFOUND);
}

TEST_F(Win32ListAccessibility, AnswersScriptsByName) {
    describe();
    fill(2);
    const ComPtr<IAccessible> list = accessible();
    wchar_t name[] = L"accName";
    LPOLESTR names[] = {name};
    DISPID member = 0;
    ASSERT_EQ(list->GetIDsOfNames(IID_NULL, names, 1, LOCALE_NEUTRAL, &member), S_OK);
    VARIANT row = child(2);
    DISPPARAMS parameters{&row, nullptr, 1, 0};
    VARIANT result{};
    ASSERT_EQ(list->Invoke(member, IID_NULL, LOCALE_NEUTRAL, DISPATCH_PROPERTYGET, &parameters, &result,
                           nullptr, nullptr),
              S_OK);
    EXPECT_EQ(result.vt, VT_BSTR);
    EXPECT_EQ(takeText(result.bstrVal), u"row 2");
    UINT count = 0;
    EXPECT_EQ(list->GetTypeInfoCount(&count), S_OK);
    EXPECT_EQ(count, 1U);
}

TEST_F(Win32ListAccessibility, TellsTheStateOfEachRow) {
    fill(40);
    EXPECT_TRUE(state(1) & STATE_SYSTEM_INVISIBLE) << "parked, out of sight";
    showInWindow();
    model_->select(2, true);
    model_->focusRow(2);
    const LONG usual = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_MULTISELECTABLE;
    EXPECT_EQ(state(1), usual);
    EXPECT_EQ(state(2), usual | STATE_SYSTEM_SELECTED | STATE_SYSTEM_FOCUSED);
    EXPECT_EQ(state(40), usual | STATE_SYSTEM_OFFSCREEN);
    EXPECT_EQ(state(0), STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_FOCUSED);
    SetFocus(parent_);
    EXPECT_EQ(state(2), usual | STATE_SYSTEM_SELECTED);
    model_->setEnabled(false);
    EXPECT_EQ(state(1), STATE_SYSTEM_UNAVAILABLE);
}

TEST_F(Win32ListAccessibility, SaysWhereRowsAreAndFindsThemThere) {
    fill(40);
    showInWindow();
    const RECT list = location(0);
    RECT client{};
    GetClientRect(window_->list(), &client);
    MapWindowPoints(window_->list(), nullptr, reinterpret_cast<POINT*>(&client), 2);
    EXPECT_TRUE(EqualRect(&list, &client));
    const ComPtr<IAccessible> object = accessible();
    for (const LONG row : {1L, 2L, 5L}) {
        const RECT area = location(row);
        EXPECT_LT(area.left, area.right);
        EXPECT_LE(area.right, client.right) << "what is seen of a row";
        VARIANT found{};
        EXPECT_EQ(object->accHitTest((area.left + area.right) / 2, (area.top + area.bottom) / 2, &found),
                  S_OK);
        EXPECT_EQ(found.lVal, row);
        EXPECT_EQ(area.bottom, location(row + 1).top);
    }
    VARIANT found{};
    EXPECT_EQ(object->accHitTest(client.left + 2, client.top + 2, &found), S_OK);
    EXPECT_EQ(found.lVal, 0) << "the captions are no row";
    EXPECT_EQ(object->accHitTest(client.right + 5, client.top + 2, &found), S_FALSE);
    EXPECT_EQ(found.vt, VT_EMPTY);
    EXPECT_GT(location(40).top, client.bottom) << "a row out of sight is where it would be";
}

TEST_F(Win32ListAccessibility, LeadsFromRowToRow) {
    EXPECT_EQ(navigate(NAVDIR_FIRSTCHILD, 0), -1) << "an empty list";
    fill(3);
    EXPECT_EQ(navigate(NAVDIR_FIRSTCHILD, 0), 1);
    EXPECT_EQ(navigate(NAVDIR_LASTCHILD, 0), 3);
    EXPECT_EQ(navigate(NAVDIR_NEXT, 0), -1);
    EXPECT_EQ(navigate(NAVDIR_NEXT, 1), 2);
    EXPECT_EQ(navigate(NAVDIR_DOWN, 3), -1);
    EXPECT_EQ(navigate(NAVDIR_PREVIOUS, 1), -1);
    EXPECT_EQ(navigate(NAVDIR_UP, 3), 2);
    EXPECT_EQ(navigate(NAVDIR_LEFT, 2), -1);
    VARIANT end{};
    EXPECT_EQ(accessible()->accNavigate(NAVDIR_FIRSTCHILD, child(1), &end), E_INVALIDARG);
    EXPECT_EQ(accessible()->accNavigate(99, child(1), &end), E_INVALIDARG);
}

TEST_F(Win32ListAccessibility, SelectsAndFocusesAsTheUserWould) {
    fill(8);
    showInWindow();
    SetFocus(parent_);
    EXPECT_EQ(select(SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION, 3), S_OK);
    EXPECT_EQ(GetFocus(), window_->list());
    EXPECT_EQ(selectedRows(), Rows{3});
    EXPECT_EQ(model_->focusedRow(), 3);
    EXPECT_EQ(select(SELFLAG_EXTENDSELECTION, 5), S_OK);
    EXPECT_EQ(selectedRows(), (Rows{3, 4, 5}));
    EXPECT_EQ(model_->focusedRow(), 3);
    EXPECT_EQ(select(SELFLAG_ADDSELECTION, 8), S_OK);
    EXPECT_EQ(select(SELFLAG_REMOVESELECTION, 4), S_OK);
    EXPECT_EQ(selectedRows(), (Rows{3, 5, 8}));
    EXPECT_EQ(select(SELFLAG_EXTENDSELECTION | SELFLAG_REMOVESELECTION, 5), S_OK);
    EXPECT_EQ(selectedRows(), Rows{8});
    EXPECT_EQ(select(SELFLAG_EXTENDSELECTION | SELFLAG_ADDSELECTION, 1), S_OK);
    EXPECT_EQ(selectedRows(), (Rows{1, 2, 3, 8}));
    EXPECT_EQ(select(SELFLAG_TAKEFOCUS, 6), S_OK);
    EXPECT_EQ(model_->focusedRow(), 6);
    EXPECT_EQ(selectedRows(), (Rows{1, 2, 3, 8})) << "the focus alone selects nothing";
    EXPECT_EQ(select(SELFLAG_TAKEFOCUS, 0), S_OK);
    expectInStep("selecting");
    for (const LONG flags :
         {SELFLAG_TAKESELECTION | SELFLAG_ADDSELECTION, SELFLAG_ADDSELECTION | SELFLAG_REMOVESELECTION, 64})
        EXPECT_EQ(select(flags, 2), E_INVALIDARG) << flags;
    EXPECT_EQ(select(SELFLAG_TAKESELECTION, 0), E_INVALIDARG);
    model_->setEnabled(false);
    EXPECT_EQ(select(SELFLAG_TAKESELECTION, 2), S_FALSE);
    EXPECT_EQ(selectedRows(), (Rows{1, 2, 3, 8}));
}

TEST_F(Win32ListAccessibility, TellsFocusAndSelection) {
    fill(5);
    showInWindow();
    const ComPtr<IAccessible> object = accessible();
    VARIANT value{};
    EXPECT_EQ(object->get_accFocus(&value), S_OK);
    EXPECT_EQ(value.lVal, 0) << "the list itself, while no row has it";
    EXPECT_EQ(object->get_accSelection(&value), S_FALSE);
    EXPECT_EQ(value.vt, VT_EMPTY);
    model_->focusRow(4);
    model_->select(4, true);
    EXPECT_EQ(object->get_accFocus(&value), S_OK);
    EXPECT_EQ(value.lVal, 4);
    EXPECT_EQ(object->get_accSelection(&value), S_OK);
    EXPECT_EQ(value.vt, VT_I4);
    EXPECT_EQ(value.lVal, 4);
    SetFocus(parent_);
    EXPECT_EQ(object->get_accFocus(&value), S_FALSE);
}

TEST_F(Win32ListAccessibility, EnumeratesASelectionOfSeveralRows) {
    fill(5);
    for (const int row : {1, 3, 5}) model_->select(row, true);
    VARIANT value{};
    ASSERT_EQ(accessible()->get_accSelection(&value), S_OK);
    ASSERT_EQ(value.vt, VT_UNKNOWN);
    ComPtr<IEnumVARIANT> rows;
    ASSERT_EQ(value.punkVal->QueryInterface(IID_IEnumVARIANT, reinterpret_cast<void**>(rows.GetAddressOf())),
              S_OK);
    VariantClear(&value);
    model_->clear(); // what was given stays
    VARIANT given[4]{};
    ULONG fetched = 0;
    EXPECT_EQ(rows->Next(2, given, &fetched), S_OK);
    EXPECT_EQ(fetched, 2U);
    ComPtr<IEnumVARIANT> copy;
    ASSERT_EQ(rows->Clone(copy.GetAddressOf()), S_OK);
    EXPECT_EQ(rows->Next(2, given + 2, &fetched), S_FALSE);
    EXPECT_EQ(fetched, 1U);
    EXPECT_EQ(given[0].lVal, 1);
    EXPECT_EQ(given[1].lVal, 3);
    EXPECT_EQ(given[2].lVal, 5);
    EXPECT_EQ(copy->Skip(2), S_FALSE);
    EXPECT_EQ(copy->Reset(), S_OK);
    EXPECT_EQ(copy->Next(1, given, nullptr), S_OK);
    EXPECT_EQ(given[0].lVal, 1);
    EXPECT_EQ(copy->Next(2, given, nullptr), E_POINTER);
}

TEST_F(Win32ListAccessibility, ActivatesARowLikeADoubleClick) {
    struct Owner : widgets::ListViewOwner {
        void doubleClicked() override { ++times; }
        int times = 0;
    } owner;
    describe();
    fill(5);
    showInWindow();
    model_->select(1, true);
    model_->setOwner(&owner);
    BSTR action = nullptr;
    EXPECT_EQ(accessible()->get_accDefaultAction(child(4), &action), S_OK);
    EXPECT_EQ(takeText(action), u"Double Click");
    EXPECT_EQ(accessible()->accDoDefaultAction(child(4)), S_OK);
    EXPECT_EQ(selectedRows(), Rows{4});
    EXPECT_EQ(model_->selectedRow(), 4);
    EXPECT_EQ(owner.times, 0) << "the caller is answered first: the action may take long";
    takeMessages();
    EXPECT_EQ(owner.times, 1);
    EXPECT_EQ(accessible()->accDoDefaultAction(child(0)), DISP_E_MEMBERNOTFOUND);
    model_->setEnabled(false);
    EXPECT_EQ(accessible()->accDoDefaultAction(child(4)), S_FALSE);
    takeMessages();
    EXPECT_EQ(owner.times, 1);
    model_->setOwner(nullptr);
}

TEST_F(Win32ListAccessibility, TellsWhatChangesOnceEach) {
    fill(5);
    showInWindow();
    ToldEvents events(window_->list());
    key(VK_DOWN);
    key(VK_DOWN);
    auto told = events.take();
    EXPECT_TRUE(ToldEvents::has(told, EVENT_OBJECT_FOCUS, 2));
    EXPECT_TRUE(ToldEvents::has(told, EVENT_OBJECT_SELECTION, 2));
    // Some lists drop the selection as a whole before they select one row.
    EXPECT_TRUE(ToldEvents::has(told, EVENT_OBJECT_SELECTIONREMOVE, 1) ||
                std::count(told.begin(), told.end(), ToldEvents::Event(EVENT_OBJECT_SELECTIONWITHIN, 0)) > 0);
    model_->select(5, true);
    told = events.take();
    EXPECT_TRUE(ToldEvents::has(told, EVENT_OBJECT_SELECTIONWITHIN, 0) ||
                ToldEvents::has(told, EVENT_OBJECT_SELECTIONADD, 5));
    model_->focusRow(4);
    EXPECT_TRUE(ToldEvents::has(events.take(), EVENT_OBJECT_FOCUS, 4));
    SetFocus(parent_);
    events.take();
    model_->focusRow(3);
    told = events.take();
    EXPECT_FALSE(ToldEvents::has(told, EVENT_OBJECT_FOCUS, 3)) << "the focus is elsewhere";
    model_->takeFocus();
    EXPECT_TRUE(ToldEvents::has(events.take(), EVENT_OBJECT_FOCUS, 3));
    model_->append(row(6));
    told = events.take();
    EXPECT_EQ(std::count(told.begin(), told.end(), ToldEvents::Event(EVENT_OBJECT_REORDER, 0)), 1);
}

/// A window that tells of a selection that it is given.
LRESULT CALLBACK tellingWindow(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == LVM_SETITEMSTATE) NotifyWinEvent(EVENT_OBJECT_SELECTION, window, OBJID_CLIENT, 1);
    return DefWindowProcW(window, message, wParam, lParam);
}

TEST_F(Win32ListAccessibility, HearsWhetherTheSystemsListTellsItself) {
    const HWND window =
        CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    EXPECT_FALSE(tellsItself(window));
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&tellingWindow));
    EXPECT_TRUE(tellsItself(window));
    DestroyWindow(window);
}

TEST_F(Win32ListAccessibility, AnswersThatItIsGoneAfterTheList) {
    fill(2);
    const ComPtr<IAccessible> object = accessible();
    model_.reset();
    BSTR text = nullptr;
    VARIANT value{};
    LONG count = 7;
    EXPECT_EQ(object->get_accName(child(1), &text), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(object->get_accChildCount(&count), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(object->get_accState(child(0), &value), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(object->accSelect(SELFLAG_TAKEFOCUS, child(1)), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(object->accDoDefaultAction(child(1)), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(object->accHitTest(1, 1, &value), CO_E_OBJNOTCONNECTED);
}

TEST_F(Win32ListAccessibility, AnswersThatItIsGoneAfterAParentTookTheWindowAlong) {
    fill(2);
    showInWindow();
    const ComPtr<IAccessible> object = accessible();
    DestroyWindow(std::exchange(parent_, nullptr));
    LONG count = 7;
    EXPECT_EQ(object->get_accChildCount(&count), CO_E_OBJNOTCONNECTED);
}

TEST_F(Win32ListAccessibility, MayLoseItsListWhileItMovesTheFocus) {
    struct Owner : widgets::ListViewOwner {
        void gotFocus() override {
            if (list) list->reset();
        }
        std::unique_ptr<widgets::ListView>* list = nullptr;
    } owner;
    fill(2);
    showInWindow();
    SetFocus(parent_);
    const ComPtr<IAccessible> object = accessible();
    model_->setOwner(&owner);
    owner.list = &model_;
    EXPECT_EQ(object->accSelect(SELFLAG_TAKEFOCUS, child(1)), S_OK);
    EXPECT_EQ(model_, nullptr);
    LONG count = 7;
    EXPECT_EQ(object->get_accChildCount(&count), CO_E_OBJNOTCONNECTED);
}

} // namespace
} // namespace cvlog::platform::win32
