#pragma once

#include "tests/store/sqlite_files.h"

#include <memory>

namespace cvlog::store::testbed {

/// A program with the table open: it appends without closing, as a log does.
class Program {
public:
    explicit Program(std::shared_ptr<Database> database)
        : database_(std::move(database)), rows_(database_->openTable(u"LogInfo")) {}

    void append() {
        rows_->addNew();
        rows_->assign(u"LogMessage", u"m");
        rows_->update();
    }
    void append(int count) {
        for (int i = 0; i < count; ++i) append();
    }
    void execute(std::u16string_view sql) { database_->execute(sql); }
    void close() { database_->close(); }
    Database& database() { return *database_; }

private:
    std::shared_ptr<Database> database_;
    std::shared_ptr<Recordset> rows_;
};

} // namespace cvlog::store::testbed
