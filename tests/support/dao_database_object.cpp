#include "tests/support/dao_objects.h"

#include "base/text.h"

#include <algorithm>

// The database of the DAO double and its definitions.

namespace cvlog::tests {

using namespace automation;

namespace {

constexpr std::int32_t kFailOnError = 128;

class DaoDatabaseObject final : public DaoObject {
public:
    DaoDatabaseObject(DaoWorld world, DaoSessionRef session)
        : DaoObject(std::move(world), "Database"), session_(std::move(session)) {}

    const DispatchTable& dispatchTable() const override;

private:
    bool isOpen() const override { return session_->isOpen(); }
    void execute(const std::u16string& sql, const Value& options);
    ObjectRef openRecordset(const std::u16string& source, const Value& type);

    DaoSessionRef session_;
};

void DaoDatabaseObject::execute(const std::u16string& sql, const Value& options) {
    if (!options.isNothing() && toInt32(options) != kFailOnError) raise(DaoError::InvalidArgument);
    session_->file().execute(sql);
    session_->noteChange();
}

ObjectRef DaoDatabaseObject::openRecordset(const std::u16string& source, const Value& type) {
    DaoFile& file = session_->file();
    const bool isTable = file.hasTable(source);
    const std::int32_t wanted = type.isNothing() ? (isTable ? 1 : 2) : toInt32(type);
    if (wanted != 1 && wanted != 2 && wanted != 4 && wanted != 8) raise(DaoError::InvalidArgument);
    if (wanted == 1 && !isTable) raise(DaoError::InvalidOperation);
    DaoFile::Result rows;
    if (isTable) {
        rows.table = &file.table(source);
        rows.rows = rows.table->rows;
        for (std::size_t i = 0; i < rows.table->columns.size(); ++i) rows.columns.push_back(i);
    } else {
        rows = file.select(source);
    }
    return makeDaoRecordset(world_, session_, std::move(rows), static_cast<DaoRowsType>(wanted));
}

const DispatchTable& DaoDatabaseObject::dispatchTable() const {
    using Self = DaoDatabaseObject;
    static const DispatchTable table = {
        readable<Self>(u"Name", 1, Type::Text, [](Self& self) { return self.session_->path(); }),
        readable<Self>(u"TableDefs", 2, Type::Object,
                       [](Self& self) { return makeDaoTables(self.world_, self.session_); }),
        method<Self>(u"Execute", 3, Type::Nothing, {{u"Query", Type::Text}, optional(u"Options", Type::Any)},
                     [](Self& self, std::span<Value> values) {
                         self.execute(values[0].as<std::u16string>(), values[1]);
                     }),
        method<Self>(u"OpenRecordset", 4, Type::Object,
                     {{u"Name", Type::Text},
                      optional(u"Type", Type::Any),
                      optional(u"Options", Type::Any),
                      optional(u"LockEdit", Type::Any)},
                     [](Self& self, std::span<Value> values) {
                         for (const Value& more : values.subspan(2))
                             if (!more.isNothing()) raise(DaoError::InvalidArgument);
                         return self.openRecordset(values[0].as<std::u16string>(), values[1]);
                     }),
        method<Self>(u"Close", 5, Type::Nothing, {},
                     [](Self& self, std::span<Value>) { self.session_->close(); }),
    };
    return table;
}

/// A column in its table's definition.
class DaoDefinedField final : public DaoObject {
public:
    DaoDefinedField(DaoWorld world, DaoSessionRef session, std::u16string table, std::u16string name)
        : DaoObject(std::move(world), "Field"), session_(std::move(session)), table_(std::move(table)),
          name_(std::move(name)) {}

    const DispatchTable& dispatchTable() const override {
        using Self = DaoDefinedField;
        static const DispatchTable members = {
            readable<Self>(u"Name", 1, Type::Text, [](Self& self) { return self.name_; }),
            readable<Self>(u"AllowZeroLength", 2, Type::Boolean,
                           [](Self& self) { return self.table().column(self.name_).zeroLength; }),
            settable<Self>(
                u"AllowZeroLength", 2, Type::Boolean,
                [](Self& self, const Value& value) { self.changed().zeroLength = value.as<bool>(); }),
            settable<Self>(u"DefaultValue", 3, Type::Text,
                           [](Self& self, const Value& value) {
                               const std::u16string text = value.as<std::u16string>();
                               DaoColumn& column = self.changed();
                               column.defaultValue = column.kept(
                                   text.starts_with(u'\'') ? text.substr(1, text.size() - 2) : text);
                           }),
        };
        return members;
    }

private:
    bool isOpen() const override { return session_->isOpen(); }
    DaoTable& table() { return session_->file().table(table_); }
    DaoColumn& changed() {
        if (table().rowSets > 0) raise(DaoError::StructureInUse);
        session_->noteChange();
        return table().column(name_);
    }

    DaoSessionRef session_;
    std::u16string table_;
    std::u16string name_;
};

/// The tables when `table` is empty, else the columns of that table.
class DaoDefinitions final : public DaoObject {
public:
    DaoDefinitions(DaoWorld world, DaoSessionRef session, std::u16string table)
        : DaoObject(std::move(world), table.empty() ? "TableDefs" : "Fields"), session_(std::move(session)),
          table_(std::move(table)) {}

    const DispatchTable& dispatchTable() const override {
        using Self = DaoDefinitions;
        static const DispatchTable members = {
            indexed<Self>(u"Item", 0, Type::Object, {{u"Index", Type::Any}},
                          [](Self& self, std::span<Value> values) { return self.item(values[0]); }),
            readable<Self>(u"Count", 1, Type::Int32,
                           [](Self& self) { return static_cast<std::int32_t>(self.names().size()); }),
            method<Self>(u"Refresh", 2, Type::Nothing, {},
                         [](Self& self, std::span<Value>) { self.session_->refresh(); }),
        };
        return members;
    }

private:
    bool isOpen() const override { return session_->isOpen(); }
    std::vector<std::u16string> names() const;
    ObjectRef item(const Value& index) const;

    DaoSessionRef session_;
    std::u16string table_;
};

class DaoTableObject final : public DaoObject {
public:
    DaoTableObject(DaoWorld world, DaoSessionRef session, std::u16string name)
        : DaoObject(std::move(world), "TableDef"), session_(std::move(session)), name_(std::move(name)) {}

    const DispatchTable& dispatchTable() const override {
        using Self = DaoTableObject;
        static const DispatchTable members = {
            readable<Self>(u"Name", 1, Type::Text, [](Self& self) { return self.name_; }),
            readable<Self>(u"Fields", 2, Type::Object,
                           [](Self& self) -> ObjectRef {
                               return std::make_shared<DaoDefinitions>(self.world_, self.session_,
                                                                       self.name_);
                           }),
        };
        return members;
    }

private:
    bool isOpen() const override { return session_->isOpen(); }

    DaoSessionRef session_;
    std::u16string name_;
};

std::vector<std::u16string> DaoDefinitions::names() const {
    std::vector<std::u16string> names;
    for (const DaoDefinition& definition : session_->definitions()) {
        if (table_.empty())
            names.push_back(definition.table);
        else if (base::equalsIgnoringCase(definition.table, table_))
            names = definition.columns;
    }
    return names;
}

ObjectRef DaoDefinitions::item(const Value& index) const {
    const std::vector<std::u16string> all = names();
    const std::u16string& name = all[daoIndexOf(index, all)];
    if (table_.empty()) return std::make_shared<DaoTableObject>(world_, session_, name);
    return std::make_shared<DaoDefinedField>(world_, session_, table_, name);
}

} // namespace

ObjectRef makeDaoDatabase(DaoWorld world, std::u16string path) {
    auto session = std::make_shared<DaoSession>(world, std::move(path));
    return std::make_shared<DaoDatabaseObject>(std::move(world), std::move(session));
}

ObjectRef makeDaoTables(DaoWorld world, DaoSessionRef session) {
    return std::make_shared<DaoDefinitions>(std::move(world), std::move(session), u"");
}

DaoSession::DaoSession(DaoWorld world, std::u16string path)
    : world_(std::move(world)), path_(std::move(path)), file_(&world_->content.at(path_)),
      crashesBefore_(world_->crashes) {
    ++world_->openDatabases;
}

void DaoSession::noteChange() const {
    if (world_->writesAtOnce) file_->flush();
}

const std::vector<DaoDefinition>& DaoSession::definitions() {
    if (definitions_) return *definitions_;
    definitions_.emplace();
    for (const DaoTable& table : file_->tables()) {
        DaoDefinition& definition = definitions_->emplace_back(DaoDefinition{table.name, {}});
        for (const DaoColumn& column : table.columns) definition.columns.push_back(column.name);
    }
    for (const char16_t* system : {u"MSysACEs", u"MSysObjects", u"MSysQueries", u"MSysRelationships"})
        definitions_->push_back({system, {u"Id"}});
    return *definitions_;
}

} // namespace cvlog::tests
