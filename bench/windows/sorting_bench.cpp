// What it costs to sort a list that is shown in a window, and to change a long one, beside the system's list view with
// an item for each row. Nothing is painted.

#include "base/text.h"
#include "bench/harness.h"
#include "platform/win32/common_controls_context.h"
#include "platform/win32/services.h"
#include "platform/win32/wide_text.h"
#include "widgets/list_view.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace cvlog::bench {
namespace {

using namespace platform::win32;
using widgets::SortOrder;

constexpr int kManyRows = 100'000;

using Texts = std::vector<std::u16string>;

/// Texts in no order, the same ones each time.
Texts distinctTexts(int count, unsigned seed = 5) {
    std::mt19937 random(seed);
    Texts texts;
    for (int i = 0; i < count; ++i)
        texts.push_back(u"src/module_" + base::decimal(static_cast<std::int64_t>(random())) + u".c");
    return texts;
}

Texts fewTexts(int count) {
    constexpr std::u16string_view kResults[] = {u"Good", u"Suspect", u"Failure", u"Cancel", u"Bad"};
    std::mt19937 random(5);
    Texts texts;
    for (int i = 0; i < count; ++i) texts.emplace_back(kResults[random() % 5]);
    return texts;
}

/// A list of ours with its window.
class OwnList {
public:
    explicit OwnList(const Texts& texts) {
        list.setColumns({{u"Object", u"Object", 3000, 0, u""}});
        list.attach(services_.peers.makeListView(list));
        insert(texts);
    }
    void insert(const Texts& texts) {
        const widgets::ListView::Batch batch(list);
        for (const std::u16string& text : texts) list.append(widgets::makeRow({text, u"", u"", {}}));
    }

private:
    Services services_;

public:
    widgets::ListView list{services_.collator, services_.measurer};
};

int CALLBACK compareTexts(LPARAM left, LPARAM right, LPARAM) {
    return lstrcmpiW(reinterpret_cast<const wchar_t*>(left), reinterpret_cast<const wchar_t*>(right));
}

/// The system's list, drawing switched off.
class SystemList {
public:
    explicit SystemList(Texts texts) : texts_(std::move(texts)) {
        const CommonControlsContext context;
        window_ = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_POPUP | LVS_REPORT, 0, 0, 400, 300, nullptr,
                                  nullptr, nullptr, nullptr);
        send(WM_SETREDRAW, FALSE);
        LVCOLUMNW column{};
        column.mask = LVCF_WIDTH;
        column.cx = 200;
        send(LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
        for (const std::u16string& text : texts_) insert(text);
        if (send(LVM_GETITEMCOUNT) == static_cast<LRESULT>(texts_.size())) return;
        std::fputs("The system's list failed\n", stderr);
        std::exit(2);
    }
    SystemList(const SystemList&) = delete;
    SystemList& operator=(const SystemList&) = delete;
    ~SystemList() { DestroyWindow(window_); }

    void sort() { send(LVM_SORTITEMS, 0, reinterpret_cast<LPARAM>(compareTexts)); }
    /// From now on each item goes to its place by itself.
    void sortInsertions() {
        const LONG_PTR style = GetWindowLongPtrW(window_, GWL_STYLE);
        SetWindowLongPtrW(window_, GWL_STYLE, style | LVS_SORTASCENDING);
    }
    void insert(const std::u16string& text) {
        LVITEMW item{};
        item.mask = LVIF_TEXT | LVIF_PARAM;
        item.iItem = static_cast<int>(send(LVM_GETITEMCOUNT));
        item.pszText = const_cast<wchar_t*>(wideView(text).data());
        item.lParam = reinterpret_cast<LPARAM>(item.pszText);
        send(LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }

private:
    LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const noexcept {
        return SendMessageW(window_, message, wParam, lParam);
    }
    Texts texts_;
    HWND window_ = nullptr;
};

double secondsOfOwnSort(const Texts& texts) {
    OwnList own(texts);
    return seconds([&] { own.list.setSorted(true); });
}

double secondsOfSystemSort(const Texts& texts) {
    SystemList list(texts);
    return seconds([&] { list.sort(); });
}

Figure against(const char* name, const Pair& pair, double goal) {
    return {name, pair.value * 1e3, "ms", pair.peer * 1e3, goal};
}

std::vector<Figure> measureSorting() {
    constexpr int kRounds = 3;
    const auto compared = [](const Texts& texts) {
        return medians(
            kRounds, [&] { return secondsOfOwnSort(texts); }, [&] { return secondsOfSystemSort(texts); });
    };
    return {
        against("sort.100k_rows_against_the_systems_list", compared(distinctTexts(kManyRows)), 0.1),
        against("sort.100k_rows_of_5_texts_against_the_systems_list", compared(fewTexts(kManyRows)), 0.01)};
}

std::vector<Figure> measureReversing() {
    constexpr int kRounds = 5;
    const Texts texts = distinctTexts(kManyRows);
    OwnList own(texts);
    own.list.setSorted(true);
    const auto reverse = [&] {
        const bool ascending = own.list.sortOrder() == SortOrder::Ascending;
        own.list.setSort(0, ascending ? SortOrder::Descending : SortOrder::Ascending);
    };
    const Pair pair = medians(
        kRounds, [&] { return seconds(reverse); }, [&] { return secondsOfOwnSort(texts); });
    return {against("sort.reversing_100k_rows_against_the_first_sort", pair, 0.3)};
}

std::vector<Figure> measureInserting() {
    constexpr int kRows = 10'000;
    constexpr int kInserted = 1'000;
    constexpr int kInsertedBySystem = 20;
    constexpr int kRounds = 5;
    Texts texts = distinctTexts(kRows);
    OwnList own(texts);
    own.list.setSorted(true);
    std::sort(texts.begin(), texts.end());
    SystemList system(std::move(texts));
    system.sort();
    system.sortInsertions();
    const Texts inserted = distinctTexts(kInserted, 6);
    const Pair pair = medians(
        kRounds, [&] { return seconds([&] { own.insert(inserted); }) / kInserted; },
        [&] {
            return seconds([&] {
                       for (int i = 0; i < kInsertedBySystem; ++i)
                           system.insert(inserted[static_cast<std::size_t>(i)]);
                   }) /
                   kInsertedBySystem;
        });
    return {
        {"sort.insert_at_10k_rows_against_the_systems_list", pair.value * 1e6, "us", pair.peer * 1e6, 0.001}};
}

/// Every second row is selected and removed, the last one first. What it takes is mostly the window's letting go of its
/// selection, which it keeps as an array of stretches.
double secondsOfRemoving(int rows) {
    OwnList own(distinctTexts(rows));
    {
        const widgets::ListView::Batch batch(own.list);
        for (int position = 1; position <= rows; position += 2) own.list.select(position, true);
    }
    return seconds([&] {
        const widgets::ListView::Batch batch(own.list);
        for (int position = rows; position >= 1; --position)
            if (own.list.isSelected(position)) own.list.remove(position);
    });
}

std::vector<Figure> measureRemoving() {
    constexpr int kRounds = 5;
    constexpr double kUserWaits = 1;
    const Pair pair = medians(
        kRounds, [] { return secondsOfRemoving(kManyRows); }, [] { return kUserWaits; });
    return {{"remove.every_second_of_100k_shown_rows", pair.value * 1e3, "ms", pair.peer * 1e3, 1}};
}

const Registration sorting("sort.first", measureSorting);
const Registration reversing("sort.again", measureReversing);
const Registration inserting("sort.insert", measureInserting);
const Registration removing("remove.selected", measureRemoving);

} // namespace
} // namespace cvlog::bench
