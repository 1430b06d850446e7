// Every outward call of an expansion of sixty lines fails once, and for good from it on.

#include "core/log_row_kind.h"
#include "tests/support/expansion_world.h"
#include "tests/support/fault_sweep.h"

#include <gtest/gtest.h>

#include <new>

namespace cvlog::details {
namespace {

using tests::errorLine;
using tests::ExpansionWorld;
using tests::SweepRun;

constexpr int kLines = 60;
constexpr int kHiddenLines = 3;

std::unique_ptr<ExpansionWorld> arrange() {
    auto world = std::make_unique<ExpansionWorld>(3);
    world->peersMustAgree = false; // a list whose peer fails cannot be followed
    world->globals.options.ErrorsListFilter = {{u'W', true}};
    std::string content;
    for (int i = 1; i <= kLines; ++i)
        content += errorLine("PROG", i % 2 ? "PAYROLL" : "BATCH", "Error",
                             i % 20 == 0 ? "W1" : "E" + std::to_string(i % 3), std::to_string(i));
    world->writeErrors(content);
    int* lines = &world->lines;
    world->platform.pump.hasInput = [lines] { return ++*lines % 25 == 0; };
    return world;
}

void checkRows(ExpansionWorld& world, const SweepRun& run) {
    int expected = 1;
    const std::vector<std::string> texts = world.messages();
    for (const std::string& text : texts) {
        if (text.starts_with("...")) continue;
        if (expected % 20 == 0) ++expected;
        EXPECT_EQ(text, std::to_string(expected++)) << "rows come in the file's order, none is left out";
    }
    if (!run.error && !texts.empty()) {
        EXPECT_EQ(texts.back(), "... Some records are hidden ...");
        EXPECT_EQ(texts.size(), static_cast<std::size_t>(kLines - kHiddenLines + 1));
    }
    for (int n = 1; n <= static_cast<int>(texts.size()); ++n) {
        EXPECT_EQ(world.child(n).cellCount(), 6) << "no row is half made";
    }
}

TEST(ExpandFaultSweep, LeavesNothingBehindWhateverCallFails) {
    tests::FaultSweep<ExpansionWorld> sweep;
    sweep.arrange = arrange;
    sweep.scenario = [](ExpansionWorld& world) { world.expand(); };
    sweep.check = [](ExpansionWorld& world, const SweepRun& run) {
        tests::expectNothingLeft(world);
        checkRows(world, run);
        world.platform.pump.hasInput = nullptr;
        CollapseEntry(world.globals, world.view(), kAllEntries);
        world.expand();
        EXPECT_EQ(world.messages().size(), static_cast<std::size_t>(kLines - kHiddenLines + 1))
            << "it can be opened again";
        tests::expectNothingLeft(world);
    };
    sweep.leastCalls = 150;
    sweep.run();
}

/// Has no memory left for one measuring.
class TiringMeasurer : public ports::TextMeasurer {
public:
    std::uint32_t fontNumber(const base::Font&) override { return 77; } // nobody else's
    base::Twips width(std::uint32_t, base::CompactTextView) override {
        if (++calls == failsAt) throw std::bad_alloc();
        return 100;
    }
    int calls = 0;
    int failsAt = 0;
};

TEST(ExpandFaultSweep, AListThatCannotMeasureKeepsNoRowFromAnotherOne) {
    for (int failing = 1;; ++failing) {
        SCOPED_TRACE("measuring " + std::to_string(failing));
        ExpansionWorld world(2);
        TiringMeasurer measurer;
        const auto tiring = std::make_shared<widgets::ListView>(world.platform.collator, measurer,
                                                                world.globals.LogViews.rowIds());
        tiring->setColumns({{u"Date", u"Date", 10, 1, {}}, {u"Message", u"Message", 10, 2, {}}});
        for (int row = 1; row <= ExpansionWorld::kEntries; ++row) tiring->insertCopy(row, world.list(), row);
        world.globals.LogViews.add(tiring);
        world.addControl(); // one more behind it
        world.writeLines(300);
        measurer.failsAt = measurer.calls + failing;
        bool thrown = false;
        try {
            world.expand();
        } catch (const std::bad_alloc&) {
            thrown = true;
        }
        EXPECT_EQ(world.globals.LogViews.count(), 4);
        tests::expectNothingLeft(world);
        world.globals.LogViews.remove(*tiring);
        if (!thrown) {
            EXPECT_GT(failing, 9) << "too few measurings";
            break;
        }
    }
}

} // namespace
} // namespace cvlog::details
