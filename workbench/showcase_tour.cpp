// The tour: a picture of everything that the log and the workbench open or change.

#include "workbench/showcase.h"

#include <commctrl.h>

#include <algorithm>

#include "workbench/com_call.h"
#include "workbench/existing_file.h"
#include "workbench/failure.h"
#include "workbench/keyboard.h"
#include "workbench/meanwhile.h"
#include "workbench/menu_ids.h"
#include "workbench/output_file.h"

namespace workbench {

namespace {

constexpr long kObject = 5;
constexpr long kResult = 6;
constexpr int kFrames = 5; // of the strip's picture
constexpr int kMessagesAFrame = 20;
constexpr int kFirstFrameAt = 61; // the message at which the first one shows

// Columns, its place in the menu that it opens: the items have no letters of their own.
std::vector<BYTE> toggling(long column) {
    std::vector<BYTE> keys = {'U'};
    keys.insert(keys.end(), static_cast<size_t>(column - 1), VK_DOWN);
    keys.push_back(VK_RETURN);
    return keys;
}

bool menuIsOpen() { return openMenu() != nullptr; }
bool menuIsClosed() { return openMenu() == nullptr; }

int openMenus() {
    int count = 0;
    HWND found = nullptr;
    while ((found = FindWindowExW(nullptr, found, L"#32768", nullptr))) {
        count += IsWindowVisible(found) && GetWindowThreadProcessId(found, nullptr) == GetCurrentThreadId();
    }
    return count;
}

/// Over a row, from 0, or where rows are when that one is not to be seen.
void putMouseOver(HWND list, int row) {
    constexpr int kSomewhere = 4;
    const int top = ListView_GetTopIndex(list);
    if (row < top || row > top + ListView_GetCountPerPage(list)) {
        row = std::min(top + kSomewhere, ListView_GetItemCount(list) - 1);
    }
    RECT area{};
    area.left = LVIR_LABEL;
    SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&area));
    POINT place{area.left + 60, (area.top + area.bottom) / 2};
    ClientToScreen(list, &place);
    SetCursorPos(place.x, place.y);
}

/// Scrolls the history to the line before the current session, with what surrounds it.
void showSessionStart() {
    constexpr int kAround = 8;
    const HWND list = GetFocus();
    const int rows = ListView_GetItemCount(list);
    for (int row = 0; row < rows; ++row) {
        wchar_t text[8] = L"";
        LVITEMW item{};
        item.pszText = text;
        item.cchTextMax = static_cast<int>(std::size(text));
        SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        if (text[0] == L'-') {
            ListView_EnsureVisible(list, std::max(row - kAround, 0), FALSE);
            ListView_EnsureVisible(list, std::min(row + kAround, rows - 1), FALSE);
            return;
        }
    }
}

/// From inside the history's loop; the key is let go of when the menu is there.
void openHistoryMenu() {
    const HWND list = GetFocus();
    putMouseOver(list, std::max(ListView_GetNextItem(list, -1, LVNI_FOCUSED), 0));
    holdKey(VK_SHIFT, true);
    postKey(VK_F10);
}

} // namespace

/// Opens something by a call that returns when it is closed; each scene is played when it is there, from inside the loop
/// that is running then. A scene without a picture only acts.
void Showcase::perform(const std::function<void()>& open, const std::vector<Scene>& scenes) {
    enum { kWaiting, kSettling, kShown } state = kWaiting;
    size_t next = 0;
    ULONGLONG since = 0;
    Meanwhile playing([&] {
        const Scene& scene = scenes[next];
        if (state == kWaiting && scene.isThere()) {
            state = kSettling;
            since = GetTickCount64();
        } else if (state == kSettling && GetTickCount64() - since >= kSettleMilliseconds) {
            state = kShown;
            if (!scene.picture.empty()) {
                writeFile(readyFile_, scene.picture);
            }
        } else if (state == kShown && !exists(readyFile_)) {
            state = kWaiting;
            scene.close();
            ++next;
        }
        return next == scenes.size();
    });
    open();
    if (!playing.done()) {
        throw Failure(scenes[next].picture + L" was not there");
    }
}

LogList Showcase::dockedList() {
    put(application_.log(), L"Docked", true);
    const ToolWindow* tool = application_.tools().active();
    const ControlContainer* view = tool ? tool->findControl(L"LogView") : nullptr;
    if (!view) {
        throw Failure(L"The log does not dock");
    }
    LogList list(view->object().Get());
    SetFocus(list.window());
    return list;
}

void Showcase::showMenu(const wchar_t* picture, long row) {
    const LogList list = dockedList();
    list.select(row);
    paint();
    putMouseOver(list.window(), static_cast<int>(row - 1));
    perform([&] { typeKey(frame(), VK_F10, VK_SHIFT); }, {{picture, menuIsOpen, [] { postKey(VK_ESCAPE); }}});
}

void Showcase::chooseInMenu(const std::vector<BYTE>& keys) {
    std::vector<Scene> scenes = {{L"", menuIsOpen, [&] { postKey(keys.front()); }}};
    if (keys.size() > 1) {
        scenes.push_back({L"", [] { return openMenus() == 2; },
                          [&] {
                              for (size_t i = 1; i < keys.size(); ++i) {
                                  postKey(keys[i]);
                              }
                          }});
    }
    perform([&] { typeKey(frame(), VK_F10, VK_SHIFT); }, scenes);
}

/// Reports an entry with an errors file; answers its row.
long Showcase::reportErrors(const LogList& list, long lines) {
    application_.errors().reportErrors(lines);
    return list.rowCount();
}

void Showcase::showMenus(const LogList& list) {
    const long rows = list.rowCount();
    long plain = rows;
    while (plain > 1 && !list.errorsFileOf(plain).empty()) {
        --plain;
    }
    showMenu(L"menu-entry", plain);
    showMenu(L"menu-no-selection", 0);
    list.select(plain);
    paint();
    putMouseOver(list.window(), static_cast<int>(plain - 1));
    const auto bothAreOpen = [] { return openMenus() == 2; };
    const auto openColumns = [] { postKey('U'); };
    const auto closeBoth = [] {
        postKey(VK_ESCAPE);
        postKey(VK_ESCAPE);
    };
    perform([&] { typeKey(frame(), VK_F10, VK_SHIFT); },
            {{L"", menuIsOpen, openColumns}, {L"menu-columns", bothAreOpen, closeBoth}});
}

void Showcase::showOpenEntry(const LogList& list) {
    const long entry = reportErrors(list, 12);
    showMenu(L"menu-entry-with-errors", entry);
    chooseInMenu({'X'});
    list.select(entry);
    show(L"open-entry");
    showMenu(L"menu-open-entry", entry);
    showMenu(L"menu-message", entry + 3);
    showErrors(list, entry);
    list.select(entry);
    chooseInMenu({'L'});
}

void Showcase::showErrors(const LogList& list, long entry) {
    list.select(entry);
    SendMessageW(frame().handle(), WM_COMMAND, IDM_ERRORS_SHOW, 0);
    show(L"errors-of-entry");
    list.select(entry + 3);
    SetFocus(list.window());
    typeKey(frame(), VK_RETURN);
    show(L"errors");
    application_.errors().window()->close();
    SendMessageW(frame().handle(), WM_COMMAND, IDM_ERRORS_WRITE, 0);
    show(L"errors-question");
    SendMessageW(application_.errors().askForLines().handle(), WM_COMMAND, IDCANCEL, 0);
    frame().pump();
    SetFocus(list.window());
}

void Showcase::showColumns(const LogList& list) {
    const HWND header = ListView_GetHeader(list.window());
    click(frame(), header, list.headerPoint(kResult));
    show(L"sorted");
    click(frame(), header, list.headerPoint(kResult));
    show(L"sorted-down");
    for (const long column : {kObject, kResult}) {
        chooseInMenu(toggling(column));
    }
    show(L"hidden-columns");
    for (const long column : {kObject, kResult}) {
        chooseInMenu(toggling(column));
    }
}

/// The strip turns its picture every twenty messages. The log asks for the wording of each code, and is kept waiting
/// for the answer whenever there is another picture to see.
void Showcase::showStrip(const LogList& list, int frames) {
    const long entry = reportErrors(list, 400);
    list.select(entry);
    int asked = 0;
    application_.onCodeAsked = [&] {
        ++asked;
        const int frameNumber = (asked - kFirstFrameAt) / kMessagesAFrame + 1;
        const bool isNew = asked >= kFirstFrameAt && (asked - kFirstFrameAt) % kMessagesAFrame == 0;
        if (isNew && frameNumber <= frames) {
            show(L"strip-" + std::to_wstring(frameNumber));
        }
    };
    chooseInMenu({'X'});
    application_.onCodeAsked = nullptr;
    list.select(entry);
    chooseInMenu({'L'});
}

void Showcase::showHiddenRecords(const LogList& list) {
    const ComPtr<IDispatch> node =
        call(application_.options(), L"selectSingleNode",
             {L"//*[@ID='Editor']/GROUP[@NAME='ErrorsList']/BOOL[@NAME='Information']"})
            .object();
    if (!node) {
        throw Failure(L"the options hide no kind of errors");
    }
    const Variant before = call(node.Get(), L"getAttribute", {L"VALUE"});
    call(node.Get(), L"setAttribute", {L"VALUE", L"false"});
    call(application_.options(), L"Save");
    paint();
    const long entry = reportErrors(list, 6);
    list.select(entry);
    chooseInMenu({'X'});
    list.select(list.rowCount());
    show(L"hidden-records");
    list.select(entry);
    chooseInMenu({'L'});
    call(node.Get(), L"setAttribute", {L"VALUE", before});
    call(application_.options(), L"Save");
    paint();
}

/// Opens the history from the log's menu; the scenes are played in it, and the last one closes it.
void Showcase::inHistory(std::vector<Scene> scenes) {
    scenes.insert(scenes.begin(), {L"", menuIsOpen, [] { postKey('I'); }});
    perform([&] { typeKey(frame(), VK_F10, VK_SHIFT); }, scenes);
}

/// The history is modal over the frame.
bool Showcase::historyIsThere() { return !IsWindowEnabled(frame().handle()) && menuIsClosed(); }

void Showcase::showHistory() {
    const auto isThere = [&] { return historyIsThere(); };
    inHistory({{L"history", isThere, &showSessionStart},
               {L"history-session", isThere, &openHistoryMenu},
               {L"history-menu", menuIsOpen,
                [] {
                    holdKey(VK_SHIFT, false);
                    postKey(VK_ESCAPE);
                }},
               {L"", isThere, [] { postKey(VK_ESCAPE); }}});
}

void Showcase::showEmptyHistory() {
    const auto isThere = [&] { return historyIsThere(); };
    inHistory({{L"", isThere, &openHistoryMenu},
               {L"", menuIsOpen,
                [] {
                    holdKey(VK_SHIFT, false);
                    postKey('L');
                }},
               {L"history-empty", isThere, &openHistoryMenu},
               {L"history-empty-menu", menuIsOpen,
                [] {
                    holdKey(VK_SHIFT, false);
                    postKey(VK_ESCAPE);
                }},
               {L"", isThere, [] { postKey(VK_ESCAPE); }}});
}

void Showcase::showEmptyLog() {
    dockedList();
    chooseInMenu({'A'});
    showMenu(L"menu-empty-log", 0);
}

void Showcase::showFloatingMenus() {
    IDispatch* const log = application_.log();
    const auto picture = [&](const wchar_t* name) {
        call(log, L"SetFocus");
        paint();
        const HWND list = GetFocus();
        if (!list || GetAncestor(list, GA_ROOT) == frame().handle()) {
            throw Failure(L"the log does not float");
        }
        putMouseOver(list, -1);
        perform([&] { typeKey(frame(), VK_F10, VK_SHIFT); },
                {{name, menuIsOpen, [] { postKey(VK_ESCAPE); }}});
    };
    put(log, L"Docked", false);
    picture(L"menu-floating");
    putReference(log, L"Parent", nullptr);
    put(log, L"Visible", true); // without a parent it is hidden until it is wanted again
    picture(L"menu-without-parent");
    putReference(log, L"Parent", application_.tools().active()->object());
}

void Showcase::chooseObject() {
    const HWND objects = application_.tools().active()->panel().list();
    if (SendMessageW(objects, LB_GETCOUNT, 0, 0) > 1) {
        SendMessageW(objects, LB_SETCURSEL, 1, 0); // the first is the project
    }
}

void Showcase::showEverything() {
    const Variant docked = get(application_.log(), L"Docked");
    chooseObject();
    attempt(L"the menus", [&] { showMenus(dockedList()); });
    attempt(L"an open entry", [&] { showOpenEntry(dockedList()); });
    attempt(L"the strip", [&] { showStrip(dockedList(), kFrames); });
    attempt(L"hidden records", [&] { showHiddenRecords(dockedList()); });
    attempt(L"the floating log's menus", [&] { showFloatingMenus(); });
    attempt(L"the columns", [&] { showColumns(dockedList()); });
    attempt(L"the report", [&] {
        dockedList();
        chooseInMenu({'R'});
    });
    attempt(L"the history", [&] {
        dockedList();
        showHistory();
    });
    attempt(L"the empty history", [&] {
        dockedList();
        showEmptyHistory();
    });
    attempt(L"the empty log", [&] { showEmptyLog(); });
    put(application_.log(), L"Docked", docked); // the log remembers it in the project's options
}

void Showcase::showSome() {
    const Variant docked = get(application_.log(), L"Docked");
    chooseObject();
    attempt(L"an open entry", [&] {
        const LogList list = dockedList();
        const long entry = reportErrors(list, 12);
        list.select(entry);
        chooseInMenu({'X'});
        showMenu(L"menu", entry + 3);
        list.select(entry + 3);
        typeKey(frame(), VK_RETURN);
        show(L"errors");
        application_.errors().window()->close();
    });
    attempt(L"the strip", [&] { showStrip(dockedList(), 1); });
    attempt(L"the history", [&] {
        dockedList();
        showHistory();
    });
    put(application_.log(), L"Docked", docked);
}

} // namespace workbench
