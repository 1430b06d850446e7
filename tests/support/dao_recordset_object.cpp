#include "tests/support/dao_objects.h"

#include <algorithm>

// The row sets of the DAO double.

namespace cvlog::tests {

using namespace automation;

/// A row set: a table as it is now, or a static copy of a query's rows.
class DaoRows final : public DaoObject {
public:
    DaoRows(DaoWorld world, DaoSessionRef session, DaoFile::Result result, DaoRowsType type)
        : DaoObject(std::move(world), "Recordset"), session_(std::move(session)), result_(std::move(result)),
          type_(type) {
        ++table().rowSets;
        if (type_ == DaoRowsType::Table && !table().rows.empty()) current_ = table().rows.front().id;
    }
    ~DaoRows() override { close(); }

    const DispatchTable& dispatchTable() const override;

    void close() noexcept {
        if (open_ && session_->isOpen()) --table().rowSets;
        open_ = false;
        adding_.reset();
    }
    bool isOpen() const override { return open_ && session_->isOpen(); }

    std::vector<std::u16string> names() const {
        std::vector<std::u16string> names;
        for (const std::size_t column : result_.columns) names.push_back(table().columns[column].name);
        return names;
    }
    Value value(std::size_t field) const {
        if (adding_) return adding_->values[result_.columns[field]];
        return row().values[result_.columns[field]];
    }
    void setValue(std::size_t field, const Value& value) {
        if (!adding_) raise(DaoError::UpdateWithoutAddNew);
        adding_->values[result_.columns[field]] = table().columns[result_.columns[field]].kept(value);
    }

private:
    DaoTable& table() const { return *result_.table; }
    bool atEnd() const;
    const DaoRow& row() const;
    void moveNext();
    void addNew();
    void update();
    void cancelUpdate();

    DaoSessionRef session_;
    DaoFile::Result result_;
    DaoRowsType type_;
    bool open_ = true;
    std::int64_t current_ = 0; // of a table: the row's id, 0 at the end
    std::size_t position_ = 0; // of a copy
    std::optional<DaoRow> adding_;
};

namespace {

class DaoRowField final : public DaoObject {
public:
    DaoRowField(DaoWorld world, std::shared_ptr<DaoRows> rows, std::size_t index)
        : DaoObject(std::move(world), "Field"), rows_(std::move(rows)), index_(index) {}

    const DispatchTable& dispatchTable() const override {
        using Self = DaoRowField;
        static const DispatchTable members = {
            readable<Self>(u"Value", 0, Type::Any, [](Self& self) { return self.rows_->value(self.index_); }),
            settable<Self>(u"Value", 0, Type::Any,
                           [](Self& self, const Value& value) { self.rows_->setValue(self.index_, value); }),
            readable<Self>(u"Name", 1, Type::Text,
                           [](Self& self) { return self.rows_->names()[self.index_]; }),
        };
        return members;
    }

private:
    bool isOpen() const override { return rows_->isOpen(); }

    std::shared_ptr<DaoRows> rows_;
    std::size_t index_;
};

class DaoRowFields final : public DaoObject {
public:
    DaoRowFields(DaoWorld world, std::shared_ptr<DaoRows> rows)
        : DaoObject(std::move(world), "Fields"), rows_(std::move(rows)) {}

    const DispatchTable& dispatchTable() const override {
        using Self = DaoRowFields;
        static const DispatchTable members = {
            indexed<Self>(u"Item", 0, Type::Object, {{u"Index", Type::Any}},
                          [](Self& self, std::span<Value> values) -> ObjectRef {
                              return std::make_shared<DaoRowField>(
                                  self.world_, self.rows_, daoIndexOf(values[0], self.rows_->names()));
                          }),
            readable<Self>(u"Count", 1, Type::Int32,
                           [](Self& self) { return static_cast<std::int32_t>(self.rows_->names().size()); }),
        };
        return members;
    }

private:
    bool isOpen() const override { return rows_->isOpen(); }

    std::shared_ptr<DaoRows> rows_;
};

} // namespace

const DispatchTable& DaoRows::dispatchTable() const {
    using Self = DaoRows;
    static const DispatchTable members = {
        readable<Self>(u"Fields", 1, Type::Object,
                       [](Self& self) -> ObjectRef {
                           return std::make_shared<DaoRowFields>(
                               self.world_, std::static_pointer_cast<DaoRows>(self.shared_from_this()));
                       }),
        readable<Self>(u"EOF", 2, Type::Boolean, [](Self& self) { return self.atEnd(); }),
        readable<Self>(u"EditMode", 3, Type::Int16,
                       [](Self& self) { return static_cast<std::int16_t>(self.adding_ ? 2 : 0); }),
        method<Self>(u"MoveNext", 4, Type::Nothing, {},
                     [](Self& self, std::span<Value>) { self.moveNext(); }),
        method<Self>(u"AddNew", 5, Type::Nothing, {}, [](Self& self, std::span<Value>) { self.addNew(); }),
        method<Self>(u"Update", 6, Type::Nothing,
                     {optional(u"UpdateType", Type::Any), optional(u"Force", Type::Any)},
                     [](Self& self, std::span<Value>) { self.update(); }),
        method<Self>(u"CancelUpdate", 7, Type::Nothing, {optional(u"UpdateType", Type::Any)},
                     [](Self& self, std::span<Value>) { self.cancelUpdate(); }),
        method<Self>(u"Close", 8, Type::Nothing, {}, [](Self& self, std::span<Value>) { self.close(); }),
    };
    return members;
}

bool DaoRows::atEnd() const {
    return type_ == DaoRowsType::Table ? current_ == 0 : position_ == result_.rows.size();
}

const DaoRow& DaoRows::row() const {
    if (atEnd()) raise(DaoError::NoCurrentRecord);
    if (type_ != DaoRowsType::Table) return result_.rows[position_];
    for (const DaoRow& each : table().rows)
        if (each.id == current_) return each;
    raise(DaoError::RecordDeleted);
}

void DaoRows::moveNext() {
    adding_.reset();
    if (atEnd()) raise(DaoError::NoCurrentRecord);
    ++position_;
    const auto next = std::find_if(table().rows.begin(), table().rows.end(),
                                   [&](const DaoRow& each) { return each.id > current_; });
    current_ = next == table().rows.end() ? 0 : next->id;
}

// A counter gives its number here, also to a row that never comes.
void DaoRows::addNew() {
    if (type_ == DaoRowsType::Snapshot || type_ == DaoRowsType::ForwardOnly)
        raise(DaoError::NotSupportedForObject);
    adding_.emplace();
    for (const DaoColumn& column : table().columns)
        adding_->values.push_back(column.kind == DaoColumn::Kind::Counter ? Value(++table().lastNumber)
                                                                          : column.defaultValue);
}

// A row that is refused stays begun.
void DaoRows::update() {
    if (!adding_) raise(DaoError::UpdateWithoutAddNew);
    for (std::size_t i = 0; i < table().columns.size(); ++i)
        if (table().columns[i].required && adding_->values[i].is<Null>()) raise(DaoError::ValueRequired);
    adding_->id = ++table().lastId;
    table().rows.push_back(*adding_);
    adding_.reset();
    session_->noteChange();
}

void DaoRows::cancelUpdate() {
    if (!adding_) raise(DaoError::UpdateWithoutAddNew);
    adding_.reset();
}

ObjectRef makeDaoRecordset(DaoWorld world, DaoSessionRef session, DaoFile::Result rows, DaoRowsType type) {
    auto made = std::make_shared<DaoRows>(std::move(world), session, std::move(rows), type);
    session->add(made);
    return made;
}

void DaoSession::close() {
    if (!isOpen()) return;
    for (const auto& weak : rowSets_)
        if (const auto rows = weak.lock()) rows->close();
    file_->flush();
    open_ = false;
    --world_->openDatabases;
}

} // namespace cvlog::tests
