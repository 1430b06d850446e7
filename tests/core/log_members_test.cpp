// The members of the log object as a late-bound host sees them.

#include "core/cv_log.h"
#include "tests/support/placed_log.h"

namespace cvlog::core {
namespace {

using automation::Value;

class LogMembers : public tests::PlacedLog {
protected:
    CVLog& log() { return *world.log; }
};

TEST_F(LogMembers, ThatOnceMovedTheLogTakeAnythingAndReadZero) {
    giveWindow();
    for (const char16_t* name : {u"Left", u"Top", u"Height", u"Width"}) {
        log().put(name, 1234.5F);
        EXPECT_EQ(log().get(name), Value(0.0F)) << "no placing by these";
    }
    EXPECT_TRUE(world.calls.journal().empty());
}

TEST_F(LogMembers, DescendFromLeftToWidthWhileMoveTakesTheWidthFirst) {
    const automation::DispatchTable& table = CVLog::members();
    EXPECT_EQ(table.idOf(u"Left"), 0x68030004);
    EXPECT_EQ(table.idOf(u"Top"), 0x68030003);
    EXPECT_EQ(table.idOf(u"Height"), 0x68030002);
    EXPECT_EQ(table.idOf(u"Width"), 0x68030001);
    EXPECT_EQ(table.parameterIdOf(u"Move", u"Width"), 2);
    EXPECT_EQ(table.parameterIdOf(u"Move", u"Height"), 3);
    giveWindow();
    log().invoke(u"Move", 1.0, 2.0, 3.0, 4.0);
    EXPECT_EQ(world.calls.journalOf({"Window.Move"}).size(), 1U);
}

TEST_F(LogMembers, ThatDoNothingSucceed) {
    for (const char16_t* name : {u"Display", u"ShowHelp", u"PopupMenu"}) log().invoke(name);
    EXPECT_TRUE(world.calls.journal().empty());
    EXPECT_TRUE(log().isCreated());
}

TEST_F(LogMembers, PlaceTheLog) {
    giveWindow();
    log().put(u"Parent", Value(container()));
    EXPECT_EQ(log().get(u"Parent"), Value(container()));
    log().put(u"Visible", u"-1"); // text, as some hosts keep it
    EXPECT_EQ(log().get(u"Visible"), Value(true));
    log().put(u"Docked", true);
    EXPECT_EQ(log().get(u"Docked"), Value(true));
    log().invoke(u"SetFocus");
    EXPECT_EQ(world.calls.countOf("LogView.SetFocus"), 1);
    log().put(u"Parent", Value());
    EXPECT_EQ(log().get(u"Docked"), Value(false));
    EXPECT_EQ(log().get(u"Parent"), Value(automation::ObjectRef()));
    log().invoke(u"Dock", container());
    EXPECT_EQ(forms().shown.back().caption, u"Alert!");
}

TEST_F(LogMembers, AreSharedByAllLogs) {
    auto second = std::make_shared<CVLog>(globals());
    giveWindow();
    log().put(u"Parent", Value(container()));
    EXPECT_EQ(second->get(u"Parent"), Value(container()));

    world.addControl();
    log().invoke(u"SeriesStart", u"");
    second->invoke(u"Add", u"", std::int32_t{1}, u"", u"message");
    log().invoke(u"SeriesFinish", std::int32_t{0});
    ASSERT_EQ(world.platform.messages.shown.size(), 1U);
    EXPECT_EQ(world.platform.messages.shown.at(0).icon, ports::BoxIcon::Exclamation)
        << "the code 1 of the other log";
}

TEST_F(LogMembers, TellTheLogThatLastOpenedTheDatabaseOfTheLists) {
    auto second = std::make_shared<CVLog>(globals());
    auto heard = std::make_shared<tests::RecordingSink>();
    auto heardBySecond = std::make_shared<tests::RecordingSink>();
    log().events().advise(heard);
    second->events().advise(heardBySecond);
    world.host.workspace->raise(u"GetHelpFile", tests::CallCounter::injectedError());
    EXPECT_EQ(second->invoke(u"OpenDB", automation::ObjectRef(world.host.workspace)), Value(false));
    platform::headless::peerOf(world.addControl()).userEnters();
    EXPECT_EQ(heard->ids, std::vector<std::int32_t>{2}) << "a failed opening takes nothing over";
    EXPECT_TRUE(heardBySecond->ids.empty());
    world.host.workspace->heal(u"GetHelpFile");
    EXPECT_EQ(second->invoke(u"OpenDB", automation::ObjectRef(world.host.workspace)), Value(true));
    platform::headless::peerOf(world.list()).userLeaves();
    EXPECT_EQ(heard->ids.size(), 1U);
    EXPECT_EQ(heardBySecond->ids, std::vector<std::int32_t>{3});
}

} // namespace
} // namespace cvlog::core
