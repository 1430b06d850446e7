// What one entry costs, from the report to the rows of the lists, without a host and without a database.

#include "bench/harness.h"
#include "bench/native/counted_memory.h"
#include "bench/native/headless_log.h"

namespace cvlog::bench {
namespace {

constexpr int kFewRows = 1'000;
constexpr int kManyRows = 1'000'000;
constexpr int kRowsForMemory = 100'000;

double secondsPerRow(int rows, int lists) {
    HeadlessLog log(lists);
    return seconds([&] { log.add(rows); }) / rows;
}

// A short run is repeated, so that it takes long enough to be measured.
double secondsPerRowOfFew(int lists) {
    constexpr int kRepeats = 100;
    double sum = 0;
    for (int i = 0; i < kRepeats; ++i) sum += secondsPerRow(kFewRows, lists);
    return sum / kRepeats;
}

double bytesPerRow(int lists) {
    HeadlessLog log(lists);
    const CountedMemory memory;
    log.add(kRowsForMemory);
    return static_cast<double>(memory.held()) / kRowsForMemory;
}

std::vector<Figure> measureGrowth() {
    std::vector<Figure> figures;
    for (const int lists : {1, 4}) {
        const Pair pair = medians(
            3, [&] { return secondsPerRow(kManyRows, lists); }, [&] { return secondsPerRowOfFew(lists); });
        figures.push_back({"add.row_cost_at_1M_rows_against_1k." + std::to_string(lists) + "_lists",
                           pair.value * 1e9, "ns", pair.peer * 1e9, 1.3});
    }
    return figures;
}

std::vector<Figure> measureExtraList() {
    const double extra = (bytesPerRow(4) - bytesPerRow(1)) / 3;
    return {{"add.memory_of_a_row_in_an_extra_list", extra, "byte", 24, 1}};
}

const Registration growth("add.growth", measureGrowth);
const Registration extraList("add.memory", measureExtraList);

} // namespace
} // namespace cvlog::bench
