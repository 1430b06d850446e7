// The part of the check that opens every entry of the recorded session and holds its rows against a plain count of the
// lines of its errors file.

#include "workbench/self_check.h"

#include <algorithm>
#include <string_view>

#include "workbench/com_call.h"
#include "workbench/error_messages.h"
#include "workbench/failure.h"
#include "workbench/keyboard.h"
#include "workbench/log_list.h"
#include "workbench/table.h"

namespace workbench {

namespace {

/// The lines of a file that hold anything but blanks.
size_t plainLinesOf(const std::string& bytes) {
    size_t lines = 0;
    for (size_t start = 0; start < bytes.size();) {
        const size_t end = std::min(bytes.find('\n', start), bytes.size());
        lines +=
            std::string_view(bytes).substr(start, end - start).find_first_not_of(" \r") != std::string::npos;
        start = end + 1;
    }
    return lines;
}

std::wstring numbered(size_t count, const wchar_t* what) { return std::to_wstring(count) + L" " + what; }

} // namespace

void SelfCheck::checkSession() {
    const ComPtr<IDispatch> view = tools().active()->findControl(L"LogView")->object();
    const LogList list(view.Get());
    SetFocus(list.window());
    withMenu({'A'});
    application_.replaySession();
    const long entries = list.rowCount();
    Opened opened;
    for (long row = entries; row >= 1; --row) { // upwards, so that the places above stay
        if (!list.errorsFileOf(row).empty()) {
            checkOpening(list, row, opened);
        }
    }
    expect(list.rowCount() == entries + static_cast<long>(opened.rows),
           L"nothing but their messages has come");
    expect(SendMessageW(list.window(), LVM_GETITEMCOUNT, 0, 0) == list.rowCount(),
           L"the window shows them all");
    notes_ += numbered(static_cast<size_t>(entries), L"entries, ") + numbered(opened.entries, L"opened: ") +
              numbered(opened.lines, L"lines, ") + numbered(opened.hidden, L"hidden, ") +
              numbered(opened.rows, L"rows") + L"\n";
    SetFocus(list.window());
    withMenu({'A'});
    expect(list.rowCount() == 0, L"they go with the log");
}

/// A row for each line, except for lines of a hidden kind, and one more that tells of those.
void SelfCheck::checkOpening(const LogList& list, long row, Opened& opened) {
    const std::wstring file = list.errorsFileOf(row);
    const size_t lines = plainLinesOf(readFile(file));
    const ErrorMessages messages(file, HiddenKinds(application_.options()));
    const size_t expected = messages.count() + (messages.hiddenCount() > 0 ? 1 : 0);
    expect(messages.count() + messages.hiddenCount() == lines, L"each line of " + file + L" is a message");
    const long before = list.rowCount();
    list.select(row);
    SetFocus(list.window());
    typeKey(frame(), VK_RETURN);
    const long came = list.rowCount() - before;
    expect(came == static_cast<long>(expected),
           file + L": " + numbered(expected, L"rows, not ") + std::to_wstring(came));
    ++opened.entries;
    opened.lines += lines;
    opened.hidden += messages.hiddenCount();
    opened.rows += expected;
}

} // namespace workbench
