// What opening and closing an entry costs in a window, beside the system's list view with an item for each row.

#include "base/text.h"
#include "bench/errors_host.h"
#include "bench/errors_text.h"
#include "bench/harness.h"
#include "bench/plain_errors.h"
#include "bench/windows/shown_log.h"
#include "bench/windows/stock_list.h"
#include "bench/windows/stock_window.h"
#include "details/expand_entry.h"
#include "details/expansion.h"
#include "platform/win32/wide_text.h"

#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace cvlog::bench {
namespace {

constexpr int kLines = 100'000;
// The list of items gets some of the lines only: all would take it eleven minutes. A line costs it the more the longer
// it gets, so that all of them take it at least what these do in proportion.
constexpr int kLinesForItems = 1'000;
constexpr int kEntries = 1'000;
constexpr int kRowsToCheckpoint = 50;
constexpr int kRounds = 3;
constexpr int kWidth = 900;
constexpr int kHeight = 320;
constexpr RECT kWhole{0, 0, kWidth, kHeight};
constexpr std::u16string_view kPath = u"C:\\Project\\bench.errors";

struct DestroysWindow {
    using pointer = HWND;
    void operator()(HWND window) const noexcept { DestroyWindow(window); }
};
using Place = std::unique_ptr<HWND, DestroysWindow>;

Place makePlace(int row) {
    return Place(CreateWindowExW(WS_EX_NOACTIVATE, L"STATIC", L"", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 0,
                                 row * kHeight, kWidth, kHeight, nullptr, nullptr, nullptr, nullptr));
}

void takeMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

/// A list of a log in sight, with an entry in its middle that has an errors file.
class ShownExpansion {
public:
    static constexpr int kEntry = kEntries / 2;

    explicit ShownExpansion(const std::string& errors, int place = 0) : place_(makePlace(place)), log_(1) {
        log_.fill(kEntries);
        log_.window().moveTo(place_.get(), kWhole);
        log_.files().addFile(kPath, errors);
        log_.list().setCellTag(kEntry, u"Message", kPath);
        log_.globals().store.Workspace = hostapi::Workspace(makeErrorsHost());
        log_.globals().options.ErrorsListFilter = {{u'E', false}, {u'W', false}, {kHiddenKind, true}};
        takeMessages();
    }
    double secondsToExpand() {
        return seconds([this] {
            details::ExpandEntry(log_.globals(), view(), kEntry);
            GdiFlush();
        });
    }
    /// Of rows that are there, shows the first ones, and then some more each time: what of an expansion is nothing but
    /// that.
    void showFirst() {
        shownRows_ = 0;
        log_.list().scrollTo(kEntry);
    }
    void showMore() {
        shownRows_ += kRowsToCheckpoint;
        log_.list().repaint();
        log_.list().scrollTo(kEntry + shownRows_);
        log_.globals().platform.pump.yield();
        GdiFlush();
    }
    void collapse() { details::CollapseEntry(log_.globals(), view(), kEntry); }
    ShownLog& log() noexcept { return log_; }

private:
    core::LogViews::ListRef view() { return log_.globals().LogViews.first(); }

    Place place_;
    ShownLog log_;
    int shownRows_ = 0;
};

/// The system's list with as many entries, whose messages become items.
class StockExpansion {
public:
    explicit StockExpansion(ShownLog& like)
        : place_(makePlace(1)), columns_(like.list().columnCount()),
          list_(like.window(), place_.get(), kWhole) {
        list_.fill(like.list(), kEntries);
        takeMessages();
    }
    double secondsToExpand(const std::string& errors) {
        return seconds([&] {
            std::istringstream file(errors);
            PlainReader reader(file, static_cast<char>(kHiddenKind));
            int n = 0;
            for (PlainError error; reader.next(error);) {
                insert(ShownExpansion::kEntry + n, error);
                if (++n % kRowsToCheckpoint != 0) continue;
                RedrawWindow(list_.window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
                SendMessageW(list_.window(), LVM_ENSUREVISIBLE,
                             static_cast<WPARAM>(ShownExpansion::kEntry + n - 1), FALSE);
                takeMessages();
            }
            GdiFlush();
        });
    }

private:
    void insert(int index, const PlainError& error) {
        const std::u16string_view texts[] = {u"",          u"",        u"",          error.type,
                                             error.object, error.code, error.message};
        for (int column = 0; column < columns_; ++column) {
            std::wstring text(platform::win32::wideView(texts[column]));
            LVITEMW item{};
            item.mask = LVIF_TEXT;
            item.iItem = index;
            item.iSubItem = column;
            item.pszText = text.data();
            if (column == 0 || !text.empty())
                SendMessageW(list_.window(), column == 0 ? LVM_INSERTITEMW : LVM_SETITEMW, 0,
                             reinterpret_cast<LPARAM>(&item));
        }
    }

    Place place_;
    int columns_;
    StockList list_;
};

std::vector<Figure> measureAgainstItems() {
    ShownExpansion shown(errorsText(kLines));
    const std::string errorsForItems = errorsText(kLinesForItems);
    const auto expand = [&] {
        const double result = shown.secondsToExpand();
        shown.collapse();
        return result;
    };
    const Pair stock = medians(kRounds, expand, [&] {
        StockExpansion peer(shown.log());
        return peer.secondsToExpand(errorsForItems) * kLines / kLinesForItems;
    });
    return {{"expand.100k_lines_shown_against_items", stock.value * 1e3, "ms", stock.peer * 1e3, 0.25}};
}

// Both take turns from checkpoint to checkpoint: from one minute to the next a machine that has other work as well takes
// half as long again for the same.
std::vector<Figure> measureAgainstPainting() {
    const std::string errors = errorsText(kLines);
    ShownExpansion alone(errors, 1);
    alone.secondsToExpand();
    ShownExpansion shown(errors);
    double painting = 0;
    shown.log().pump().guest = [&] {
        GdiFlush();
        painting += seconds([&] { alone.showMore(); });
    };
    const auto expand = [&] {
        painting = 0;
        alone.showFirst();
        const double both = shown.secondsToExpand();
        shown.collapse();
        return both - painting;
    };
    const Pair painted = medians(kRounds, expand, [&] { return painting; });
    return {{"expand.100k_lines_shown_against_painting_alone", painted.value * 1e3, "ms", painted.peer * 1e3,
             1.15}};
}

/// Seconds a row to close an entry with so many messages.
double secondsToCollapse(int rows) {
    ShownExpansion shown("");
    widgets::Row row;
    row.tag = u"expansion";
    for (const std::u16string_view key : {u"ObjID", u"Num", u"Type", u"Name", u"Result", u"Message"})
        row.cells.push_back({std::u16string(key), u"text", {}, {}, {}});
    const widgets::RowPtr child = widgets::makeRow(row);
    {
        const widgets::ListView::Batch batch(shown.log().list());
        for (int n = 0; n < rows; ++n) shown.log().list().insert(ShownExpansion::kEntry + 1 + n, child);
    }
    takeMessages();
    return seconds([&] {
               shown.collapse();
               takeMessages();
               GdiFlush();
           }) /
           rows;
}

/// Seconds to delete one item, in a list as long as it is in the middle of deleting so many.
double secondsToDeleteItem(int rows) {
    constexpr int kDeleted = 500;
    const Place place = makePlace(1);
    ShownLog like(1);
    like.fill(rows / 2);
    StockList list(like.window(), place.get(), kWhole);
    list.fill(like.list(), rows / 2);
    SendMessageW(list.window(), WM_SETREDRAW, FALSE, 0);
    const double result = seconds([&] {
        for (int i = 0; i < kDeleted; ++i) SendMessageW(list.window(), LVM_DELETEITEM, rows / 4, 0);
    });
    SendMessageW(list.window(), WM_SETREDRAW, TRUE, 0);
    return result / kDeleted;
}

std::vector<Figure> measureCollapse() {
    const Pair stock = medians(
        kRounds, [] { return secondsToCollapse(kLines); }, [] { return secondsToDeleteItem(kLines); });
    const Pair growth = medians(
        kRounds, [] { return secondsToCollapse(1'000'000); },
        [] {
            constexpr int kRepeats =
                5; // a short run is repeated, so that it takes long enough to be measured
            double sum = 0;
            for (int i = 0; i < kRepeats; ++i) sum += secondsToCollapse(10'000);
            return sum / kRepeats;
        });
    return {{"expand.collapse_of_100k_shown_rows_against_deleting_items", stock.value * 1e6, "us",
             stock.peer * 1e6, 0.02},
            {"expand.collapse_row_cost_at_1M_shown_rows_against_10k", growth.value * 1e9, "ns",
             growth.peer * 1e9, 2}};
}

const Registration againstItems("expand.shown.items", measureAgainstItems);
const Registration againstPainting("expand.shown.painting", measureAgainstPainting);
const Registration collapsing("expand.collapse", measureCollapse);

} // namespace
} // namespace cvlog::bench
