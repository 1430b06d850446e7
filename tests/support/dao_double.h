#pragma once

#include "automation/object.h"
#include "ports/file_system.h"
#include "tests/support/call_counter.h"
#include "tests/support/dao_file.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>

// A strict double of DAO's object model, as much of it as the log and its hosts use, in one process and in memory. It
// raises DAO's errors: for calls out of order, closed objects, tables in use, values that a column refuses. It is as
// slow to notice as DAO is: its collections stay as they were until they are refreshed, and a change reaches the disk
// only when its database is closed, unless the engine was told otherwise.

namespace cvlog::tests {

class DaoDouble {
public:
    enum class Format { Jet, Ace };

    /// What the objects share. Every call of a member passes the counter as "DAO.Object.Member" before it has any
    /// effect.
    struct World {
        CallCounter& calls;
        ports::FileSystem& files;
        std::map<std::u16string, DaoFile> content; // by path
        int alive = 0;                             // objects
        int openDatabases = 0;
        bool writesAtOnce = false;
        int crashes = 0;
    };

    DaoDouble(CallCounter& calls, ports::FileSystem& files);

    /// A "DBEngine". The newer one opens both formats, the older one its own.
    automation::ObjectRef makeEngine(Format newest);
    /// From now on the file at the path, whose bytes are these, is an empty database.
    std::string addDatabase(std::u16string_view path, Format format = Format::Jet);

    DaoFile& file(std::u16string_view path) { return world_->content.at(std::u16string(path)); }
    /// The program is killed: what it has open is closed as it is, and only what has reached the disk is there.
    void crash();
    int alive() const { return world_->alive; }
    int openDatabases() const { return world_->openDatabases; }

private:
    std::shared_ptr<World> world_;
};

} // namespace cvlog::tests
