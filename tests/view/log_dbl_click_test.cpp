// The double click: on a control of ours and on a form of the host that holds a list and the menu items.

#include "view/log_dbl_click.h"

#include "automation/dispatch_table.h"
#include "tests/support/fault_sweep.h"
#include "tests/view/log_menu_fixture.h"
#include "view/log_control_ids.h"

namespace cvlog::view {
namespace {

using automation::ObjectRef;
using automation::Value;
using tests::ScriptCollection;
using tests::ScriptObject;
namespace code = automation::code;

class LogDblClickTest : public LogMenuFixture {
protected:
    std::u16string errorsFileOf(int row) { return std::u16string(list().row(row).cellTag(6)); }
};

TEST_F(LogDblClickTest, OpensAClosedEntryAndShowsItsErrors) {
    makeErrorsFile();
    addEntry();
    select(1);
    doubleClick();
    EXPECT_EQ(errorsShown, (Errors{{u"P1", 0}}));
}

TEST_F(LogDblClickTest, ShowsNoErrorsWhenTheFileTurnsOutToBeGone) {
    addEntry();
    select(1);
    doubleClick();
    EXPECT_EQ(errorsFileOf(1), u"") << "it was opened";
    EXPECT_TRUE(errorsShown.empty());
}

TEST_F(LogDblClickTest, ClosesAnOpenEntryWithoutAWord) {
    makeErrorsFile();
    addOpenEntry();
    select(1);
    doubleClick();
    EXPECT_EQ(list().rowCount(), 1);
    EXPECT_TRUE(errorsShown.empty());
}

TEST_F(LogDblClickTest, ShowsTheErrorOfAChildRowAndClosesNothing) {
    addOpenEntry();
    select(2);
    doubleClick();
    select(3);
    doubleClick();
    EXPECT_EQ(errorsShown, (Errors{{u"P1", 1}, {u"P1", 2}}));
    EXPECT_EQ(list().rowCount(), 3);
}

TEST_F(LogDblClickTest, DoesNothingAndKeepsTheWordBeforeTheMenuIsPrepared) {
    const auto expectNothing = [this](const char* why) {
        commands().PendingCommand = u"Hide";
        doubleClick();
        EXPECT_EQ(commands().PendingCommand, u"Hide") << why;
        EXPECT_TRUE(errorsShown.empty()) << why;
        list().selectAll(false);
    };
    expectNothing("an empty list");
    addEntry();
    expectNothing("no selection");
    addEntry(u"P1", u"");
    select(2);
    expectNothing("no errors file");
    addEntry(u"P9");
    select(3);
    expectNothing("an unknown object");
    addEntry(u"");
    select(4);
    expectNothing("no object");
    select(1);
    world.host.repository->raise(u"object", tests::CallCounter::injectedError());
    expectNothing("a repository that fails");
    world.host.repository->heal(u"object");
    addOpenEntry();
    list().setCellTag(5, u"Message", u"");
    select(5);
    expectNothing("an open entry that has lost its file");
    add(childRow(u"P9", u"3"));
    select(8);
    expectNothing("a message of an unknown object");
    add(childRow(u"", u"4"));
    select(9);
    expectNothing("a message of no object");
    list().setCellTag(6, u"Message", u"");
    select(6);
    expectNothing("a message without its file");
    EXPECT_EQ(list().rowCount(), 9);
}

TEST_F(LogDblClickTest, EmptiesTheWordWhenItPreparesTheMenu) {
    commands().PendingCommand = u"Hide";
    makeErrorsFile();
    addEntry();
    select(1);
    doubleClick();
    EXPECT_EQ(commands().PendingCommand, u"");
}

TEST_F(LogDblClickTest, SurvivesAHostThatDestroysTheControlWhenItIsToldOfTheErrors) {
    makeErrorsFile();
    addEntry();
    select(1);
    sink->handler = [this](std::int32_t, std::span<automation::Value>) { world.controls.clear(); };
    doubleClick();
    EXPECT_TRUE(world.controls.empty());
    EXPECT_EQ(globals().LogViews.count(), 0);
}

TEST_F(LogDblClickTest, OpensNothingInAHostWithoutTools) {
    world.host.workspace->set(u"ActiveToolList", Value());
    addEntry();
    select(1);
    doubleClick();
    EXPECT_EQ(errorsFileOf(1), kErrors);
    EXPECT_TRUE(errorsShown.empty());
    addOpenEntry();
    select(2);
    doubleClick();
    EXPECT_EQ(list().rowCount(), 2) << "but it still closes";
}

TEST_F(LogDblClickTest, ClosesNothingWhileAnExpansionIsBusy) {
    addOpenEntry();
    select(1);
    globals().ExpansionBusy = true;
    doubleClick();
    select(2);
    doubleClick();
    globals().ExpansionBusy = false;
    EXPECT_EQ(list().rowCount(), 3);
    EXPECT_TRUE(errorsShown.empty());
}

TEST_F(LogDblClickTest, IsAMemberOfTheControlForAnyObject) {
    EXPECT_EQ(LogControl::members().idOf(u"LogDblClick"), kLogDblClickId);
    world.addControl();
    addOpenEntry();
    select(2, 1);
    world.controls[0]->invoke(u"LogDblClick", world.controls[1]);
    EXPECT_EQ(errorsShown, (Errors{{u"P1", 1}}));
    EXPECT_EQ(codeOf([&] { world.controls[0]->invoke(u"LogDblClick", ObjectRef()); }), code::kObjectRequired);
}

/// A form of the host: a list by hand, and the menu items of the log.
class ForeignForm : public LogDblClickTest {
protected:
    ForeignForm() {
        form->set(u"Controls", controls);
        controls->add(u"lvLog", lvLog);
        for (const char16_t* name :
             {u"mnuLogShowErrors", u"mnuLogCollaps", u"mnuLogExpand", u"mnuLogSep1", u"mnuLogDelete",
              u"mnuLogClear", u"mnuLogCopy", u"mnuLogSave", u"mnuLogDocked"})
            controls->add(name, items[name] = makeItem());
        columns->set(u"LBound", 0).set(u"UBound", 1);
        columns->on(u"Item", [this](std::span<Value> arguments) {
            return Value(columnItems.at(static_cast<std::size_t>(automation::toInt32(arguments[0]))));
        });
        for (const char16_t* key : {u"Date", u"Message"}) {
            columnItems.push_back(makeItem());
            columnItems.back()->set(u"Tag", key);
            auto header = std::make_shared<ScriptObject>("Header", world.calls);
            headers->add(key, header);
            header->set(u"Width", key == std::u16string_view(u"Date") ? 1500.0 : 0.0);
        }
        controls->add(u"mnuColumn", columns);
        lvLog->set(u"hWnd", 99)
            .set(u"ListItems", rows)
            .set(u"ColumnHeaders", headers)
            .set(u"SelectedItem", Value(ObjectRef()));
    }
    std::shared_ptr<ScriptObject> makeItem() {
        auto item = std::make_shared<ScriptObject>("Item", world.calls);
        item->set(u"Visible", true).set(u"Enabled", false).set(u"Checked", true).set(u"Tag", u"");
        return item;
    }
    std::shared_ptr<ScriptObject> addRow(std::u16string tag, std::u16string errors,
                                         std::u16string number = {}) {
        auto row = std::make_shared<ScriptObject>("Row", world.calls);
        auto cells = std::make_shared<ScriptCollection>("Cells", world.calls);
        const auto cell = [&](const char16_t* key, const std::u16string& cellTag) {
            auto made = std::make_shared<ScriptObject>("Cell", world.calls);
            made->set(u"Tag", cellTag);
            cells->add(key, made);
        };
        cell(u"Message", errors);
        cell(u"ObjID", u"P1");
        cell(u"Num", number);
        row->set(u"Tag", tag).set(u"Index", static_cast<std::int32_t>(rows->size()) + 1);
        row->set(u"ListSubItems", cells);
        rows->add(u"", row);
        return row;
    }
    void selectRow(const std::shared_ptr<ScriptObject>& row) { lvLog->set(u"SelectedItem", Value(row)); }
    void act() { world.controls[0]->invoke(u"LogDblClick", form); }
    bool is(std::u16string_view item, std::u16string_view property) {
        return automation::toBoolean(items.at(std::u16string(item))->get(property));
    }

    std::shared_ptr<ScriptObject> form = std::make_shared<ScriptObject>("Form", world.calls);
    std::shared_ptr<ScriptCollection> controls =
        std::make_shared<ScriptCollection>("FormControls", world.calls);
    std::shared_ptr<ScriptObject> lvLog = std::make_shared<ScriptObject>("lvLog", world.calls);
    std::shared_ptr<ScriptCollection> rows = std::make_shared<ScriptCollection>("Rows", world.calls);
    std::shared_ptr<ScriptCollection> headers = std::make_shared<ScriptCollection>("Headers", world.calls);
    std::shared_ptr<ScriptObject> columns = std::make_shared<ScriptObject>("mnuColumn", world.calls);
    std::vector<std::shared_ptr<ScriptObject>> columnItems;
    std::map<std::u16string, std::shared_ptr<ScriptObject>> items;
};

TEST_F(ForeignForm, GetsItsMenuPreparedByItsOwnListAndTheErrorsShown) {
    addRow(u"P1", u"C:\\x.errors");
    selectRow(addRow(u"P1", u"C:\\y.errors"));
    act();
    EXPECT_EQ(errorsShown, (Errors{{u"P1", 0}})) << "a list that is none of ours is not opened";
    EXPECT_FALSE(is(u"mnuLogShowErrors", u"Visible"));
    EXPECT_TRUE(is(u"mnuLogShowErrors", u"Enabled"));
    EXPECT_TRUE(is(u"mnuLogExpand", u"Visible"));
    EXPECT_FALSE(is(u"mnuLogCollaps", u"Visible"));
    EXPECT_TRUE(is(u"mnuLogSep1", u"Visible"));
    EXPECT_TRUE(is(u"mnuLogDelete", u"Enabled"));
    EXPECT_FALSE(is(u"mnuLogDocked", u"Visible"));
    EXPECT_FALSE(is(u"mnuLogDocked", u"Checked"));
    EXPECT_EQ(columnItems[0]->get(u"Checked"), Value(true));
    EXPECT_EQ(columnItems[1]->get(u"Checked"), Value(false));
}

TEST_F(ForeignForm, ShowsTheErrorsItemOnlyAsAFormThatHoldsForms) {
    selectRow(addRow(u"P1", u"C:\\x.errors"));
    form->set(u"IsMDIForm", true);
    act();
    EXPECT_TRUE(is(u"mnuLogShowErrors", u"Visible"));
    form->set(u"IsMDIForm", false);
    act();
    EXPECT_FALSE(is(u"mnuLogShowErrors", u"Visible"));
    form->set(u"IsMDIForm", true).raise(u"IsMDIForm", tests::CallCounter::injectedError());
    act();
    EXPECT_FALSE(is(u"mnuLogShowErrors", u"Visible")) << "one that fails is none";
    form->heal(u"IsMDIForm");
    world.host.workspace->set(u"ActiveToolList", Value());
    act();
    EXPECT_FALSE(is(u"mnuLogShowErrors", u"Visible")) << "without tools nobody shows errors";
}

TEST_F(ForeignForm, OfOpenEntriesShowsChildRowsAndLeavesTheListAlone) {
    const auto entry = addRow(u"P1", u"C:\\x.errors");
    const auto child = addRow(u"Expansion", u"C:\\x.errors", u"12");
    selectRow(child);
    act();
    EXPECT_EQ(errorsShown, (Errors{{u"P1", 12}}));
    selectRow(entry);
    act();
    EXPECT_TRUE(is(u"mnuLogCollaps", u"Visible"));
    EXPECT_EQ(errorsShown.size(), 1U);
    EXPECT_EQ(rows->size(), 2U);
}

TEST_F(ForeignForm, ThatShowsOneOfTheLiveListsHasItOpenedAndClosed) {
    addOpenEntry();
    select(1);
    lvLog->set(u"hWnd", list().windowHandle());
    const auto entry = addRow(u"P1", u"C:\\x.errors");
    addRow(u"expansion", u"C:\\x.errors", u"1");
    selectRow(entry);
    act();
    EXPECT_EQ(list().rowCount(), 1);
}

TEST_F(ForeignForm, ThatFailsIsAnErrorToTheCaller) {
    selectRow(addRow(u"P1", u"C:\\x.errors"));
    lvLog->raise(u"SelectedItem", automation::AutomationError(0x1234));
    EXPECT_EQ(codeOf([&] { act(); }), 0x1234);
    lvLog->heal(u"SelectedItem");
    auto empty = std::make_shared<ScriptCollection>("Empty", world.calls);
    form->set(u"Controls", empty);
    EXPECT_EQ(codeOf([&] { act(); }), code::kObjectRequired) << "no list of that name";
    empty->raise(u"Item", automation::AutomationError(code::kControlNotFound));
    EXPECT_EQ(codeOf([&] { act(); }), code::kControlNotFound);
    form->remove(u"Controls");
    EXPECT_NE(codeOf([&] { act(); }), 0);
    EXPECT_TRUE(errorsShown.empty());
}

TEST_F(ForeignForm, WithoutOneOfTheMenuItemsIsAnErrorToTheCaller) {
    selectRow(addRow(u"P1", u"C:\\x.errors"));
    items[u"mnuLogExpand"]->remove(u"Visible");
    EXPECT_NE(codeOf([&] { act(); }), 0);
    items[u"mnuLogExpand"]->set(u"Visible", true);
    items[u"mnuLogDocked"]->remove(u"Checked").remove(u"Visible");
    EXPECT_EQ(codeOf([&] { act(); }), 0) << "the docked item alone may fail";
    EXPECT_EQ(errorsShown.size(), 1U);
}

TEST(FaultSweepOfTheDoubleClick, EndsSilentlyWithListsInStep) {
    tests::FaultSweep<tests::LogWorld> sweep;
    sweep.arrange = [] {
        auto world = tests::openWorld(2);
        givePointer(*world);
        world->peersMustAgree = false;
        world->list().append(widgets::makeRow(
            {u"2024-05-17 10:00:00", u"P1", u"Bad", {{u"Message", u"message", u"C:\\x.errors", {}, {}}}}));
        PropagateNewRow(world->globals, world->list(), 1);
        world->list().select(1, true);
        world->list().focusRow(1);
        return world;
    };
    sweep.scenario = [](tests::LogWorld& world) {
        platform::headless::peerOf(world.list()).userDoubleClicks();
    };
    sweep.check = [](tests::LogWorld& world, const tests::SweepRun& run) {
        EXPECT_FALSE(run.error);
        EXPECT_EQ(tests::rowsOf(world.list(0)).size(), tests::rowsOf(world.list(1)).size());
        EXPECT_FALSE(world.globals.ExpansionBusy);
    };
    sweep.leastCalls = 3;
    sweep.run();
}

} // namespace
} // namespace cvlog::view
