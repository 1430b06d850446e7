#include "store/dao_recordset.h"

#include "automation/error.h"
#include "base/failure.h"
#include "store/dao_database.h"
#include "store/engine_error.h"

#include <utility>

namespace cvlog::store {

using namespace automation;

namespace {

// What DAO would take for a value that was left out, or for an object to refer to.
Value plainValue(const Value& value) {
    if (value.is<Empty>()) return Null{};
    if (value.is<ObjectRef>() && value.as<ObjectRef>()) return plainValue(value.as<ObjectRef>()->get(u""));
    if (value.is<ObjectRef>() || value.is<Missing>() || value.is<ErrorCode>())
        fail(EngineError::Conversion, u"Data type conversion error.");
    return value;
}

} // namespace

bool DaoRecordset::atEnd() { return toBoolean(rows()->get(u"EOF")); }

void DaoRecordset::moveNext() { rows()->invoke(u"MoveNext"); }

Value DaoRecordset::value(std::u16string_view column) { return field(column)->get(u"Value"); }

void DaoRecordset::addNew() { rows()->invoke(u"AddNew"); }

void DaoRecordset::assign(std::u16string_view column, const Value& value) {
    field(column)->put(u"Value", plainValue(value));
}

// A row that DAO refuses stays begun there.
void DaoRecordset::update() {
    try {
        rows()->invoke(u"Update");
    } catch (...) {
        base::ignoring([&] { rows()->invoke(u"CancelUpdate"); });
        throw;
    }
}

void DaoRecordset::close() {
    if (const ObjectRef rows = std::exchange(rows_, nullptr)) rows->invoke(u"Close");
}

ObjectRef DaoRecordset::rows() const {
    if (!rows_) fail(EngineError::Closed, u"The row set is closed.");
    return rows_;
}

ObjectRef DaoRecordset::field(std::u16string_view column) const {
    return objectOf(objectOf(rows()->get(u"Fields"))->invoke(u"Item", column));
}

} // namespace cvlog::store
