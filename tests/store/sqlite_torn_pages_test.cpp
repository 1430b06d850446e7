#include "automation/error.h"
#include "tests/store/failing_disk.h"
#include "tests/store/sqlite_files.h"

#include <algorithm>
#include <optional>

// The disk ends in the middle of a write, at each write of a session in turn: while the file is upgraded, in the log of
// changes, and when that goes into the file at the end. Afterwards there are whole records only, in their order.

namespace cvlog::store::testbed {

using automation::AutomationError;

namespace {

constexpr int kTornRecords = 6;

std::string nameOf(Torn torn) {
    if (torn == Torn::Nothing) return "Nothing";
    return torn == Torn::FirstHalf ? "FirstHalf" : "AllButTheLastSector";
}

class TornPages : public ::testing::TestWithParam<Torn> {
protected:
    static std::u16string messageOf(int number) {
        return std::u16string(static_cast<std::size_t>(900 * number), static_cast<char16_t>(u'A' + number));
    }

    /// Opens, upgrades, adds and closes; answers how many records were acknowledged.
    int runSession(const TestFolder& folder) {
        int acknowledged = 0;
        try {
            const auto database = makeSqliteEngine(files_)->open(folder.path(kFile));
            database->execute(kAddRecordNum);
            const auto rows = database->openTable(u"LogInfo");
            for (int number = 1; number <= kTornRecords; ++number) {
                rows->addNew();
                rows->assign(u"LogMessage", messageOf(number));
                rows->update();
                acknowledged = number;
            }
            database->close();
        } catch (const AutomationError&) {
        }
        return acknowledged;
    }

    /// How many records there are; nothing when the file is refused.
    std::optional<int> wholeRecords(const TestFolder& folder) {
        int count = 0;
        try {
            const auto database = makeSqliteEngine(files_)->open(folder.path(kFile));
            const auto rows = database->openSnapshot(u"select LogMessage from LogInfo order by rowid");
            for (; !rows->atEnd(); rows->moveNext())
                EXPECT_EQ(rows->value(u"LogMessage"), automation::Value(messageOf(++count)));
            rows->close();
            database->close();
        } catch (const AutomationError&) {
            return std::nullopt;
        }
        EXPECT_EQ(StockDatabase(folder.native(kFile)).ask("pragma integrity_check"), "ok");
        return count;
    }

    static void makeOldFile(const TestFolder& folder) {
        ASSERT_TRUE(StockDatabase(folder.native(kFile)).run(kOldTable));
    }

    int changesOfAWholeSession() {
        FailingDisk disk;
        const TestFolder folder;
        makeOldFile(folder);
        disk.watch(nullptr);
        EXPECT_EQ(runSession(folder), kTornRecords);
        return disk.changes();
    }

    MachineFiles files_;
};

} // namespace

TEST_P(TornPages, loseNothingAcknowledgedWhenTheProgramEnds) {
    const int changes = changesOfAWholeSession();
    ASSERT_GT(changes, 40);
    for (int ending = 1; ending <= changes; ++ending) {
        FailingDisk disk;
        const TestFolder folder;
        makeOldFile(folder);
        disk.endAt(ending, GetParam());
        const int acknowledged = runSession(folder);
        disk.watch(nullptr);
        const std::optional<int> found = wholeRecords(folder);
        ASSERT_TRUE(found.has_value()) << "ending at " << ending;
        EXPECT_GE(*found, acknowledged) << "ending at " << ending;
        EXPECT_LE(*found, std::min(acknowledged + 1, kTornRecords)) << "ending at " << ending;
        EXPECT_EQ(askCommandLine(folder.native(kFile), "select count(*) from LogInfo"),
                  std::to_string(*found));
    }
}

TEST_P(TornPages, loseTheNewestRecordsAtMostWhenThePowerGoes) {
    const int changes = changesOfAWholeSession();
    int refused = 0;
    int opened = 0;
    int poorer = 0;
    for (int ending = 1; ending <= changes; ++ending) {
        for (unsigned seed = 1; seed <= 4; ++seed) {
            FailingDisk disk;
            const TestFolder folder;
            makeOldFile(folder);
            disk.endAt(ending, GetParam());
            const int acknowledged = runSession(folder);
            disk.losePower(seed);
            disk.watch(nullptr);
            const std::optional<int> found = wholeRecords(folder);
            ++(found ? opened : refused);
            poorer += found && *found < acknowledged ? 1 : 0;
            EXPECT_LE(found.value_or(0), std::min(acknowledged + 1, kTornRecords))
                << "ending at " << ending << ", seed " << seed;
        }
    }
    EXPECT_GT(opened, refused);
    EXPECT_GT(poorer, 0) << "the power did take something";
}

INSTANTIATE_TEST_SUITE_P(Sqlite, TornPages,
                         ::testing::Values(Torn::Nothing, Torn::FirstHalf, Torn::AllButTheLastSector),
                         [](const auto& tested) { return nameOf(tested.param); });

} // namespace cvlog::store::testbed
