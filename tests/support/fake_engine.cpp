#include "tests/support/fake_engine.h"

#include "base/text.h"
#include "store/engine_error.h"
#include "tests/support/script_object.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace cvlog::tests {

using automation::Value;
using store::EngineError;
using store::fail;

namespace {

std::vector<std::u16string> words(std::u16string_view text) {
    std::vector<std::u16string> result;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(u' ', at), text.size());
        if (end > at) result.emplace_back(text.substr(at, end - at));
        at = end + 1;
    }
    return result;
}

FakeColumn parseColumn(const std::u16string& name, const std::u16string& type) {
    if (type == u"Counter") return {name, FakeColumn::Kind::Counter, 0, true};
    if (!type.starts_with(u"Text(") || !type.ends_with(u")"))
        fail(EngineError::Syntax, u"unknown type " + type);
    const auto length = automation::toInt32(Value(type.substr(5, type.size() - 6)));
    return {name, FakeColumn::Kind::Text, static_cast<std::size_t>(length), false};
}

void addColumn(FakeTable& table, FakeColumn column) {
    if (table.column(column.name)) fail(EngineError::Failed, u"the column is there already");
    for (FakeRecord& record : table.records)
        record[column.name] =
            column.kind == FakeColumn::Kind::Counter ? Value(++table.lastNumber) : Value(automation::Null{});
    table.columns.push_back(std::move(column));
}

FakeTable& tableOf(FakeFile& file, std::u16string_view name) {
    const auto found = file.find(std::u16string(name));
    if (found == file.end()) fail(EngineError::TableNotFound, u"no table " + std::u16string(name));
    return found->second;
}

FakeColumn& columnOf(FakeTable& table, std::u16string_view name) {
    if (FakeColumn* column = table.column(name)) return *column;
    fail(EngineError::ItemNotFound, u"no column " + std::u16string(name));
}

void checkValue(const FakeColumn& column, const Value& value) {
    if (column.kind == FakeColumn::Kind::Counter)
        fail(EngineError::ColumnNotUpdatable, u"the engine numbers the records");
    if (column.kind == FakeColumn::Kind::Number) automation::toInt32(value);
    if (column.kind != FakeColumn::Kind::Text) return;
    const std::u16string text = automation::toText(value);
    if (text.size() > column.length) fail(EngineError::ValueTooLong, u"the value is too long");
    if (text.empty() && !column.zeroLength) fail(EngineError::ZeroLength, u"the value is empty");
}

bool isHistoryQuery(const std::vector<std::u16string>& word) {
    return word.size() == 11 && word[0] == u"select" && word[1] == u"*" && word[3] == u"LogInfo" &&
           word[5] == u"RecordNum" && word[6] == u">" && word[8] == u"order" && word[10] == u"RecordNum";
}

// "delete from LogInfo", with or without "where RecordNum = n" or "<= n".
bool deleteRecords(FakeFile& file, const std::vector<std::u16string>& word) {
    const bool all = word.size() == 3;
    const bool some = word.size() == 7 && word[3] == u"where" && word[4] == u"RecordNum" &&
                      (word[5] == u"=" || word[5] == u"<=");
    if ((!all && !some) || word[0] != u"delete" || word[1] != u"from") return false;
    std::erase_if(tableOf(file, word[2]).records, [&](const FakeRecord& record) {
        const std::int32_t number = automation::toInt32(record.at(u"RecordNum"));
        if (all) return true;
        const std::int32_t given = automation::toInt32(Value(word[6]));
        return word[5] == u"=" ? number == given : number <= given;
    });
    return true;
}

class FakeRecordset : public store::Recordset {
public:
    FakeRecordset(FakeEngine& engine, CallCounter& calls, FakeTable* table, std::vector<FakeRecord> rows)
        : engine_(engine), calls_(calls), table_(table), rows_(std::move(rows)) {
        ++engine_.openRecordsets;
    }
    ~FakeRecordset() override { release(); }

    bool atEnd() override {
        enter("atEnd");
        return next_ >= rows_.size();
    }
    void moveNext() override {
        enter("moveNext");
        ++next_;
    }
    Value value(std::u16string_view column) override {
        enter("value(" + base::toUtf8(column) + ")");
        if (next_ >= rows_.size()) fail(EngineError::NoCurrentRecord, u"no current record");
        return rows_[next_][std::u16string(column)];
    }
    void addNew() override {
        enter("addNew");
        requireTable();
        edit_.emplace();
        for (const FakeColumn& column : table_->columns) (*edit_)[column.name] = automation::Null{};
    }
    void assign(std::u16string_view column, const Value& value) override {
        enter("assign(" + base::toUtf8(column) + ")");
        requireEdit();
        const FakeColumn& target = columnOf(*table_, column);
        checkValue(target, value);
        (*edit_)[target.name] = value;
    }
    void update() override {
        std::optional<FakeRecord> finished = std::exchange(edit_, std::nullopt); // a failure drops the row
        enter("update");
        if (!finished) fail(EngineError::UpdateWithoutAddNew, u"no new record");
        for (const FakeColumn& column : table_->columns)
            if (column.kind == FakeColumn::Kind::Counter) (*finished)[column.name] = ++table_->lastNumber;
        table_->records.push_back(std::move(*finished));
    }
    void close() override {
        enter("close");
        release();
    }

private:
    void enter(const std::string& call) {
        calls_.call("Recordset." + call);
        if (!open_) fail(EngineError::Closed, u"the record set is closed");
    }
    void requireTable() const {
        if (!table_) fail(EngineError::ReadOnly, u"a snapshot takes no records");
    }
    void requireEdit() const {
        if (!edit_) fail(EngineError::UpdateWithoutAddNew, u"no new record");
    }
    void release() {
        if (std::exchange(open_, false)) --engine_.openRecordsets;
    }

    FakeEngine& engine_;
    CallCounter& calls_;
    FakeTable* table_;
    std::vector<FakeRecord> rows_;
    std::size_t next_ = 0;
    std::optional<FakeRecord> edit_;
    bool open_ = true;
};

class FakeDatabase : public store::Database, public std::enable_shared_from_this<FakeDatabase> {
public:
    FakeDatabase(FakeEngine& engine, CallCounter& calls, FakeFile& file)
        : engine_(engine), calls_(calls), file_(file) {
        ++engine_.openDatabases;
    }
    ~FakeDatabase() override { release(); }

    void execute(std::u16string_view sql) override {
        enter("execute(" + base::toUtf8(sql) + ")");
        const auto word = words(sql);
        if (deleteRecords(file_, word)) return;
        if (word.size() != 7 || word[0] != u"alter" || word[1] != u"table" || word[3] != u"add" ||
            word[4] != u"column")
            fail(EngineError::Syntax, u"unexpected statement");
        addColumn(tableOf(file_, word[2]), parseColumn(word[5], word[6]));
    }
    std::shared_ptr<store::Recordset> openSnapshot(std::u16string_view sql) override {
        enter("openSnapshot(" + base::toUtf8(sql) + ")");
        const auto word = words(sql);
        FakeTable& table = tableOf(file_, u"LogInfo");
        if (isHistoryQuery(word)) return openHistory(table, automation::toInt32(Value(word[7])));
        if (sql != u"Select RecordNum From LogInfo order by RecordNum desc")
            fail(EngineError::Syntax, u"unexpected query");
        columnOf(table, u"RecordNum");
        std::vector<FakeRecord> rows = table.records;
        std::stable_sort(rows.begin(), rows.end(), [](const FakeRecord& left, const FakeRecord& right) {
            return automation::toInt32(left.at(u"RecordNum")) > automation::toInt32(right.at(u"RecordNum"));
        });
        return std::make_shared<FakeRecordset>(engine_, calls_, nullptr, std::move(rows));
    }
    std::shared_ptr<store::Recordset> openTable(std::u16string_view table) override {
        enter("openTable(" + base::toUtf8(table) + ")");
        return std::make_shared<FakeRecordset>(engine_, calls_, &tableOf(file_, table),
                                               std::vector<FakeRecord>());
    }
    void requireColumn(std::u16string_view table, std::u16string_view column) override {
        enter("requireColumn(" + base::toUtf8(column) + ")");
        columnOf(tableOf(file_, table), column);
    }
    bool allowsZeroLength(std::u16string_view table, std::u16string_view column) override {
        enter("allowsZeroLength(" + base::toUtf8(column) + ")");
        return columnOf(tableOf(file_, table), column).zeroLength;
    }
    void allowZeroLength(std::u16string_view table, std::u16string_view column) override {
        enter("allowZeroLength(" + base::toUtf8(column) + ")");
        columnOf(tableOf(file_, table), column).zeroLength = true;
    }
    automation::ObjectRef automationObject() override {
        if (!object_) {
            object_ = std::make_shared<ScriptObject>("DatabaseObject", calls_);
            object_->on(u"Close", [own = weak_from_this()](std::span<Value>) {
                if (const auto database = own.lock()) database->release();
                return Value();
            });
        }
        return object_;
    }
    void close() override {
        enter("close");
        release();
    }

private:
    std::shared_ptr<store::Recordset> openHistory(const FakeTable& table, std::int32_t after) {
        std::vector<FakeRecord> rows;
        for (const FakeRecord& record : table.records)
            if (automation::toInt32(record.at(u"RecordNum")) > after) rows.push_back(record);
        std::stable_sort(rows.begin(), rows.end(), [](const FakeRecord& left, const FakeRecord& right) {
            return automation::toInt32(left.at(u"RecordNum")) < automation::toInt32(right.at(u"RecordNum"));
        });
        return std::make_shared<FakeRecordset>(engine_, calls_, nullptr, std::move(rows));
    }
    void enter(const std::string& call) {
        calls_.call("Database." + call);
        if (!open_) fail(EngineError::Closed, u"the database is closed");
    }
    void release() {
        if (std::exchange(open_, false)) --engine_.openDatabases;
    }

    FakeEngine& engine_;
    CallCounter& calls_;
    FakeFile& file_;
    std::shared_ptr<ScriptObject> object_;
    bool open_ = true;
};

} // namespace

FakeColumn* FakeTable::column(std::u16string_view name) {
    const auto found = std::find_if(columns.begin(), columns.end(), [name](const FakeColumn& column) {
        return base::equalsIgnoringCase(column.name, name);
    });
    return found == columns.end() ? nullptr : &*found;
}

std::shared_ptr<store::Database> FakeEngine::open(std::u16string_view path) {
    calls_.call("Engine.open(" + base::toUtf8(path) + ")");
    const auto found = files_.find(std::u16string(path));
    if (found == files_.end()) fail(EngineError::FileNotFound, u"no such file");
    return std::make_shared<FakeDatabase>(*this, calls_, found->second);
}

FakeFile& FakeEngine::addLogFile(std::u16string_view path, Schema schema) {
    FakeFile& file = files_[std::u16string(path)];
    file.clear();
    if (schema == Schema::NoTable) return file;
    FakeTable& table = file[u"LogInfo"];
    if (schema != Schema::Old) table.columns.push_back({u"RecordNum", FakeColumn::Kind::Counter, 0, true});
    for (const char16_t* name : {u"MethodName", u"ObjectName", u"ObjectType"})
        table.columns.push_back({name});
    table.columns.push_back({u"LogMessage", FakeColumn::Kind::Text, 65536, true});
    table.columns.push_back({u"ReturnMessage", FakeColumn::Kind::Number, 0, true});
    if (schema != Schema::Old && schema != Schema::NoErrors)
        table.columns.push_back({u"Errors", FakeColumn::Kind::Text, 254, schema == Schema::Modern});
    return file;
}

FakeFile& FakeEngine::file(std::u16string_view path) { return files_.at(std::u16string(path)); }

std::vector<FakeRecord>& FakeEngine::records(std::u16string_view path) {
    return file(path).at(u"LogInfo").records;
}

} // namespace cvlog::tests
