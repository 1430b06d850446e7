#pragma once

#include "core/adding.h"
#include "platform/headless/headless_platform.h"
#include "store/engine_selection.h"
#include "store/log_database.h"
#include "tests/store/dao_files.h"
#include "tests/support/log_world.h"

namespace cvlog::store::testbed {

/// A log with one list and a scripted host, whose project is kept in a file of the DAO double. The counter counts
/// what is asked of DAO alone.
struct DaoLogWorld {
    enum class Schema { Old, Modern, None };

    explicit DaoLogWorld(Schema schema = Schema::Old) {
        machine.installOld();
        machine.makeFile(folder, u"PrjData.mdb");
        host.names[4] = folder.path(u"");
        host.names[4].pop_back();
        host.tools->on(u"Count", [this](std::span<automation::Value>) {
            return automation::Value(globals.LogViews.count()); // so that no box is shown
        });
        const std::u16string text = u"(MethodName Text(50), ObjectName Text(50), ObjectType Text(50), "
                                    u"LogMessage LongText, ReturnMessage Integer";
        if (schema == Schema::None) return;
        file().execute(
            u"create table LogInfo " + text +
            (schema == Schema::Old ? std::u16string(u")") : u", RecordNum Counter, Errors Text(254))"));
        if (schema == Schema::Modern) table().column(u"Errors").zeroLength = true;
        file().flush();
    }

    bool open() {
        const bool opened = OpenDB(globals, log, host.workspace);
        globals.LogWindowVisible = true;
        return opened;
    }
    void close() { CloseDB(globals); }
    void add(std::u16string message, std::u16string errors = {}) {
        if (!errors.empty()) platform.files.addFile(folder.path(errors));
        core::Add(globals, *log, {u"M1", 7, u"P1", std::move(message), std::move(errors)});
    }
    std::u16string path() const { return folder.path(u"PrjData.mdb"); }
    tests::DaoFile& file() { return machine.dao().file(path()); }
    tests::DaoTable& table() { return file().table(u"LogInfo"); }
    automation::Value stored(std::size_t row, std::u16string_view column) {
        return table().rows.at(row).values.at(table().indexOf(column));
    }

    tests::CallCounter calls;
    tests::CallCounter hostCalls;
    TestFolder folder;
    DaoMachine machine{calls};
    platform::headless::HeadlessPlatform platform;
    tests::FakeHost host{hostCalls};
    std::unique_ptr<Engine> engine = makeLogEngine(machine.files(), machine.objects());
    core::Globals globals{core::Platform::of(platform, *engine)};
    std::shared_ptr<core::CVLog> log = std::make_shared<core::CVLog>(globals);
    std::shared_ptr<view::LogControl> control = std::make_shared<view::LogControl>(globals);
};

} // namespace cvlog::store::testbed
