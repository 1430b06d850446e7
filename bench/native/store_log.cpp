#include "bench/native/store_log.h"

#include "base/failure.h"
#include "base/text.h"
#include "bench/fixed_object.h"
#include "store/sqlite_engine.h"

namespace cvlog::bench {

namespace {

automation::ObjectRef makeWorkspace() {
    const auto composite = fixedObject({{u"Value", 6}});
    const auto erd = fixedObject({{u"EntityFlags", composite}});
    const auto repository = fixedObject({{u"ERD", erd}});
    return fixedObject({{u"Repository", repository}, {u"TranslateReturnCode", u"Errors found"}});
}

store::Record makeRecord() {
    const auto type =
        fixedObject({{u"ID", 1}, {u"DisplayName", u"Program"}, {u"KeyName", base::fromUtf8(kWrittenType)}});
    const auto program = fixedObject({{u"DisplayName", u"Payroll program"},
                                      {u"Property", base::fromUtf8(kWrittenObject)},
                                      {u"EntityType", type}});
    return {base::fromUtf8(kWrittenMethod), kWrittenCode, hostapi::RepositoryObject(program),
            u"conversion to 'int' from 'long int' may change the value", base::fromUtf8(kWrittenErrors)};
}

// The statements that an opening runs.
void upgrade(store::Database& database) {
    const auto has = [&](std::u16string_view column) {
        return base::ignoring([&] { database.requireColumn(u"LogInfo", column); });
    };
    if (!has(u"RecordNum")) database.execute(u"alter table LogInfo add column RecordNum Counter");
    if (!has(u"Errors")) database.execute(u"alter table LogInfo add column Errors Text(254)");
    if (!database.allowsZeroLength(u"LogInfo", u"Errors")) database.allowZeroLength(u"LogInfo", u"Errors");
}

} // namespace

StoredLog::StoredLog(const std::string& path)
    : engine_(store::makeSqliteEngine(paths_)), globals_(core::Platform::of(platform_, *engine_)),
      log_(std::make_shared<core::CVLog>(globals_)), record_(makeRecord()) {
    globals_.store.Workspace = hostapi::Workspace(makeWorkspace());
    globals_.store.LogDatabase = engine_->open(base::fromUtf8(path));
    upgrade(*globals_.store.LogDatabase);
    globals_.store.LogRecordset = globals_.store.LogDatabase->openTable(u"LogInfo");
}

void StoredLog::write(int count) {
    for (int i = 0; i < count; ++i) store::WriteRecord(globals_, *log_, record_);
}

int StoredLog::highestNumber() {
    const auto rows =
        globals_.store.LogDatabase->openSnapshot(u"Select RecordNum From LogInfo order by RecordNum desc");
    const int highest = rows->atEnd() ? 0 : automation::toInt32(rows->value(u"RecordNum"));
    rows->close();
    return highest;
}

} // namespace cvlog::bench
