// What it costs to draw a page of rows, beside the system's list view that is given the same texts and pictures and
// draws them its own way.

#include "bench/harness.h"
#include "bench/windows/shown_log.h"
#include "bench/windows/virtual_stock_list.h"

#include <memory>
#include <string>
#include <vector>

namespace cvlog::bench {
namespace {

constexpr int kRounds = 101;
constexpr int kWidth = 900;
constexpr int kHeight = 320; // three of them in sight
constexpr RECT kWhole{0, 0, kWidth, kHeight};

struct DestroysWindow {
    using pointer = HWND;
    void operator()(HWND window) const noexcept { DestroyWindow(window); }
};
using Place = std::unique_ptr<HWND, DestroysWindow>;

Place makePlace(int row) {
    return Place(CreateWindowExW(WS_EX_NOACTIVATE, L"STATIC", L"", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 0,
                                 row * kHeight, kWidth, kHeight, nullptr, nullptr, nullptr, nullptr));
}

double drawPage(HWND list) {
    return seconds([list] {
               RedrawWindow(list, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
               GdiFlush();
           }) *
           1e3;
}

void showMiddle(HWND list, int rows) {
    SendMessageW(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(rows - 1), FALSE);
    SendMessageW(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(rows / 2), FALSE);
}

/// A page down and back, each shown at once.
double scrollPages(HWND list) {
    const auto page = static_cast<WPARAM>(SendMessageW(list, LVM_GETCOUNTPERPAGE, 0, 0));
    RECT row{};
    row.left = LVIR_BOUNDS;
    SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(SendMessageW(list, LVM_GETTOPINDEX, 0, 0)),
                 reinterpret_cast<LPARAM>(&row));
    const auto distance = static_cast<LPARAM>(page) * (row.bottom - row.top);
    return seconds([&] {
               for (const LPARAM by : {distance, -distance}) {
                   SendMessageW(list, LVM_SCROLL, 0, by);
                   UpdateWindow(list);
               }
               GdiFlush();
           }) /
           2 * 1e3;
}

/// A list of a log and one of the system's with the same rows, one below the other. What is covered is not drawn, so
/// that lists which are compared must not lie at the same place.
class Pages {
public:
    explicit Pages(int rows, int place = 0) : places_{makePlace(place), makePlace(place + 1)}, log_(1) {
        log_.fill(rows);
        log_.window().moveTo(places_[0].get(), kWhole);
        stock_ = std::make_unique<VirtualStockList>(log_.list(), log_.window(), places_[1].get(), kWhole);
        for (const HWND list : {ours(), stock()}) showMiddle(list, rows);
    }
    HWND ours() { return log_.window().list(); }
    HWND stock() const { return stock_->window(); }

private:
    Place places_[2];
    ShownLog log_;
    std::unique_ptr<VirtualStockList> stock_;
};

Registration pages(int rows, const std::string& name) {
    const std::string full = "page." + name;
    return {full, [rows, full] {
                Pages shown(rows);
                const Pair drawn = medians(
                    kRounds, [&] { return drawPage(shown.ours()); }, [&] { return drawPage(shown.stock()); });
                const Pair scrolled = medians(
                    kRounds, [&] { return scrollPages(shown.ours()); },
                    [&] { return scrollPages(shown.stock()); });
                return std::vector<Figure>{{full + ".drawn", drawn.value, "ms", drawn.peer, 0.3},
                                           {full + ".scrolled", scrolled.value, "ms", scrolled.peer, 1}};
            }};
}

std::vector<Figure> measureGrowth() {
    Pages few(1'000);
    Pages many(1'000'000, 2);
    const Pair drawn = medians(
        kRounds, [&] { return drawPage(many.ours()); }, [&] { return drawPage(few.ours()); });
    return {{"page.at_1M_rows_against_at_1k", drawn.value, "ms", drawn.peer, 1.1}};
}

const Registration atFew = pages(1'000, "at_1k_rows");
const Registration atMany = pages(100'000, "at_100k_rows");
const Registration atMost = pages(1'000'000, "at_1M_rows");
const Registration growth("page.growth", measureGrowth);

} // namespace
} // namespace cvlog::bench
