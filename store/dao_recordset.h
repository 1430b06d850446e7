#pragma once

#include "store/engine.h"

namespace cvlog::store {

/// A row set of DAO's. DAO's errors reach the caller as they are.
class DaoRecordset final : public Recordset {
public:
    explicit DaoRecordset(automation::ObjectRef rows) : rows_(std::move(rows)) {}

    bool atEnd() override;
    void moveNext() override;
    automation::Value value(std::u16string_view column) override;
    void addNew() override;
    void assign(std::u16string_view column, const automation::Value& value) override;
    void update() override;
    /// A second time nothing happens.
    void close() override;

private:
    automation::ObjectRef rows() const;
    automation::ObjectRef field(std::u16string_view column) const;

    automation::ObjectRef rows_; // null once closed
};

} // namespace cvlog::store
