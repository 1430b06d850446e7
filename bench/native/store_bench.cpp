// What one record costs, from its composition to its commit, beside the database library without anything between;
// all files are on the disk.

#include "bench/harness.h"
#include "bench/native/store_log.h"
#include "bench/native/store_syncs.h"

#include <string>

namespace cvlog::bench {
namespace {

constexpr int kFew = 1'000;
constexpr int kMany = 1'000'000;
// Both sides take turns this often, in short turns: what else the machine does then meets both alike.
constexpr int kShortRounds = 45;

// What a project's file looks like before a log has been opened on it, and what its figures are called.
struct Table {
    const char* name;
    const char* columns;
};

constexpr Table kModern = {"",
                           "RecordNum integer primary key autoincrement, MethodName text, ObjectName text, "
                           "ObjectType text, LogMessage text, ReturnMessage integer, Errors text"};
// Made by other tools; opening it adds what is missing.
constexpr Table kUpgraded = {".upgraded_table", "MethodName text, ObjectName text, ObjectType text, "
                                                "LogMessage text, ReturnMessage integer"};
// Opening keeps such a table's key and numbers its records besides.
constexpr Table kUpgradedWithKey = {".upgraded_table_with_a_key",
                                    "Id integer primary key, MethodName text, ObjectName text, "
                                    "ObjectType text, LogMessage text, ReturnMessage integer"};

constexpr const char* kOneAdd = "records.one_add_against_a_prepared_insert";
constexpr const char* kJournalWithFullSync = "pragma journal_mode = delete; pragma synchronous = full";

std::string makeFile(const DiskFolder& folder, const std::string& name, const Table& table, int rows) {
    const std::string path = folder.file(name + table.name);
    {
        BareDatabase database(path);
        database.run("create table LogInfo (" + std::string(table.columns) + ")");
        database.fill(rows);
    }
    StoredLog upgraded(path);
    return path;
}

double microseconds(int records, const std::function<void()>& action) {
    return seconds(action) * 1e6 / records;
}

/// A log that writes and the file it writes to.
class MeasuredLog {
public:
    MeasuredLog(const DiskFolder& folder, const std::string& name, const Table& table, int rows)
        : path_(makeFile(folder, name, table, rows)), log_(path_), rows_(rows) {}

    double microsecondsPerRecord(int records) {
        rows_ += records;
        return microseconds(records, [&] { log_.write(records); });
    }
    StoredLog& log() { return log_; }
    /// The log loses records silently; a measurement must not.
    void requireAll() const { BareDatabase(path_).requireCount(rows_); }

private:
    std::string path_;
    StoredLog log_;
    int rows_;
};

Figure againstPreparedInsert(const Table& table) {
    constexpr int kRecords = 1'000;
    const DiskFolder folder;
    MeasuredLog measured(folder, "log", table, kFew);
    BareDatabase bare(makeFile(folder, "bare", table, kFew));
    bare.run(kJournalOfTheLog);
    const Pair pair = medians(
        kShortRounds, [&] { return measured.microsecondsPerRecord(kRecords); },
        [&] { return microseconds(kRecords, [&] { bare.insertRecords(kRecords); }); });
    measured.requireAll();
    return {std::string(kOneAdd) + table.name, pair.value, "us", pair.peer, 1.2};
}

Figure againstFullSync() {
    const DiskFolder folder;
    MeasuredLog measured(folder, "log", kModern, kFew);
    BareDatabase bare(makeFile(folder, "bare", kModern, kFew));
    bare.run(kJournalWithFullSync);
    const Pair pair = medians(
        5, [&] { return measured.microsecondsPerRecord(4'000); },
        [&] { return microseconds(200, [&] { bare.insertRecords(200); }); });
    measured.requireAll();
    return {"records.against_a_full_sync_insert", pair.value, "us", pair.peer, 0.05};
}

std::vector<Figure> measureFullSync() { return {againstFullSync()}; }

std::vector<Figure> measureSyncs() {
    constexpr int kRecords = 20'000;
    const DiskFolder folder;
    const CountedSyncs syncs;
    MeasuredLog measured(folder, "log", kUpgraded, kFew);
    const std::int64_t before = syncs.count();
    measured.microsecondsPerRecord(kRecords);
    const double perRecord = static_cast<double>(syncs.count() - before) / kRecords;
    measured.requireAll();
    return {{"records.syncs_a_record", perRecord, "sync", 0.01, 1}};
}

// A file of many records: what one more costs, and what an opening costs.
std::vector<Figure> measureManyRecords() {
    std::vector<Figure> figures;
    for (const Table& table : {kUpgraded, kUpgradedWithKey}) {
        constexpr int kRecords = 1'000;
        const DiskFolder folder;
        MeasuredLog many(folder, "many", table, kMany);
        MeasuredLog few(folder, "few", table, kFew);
        const Pair pair = medians(
            kShortRounds, [&] { return many.microsecondsPerRecord(kRecords); },
            [&] { return few.microsecondsPerRecord(kRecords); });
        many.requireAll();
        figures.push_back(
            {std::string("records.one_add_at_1M_records") + table.name, pair.value, "us", pair.peer, 1.2});
        const double query =
            medians(
                11, [&] { return seconds([&] { many.log().highestNumber(); }) * 1e3; }, [] { return 1.0; })
                .value;
        figures.push_back(
            {std::string("records.highest_number_at_1M_records") + table.name, query, "ms", 0.2, 1});
    }
    return figures;
}

Registration measureOneAdd(const Table& table) {
    return {std::string(kOneAdd) + table.name, [&] { return std::vector{againstPreparedInsert(table)}; }};
}

const Registration oneAdd = measureOneAdd(kModern);
const Registration oneAddUpgraded = measureOneAdd(kUpgraded);
const Registration oneAddUpgradedWithKey = measureOneAdd(kUpgradedWithKey);
const Registration fullSync("records.against_a_full_sync_insert", measureFullSync);
const Registration syncs("records.syncs_a_record", measureSyncs);
const Registration manyRecords("records.one_add_at_1M_records and records.highest_number_at_1M_records",
                               measureManyRecords);

} // namespace
} // namespace cvlog::bench
