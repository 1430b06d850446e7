// The repository tells that an object was modified.

#include "details/repository_tracking.h"

#include "core/log_resources.h"
#include "core/log_row_kind.h"
#include "details/expand_entry.h"
#include "store/log_database.h"
#include "tests/support/expansion_world.h"

#include <gtest/gtest.h>

namespace cvlog::details {
namespace {

using automation::Value;
using tests::errorLine;
using tests::ExpansionWorld;

class RepositoryTracking : public testing::Test {
protected:
    RepositoryTracking() { world.writeErrors("one\ntwo"); }
    ~RepositoryTracking() override { tests::expectNothingLeft(world); }
    void modify(const char16_t* id) {
        Value arguments[] = {id};
        world.host.repository->fire(1, arguments);
    }
    std::u16string path(int row, std::size_t index = 0) {
        return std::u16string(world.list(index).row(row).cellTag(6));
    }
    ExpansionWorld world{2};
};

TEST_F(RepositoryTracking, LeavesRowsWhoseFileIsThereAndReadsNothingAgain) {
    world.expand();
    world.writeErrors("other text");
    world.calls.restart();
    modify(u"P1");
    EXPECT_EQ(world.calls.countOf("FileReader."), 0);
    EXPECT_EQ(world.calls.countOf("File."), 0);
    EXPECT_EQ(world.messages(), (std::vector<std::string>{"one", "two"}));
    EXPECT_EQ(path(2), tests::kErrorsPath);
}

TEST_F(RepositoryTracking, ClearsTheReferenceOfAClosedEntryInTheFirstListAlone) {
    world.platform.files.remove(tests::kErrorsPath);
    modify(u"p1");
    EXPECT_EQ(path(2), u"") << "identifiers ignore case";
    EXPECT_EQ(path(2, 1), tests::kErrorsPath);
    world.expand();
    EXPECT_EQ(world.list().rowCount(), 3);
}

TEST_F(RepositoryTracking, ClosesAnOpenEntryInEveryList) {
    world.expand();
    world.platform.files.remove(tests::kErrorsPath);
    modify(u"P1");
    EXPECT_EQ(world.list(0).rowCount(), 3);
    EXPECT_EQ(world.list(1).rowCount(), 3);
}

TEST_F(RepositoryTracking, HandlesAllEntriesOnTheObjectInOnePass) {
    for (int i = 0; i < 3; ++i) world.add({u"M1", 2, u"P1", u"again", u"given.errors"});
    for (int row = world.list().rowCount(); row >= 2; --row)
        if (row != 3) ExpandEntry(world.globals, world.view(), row);
    EXPECT_EQ(world.list().rowCount(), 6 + 4 * 2);
    world.platform.files.remove(tests::kErrorsPath);
    modify(u"P1");
    EXPECT_EQ(world.list().rowCount(), 6);
    for (int row = 1; row <= 6; ++row) EXPECT_EQ(path(row), u"");
}

TEST_F(RepositoryTracking, DoesNothingForOtherObjects) {
    world.expand();
    world.platform.files.remove(tests::kErrorsPath);
    world.calls.restart();
    modify(u"G1");
    EXPECT_EQ(world.messages().size(), 2U);
    EXPECT_EQ(world.calls.count(), 0) << "not even a file is asked for";
}

TEST_F(RepositoryTracking, OfAMessagesOwnObjectClearsThatRowAlone) {
    world.writeErrors(errorLine("GRP", "BATCH", "Error", "E1", "m"));
    world.expand();
    world.platform.files.remove(tests::kErrorsPath);
    modify(u"G1");
    EXPECT_EQ(path(3), u"");
    EXPECT_EQ(path(2), tests::kErrorsPath);
    EXPECT_EQ(world.messages().size(), 1U);
}

TEST_F(RepositoryTracking, DuringAnExpansionClearsTheReferenceAndKeepsTheRows) {
    world.writeLines(60);
    world.atYield(1, [&] {
        world.platform.files.remove(tests::kErrorsPath);
        modify(u"P1");
    });
    world.expand();
    EXPECT_EQ(world.messages().size(), 60U);
    EXPECT_EQ(path(2), u"");
}

TEST_F(RepositoryTracking, AsksForAFileOnceHoweverManyRowsNameIt) {
    std::string content;
    for (int i = 0; i < 40; ++i) content += errorLine("PROG", "PAYROLL", "", "E1", "m");
    world.writeErrors(content);
    world.expand();
    world.calls.restart();
    modify(u"P1");
    EXPECT_EQ(world.calls.countOf("FileSystem.fileExists"), 1);
}

TEST_F(RepositoryTracking, SurvivesAHostThatClearsTheListsWhileEntriesAreClosed) {
    world.expand();
    world.platform.files.remove(tests::kErrorsPath);
    world.host.workspace->on(u"SetMainWindowCursor", [&](std::span<Value>) {
        for (const auto& list : world.globals.LogViews.all()) list->clear();
        return Value(0);
    });
    modify(u"P1");
    EXPECT_EQ(world.list().rowCount(), 0);
}

TEST_F(RepositoryTracking, HearsOtherEventsAndStrangeArgumentsWithoutHarm) {
    world.host.repository->fire(2);
    world.host.repository->fire(1);
    Value strange[] = {automation::ObjectRef(world.host.repository)};
    EXPECT_NO_THROW(world.host.repository->fire(1, strange));
}

TEST_F(RepositoryTracking, WithoutAListDoesNothing) {
    world.controls.clear();
    world.calls.restart();
    modify(u"P1");
    EXPECT_EQ(world.calls.count(), 0);
}

TEST_F(RepositoryTracking, EndsWithTheResourceForm) {
    EXPECT_EQ(world.host.repository->sinkCount(), 1U);
    world.close();
    EXPECT_EQ(world.host.repository->sinkCount(), 0U);
    EXPECT_TRUE(world.open());
    EXPECT_TRUE(world.open());
    EXPECT_EQ(world.host.repository->sinkCount(), 1U) << "one connection, however often it is opened";
}

TEST_F(RepositoryTracking, OfARepositoryThatRaisesNothingIsNoFailure) {
    tests::FakeHost silent{world.calls};
    silent.repository->call(u"ERD", {});
    const auto mute = std::make_shared<tests::ScriptObject>("Repository", world.calls);
    mute->set(u"ERD", silent.erd);
    silent.workspace->set(u"Repository", mute);
    EXPECT_TRUE(store::OpenDB(world.globals, world.log, silent.workspace));
    EXPECT_EQ(world.host.repository->sinkCount(), 0U);
}

TEST(ResourceForm, HasItsTemplatesInTheUsersLanguage) {
    tests::LogWorld world;
    world.platform.language = resources::Language::Japanese;
    core::Globals globals{core::Platform::of(world.platform, world.engine)};
    const core::LogTemplates& templates = core::LoadLogResources(globals).templates;
    ASSERT_EQ(templates.lvLog.size(), 7U);
    EXPECT_EQ(templates.lvLog[6], resources::text(resources::Language::Japanese, 106));
    ASSERT_EQ(templates.mnuPopUpLog.size(), 13U);
    EXPECT_EQ(templates.mnuPopUpLog.front().name, u"mnuPopUpLog");
    EXPECT_EQ(templates.mnuPopUpLog.back().name, u"mnuLogHide");
    EXPECT_EQ(templates.mnuPopUpLog.back().caption, resources::text(resources::Language::Japanese, 119));
    EXPECT_EQ(templates.mnuPopUpLog[3].name, u"mnuLogExpand");
    EXPECT_EQ(templates.mnuPopUpLog[3].caption, resources::text(resources::Language::Japanese, 110));
}

TEST(ResourceForm, HasEveryTextOfItsListAndMenuInEveryLanguage) {
    const char16_t* names[] = {u"mnuPopUpLog",   u"mnuLogShowErrors", u"mnuLogCollaps", u"mnuLogExpand",
                               u"mnuLogDelete",  u"mnuLogClear",      u"mnuLogCopy",    u"mnuLogSave",
                               u"mnuLogHistory", u"mnuCol",           u"mnuColumn",     u"mnuLogDocked",
                               u"mnuLogHide"};
    for (const auto language :
         {resources::Language::English, resources::Language::Japanese, resources::Language::Korean}) {
        const auto templates = core::LogTemplates::localised(language);
        for (int i = 0; i < 7; ++i)
            EXPECT_EQ(templates.lvLog.at(static_cast<std::size_t>(i)), resources::text(language, 100 + i));
        for (int i = 0; i < 13; ++i) {
            const auto& item = templates.mnuPopUpLog.at(static_cast<std::size_t>(i));
            EXPECT_EQ(item.name, names[i]);
            EXPECT_EQ(item.caption, resources::text(language, 107 + i)) << i;
        }
    }
}

} // namespace
} // namespace cvlog::details
