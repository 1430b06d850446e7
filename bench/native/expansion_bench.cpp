// What opening an entry into the messages of its errors file costs, without a window.

#include "bench/errors_text.h"
#include "bench/harness.h"
#include "bench/native/counted_memory.h"
#include "bench/native/errors_log.h"
#include "bench/native/store_files.h"
#include "bench/plain_errors.h"

#include <fstream>
#include <string>
#include <vector>

namespace cvlog::bench {
namespace {

constexpr int kFewLines = 10'000;
constexpr int kManyLines = 1'000'000;
constexpr int kEntries = 100'000;
constexpr int kRounds = 5;
constexpr int kRoundsAgainstPlain = 15; // what is near its goal must not hang on one slow moment

std::string writeFile(const DiskFolder& folder, const std::string& name, const std::string& text) {
    const std::string path = folder.file(name);
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

/// A log with an errors file.
struct Measured {
    Measured(const std::string& errorsPath, int lists)
        : path(errorsPath), log(lists, kEntries, path),
          shown(static_cast<int>(readPlainly(path, kHiddenKind).size())) {}

    void expand() { log.expand(shown + 1); } // one tells that lines are hidden
    double secondsToExpand() {
        const double result = seconds([this] { expand(); });
        log.collapse();
        return result;
    }
    double secondsToReadPlainly() const {
        std::vector<PlainError> errors;
        return seconds([&] { errors = readPlainly(path, kHiddenKind); });
    }

    std::string path;
    ErrorsLog log;
    int shown;
};

std::vector<Figure> measureAgainstPlain() {
    const DiskFolder folder;
    Measured many(writeFile(folder, "many", errorsText(kManyLines)), 1);
    const Pair pair = medians(
        kRoundsAgainstPlain, [&] { return many.secondsToExpand(); },
        [&] { return many.secondsToReadPlainly(); });
    return {{"expand.1M_lines_against_getline_and_strings", pair.value * 1e3, "ms", pair.peer * 1e3, 0.5}};
}

// A short run is repeated, so that it takes long enough to be measured.
double secondsOfFew(Measured& few) {
    constexpr int kRepeats = 20;
    double sum = 0;
    for (int i = 0; i < kRepeats; ++i) sum += few.secondsToExpand();
    return sum / kRepeats;
}

std::vector<Figure> measureGrowth() {
    const DiskFolder folder;
    const std::string fewLines = writeFile(folder, "few", errorsText(kFewLines));
    const std::string manyLines = writeFile(folder, "many", errorsText(kManyLines));
    std::vector<Figure> figures;
    for (const int lists : {1, 4}) {
        Measured few(fewLines, lists);
        Measured many(manyLines, lists);
        const Pair pair = medians(
            kRounds, [&] { return many.secondsToExpand() / kManyLines; },
            [&] { return secondsOfFew(few) / kFewLines; });
        figures.push_back({"expand.line_cost_at_1M_against_10k." + std::to_string(lists) + "_lists",
                           pair.value * 1e9, "ns", pair.peer * 1e9, 1.3});
    }
    return figures;
}

std::vector<Figure> measureMemory() {
    const DiskFolder folder;
    const std::string text = errorsText(kManyLines);
    const std::string path = writeFile(folder, "many", text);
    std::vector<Figure> figures;
    for (const int lists : {1, 4}) {
        Measured many(path, lists);
        const CountedMemory memory;
        many.expand();
        figures.push_back(
            {"expand.peak_memory_of_1M_lines_against_the_file." + std::to_string(lists) + "_lists",
             static_cast<double>(memory.peak()) / 1e6, "MB", static_cast<double>(text.size()) / 1e6, 4});
    }
    return figures;
}

// While only hidden lines come nothing but this question lets the user stop.
std::vector<Figure> measureSilence() {
    constexpr double kUserNotices = 100;
    const DiskFolder folder;
    Measured many(writeFile(folder, "hidden", errorsText(1'000) + hiddenErrorsText(kManyLines)), 1);
    const Pair pair = medians(
        kRounds,
        [&] {
            many.log.pump().watch();
            many.expand();
            many.log.collapse();
            return many.log.pump().longestSilence() * 1e3;
        },
        [] { return kUserNotices; });
    return {{"expand.longest_silence_in_1M_hidden_lines", pair.value, "ms", pair.peer, 1}};
}

const Registration againstPlain("expand.plain", measureAgainstPlain);
const Registration growth("expand.growth", measureGrowth);
const Registration memory("expand.memory", measureMemory);
const Registration silence("expand.silence", measureSilence);

} // namespace
} // namespace cvlog::bench
