// The keys of the log's list.

#include "tests/view/log_menu_fixture.h"

namespace cvlog::view {
namespace {

class LogKeys : public LogMenuFixture {
protected:
    static constexpr Shift kShift = 1;
    static constexpr Shift kCtrl = 2;
    static constexpr Shift kAlt = 4;
};

struct KeyCase {
    std::int16_t code;
    std::int16_t shift;
    bool consumed;
    const char16_t* word;
};

TEST_F(LogKeys, AreConsumedWhenReleasedIfTheyMeanSomething) {
    constexpr KeyCase cases[] = {{107, 0, true, u"Expand"},
                                 {107, 7, true, u"Expand"},
                                 {109, 0, true, u"Collaps"},
                                 {109, kCtrl, true, u"Collaps"},
                                 {13, 0, true, u""},
                                 {13, 7, true, u""},
                                 {32, 0, true, u""},
                                 {32, kShift, false, u""},
                                 {32, kCtrl, false, u""},
                                 {32, kAlt, false, u""},
                                 {46, 0, true, u""},
                                 {46, 7, true, u""},
                                 {67, 0, false, u""},
                                 {67, kShift, false, u""},
                                 {67, kCtrl, true, u""},
                                 {67, kCtrl | kShift, true, u""},
                                 {67, kCtrl | kAlt, true, u""},
                                 {69, kCtrl | kAlt, true, u"ShowErrors"},
                                 {69, 0, false, u""},
                                 {69, kAlt, false, u""},
                                 {69, kCtrl, true, u"ShowErrors"},
                                 {69, kCtrl | kShift, true, u"ShowErrors"},
                                 {37, 0, true, u""},
                                 {37, 7, true, u""},
                                 {39, 0, false, u""},
                                 {38, 0, false, u""},
                                 {112, 0, false, u""},
                                 {121, kShift, false, u""},
                                 {27, 0, false, u""},
                                 {65, kCtrl, false, u""},
                                 {187, 0, false, u""}};
    for (const KeyCase& one : cases) {
        SCOPED_TRACE(std::to_string(one.code) + " with " + std::to_string(one.shift));
        ClearLists(globals());
        addEntry(u"P1", u"");
        select(1);
        commands().PendingCommand.clear();
        EXPECT_EQ(release(one.code, one.shift).code, one.consumed ? 0 : one.code);
        EXPECT_EQ(commands().PendingCommand, one.word);
        EXPECT_TRUE(menus().shown.empty());
    }
}

TEST_F(LogKeys, MeanNothingWhenPressed) {
    addEntry();
    select(1);
    for (const int code : {107, 109, 13, 32, 46, 37}) EXPECT_EQ(press(code).code, code);
    for (const int code : {67, 69}) EXPECT_EQ(press(code, kCtrl).code, code);
    EXPECT_EQ(list().rowCount(), 1);
    EXPECT_EQ(commands().PendingCommand, u"");
}

TEST_F(LogKeys, GreyPlusAndMinusAndCtrlEHaveNoEffectAsTheNextMenuForgetsThem) {
    addOpenEntry();
    select(1);
    for (const int code : {107, 109}) {
        release(code);
        rightClick();
    }
    release(69, kCtrl);
    rightClick();
    EXPECT_EQ(list().rowCount(), 3);
    EXPECT_TRUE(errorsShown.empty());
    EXPECT_EQ(commands().PendingCommand, u"");
}

TEST_F(LogKeys, GreyMinusAndCtrlENeedASelectionAndGreyPlusDoesNot) {
    release(109);
    release(69, kCtrl);
    EXPECT_EQ(commands().PendingCommand, u"");
    release(107);
    EXPECT_EQ(commands().PendingCommand, u"Expand");
}

TEST_F(LogKeys, EnterAndSpaceAreADoubleClick) {
    for (const int code : {13, 32}) {
        ClearLists(globals());
        addOpenEntry();
        select(3);
        release(code);
    }
    EXPECT_EQ(errorsShown, (Errors{{u"P1", 2}, {u"P1", 2}}));
}

TEST_F(LogKeys, DeleteAndCtrlCWorkWithoutASelectionToo) {
    addEntry();
    release(46);
    EXPECT_EQ(list().rowCount(), 1);
    release(67, kCtrl);
    EXPECT_EQ(world.platform.clipboard.text, u"");
    select(1);
    release(46, kShift);
    EXPECT_EQ(list().rowCount(), 0);
}

TEST_F(LogKeys, LeftGoesFromAChildRowToItsEntry) {
    addEntry();
    addOpenEntry();
    for (const int child : {3, 4}) {
        select(child);
        EXPECT_EQ(release(37).code, 0);
        EXPECT_EQ(list().selectedRow(), 2);
        EXPECT_EQ(list().focusedRow(), 2);
        EXPECT_FALSE(list().isSelected(child));
    }
    EXPECT_EQ(list().rowCount(), 4);
}

TEST_F(LogKeys, LeftGoesToTheFirstRowWhenThereIsNoEntryAbove) {
    add(childRow(u"P1", u"1"));
    add(childRow(u"P1", u"2"));
    select(2);
    EXPECT_EQ(release(37).code, 0);
    EXPECT_EQ(list().selectedRow(), 1);
}

TEST_F(LogKeys, LeftLeavesEntriesAndOtherSelectedRowsAlone) {
    addOpenEntry();
    addEntry();
    select(4);
    EXPECT_EQ(release(37).code, 0);
    EXPECT_EQ(list().selectedRow(), 4);
    list().selectAll(false);
    EXPECT_EQ(release(37).code, 0);
    EXPECT_EQ(list().selectedRow(), 0);
    select(4);
    list().select(3, true);
    list().focusRow(3);
    EXPECT_EQ(release(37).code, 0);
    EXPECT_TRUE(list().isSelected(4));
    EXPECT_EQ(list().selectedRow(), 1);
}

TEST_F(LogKeys, OfAControlThatGoesInItsOwnHandlerEndWell) {
    addOpenEntry();
    select(2);
    sink->handler = [this](std::int32_t, std::span<automation::Value>) { world.controls.clear(); };
    release(13);
    EXPECT_TRUE(world.controls.empty());
    EXPECT_EQ(globals().LogViews.count(), 0);
}

} // namespace
} // namespace cvlog::view
