// The part of the check that follows errors files: into the errors window, and out of the log when an object changes.

#include "workbench/self_check.h"

#include <filesystem>
#include <fstream>

#include "workbench/com_call.h"
#include "workbench/existing_file.h"
#include "workbench/failure.h"
#include "workbench/keyboard.h"
#include "workbench/log_list.h"
#include "workbench/menu_ids.h"

namespace workbench {

namespace {

constexpr long kLines = 8;

// Lines that are hard to take apart, and codes that are hidden by one of their letters.
constexpr const char* kOddLines =
    "a plain message\r\n"
    "\r\n"
    "   \r\n"
    "  plain with \"quotes\" and\ttab  \n"
    "\"Source\" \"a.c\" \"1\" \"2\" \"Error\" \"E1\" File \"not\" found\r\n"
    "\"Source\" \"a.c\" \"1\" \"2\" \"error\" \"E1\"\"tail\" joined\r\n"
    "\"Source\"\t\"a.c\"\t\"1\"\t\"2\"\t\"Warning\"\t\"W1\"\t\tparted  by tabs\r\n"
    "\"Source\" \"a.c\" \"1\" \"2\" \"Note\" \"i1\" hidden by its first letter\r\n"
    "\"Source\" \"a.c\" \"1\" \"2\" \"Note\" \"W2I\" hidden by its last letter\r\n"
    "\"Source\" \"a.c\" \"1\" \"2\" \"Note\" \"WI3\" hidden by the letter before\r\n"
    "\"Source\" \"a.c\" \"1\" \"2\" \"Note\" \"WI34\" not hidden\r\n"
    "\"Source\" \"a.c\" \"1\" \"2\" \"Error\" \"E1\" \"in quotes\"\r\n"
    "\"never closed\r\n"
    "\"too\" few fields\r\n"
    "\"Source\" \"a.c\" \"1\" \"2\" \"Error\" \"\" without an end of line";

/// The messages of the open entry in row 1, without the row that tells of hidden ones.
std::vector<std::wstring> messagesIn(const LogList& list) {
    std::vector<std::wstring> messages;
    for (long row = 2; row <= list.rowCount() && list.isMessage(row); ++row) {
        if (!list.errorsFileOf(row).empty()) {
            messages.push_back(list.cell(row, L"Message"));
        }
    }
    return messages;
}

std::vector<std::wstring> messagesIn(const ErrorsWindow& window) {
    std::vector<std::wstring> messages;
    const int rows = ListView_GetItemCount(window.list());
    for (int row = 0; row < rows; ++row) {
        wchar_t text[256] = L"";
        LVITEMW cell{};
        cell.iSubItem = ErrorsWindow::kText;
        cell.pszText = text;
        cell.cchTextMax = static_cast<int>(std::size(text));
        SendMessageW(window.list(), LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&cell));
        messages.emplace_back(text);
    }
    return messages;
}

int chosenIn(const ErrorsWindow& window) { return ListView_GetNextItem(window.list(), -1, LVNI_SELECTED); }

} // namespace

void SelfCheck::choose(WORD id) { SendMessageW(frame().handle(), WM_COMMAND, id, 0); }

void SelfCheck::checkErrors() {
    const ComPtr<IDispatch> view = tools().active()->findControl(L"LogView")->object();
    const LogList list(view.Get());
    application_.errors().reportErrors(kLines);
    expect(list.rowCount() == 1, L"a report with errors is a row");
    checkErrorsWindow(list);
    const std::wstring file = list.errorsFileOf(1);
    expect(exists(file), L"the entry refers to its errors file");
    choose(IDM_ERRORS_DELETE);
    expect(!exists(file), L"a change of the object deletes its errors file");
    expect(list.errorsFileOf(1).empty(), L"the entry loses its reference");
    expect(list.rowCount() == 1, L"and is closed");
    choose(IDM_ERRORS_SHOW);
    expect(!application_.errors().window()->visible(), L"there are no errors to show any more");
    checkLinesDialog(list);
    checkOddLines(list);
    SetFocus(list.window());
    withMenu({'A'});
}

/// The number that the log gives a message is its place in the window, whatever the lines look like.
void SelfCheck::checkOddLines(const LogList& list) {
    SetFocus(list.window());
    withMenu({'A'});
    const std::wstring object = tools().active()->panel().chosenObject();
    const std::wstring path = application_.projectFile(L"odd.errors");
    std::ofstream(std::filesystem::path(path), std::ios::binary) << kOddLines;
    call(application_.log(), L"Add", {L"verify", 2, object, L"odd lines", L"odd.errors"});
    list.select(1);
    typeKey(frame(), VK_RETURN);
    const std::vector<std::wstring> messages = messagesIn(list);
    expect(messages.size() >= 9, L"the log shows odd lines");
    expect(messagesIn(*application_.errors().window()) == messages,
           L"odd lines are read as the log reads them");
    application_.errors().window()->close();
    DeleteFileW(path.c_str());
}

void SelfCheck::checkErrorsWindow(const LogList& list) {
    list.select(1);
    SetFocus(list.window());
    typeKey(frame(), VK_RETURN);
    const ErrorsWindow* const window = application_.errors().window();
    expect(window && window->visible(), L"Enter on an entry shows its errors");
    if (!window) {
        return;
    }
    expect(chosenIn(*window) < 0, L"with none of them chosen");
    expect(GetFocus() == list.window(), L"and the user stays in the log");
    const std::vector<std::wstring> messages = messagesIn(*window);
    expect(messages.size() > 3 && messages == messagesIn(list), L"the errors are those of the open entry");
    const bool someHidden = list.rowCount() > static_cast<long>(messages.size()) + 1;
    expect(someHidden == (window->summary().find(L"hide") != std::wstring::npos),
           L"the log and the window agree that some are hidden");
    expect(messages.size() == static_cast<size_t>(someHidden ? kLines * 3 / 4 : kLines),
           L"one line of four is a note");
    list.select(1 + 3);
    typeKey(frame(), VK_RETURN);
    expect(chosenIn(*window) == 2, L"Enter on the third message chooses the third error");
    expect(GetFocus() == window->list(), L"and goes into the window");
    typeKey(frame(), VK_DOWN);
    expect(chosenIn(*window) == 3, L"the arrow keys move");
    typeKey(frame(), VK_ESCAPE);
    expect(!window->visible() && GetFocus() == list.window(), L"Esc goes back into the log");
}

void SelfCheck::checkLinesDialog(const LogList& list) {
    const long rows = list.rowCount();
    const auto answer = [&](const wchar_t* lines, UINT button) {
        choose(IDM_ERRORS_WRITE);
        const HWND dialog = application_.errors().askForLines().handle();
        expect(!IsWindowEnabled(frame().handle()), L"the question is modal");
        SetDlgItemTextW(dialog, IDC_LINES, lines);
        SendMessageW(dialog, WM_COMMAND, button, 0);
        frame().pump();
        return dialog;
    };
    expect(!IsWindow(answer(L"7", IDCANCEL)) && list.rowCount() == rows, L"Cancel reports nothing");
    const HWND dialog = answer(L"0", IDOK);
    expect(IsWindow(dialog), L"a file without lines is not asked for");
    SetDlgItemTextW(dialog, IDC_LINES, L"5");
    SendMessageW(dialog, WM_COMMAND, IDOK, 0);
    frame().pump();
    expect(!IsWindow(dialog) && IsWindowEnabled(frame().handle()), L"the question closes");
    expect(list.rowCount() == rows + 1, L"OK reports an entry");
    bool found = false;
    for (long row = 1; row <= list.rowCount(); ++row) {
        found = found || list.errorsFileOf(row).ends_with(L"\\generated-5.errors");
    }
    expect(found, L"that refers to a file of as many lines");
}

} // namespace workbench
