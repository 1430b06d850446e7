#include "store/dao_database.h"

#include "automation/error.h"
#include "base/failure.h"
#include "store/dao_recordset.h"
#include "store/engine_error.h"

namespace cvlog::store {

using automation::ObjectRef;
using automation::Value;

namespace {

constexpr std::int32_t kOpenForwardOnly = 8;
// A statement that fails half-way is taken back; without it the rows that fail are left out silently.
constexpr std::int32_t kFailOnError = 128;

// A statement must not be cut at a NUL on its way: what is left could delete everything.
void requireWhole(std::u16string_view sql) {
    if (sql.find(u'\0') != std::u16string_view::npos)
        fail(EngineError::Syntax, u"A statement cannot hold a NUL character.");
}

} // namespace

ObjectRef objectOf(const Value& value) {
    ObjectRef object = automation::toObject(value);
    if (!object) throw automation::AutomationError(automation::code::kObjectRequired, u"Object required");
    return object;
}

DaoDatabase::DaoDatabase(ObjectRef database) : database_(std::move(database)) {}

DaoDatabase::~DaoDatabase() {
    for (const auto& weak : rowSets_)
        if (const auto rows = weak.lock()) base::ignoring([&] { rows->close(); });
}

void DaoDatabase::execute(std::u16string_view sql) {
    requireWhole(sql);
    database_->invoke(u"Execute", sql, kFailOnError);
}

std::shared_ptr<Recordset> DaoDatabase::openSnapshot(std::u16string_view sql) {
    requireWhole(sql);
    return keep(objectOf(database_->invoke(u"OpenRecordset", sql, kOpenForwardOnly)));
}

// Without a type, which makes it table-type for a table of the file; one that is linked in has to be another.
std::shared_ptr<Recordset> DaoDatabase::openTable(std::u16string_view table) {
    return keep(objectOf(database_->invoke(u"OpenRecordset", table)));
}

void DaoDatabase::requireColumn(std::u16string_view table, std::u16string_view column) {
    definitionOf(table, column);
}

bool DaoDatabase::allowsZeroLength(std::u16string_view table, std::u16string_view column) {
    return automation::toBoolean(definitionOf(table, column)->get(u"AllowZeroLength"));
}

void DaoDatabase::allowZeroLength(std::u16string_view table, std::u16string_view column) {
    definitionOf(table, column)->put(u"AllowZeroLength", true);
}

void DaoDatabase::close() { database_->invoke(u"Close"); }

// DAO's collections stay as they were when first looked at; statements change them behind its back.
ObjectRef DaoDatabase::definitionOf(std::u16string_view table, std::u16string_view column) const {
    const ObjectRef tables = objectOf(database_->get(u"TableDefs"));
    tables->invoke(u"Refresh");
    const ObjectRef fields = objectOf(objectOf(tables->invoke(u"Item", table))->get(u"Fields"));
    fields->invoke(u"Refresh");
    return objectOf(fields->invoke(u"Item", column));
}

std::shared_ptr<Recordset> DaoDatabase::keep(ObjectRef rows) {
    auto kept = std::make_shared<DaoRecordset>(std::move(rows));
    std::erase_if(rowSets_, [](const auto& weak) { return weak.expired(); });
    rowSets_.push_back(kept);
    return kept;
}

} // namespace cvlog::store
