#include "bench/native/store_log.h"

#include "automation/error.h"
#include "base/failure.h"
#include "base/text.h"
#include "store/sqlite_engine.h"

#include <span>
#include <vector>

namespace cvlog::bench {

namespace {

using automation::Value;

/// Answers each member with a value, whatever the arguments.
class FixedObject final : public automation::Object {
public:
    using Members = std::vector<std::pair<std::u16string_view, Value>>;

    explicit FixedObject(Members members) : members_(std::move(members)) {}

    Value call(std::u16string_view member, std::span<Value>) override { return get(member); }
    Value get(std::u16string_view member) override {
        for (const auto& [name, value] : members_)
            if (name == member) return value;
        throw automation::AutomationError(automation::code::kUnknownName, u"Unknown name");
    }
    void put(std::u16string_view, const Value&) override {}

private:
    Members members_;
};

automation::ObjectRef object(FixedObject::Members members) {
    return std::make_shared<FixedObject>(std::move(members));
}

automation::ObjectRef makeWorkspace() {
    const auto composite = object({{u"Value", 6}});
    const auto erd = object({{u"EntityFlags", composite}});
    const auto repository = object({{u"ERD", erd}});
    return object({{u"Repository", repository}, {u"TranslateReturnCode", u"Errors found"}});
}

store::Record makeRecord() {
    const auto type =
        object({{u"ID", 1}, {u"DisplayName", u"Program"}, {u"KeyName", base::fromUtf8(kWrittenType)}});
    const auto program = object({{u"DisplayName", u"Payroll program"},
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
