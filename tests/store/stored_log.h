#pragma once

#include "store/log_database.h"
#include "tests/store/sqlite_files.h"
#include "tests/support/log_world.h"

namespace cvlog::store::testbed {

/// A log with one list, a scripted host and the SQLite engine over a file of the test's own. What the file holds is
/// read by the stock library.
class StoredLog : public SqliteFiles {
protected:
    StoredLog() {
        for (const auto& [key, type] : host_.types)
            platform_.files.addFile(u"C:\\Prod\\Repository\\Icons\\" + key + u".ico");
        host_.names[4] = folder_.path(u"");
        host_.names[4].pop_back();
        host_.tools->on(u"Count", [this](std::span<automation::Value>) {
            return automation::Value(globals_.LogViews.count()); // so that no box is shown
        });
        log_->events().advise(sink_);
    }

    bool openLog() {
        const bool opened = OpenDB(globals_, log_, host_.workspace);
        globals_.LogWindowVisible = true;
        return opened;
    }
    void closeLog() { CloseDB(globals_); }
    /// The errors file, when one is named, is there.
    void addEntry(std::u16string message, std::u16string errors = {}) {
        if (!errors.empty()) platform_.files.addFile(folder_.path(errors));
        core::Add(globals_, *log_, {u"M1", 7, u"P1", std::move(message), std::move(errors)});
    }
    void executeAsHost(std::u16string_view sql) {
        automation::toObject(log_->get(u"LogDB"))->invoke(u"Execute", sql);
    }
    int rowCount() const { return control_->lvLog().rowCount(); }
    bool saidNothing() const { return platform_.messages.shown.empty(); }
    /// The texts that were added, each with its number, in their order.
    std::string stored() {
        return askWhole(
            "select RecordNum || ':' || ifnull(substr(LogMessage, instr(LogMessage, 'RC 7') + 6), "
            "'-') from LogInfo order by RecordNum");
    }

    tests::CallCounter calls_;
    platform::headless::HeadlessPlatform platform_;
    tests::FakeHost host_{calls_};
    core::Globals globals_{core::Platform::of(platform_, *engine_)};
    std::shared_ptr<core::CVLog> log_ = std::make_shared<core::CVLog>(globals_);
    std::shared_ptr<tests::RecordingSink> sink_ = std::make_shared<tests::RecordingSink>();
    std::shared_ptr<view::LogControl> control_ = std::make_shared<view::LogControl>(globals_);
};

inline constexpr char kModernTable[] =
    "create table LogInfo (RecordNum integer primary key autoincrement, MethodName text, ObjectName text, "
    "ObjectType text, LogMessage text, ReturnMessage integer, Errors Text(254))";

} // namespace cvlog::store::testbed
