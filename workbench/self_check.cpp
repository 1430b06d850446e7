#include "workbench/self_check.h"

#include "workbench/com_call.h"
#include "workbench/failure.h"
#include "workbench/screen_scale.h"

namespace workbench {

namespace {

constexpr const wchar_t* kLogControl = L"CVLog3.CVLogControl";

HWND windowOf(IDispatch* object) {
    return reinterpret_cast<HWND>(static_cast<LONG_PTR>(get(object, L"hwnd").integer()));
}

ComPtr<IDispatch> addControl(IDispatch* window, const wchar_t* progId, const wchar_t* name,
                             IDispatch* container) {
    const ComPtr<IDispatch> controls = get(window, L"Controls").object();
    return call(controls.Get(), L"Add", {progId, name, container}).object();
}

long controlCount(IDispatch* window) {
    return get(get(window, L"Controls").object().Get(), L"Count").integer();
}

Variant controlNamed(IDispatch* window, const Variant& key) {
    return item(get(window, L"Controls").object().Get(), key);
}

/// A control's area in its window's client area.
RECT areaIn(HWND window, HWND control) {
    RECT area;
    GetWindowRect(control, &area);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&area), 2);
    return area;
}

} // namespace

template <class Call>
void SelfCheck::expectFailure(Call failing, const std::wstring& what) {
    try {
        failing();
        expect(false, what);
    } catch (const Failure&) {
        expect(true, what);
    }
}

void SelfCheck::expect(bool holds, const std::wstring& what) {
    ++checks_;
    if (!holds) {
        ++failures_;
        lines_ += L"failed: " + what + L"\n";
    }
}

std::wstring SelfCheck::report() const {
    return lines_ + std::to_wstring(checks_ - failures_) + L" of " + std::to_wstring(checks_) +
           L" checks hold\n" + notes_;
}

void SelfCheck::run() {
    try {
        checkLists();
        checkErrors();
        checkSession();
        checkToolList();
        checkControls();
        checkPlacement();
        checkState();
        checkKinds();
        checkTabs();
        checkWindowKeys();
        checkOptions();
        checkPlaces();
        checkMenu();
        checkClosing();
    } catch (const Failure& failure) {
        expect(false, L"no call fails unasked: " + failure.message());
    }
}

ComPtr<IDispatch> SelfCheck::activeWindow() const {
    const ComPtr<IDispatch> list = get(application_.workspace(), L"ActiveToolList").object();
    const Variant last = call(list.Get(), L"Item", {get(list.Get(), L"Count")});
    return get(last.object().Get(), L"CalvettaWindow").object();
}

void SelfCheck::checkToolList() {
    const ComPtr<IDispatch> main = get(application_.workspace(), L"CalvettaWindow").object();
    expect(windowOf(main.Get()) == frame().handle(), L"the main window tells its handle");
    expect(get(main.Get(), L"IsMDIForm").boolean(), L"the main window is an MDI frame");

    const ComPtr<IDispatch> list = get(application_.workspace(), L"ActiveToolList").object();
    expect(get(list.Get(), L"Count").integer() == 1, L"one tool is open at the start");
    ToolWindow& first = tools().at(1);
    ToolWindow& second = tools().open(ToolKind::kPlain);
    expect(get(list.Get(), L"Count").integer() == 2, L"the list tells of a tool that opens");
    expect(windowOf(activeWindow().Get()) == second.handle(), L"a new tool is the active one");
    checkParent();
    expect(GetWindow(second.handle(), GW_OWNER) == frame().handle(), L"a plain tool belongs to the frame");
    SendMessageW(first.handle(), WM_MOUSEACTIVATE, 0, 0);
    expect(windowOf(activeWindow().Get()) == first.handle(),
           L"the tool that is clicked becomes the active one");
    expectFailure([&] { call(list.Get(), L"Item", {3}); }, L"there is no third tool");
    tools().close(second);
    expect(get(list.Get(), L"Count").integer() == 1, L"the list tells of a tool that closes");
}

void SelfCheck::checkParent() {
    expect(get(application_.log(), L"Parent").object() == activeWindow(),
           L"the log's parent is the active window");
}

void SelfCheck::checkControls() {
    tools().open(ToolKind::kMdiChild);
    const ComPtr<IDispatch> window = activeWindow();
    // The log may have put its own there.
    if (controlNamed(window.Get(), L"LogView").isEmptyResult()) {
        addControl(window.Get(), kLogControl, L"LogView", window.Get());
    }
    const long before = controlCount(window.Get());
    expect(controlNamed(window.Get(), L"Other").isEmptyResult(), L"a name that nobody has gives nothing");
    const ComPtr<IDispatch> other = addControl(window.Get(), kLogControl, L"Other", nullptr);
    expect(controlCount(window.Get()) == before + 1, L"Add adds one");
    expect(controlNamed(window.Get(), L"OTHER").object() == other, L"names go without regard to case");
    expect(controlNamed(window.Get(), before + 1).object() == other, L"controls go by index too");
    checkAddedControl(window.Get(), other.Get());

    expectFailure([&] { addControl(window.Get(), kLogControl, L"Other", nullptr); }, L"a name is taken once");
    expectFailure([&] { addControl(window.Get(), L"No.Such", L"Third", nullptr); }, L"a class must exist");
    expectFailure([&] { addControl(window.Get(), kLogControl, L"Third", tools().at(1).object()); },
                  L"a control does not go into another window");
    expectFailure([&] { controlNamed(window.Get(), before + 2); }, L"what failed has left no control");
    tools().close(*tools().active());
    expectFailure([&] { get(other.Get(), L"Visible"); }, L"a control ends with its window");
    expectFailure([&] { get(window.Get(), L"hwnd"); }, L"a closed window tells no handle");
}

void SelfCheck::checkAddedControl(IDispatch* window, IDispatch* control) {
    const HWND list = windowOf(control); // the control's own member
    const HWND frameOfList = GetParent(list);
    expect(GetParent(frameOfList) == windowOf(window), L"the control lives in the window");
    expect(!get(control, L"Visible").boolean() && !IsWindowVisible(list), L"a new control is hidden");

    const double inch = 1440;
    put(control, L"Left", inch);
    put(control, L"Top", inch / 2);
    put(control, L"Width", 2 * inch);
    put(control, L"Height", inch);
    expect(!IsWindowVisible(list), L"a hidden control stays hidden when it is moved");
    put(control, L"Visible", true);
    expect(get(control, L"Visible").boolean() && IsWindowVisible(list), L"Visible shows the control");
    const int dpi = scaled(list, 96);
    const RECT wanted{dpi, dpi / 2, 3 * dpi, dpi / 2 + dpi};
    const RECT area = areaIn(windowOf(window), frameOfList);
    expect(EqualRect(&area, &wanted), L"Left, Top, Width and Height are twips");
    expect(get(control, L"Width").number() == 2 * inch, L"and can be read");

    call(control, L"ZOrder", {0});
    expect(GetWindow(windowOf(window), GW_CHILD) == frameOfList, L"ZOrder 0 is the front");
    call(control, L"ZOrder", {1});
    expect(!GetWindow(frameOfList, GW_HWNDNEXT), L"ZOrder 1 is the back");
    call(control, L"SetFocus");
    expect(GetFocus() == list, L"SetFocus gives the list the focus");
    put(control, L"Visible", false);
    expect(!IsWindowVisible(list) && GetFocus() != list, L"a hidden control has no focus");
}

void SelfCheck::checkPlacement() {
    const ComPtr<IDispatch> window = activeWindow();
    const HWND handle = windowOf(window.Get());
    const ComPtr<IDispatch> view = controlNamed(window.Get(), L"LogView").object();
    put(view.Get(), L"Visible", true);
    call(window.Get(), L"DisplayLog");
    RECT client;
    GetClientRect(handle, &client);
    const RECT area = areaIn(handle, GetParent(windowOf(view.Get())));
    expect(area.left == 0 && area.right == client.right && area.bottom == client.bottom && area.top > 0,
           L"DisplayLog gives the log the lower part");

    const double inch = 1440;
    double measures[] = {inch / 8, inch / 8, 7 * inch, 4 * inch};
    call(window.Get(), L"Move",
         {Variant::byReference(measures[0]), Variant::byReference(measures[1]),
          Variant::byReference(measures[2]), Variant::byReference(measures[3])});
    const RECT place = areaIn(GetParent(handle), handle);
    const int dpi = scaled(handle, 96);
    expect(place.left == dpi / 8 && place.right - place.left == 7 * dpi &&
               place.bottom - place.top == 4 * dpi,
           L"Move takes twips by reference");
    call(window.Get(), L"SetFocus");
    expect(IsChild(handle, GetFocus()), L"SetFocus goes into the window");
    expect(get(window.Get(), L"ScaleTop").number() == 0, L"the window is a form");
}

void SelfCheck::checkState() {
    const ComPtr<IDispatch> window = activeWindow();
    const HWND handle = windowOf(window.Get());
    put(window.Get(), L"Enabled", false);
    expect(!get(window.Get(), L"Enabled").boolean() && !IsWindowEnabled(handle),
           L"Enabled takes the input away");
    put(window.Get(), L"Enabled", true);
    expect(get(window.Get(), L"Enabled").boolean() && IsWindowEnabled(handle), L"and gives it back");
    put(window.Get(), L"MousePointer", 11);
    expect(get(window.Get(), L"MousePointer").integer() == 11, L"MousePointer keeps its value");
    expect(GetCursor() == LoadCursorW(nullptr, IDC_WAIT), L"and shows it");
    put(window.Get(), L"MousePointer", 0);
    IDispatch* const workspace = application_.workspace();
    call(workspace, L"SetMainWindowCursor", {13});
    expect(call(workspace, L"SetMainWindowCursor", {0}).integer() == 13,
           L"SetMainWindowCursor answers the cursor before");
    expect(call(workspace, L"GetHelpFile", {L"Calvetta.hlp"}).text().ends_with(L"\\Calvetta.hlp"),
           L"GetHelpFile answers a path");
}

void SelfCheck::checkKinds() {
    tools().open(ToolKind::kNoHandle);
    expectFailure([&] { windowOf(activeWindow().Get()); }, L"a window may have no handle");
    tools().open(ToolKind::kDeadHandle);
    expect(!IsWindow(windowOf(activeWindow().Get())), L"a handle may be dead");
    tools().open(ToolKind::kNoControls);
    expectFailure([&] { addControl(activeWindow().Get(), kLogControl, L"LogView", nullptr); },
                  L"a window may take no controls");
    expect(controlCount(activeWindow().Get()) == 0, L"and has none then");
    for (int i = 0; i < 3; ++i) {
        tools().close(*tools().active());
    }
}

void SelfCheck::checkClosing() {
    const ComPtr<IDispatch> list = get(application_.workspace(), L"ActiveToolList").object();
    while (ToolWindow* tool = tools().active()) {
        SendMessageW(tool->handle(), WM_CLOSE, 0, 0);
    }
    expect(get(list.Get(), L"Count").integer() == 0, L"no tool is open at the end");
    expectFailure([&] { call(list.Get(), L"Item", {0}); }, L"and there is none at 0");
    ToolWindow& last = tools().open(ToolKind::kMdiChild);
    checkParent(); // also with a first window
    tools().close(last);
}

} // namespace workbench
