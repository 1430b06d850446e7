#pragma once

#include "automation/member_builders.h"
#include "tests/support/dao_double.h"

#include <optional>
#include <vector>

// The objects of the DAO double below its engine.

namespace cvlog::tests {

using DaoWorld = std::shared_ptr<DaoDouble::World>;

/// Notes each call, and refuses it when the object is closed.
class DaoObject : public automation::DispatchObject {
public:
    DaoObject(DaoWorld world, std::string name);
    ~DaoObject() override;

    automation::Value call(std::u16string_view member, std::span<automation::Value> arguments) override;
    void put(std::u16string_view member, const automation::Value& value) override;

protected:
    virtual bool isOpen() const { return true; }
    DaoWorld world_;

private:
    void enter(std::u16string_view member) const;
    std::string name_;
};

/// What the definitions of a database looked like when they were last looked at.
struct DaoDefinition {
    std::u16string table;
    std::vector<std::u16string> columns;
};

class DaoRows;

/// An open database; what was opened on it keeps it.
class DaoSession {
public:
    DaoSession(DaoWorld world, std::u16string path);
    DaoSession(const DaoSession&) = delete;
    DaoSession& operator=(const DaoSession&) = delete;
    ~DaoSession() { close(); }

    DaoFile& file() const { return *file_; }
    const std::u16string& path() const { return path_; }
    bool isOpen() const { return open_ && crashesBefore_ == world_->crashes; }
    /// Ends the row sets that are open on it.
    void close();
    void noteChange() const;
    void add(const std::shared_ptr<DaoRows>& rows) { rowSets_.push_back(rows); }

    /// Filled when first asked for.
    const std::vector<DaoDefinition>& definitions();
    void refresh() { definitions_.reset(); }

private:
    DaoWorld world_;
    std::u16string path_;
    DaoFile* file_;
    int crashesBefore_;
    bool open_ = true;
    std::optional<std::vector<DaoDefinition>> definitions_;
    std::vector<std::weak_ptr<DaoRows>> rowSets_;
};

using DaoSessionRef = std::shared_ptr<DaoSession>;

automation::ObjectRef makeDaoDatabase(DaoWorld world, std::u16string path);
automation::ObjectRef makeDaoTables(DaoWorld world, DaoSessionRef session);

enum class DaoRowsType { Table = 1, Dynaset = 2, Snapshot = 4, ForwardOnly = 8 };
automation::ObjectRef makeDaoRecordset(DaoWorld world, DaoSessionRef session, DaoFile::Result rows,
                                       DaoRowsType type);

/// The item of a collection at a position from 0 or with a name.
std::size_t daoIndexOf(const automation::Value& index, const std::vector<std::u16string>& names);

} // namespace cvlog::tests
