// How an expansion ends, whatever ended it: what happens in which order, and that the list gets the focus.

#include "details/expand_entry.h"
#include "tests/support/expansion_world.h"

#include <gtest/gtest.h>

namespace cvlog::details {
namespace {

using platform::headless::peerOf;
using tests::errorLine;
using tests::ExpansionWorld;
using Calls = std::vector<std::string>;

/// Three lists in a host's window, and everything that happens to both and to the file, in one sequence.
class EndOfExpansion : public testing::Test {
protected:
    EndOfExpansion() { world.dock(window); }
    ~EndOfExpansion() override {
        world.calls.insideCall = nullptr;
        tests::expectNothingLeft(world);
    }

    /// From here on.
    void watch() {
        noteLists([](const std::string&, std::size_t) {});
        stripLay_ = world.globals.frmCancel != nullptr;
        fileWasOpen_ = world.platform.files.openFiles() > 0;
        world.calls.insideCall = [this](const std::string& call) { note(call); };
    }
    /// Lets the first list show, by its widths, each time that its columns are fitted to all rows.
    void narrow() {
        narrowed_ = true;
        for (std::size_t index = 0; index < world.controls.size(); ++index)
            world.list(index).setColumnWidth(kMessageColumn, kNarrow);
        noteLists([](const std::string&, std::size_t) {});
    }

    static constexpr int kMessageColumn = 7;
    static constexpr base::Twips kNarrow = 10;
    ExpansionWorld world{3};
    tests::FakeWindow window{world.calls};
    Calls seen;

private:
    template <class Note>
    void noteLists(Note&& noteOne) {
        for (std::size_t index = 0; index < world.controls.size(); ++index)
            for (const char* change : {"rowsInserted", "scrollTo", "batchEnded", "takeFocus"}) {
                int& before = told_[{index, change}];
                const int now = peerOf(world.list(index)).told(change);
                if (std::exchange(before, now) != now) noteOne(change, index);
            }
    }
    void note(const std::string& call) {
        if (std::exchange(stripLay_, world.globals.frmCancel != nullptr) && !stripLay_)
            seen.push_back("the strip goes");
        if (std::exchange(fileWasOpen_, world.platform.files.openFiles() > 0) && !fileWasOpen_)
            seen.push_back("the file is released");
        if (call.starts_with("Window.")) seen.push_back(call);
        noteLists([this](const std::string& change, std::size_t index) { noteChange(change, index); });
    }
    void noteChange(const std::string& change, std::size_t index) {
        const std::string list = "list " + std::to_string(index);
        if (change == "rowsInserted") seen.push_back(list + " gets " + world.messages(index).back());
        if (change == "takeFocus") seen.push_back(list + " takes the focus");
        if (change == "scrollTo") {
            seen.push_back(list + " scrolls");
            narrow();
        }
        if (change != "batchEnded" || !narrowed_) return;
        if (world.list(index).column(kMessageColumn).width == kNarrow) return;
        seen.push_back(list + " fits its columns");
        narrow();
    }

    std::map<std::pair<std::size_t, std::string>, int> told_;
    bool stripLay_ = false;
    bool fileWasOpen_ = false;
    bool narrowed_ = false;
};

const Calls kLastSteps = {"list 0 fits its columns", "list 0 fits its columns", "list 0 fits its columns",
                          "Window.Enabled = True",   "Window.MousePointer = 0", "list 0 takes the focus"};

TEST_F(EndOfExpansion, OfALongFileComesInItsOrder) {
    world.globals.options.ErrorsListFilter = {{u'W', true}};
    std::string content = errorLine("", "", "", "W1", "hidden");
    for (int i = 1; i <= 60; ++i) content += "line " + std::to_string(i) + "\n";
    world.writeErrors(content);
    world.atYield(1, [&] { watch(); });
    world.expand();
    const std::string hiddenRow = std::string(" gets ") + tests::kHiddenRecords;
    EXPECT_EQ(seen, (Calls{"Window.MousePointer = 13", "list 1 gets line 50", "list 2 gets line 50",
                           "list 0 gets line 60", "list 1 gets line 60", "list 2 gets line 60",
                           "the strip goes", "list 0" + hiddenRow, "list 1" + hiddenRow, "list 2" + hiddenRow,
                           "list 0 scrolls", "list 0 scrolls", "list 0 fits its columns",
                           "list 0 fits its columns", "list 0 fits its columns", "Window.Enabled = True",
                           "Window.MousePointer = 0", "the file is released", "list 0 takes the focus"}));
    const std::vector<int>& scrolled = peerOf(world.list()).scrolledTo();
    ASSERT_GE(scrolled.size(), 2U);
    EXPECT_EQ(scrolled[scrolled.size() - 2], ExpansionWorld::kEntry + 61) << "the last row first";
    EXPECT_EQ(scrolled.back(), ExpansionWorld::kEntry);
}

TEST_F(EndOfExpansion, OfAMissingFileIsThatOfAFileWithoutItsRows) {
    world.platform.files.remove(tests::kErrorsPath);
    watch();
    narrow();
    world.expand();
    EXPECT_EQ(seen, kLastSteps);
    EXPECT_EQ(world.list(1).column(kMessageColumn).width, kNarrow)
        << "the other lists get no look of their own";
    EXPECT_EQ(world.list(0).row(ExpansionWorld::kEntry).cellTag(6), u"");
    for (const std::size_t index : {1U, 2U})
        EXPECT_EQ(world.list(index).row(ExpansionWorld::kEntry).cellTag(6), tests::kErrorsPath);
}

TEST_F(EndOfExpansion, OfALockedFileIsThatOfAFileWithoutItsRows) {
    world.platform.files.lock(tests::kErrorsPath);
    watch();
    narrow();
    world.expand();
    EXPECT_EQ(seen, kLastSteps);
    EXPECT_EQ(world.list(0).row(ExpansionWorld::kEntry).cellTag(6), tests::kErrorsPath);
}

TEST_F(EndOfExpansion, OfAnEntryWithoutAFileIsThatOfAFileWithoutItsRows) {
    watch();
    narrow();
    ExpandEntry(world.globals, world.view(), 1);
    EXPECT_EQ(seen, kLastSteps);
}

struct Ending {
    const char* name;
    void (*arrange)(ExpansionWorld& world);
    int yields;
};

void PrintTo(const Ending& ending, std::ostream* out) { *out << ending.name; }

void whenInputWaitsAfterThirtyLines(ExpansionWorld& world) {
    world.platform.pump.hasInput = [&world, lines = 0]() mutable { return ++lines == 30; };
}

const Ending kEndings[] = {
    {"ShortFile", [](ExpansionWorld& world) { world.writeLines(3); }, 0},
    {"EmptyFile", [](ExpansionWorld& world) { world.writeErrors(""); }, 0},
    {"LongFile", [](ExpansionWorld& world) { world.writeLines(120); }, 2},
    {"CancelAtACheckpoint",
     [](ExpansionWorld& world) {
         world.writeLines(120);
         world.atYield(2, [&world] { world.pressCancel(); });
     },
     2},
    {"CancelFoundWhileInputWaits",
     [](ExpansionWorld& world) {
         world.writeLines(120);
         world.platform.pump.hasInput = [&world] { return world.globals.frmCancel != nullptr; };
         world.atYield(2, [&world] { world.pressCancel(); });
     },
     2},
    {"StripClosed",
     [](ExpansionWorld& world) {
         world.writeLines(120);
         world.atYield(1, [&world] { world.forms().live.back()->userCloses(); });
     },
     1},
    {"EndOfTheProgramAtACheckpoint",
     [](ExpansionWorld& world) {
         world.writeLines(120);
         world.atYield(1, [&world] { world.platform.pump.programEnds = true; });
     },
     1},
    {"EndOfTheProgramFoundWhileInputWaits",
     [](ExpansionWorld& world) {
         world.writeLines(120);
         whenInputWaitsAfterThirtyLines(world);
         world.atYield(1, [&world] { world.platform.pump.programEnds = true; });
     },
     1},
    {"NoFileNamed",
     [](ExpansionWorld& world) { world.list(1).setCellTag(ExpansionWorld::kEntry, u"Message", {}); }, 0},
    {"MissingFile", [](ExpansionWorld& world) { world.platform.files.remove(tests::kErrorsPath); }, 0},
    {"LockedFile", [](ExpansionWorld& world) { world.platform.files.lock(tests::kErrorsPath); }, 0},
    {"EntryGone",
     [](ExpansionWorld& world) {
         world.writeLines(120);
         world.atYield(1, [&world] {
             for (const auto& list : world.globals.LogViews.all()) list->remove(ExpansionWorld::kEntry);
         });
     },
     1},
};

class FocusAfterExpansion : public testing::TestWithParam<Ending> {};

TEST_P(FocusAfterExpansion, IsTheListsThatWasActedOn) {
    ExpansionWorld world{3};
    GetParam().arrange(world);
    world.calls.restart();
    world.expand(1);
    EXPECT_EQ(world.platform.pump.yields, GetParam().yields);
    ASSERT_FALSE(world.calls.journal().empty());
    EXPECT_EQ(world.calls.journal().back(), "List.takeFocus") << "the last thing of all";
    EXPECT_EQ(peerOf(world.list(1)).told("takeFocus"), 1);
    for (const std::size_t other : {0U, 2U}) EXPECT_EQ(peerOf(world.list(other)).told("takeFocus"), 0);
    EXPECT_FALSE(world.globals.ExpansionBusy);
    EXPECT_EQ(world.platform.files.openFiles(), 0);
}

INSTANTIATE_TEST_SUITE_P(Endings, FocusAfterExpansion, testing::ValuesIn(kEndings),
                         [](const auto& instance) { return std::string(instance.param.name); });

} // namespace
} // namespace cvlog::details
