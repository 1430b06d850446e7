#pragma once

#include "automation/error.h"
#include "core/adding.h"
#include "core/cv_log.h"
#include "core/globals.h"
#include "platform/headless/headless_platform.h"
#include "tests/support/call_counter.h"
#include "tests/support/fake_engine.h"
#include "tests/support/fake_host.h"
#include "view/log_control.h"

#include <memory>
#include <string>
#include <vector>

namespace cvlog::tests {

inline constexpr std::u16string_view kLogFile = u"C:\\Proj\\PrjData.mdb";

/// What a host object raises where a test wants it to fail.
inline const automation::AutomationError kHostError(automation::code::of(0x800A1234),
                                                    u"described by the host", u"the host");

/// One apartment of the component with a host, a platform and an engine that are all fakes. Its end checks that no
/// list was ever seen to differ from what its peer was told.
struct LogWorld {
    LogWorld();
    ~LogWorld();
    LogWorld(const LogWorld&) = delete;
    LogWorld& operator=(const LogWorld&) = delete;

    CallCounter calls;
    platform::headless::HeadlessPlatform platform;
    FakeEngine engine{calls};
    FakeHost host{calls};
    core::Globals globals{core::Platform::of(platform, engine)};
    std::shared_ptr<core::CVLog> log = std::make_shared<core::CVLog>(globals);
    std::vector<std::shared_ptr<view::LogControl>> controls;
    /// Cleared by tests that fail a list's peer, whose mirror cannot follow then.
    bool peersMustAgree = true;

    /// Opens the database, after making a modern one when there is none.
    bool open();
    void close();
    widgets::ListView& addControl();
    void removeControl(std::size_t index);
    widgets::ListView& list(std::size_t index = 0) { return controls.at(index)->lvLog(); }
    void add(const core::Report& report) { core::Add(globals, *log, report); }
    void startSeries();
    void finishSeries();
    /// The log is in view: no Add of its own shows a box.
    void hideBoxes();
};

/// An open log with so many controls.
std::unique_ptr<LogWorld> openWorld(std::size_t controls, bool quiet = true);

/// A row as one line: text|tag|icon|key=text{tag}[icon]...
std::string rowText(const widgets::RowContent& row);
std::vector<std::string> rowsOf(const widgets::ListView& list);

/// What a sink saw of one event.
class RecordingSink : public automation::EventSink {
public:
    void onEvent(std::int32_t id, std::span<automation::Value> arguments) override {
        ids.push_back(id);
        if (handler) handler(id, arguments);
    }
    std::vector<std::int32_t> ids;
    std::function<void(std::int32_t, std::span<automation::Value>)> handler;
};

/// All lists hold the same rows, at each index, and none is half filled.
void expectListsInStep(LogWorld& world);

} // namespace cvlog::tests
