#include "store/database_object.h"

#include "automation/dispatch_table.h"
#include "base/text.h"
#include "store/engine_error.h"
#include "store/object_collection.h"
#include "store/sqlite_connection.h"

namespace cvlog::store {

using namespace automation;

namespace {

using DatabaseRef = std::shared_ptr<DescribedDatabase>;
using RowsRef = std::shared_ptr<DescribedRecordset>;

constexpr std::int32_t kTableType = 1;

/// A column of a table's definition.
class TableField final : public DispatchObject {
public:
    TableField(DatabaseRef database, std::u16string table, std::u16string name)
        : database_(std::move(database)), table_(std::move(table)), name_(std::move(name)) {}

    const DispatchTable& dispatchTable() const override;

private:
    DatabaseRef database_;
    std::u16string table_;
    std::u16string name_;
};

const DispatchTable& TableField::dispatchTable() const {
    using Self = TableField;
    static const DispatchTable table = {
        {u"Name", 0, MemberKind::PropertyGet, Type::Text, {}, on<Self>([](Self& self, std::span<Value>) {
             self.database_->requireColumn(self.table_, self.name_);
             return self.name_;
         })},
        {u"AllowZeroLength",
         1,
         MemberKind::PropertyGet,
         Type::Boolean,
         {},
         on<Self>([](Self& self, std::span<Value>) {
             return self.database_->allowsZeroLength(self.table_, self.name_);
         })},
        {u"AllowZeroLength",
         1,
         MemberKind::PropertyPut,
         Type::Any,
         {{u"Allow", Type::Boolean}},
         on<Self>([](Self& self, std::span<Value> values) {
             self.database_->setZeroLength(self.table_, self.name_, values[0].as<bool>());
         })},
    };
    return table;
}

/// `Fields`: the collection, or with an index one of it.
template <class Self>
Member fieldsMember(std::shared_ptr<NamedCollection> (*fieldsOf)(Self&)) {
    return {u"Fields",
            0,
            MemberKind::PropertyGet,
            Type::Object,
            {{u"Index", Type::Any, false, true}},
            on<Self>([fieldsOf](Self& self, std::span<Value> values) {
                return itemOrCollection(fieldsOf(self), values[0]);
            })};
}

class TableDefinition final : public DispatchObject {
public:
    TableDefinition(const DatabaseRef& database, std::u16string name)
        : database_(database), name_(std::move(name)),
          fields_(std::make_shared<NamedCollection>(
              [database, table = name_] { return database->columnNames(table); },
              [database, table = name_](const std::u16string& column) -> ObjectRef {
                  return std::make_shared<TableField>(database, table, column);
              })) {}

    const DispatchTable& dispatchTable() const override;

private:
    DatabaseRef database_;
    std::u16string name_;
    std::shared_ptr<NamedCollection> fields_;
};

const DispatchTable& TableDefinition::dispatchTable() const {
    using Self = TableDefinition;
    static const DispatchTable table = {
        fieldsMember<Self>([](Self& self) { return self.fields_; }),
        {u"Name", 1, MemberKind::PropertyGet, Type::Text, {}, on<Self>([](Self& self, std::span<Value>) {
             self.database_->columnNames(self.name_); // fails when the table has gone
             return self.name_;
         })},
    };
    return table;
}

/// A column of a row set: of its current row, or of the row being added.
class RowField final : public DispatchObject {
public:
    RowField(DatabaseRef database, RowsRef rows, std::u16string name)
        : database_(std::move(database)), rows_(std::move(rows)), name_(std::move(name)) {}

    const DispatchTable& dispatchTable() const override;

private:
    std::u16string table() const {
        std::u16string name = rows_->tableName();
        if (name.empty())
            fail(EngineError::NotAvailable, u"Operation is not supported for this type of object.");
        return name;
    }

    DatabaseRef database_;
    RowsRef rows_;
    std::u16string name_;
};

const DispatchTable& RowField::dispatchTable() const {
    using Self = RowField;
    static const DispatchTable table = {
        {u"Value", 0, MemberKind::PropertyGet, Type::Any, {}, on<Self>([](Self& self, std::span<Value>) {
             return self.rows_->value(self.name_);
         })},
        {u"Value",
         0,
         MemberKind::PropertyPut,
         Type::Any,
         {{u"Value", Type::Any}},
         on<Self>([](Self& self, std::span<Value> values) { self.rows_->assign(self.name_, values[0]); })},
        {u"Name", 1, MemberKind::PropertyGet, Type::Text, {}, on<Self>([](Self& self, std::span<Value>) {
             self.rows_->columnNames(); // fails when the row set is closed
             return self.name_;
         })},
        {u"AllowZeroLength",
         2,
         MemberKind::PropertyGet,
         Type::Boolean,
         {},
         on<Self>([](Self& self, std::span<Value>) {
             return self.database_->allowsZeroLength(self.table(), self.name_);
         })},
        {u"AllowZeroLength",
         2,
         MemberKind::PropertyPut,
         Type::Any,
         {{u"Allow", Type::Boolean}},
         on<Self>([](Self& self, std::span<Value> values) {
             self.database_->setZeroLength(self.table(), self.name_, values[0].as<bool>());
         })},
    };
    return table;
}

class RecordsetObject final : public DispatchObject {
public:
    RecordsetObject(const DatabaseRef& database, RowsRef rows)
        : rows_(std::move(rows)), fields_(std::make_shared<NamedCollection>(
                                      [rows = rows_] { return rows->columnNames(); },
                                      [database, rows = rows_](const std::u16string& column) -> ObjectRef {
                                          return std::make_shared<RowField>(database, rows, column);
                                      })) {}

    const DispatchTable& dispatchTable() const override;

private:
    template <class Action>
    static auto method(Action action) {
        return on<RecordsetObject>(
            [action](RecordsetObject& self, std::span<Value>) { action(*self.rows_); });
    }

    RowsRef rows_;
    std::shared_ptr<NamedCollection> fields_;
};

const DispatchTable& RecordsetObject::dispatchTable() const {
    using Self = RecordsetObject;
    static const DispatchTable table = {
        fieldsMember<Self>([](Self& self) { return self.fields_; }),
        {u"EOF", 1, MemberKind::PropertyGet, Type::Boolean, {}, on<Self>([](Self& self, std::span<Value>) {
             return self.rows_->atEnd();
         })},
        {u"MoveNext", 2, MemberKind::Method, Type::Nothing, {}, method([](Recordset& rows) {
             rows.moveNext();
         })},
        {u"AddNew", 3, MemberKind::Method, Type::Nothing, {}, method([](Recordset& rows) { rows.addNew(); })},
        {u"Update", 4, MemberKind::Method, Type::Nothing, {}, method([](Recordset& rows) { rows.update(); })},
        {u"Close", 5, MemberKind::Method, Type::Nothing, {}, method([](Recordset& rows) { rows.close(); })},
    };
    return table;
}

class DatabaseObject final : public DispatchObject {
public:
    explicit DatabaseObject(const DatabaseRef& database)
        : database_(database),
          tables_(std::make_shared<NamedCollection>([database] { return database->tableNames(); },
                                                    [database](const std::u16string& table) -> ObjectRef {
                                                        return std::make_shared<TableDefinition>(database,
                                                                                                 table);
                                                    })) {}

    const DispatchTable& dispatchTable() const override;
    const void* identity() const noexcept override { return database_.get(); }

private:
    ObjectRef openRecordset(const std::u16string& source, const Value& type) const;

    DatabaseRef database_;
    std::shared_ptr<NamedCollection> tables_;
};

ObjectRef DatabaseObject::openRecordset(const std::u16string& source, const Value& type) const {
    const std::int32_t wanted = type.isNothing() ? 0 : toInt32(type);
    const bool isTable = database_->hasTable(source);
    if (wanted == kTableType || (wanted == 0 && isTable))
        return makeRecordsetObject(database_, database_->openDescribedTable(source));
    const std::u16string sql = isTable ? u"select * from " + quotedName(source) : source;
    return makeRecordsetObject(database_, database_->openDescribedSnapshot(sql));
}

const DispatchTable& DatabaseObject::dispatchTable() const {
    using Self = DatabaseObject;
    static const DispatchTable table = {
        {u"TableDefs",
         0,
         MemberKind::PropertyGet,
         Type::Object,
         {{u"Index", Type::Any, false, true}},
         on<Self>([](Self& self, std::span<Value> values) {
             self.database_->name(); // fails when the database is closed
             return itemOrCollection(self.tables_, values[0]);
         })},
        {u"Name", 1, MemberKind::PropertyGet, Type::Text, {}, on<Self>([](Self& self, std::span<Value>) {
             return self.database_->name();
         })},
        {u"Execute",
         2,
         MemberKind::Method,
         Type::Nothing,
         {{u"Query", Type::Text}, {u"Options", Type::Any, false, true}},
         on<Self>([](Self& self, std::span<Value> values) {
             self.database_->execute(values[0].as<std::u16string>());
         })},
        {u"OpenRecordset",
         3,
         MemberKind::Method,
         Type::Object,
         {{u"Name", Type::Text}, {u"Type", Type::Any, false, true}, {u"Options", Type::Any, false, true}},
         on<Self>([](Self& self, std::span<Value> values) {
             return self.openRecordset(values[0].as<std::u16string>(), values[1]);
         })},
        {u"Close", 4, MemberKind::Method, Type::Nothing, {}, on<Self>([](Self& self, std::span<Value>) {
             self.database_->close();
         })},
    };
    return table;
}

} // namespace

ObjectRef makeDatabaseObject(std::shared_ptr<DescribedDatabase> database) {
    return std::make_shared<DatabaseObject>(database);
}

ObjectRef makeRecordsetObject(std::shared_ptr<DescribedDatabase> database,
                              std::shared_ptr<DescribedRecordset> rows) {
    return std::make_shared<RecordsetObject>(database, std::move(rows));
}

} // namespace cvlog::store
