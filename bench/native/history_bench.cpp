// What a history costs: reading all records back, deleting many of them, clearing the log. All files are on the disk.

#include "bench/harness.h"
#include "bench/native/counted_memory.h"
#include "bench/native/store_log.h"
#include "store/frm_log_history.h"
#include "store/history_commands.h"

#include <sqlite3.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>

namespace cvlog::bench {
namespace {

constexpr int kFew = 10'000;
constexpr int kMany = 1'000'000;

constexpr const char* kTable =
    "create table LogInfo (RecordNum integer primary key autoincrement, MethodName text, "
    "ObjectName text, ObjectType text, LogMessage text, ReturnMessage integer, "
    "Errors Text(254))";

// Records as a log of many objects holds them; no two messages are alike, some are not ASCII.
std::string insertRecords(int count) {
    return "with recursive numbers (n) as (select 1 union all select n + 1 from numbers where n < " +
           std::to_string(count) +
           ") insert into LogInfo (MethodName, ObjectName, ObjectType, LogMessage, ReturnMessage, Errors) "
           "select 'Compile', 'PAYROLL' || (n % 5000), iif(n % 3, 'PROG', 'TABLE'), "
           "datetime('2026-01-02', n || ' seconds') || ' Compile applied to Payroll ' || "
           "iif(n % 16, 'program ', 'pr\xC3\xBC"
           "fung ') || (n % 5000) || ' (Program) - Errors found. "
           "conversion to ''int'' from ''long int'' may change the value, line ' || n, n % 5 - 1, "
           "'payroll' || (n % 5000) || '.errors' from numbers";
}

/// A closed file of so many records, with nothing left beside it.
std::string makeFile(const DiskFolder& folder, int records) {
    const std::string path = folder.file("history" + std::to_string(records));
    {
        BareDatabase database(path);
        database.run(kTable);
        database.run(insertRecords(records));
    }
    StoredLog opened(path);
    return path;
}

std::string copyOf(const DiskFolder& folder, const std::string& path, const char* name) {
    std::filesystem::path copy = folder.file(name);
    for (const char* end : {"-wal", "-shm"}) std::filesystem::remove(copy.string() + end);
    std::filesystem::copy_file(path, copy, std::filesystem::copy_options::overwrite_existing);
    return copy.string();
}

/// A log whose history the user opens.
class HistoryLog {
public:
    explicit HistoryLog(const std::string& path) : log_(path) { log_.platform().peers.mirrored = false; }

    /// Seconds from the command until the window is shown; then the user acts in it.
    double open(const std::function<void(store::FrmLogHistory&)>& user = {}) {
        const auto start = std::chrono::steady_clock::now();
        double taken = 0;
        log_.platform().peers.forms.whileModal = [&](platform::headless::HeadlessFormPeer&) {
            taken = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
            const auto window = log_.globals().store.frmLogHistory;
            if (user) user(*window);
            window->unload();
        };
        store::ShowHistory(log_.globals());
        return taken;
    }
    core::Globals& globals() { return log_.globals(); }

private:
    StoredLog log_;
};

void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "The history is wrong: %s\n", what);
    std::exit(2);
}

void requireRows(store::FrmLogHistory& window, int records) {
    require(window.lvHistory()->rowCount() == records + 1, "records are missing"); // and the separator
}

double secondsToOpen(HistoryLog& log, int records) {
    return log.open([&](store::FrmLogHistory& window) { requireRows(window, records); });
}

// What the command-line program takes to read the same rows.
double secondsOfCommandLine(const std::string& path) {
    const std::string command =
        "sqlite3 '" + path + "' 'select * from LogInfo order by RecordNum' </dev/null >/dev/null";
    return seconds([&] { require(std::system(command.c_str()) == 0, "sqlite3 cannot read it"); });
}

std::vector<Figure> measureOpening() {
    const DiskFolder folder;
    const std::string many = makeFile(folder, kMany);
    HistoryLog manyLog(many);
    const Pair against = medians(
        7, [&] { return secondsToOpen(manyLog, kMany); }, [&] { return secondsOfCommandLine(many); });
    HistoryLog fewLog(makeFile(folder, kFew));
    const Pair growth = medians(
        7, [&] { return secondsToOpen(manyLog, kMany) / kMany; },
        [&] {
            constexpr int kRepeats = 20;
            double sum = 0;
            for (int i = 0; i < kRepeats; ++i) sum += secondsToOpen(fewLog, kFew);
            return sum / kRepeats / kFew;
        });
    return {{"history.opening_1M_records_against_the_command_line", against.value * 1e3, "ms",
             against.peer * 1e3, 1},
            {"history.opening_record_cost_at_1M_records_against_10k", growth.value * 1e9, "ns",
             growth.peer * 1e9, 1.3}};
}

// No message runs while a history loads, so that this is how long input waits.
std::vector<Figure> measureWaiting() {
    constexpr int kUsual = 100'000;
    const DiskFolder folder;
    HistoryLog log(makeFile(folder, kUsual));
    const Pair pair = medians(
        11, [&] { return secondsToOpen(log, kUsual); }, [] { return 0.1; });
    return {{"history.opening_100k_records", pair.value * 1e3, "ms", pair.peer * 1e3, 1}};
}

// Both what operator new gave and what the database library took, beside the characters of the shown and kept texts.
std::vector<Figure> measureMemory() {
    const DiskFolder folder;
    const std::string path = makeFile(folder, kMany);
    const double textBytes =
        2.0 * static_cast<double>(BareDatabase(path).number(
                  "select sum(length(LogMessage) + length(ObjectType) + length(ObjectName) + length(Errors)) "
                  "from LogInfo"));
    HistoryLog log(path);
    const auto before = static_cast<double>(sqlite3_memory_used());
    const CountedMemory memory;
    sqlite3_memory_highwater(1);
    secondsToOpen(log, kMany);
    const double peak =
        static_cast<double>(memory.peak()) + static_cast<double>(sqlite3_memory_highwater(0)) - before;
    return {{"history.peak_memory_of_opening_1M_records_against_their_texts", peak / 1e6, "MB",
             textBytes / 1e6, 2}};
}

// Every tenth of the records, from the last to the first, each record a statement and a transaction of its own.
double secondsToDeleteATenth(const DiskFolder& folder, const std::string& path, int records) {
    const std::string copy = copyOf(folder, path, "deleted");
    double taken = 0;
    {
        HistoryLog log(copy);
        log.open([&](store::FrmLogHistory& window) {
            for (int row = 10; row <= records; row += 10) window.lvHistory()->select(row, true);
            taken = seconds([&] { store::DeleteHistoryRecords(log.globals(), window); });
            requireRows(window, records - records / 10);
        });
    }
    BareDatabase(copy).requireCount(records - records / 10);
    return taken;
}

double secondsOfBareDeletion(const DiskFolder& folder, const std::string& path, int records) {
    BareDatabase bare(copyOf(folder, path, "bare"));
    bare.run(kJournalOfTheLog);
    return seconds([&] {
        for (int number = records; number >= 10; number -= 10)
            bare.run("delete from LogInfo where RecordNum = " + std::to_string(number));
    });
}

std::vector<Figure> measureDeletion() {
    const DiskFolder folder;
    const std::string many = makeFile(folder, kMany);
    const Pair against = medians(
        3, [&] { return secondsToDeleteATenth(folder, many, kMany); },
        [&] { return secondsOfBareDeletion(folder, many, kMany); });
    const std::string few = makeFile(folder, kFew);
    const auto each = [&](const std::string& path, int records) {
        return secondsToDeleteATenth(folder, path, records) / (records / 10);
    };
    const Pair growth = medians(
        3, [&] { return each(many, kMany); }, [&] { return each(few, kFew); });
    return {{"history.delete_100k_of_1M_records_against_bare_statements", against.value * 1e3, "ms",
             against.peer * 1e3, 2},
            {"history.delete_record_cost_at_1M_records_against_10k", growth.value * 1e6, "us",
             growth.peer * 1e6, 1.3}};
}

std::vector<Figure> measureClear() {
    const DiskFolder folder;
    const std::string path = makeFile(folder, kMany);
    const Pair pair = medians(
        5,
        [&] {
            HistoryLog log(copyOf(folder, path, "cleared"));
            double taken = 0;
            log.open([&](store::FrmLogHistory& window) {
                taken = seconds([&] { store::ClearLogHistory(log.globals(), window); });
                requireRows(window, 0);
            });
            return taken;
        },
        [] { return 1.0; });
    return {{"history.clear_1M_records", pair.value * 1e3, "ms", pair.peer * 1e3, 1}};
}

const Registration opening("history.opening", measureOpening);
const Registration waiting("history.opening_100k_records", measureWaiting);
const Registration memory("history.peak_memory", measureMemory);
const Registration deletion("history.delete", measureDeletion);
const Registration clearing("history.clear", measureClear);

} // namespace
} // namespace cvlog::bench
