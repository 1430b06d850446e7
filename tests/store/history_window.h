#pragma once

#include "tests/store/history_world.h"

#include <functional>

namespace cvlog::store::testbed {

/// A log whose history can be opened: records 1 to 3 of an earlier session, 4 and 5 of this one. What the user does
/// in the window is what a test runs while it is open.
class HistoryWindow : public ::testing::Test {
protected:
    HistoryWindow() {
        for (std::int32_t number = 1; number <= 3; ++number) addRecord(world, number);
        EXPECT_TRUE(world.open());
        addRecord(world, 4);
        addRecord(world, 5);
        world.host.workspace->on(u"SetMainWindowCursor", [this](std::span<automation::Value> values) {
            return automation::Value(std::exchange(cursor, automation::toInt32(values[0])));
        });
        world.platform.peers.forms.whileModal = [this](platform::headless::HeadlessFormPeer&) {
            if (const auto user = std::exchange(user_, nullptr)) user(*world.globals.store.frmLogHistory);
            if (const auto open = world.globals.store.frmLogHistory) open->unload();
        };
        world.calls.restart();
    }
    ~HistoryWindow() override {
        world.calls.disarm();
        world.calls.insideCall = nullptr;
        world.close();
        EXPECT_EQ(world.platform.peers.forms.faults, std::vector<std::string>());
        EXPECT_TRUE(world.platform.peers.forms.live.empty());
        EXPECT_EQ(world.engine.openRecordsets, 0);
        EXPECT_EQ(world.platform.peers.menus.faults, std::vector<std::string>());
        EXPECT_FALSE(world.platform.messageFilters.isInstalled());
        EXPECT_EQ(cursor, 0);
        EXPECT_TRUE(world.platform.messages.shown.empty()) << "nothing is asked";
    }

    /// Opens the history, has the user act in it, and closes it unless the user has.
    void inHistory(std::function<void(FrmLogHistory&)> user) {
        user_ = std::move(user);
        ShowHistory(world.globals);
        EXPECT_FALSE(user_) << "the window was never shown";
        EXPECT_EQ(world.globals.store.frmLogHistory, nullptr);
    }
    static platform::headless::HeadlessListViewPeer& peer(FrmLogHistory& window) {
        return platform::headless::peerOf(*window.lvHistory());
    }
    /// What is left of the key's code.
    static std::int16_t press(FrmLogHistory& window, std::int16_t code, std::int16_t shift = 0) {
        widgets::KeyEvent key{code, shift};
        peer(window).userPresses(key);
        return key.code;
    }
    static void select(FrmLogHistory& window, std::initializer_list<int> rows, int focus = 0) {
        window.lvHistory()->selectAll(false);
        for (const int row : rows) peer(window).userSelects(row, true);
        peer(window).userFocuses(focus != 0 ? focus : *rows.begin());
    }
    /// Everything that Show Errors needs.
    void letErrorsBeShown() {
        world.platform.files.addFile(u"C:\\Proj\\payroll.err");
        world.host.repository->on(u"FindObject", [this](std::span<automation::Value> values) {
            const bool known = values.size() == 2 && automation::toText(values[0]) == u"PROG" &&
                               automation::toText(values[1]) == u"PAYROLL";
            return known ? automation::Value(world.host.objects.at(u"P1")) : automation::Value();
        });
        main->set(u"hwnd", std::int32_t{77});
        main->set(u"IsMDIForm", true);
        world.host.workspace->set(u"CalvettaWindow", main);
        world.host.workspace->set(u"ActiveToolList",
                                  std::make_shared<tests::ScriptCollection>("Tools", world.calls));
    }
    std::string records() {
        std::string numbers;
        for (const tests::FakeRecord& record : world.engine.records())
            numbers += (numbers.empty() ? "" : " ") + tests::describe(record.at(u"RecordNum"));
        return numbers;
    }
    std::vector<std::string> statements() { return world.calls.journalOf({"Database.execute"}); }

    tests::LogWorld world;
    std::shared_ptr<tests::ScriptObject> main = std::make_shared<tests::ScriptObject>("Main", world.calls);
    std::int32_t cursor = 0;

private:
    std::function<void(FrmLogHistory&)> user_;
};

} // namespace cvlog::store::testbed
