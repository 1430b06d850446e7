// What it costs to show a log in windows, beside the system's list view with an item for each row.

#include "bench/harness.h"
#include "bench/windows/shown_log.h"
#include "bench/windows/stock_list.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace cvlog::bench {
namespace {

constexpr int kManyRows = 100'000;
// Where more rows are compared the peer has so many: its items take kilobytes each, and what one more costs it does
// not grow with their number.
constexpr int kMostStockRows = 100'000;
constexpr int kWidth = 630;
constexpr int kHeight = 240;

void takeMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    GdiFlush();
}

/// A visible window for one list. Those in sight at once lie beside each other.
class Place {
public:
    Place(int column, int row)
        : window_(CreateWindowExW(WS_EX_NOACTIVATE, L"STATIC", L"", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN,
                                  column * kWidth, row * kHeight, kWidth, kHeight, nullptr, nullptr, nullptr,
                                  nullptr)) {}
    Place(Place&& other) noexcept : window_(std::exchange(other.window_, nullptr)) {}
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;
    ~Place() {
        if (window_) DestroyWindow(window_);
    }
    HWND window() const noexcept { return window_; }

private:
    HWND window_;
};

constexpr RECT kWhole{0, 0, kWidth, kHeight};

/// Lists of a log in sight, and as many of the system's beside them.
class SideBySide {
public:
    SideBySide(int lists, int rows) : log_(lists) {
        log_.fill(rows);
        const int stockRows = std::min(rows, kMostStockRows);
        for (int i = 0; i < lists; ++i) {
            places_.emplace_back(0, i);
            log_.window(i).moveTo(places_.back().window(), kWhole);
            places_.emplace_back(1, i);
            stock_.push_back(std::make_unique<StockList>(log_.window(i), places_.back().window(), kWhole));
            stock_.back()->fill(log_.list(i), stockRows);
        }
        for (int i = 0; i < 3; ++i) { // from the top to the end
            addToLog();
            addToStock();
        }
    }
    double addToLog() {
        return seconds([&] {
                   log_.add();
                   takeMessages();
               }) *
               1e6;
    }
    double addToStock() {
        return seconds([&] {
                   const int row = log_.list().rowCount();
                   for (const auto& list : stock_) list->append(log_.list(), row);
                   takeMessages();
               }) *
               1e6;
    }

private:
    std::vector<Place> places_;
    ShownLog log_;
    std::vector<std::unique_ptr<StockList>> stock_;
};

Figure measureVisibleAdd(int lists, int rows, const char* name) {
    constexpr int kRounds = 301;
    SideBySide shown(lists, rows);
    const Pair pair = medians(
        kRounds, [&] { return shown.addToLog(); }, [&] { return shown.addToStock(); });
    return {"visible_add.at_" + std::string(name) + "_rows." + std::to_string(lists) + "_lists", pair.value,
            "us", pair.peer, 1.1};
}

Registration visibleAdd(int rows, const char* name) {
    return {"visible_add.at_" + std::string(name) + "_rows", [rows, name] {
                return std::vector{measureVisibleAdd(1, rows, name), measureVisibleAdd(4, rows, name)};
            }};
}

double secondsOfSecondControl(ShownLog& log) {
    std::shared_ptr<view::LogControl> control;
    const double result = seconds([&] { control = log.makeControl(); });
    return control->lvLog().rowCount() == kManyRows ? result : 1e9; // never a figure that holds
}

std::vector<Figure> measureSecondControl() {
    constexpr int kRounds = 3;
    ShownLog log(1);
    log.fill(kManyRows);
    const Pair pair = medians(
        kRounds, [&] { return secondsOfSecondControl(log) * 1e3; },
        [&] {
            return seconds([&] { StockList(log.window(), nullptr, kWhole).fill(log.list(), kManyRows); }) *
                   1e3;
        });
    return {{"second_control.onto_100k_rows_against_a_filled_list", pair.value, "ms", pair.peer, 0.05}};
}

const Registration secondControl("second_control", measureSecondControl);
const Registration atFew = visibleAdd(1'000, "1k");
const Registration atMany = visibleAdd(kManyRows, "100k");
const Registration atMost = visibleAdd(1'000'000, "1M");

} // namespace
} // namespace cvlog::bench
