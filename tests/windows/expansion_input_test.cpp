// What the user and the repository do to an open entry, and to one that is being opened.

#include "details/repository_tracking.h"
#include "tests/windows/expansion_fixture.h"

namespace cvlog::platform::win32 {
namespace {

using tests::FromTheLoop;

class Win32OpenEntry : public ExpansionFixture {
protected:
    /// Opens the entry and acts once while the strip is up: no row goes, and the strip stays.
    void expandAndExpectNoRowToGo(const std::function<void()>& act) {
        writeLines(kLong);
        addOpenable();
        expandAndMeanwhile([&] {
            const int rows = list().rowCount();
            EXPECT_GE(rows, 51);
            act();
            EXPECT_EQ(list().rowCount(), rows);
            EXPECT_TRUE(stripIsUp());
        });
        EXPECT_EQ(list().rowCount(), 1 + kLong);
    }
    /// Opens the menu over a row by the mouse and chooses by a letter.
    void chooseInMenu(int row, WORD letter) {
        FromTheLoop inMenu([&] {
            if (!menuWindow()) return false;
            typeKey(letter);
            return true;
        });
        press(row, {MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP});
        EXPECT_TRUE(takeMessagesUntil([&] { return inMenu.done() && !menuWindow(); }));
        takeMessages();
    }
    void typeInList(WORD key) {
        SetForegroundWindow(parent_);
        SetFocus(window().list());
        takeMessages();
        typeKey(key);
        takeMessages();
    }
};

constexpr WORD kCollapse = 'L';

TEST_F(Win32OpenEntry, LosesNoRowToADoubleClickWhileItsStripIsUp) {
    expandAndExpectNoRowToGo([this] {
        doubleClick(1);
        EXPECT_EQ(list().selectedRow(), 1);
    });
    doubleClick(1);
    EXPECT_EQ(list().rowCount(), 1) << "later it closes the entry";
}

TEST_F(Win32OpenEntry, LosesNoRowToTheMenuWhileItsStripIsUp) {
    expandAndExpectNoRowToGo([this] {
        chooseInMenu(1, kCollapse);
        EXPECT_EQ(globals_.commands.PendingCommand, u"Collaps");
    });
    chooseInMenu(1, kCollapse);
    EXPECT_EQ(list().rowCount(), 1) << "later it closes the entry";
}

TEST_F(Win32OpenEntry, IsSelectedByTheMenuOverOneOfItsMessagesThoughItCannotBeClosedYet) {
    expandAndExpectNoRowToGo([this] {
        chooseInMenu(3, kCollapse);
        EXPECT_TRUE(list().isSelected(1));
    });
}

TEST_F(Win32OpenEntry, IsReachedByTheKeysWhileItsStripIsUpAndLosesNoRow) {
    expandAndExpectNoRowToGo([this] {
        choose(5);
        typeInList(VK_LEFT);
        EXPECT_EQ(list().selectedRow(), 1);
        EXPECT_EQ(list().selectedCount(), 1);
        choose(5);
        typeInList(VK_SUBTRACT);
        EXPECT_EQ(globals_.commands.PendingCommand, u"Collaps") << "the key was heard";
        EXPECT_EQ(list().selectedRow(), 5);
    });
}

TEST_F(Win32OpenEntry, IsNotDeletedWhileItsStripIsUp) {
    expandAndExpectNoRowToGo([this] {
        choose(1);
        typeInList(VK_DELETE);
    });
    choose(1);
    typeInList(VK_DELETE);
    EXPECT_EQ(list().rowCount(), 0) << "later it is";
}

TEST_F(Win32OpenEntry, LosesItsReferenceButNoRowWhenItsObjectChangesWhileItsStripIsUp) {
    details::FollowRepository(globals_, hostapi::Repository(host_.repository));
    writeLines(kLong);
    list().append(widgets::makeRow(
        {u"2024-05-17 10:00:00",
         u"P1",
         u"Bad",
         {{u"Name", u"PAYROLL", u"P1", {}, {}}, {u"Message", u"message", fromWide(path_), {}, {}}}}));
    expandAndMeanwhile([this] {
        const int rows = list().rowCount();
        EXPECT_TRUE(MoveFileW(path_.c_str(), (path_ + L".old").c_str())) << "who reads it lets it go";
        automation::Value arguments[] = {u"p1"};
        host_.repository->fire(1, arguments);
        EXPECT_EQ(list().rowCount(), rows);
        EXPECT_EQ(reference(1), u"");
        EXPECT_TRUE(stripIsUp());
    });
    EXPECT_EQ(list().rowCount(), 1 + kLong) << "it is read on as it was opened";
    EXPECT_EQ(message(1 + kLong), u"line 5000");
}

TEST_F(Win32OpenEntry, ShowsTheMessageThatIsDoubleClickedByItsNumber) {
    write("one\n\ntwo\nthree\n");
    addOpenable();
    expand();
    doubleClick(3);
    ASSERT_EQ(sink_->errors.size(), 1U);
    EXPECT_EQ(sink_->errors[0], std::pair(std::u16string(u"P1"), 2)) << "blank lines have no number";
    doubleClick(4);
    ASSERT_EQ(sink_->errors.size(), 2U);
    EXPECT_EQ(sink_->errors[1], std::pair(std::u16string(u"P1"), 3));
    EXPECT_EQ(list().rowCount(), 4);
}

TEST_F(Win32OpenEntry, ShowsNothingForADoubleClickOnTheRowThatTellsOfHiddenRecords) {
    globals_.options.ErrorsListFilter = {{u'I', true}};
    write("\"Source\" \"a.c\" \"1\" \"2\" \"Note\" \"I1\" hidden\none\n");
    addOpenable();
    expand();
    ASSERT_EQ(list().rowCount(), 3);
    ASSERT_EQ(message(3), resources::text(services_.language, 512));
    doubleClick(3);
    EXPECT_EQ(list().selectedRow(), 3) << "the click reached it";
    EXPECT_TRUE(sink_->errors.empty());
    EXPECT_EQ(list().rowCount(), 3);
    doubleClick(2);
    EXPECT_EQ(sink_->errors.size(), 1U) << "its neighbour is a message";
}

TEST_F(Win32OpenEntry, ShowsNoMessageWhileItsStripIsUp) {
    expandAndExpectNoRowToGo([this] {
        doubleClick(3);
        EXPECT_EQ(list().selectedRow(), 3);
        EXPECT_TRUE(sink_->errors.empty());
    });
    doubleClick(3);
    EXPECT_EQ(sink_->errors.size(), 1U);
}

} // namespace
} // namespace cvlog::platform::win32
