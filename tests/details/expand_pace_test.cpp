// When the reading of an errors file stops for the screen and for other code, and when it does not.

#include "tests/support/expansion_world.h"

#include <gtest/gtest.h>

namespace cvlog::details {
namespace {

using platform::headless::peerOf;
using tests::errorLine;
using tests::ExpansionWorld;
using Steps = std::vector<std::string>;

class PaceOfExpansion : public testing::Test {
protected:
    ~PaceOfExpansion() override {
        world.calls.insideCall = nullptr;
        tests::expectNothingLeft(world);
    }
    int childCount() { return static_cast<int>(world.messages().size()); }

    /// What the first list does on the screen and where other code runs, each with the rows that there are by then.
    Steps stepsOfExpansion() {
        Steps steps;
        std::map<std::string, int> told = {{"columnChanged", peerOf(world.list()).told("columnChanged")},
                                           {"repaint", peerOf(world.list()).told("repaint")}};
        world.calls.insideCall = [&](const std::string& call) {
            std::string step = call == "MessagePump.yield" ? "yield" : "";
            for (auto& [change, before] : told) {
                const int now = peerOf(world.list()).told(change);
                if (std::exchange(before, now) != now) step = change;
            }
            if (step.empty()) return;
            step += " " + std::to_string(childCount());
            if (steps.empty() || steps.back() != step) steps.push_back(step);
        };
        world.expand();
        world.calls.insideCall = nullptr;
        return steps;
    }
    /// Every line is wider than the one before.
    void writeWideningLines(int count) {
        std::string content;
        for (int i = 1; i <= count; ++i) content += std::string(static_cast<std::size_t>(i), 'W') + "\n";
        world.writeErrors(content);
    }

    ExpansionWorld world{2};
};

TEST_F(PaceOfExpansion, FitsColumnsAndPaintsAtEveryFiftiethRowAloneHoweverWideTheOthersAre) {
    writeWideningLines(120);
    EXPECT_EQ(stepsOfExpansion(), (Steps{"columnChanged 50", "repaint 50", "yield 50", "columnChanged 100",
                                         "repaint 100", "yield 100", "columnChanged 120"}));
}

TEST_F(PaceOfExpansion, FitsAndPaintsNothingWhenOtherCodeRunsBecauseInputWaits) {
    writeWideningLines(70);
    world.platform.pump.hasInput = [lines = 0]() mutable {
        ++lines;
        return lines == 10 || lines == 60;
    };
    EXPECT_EQ(stepsOfExpansion(), (Steps{"yield 10", "columnChanged 50", "repaint 50", "yield 50", "yield 60",
                                         "columnChanged 70"}));
}

TEST_F(PaceOfExpansion, FitsTheFiftiethRowAndNotTheOnesBeforeIt) {
    std::string content;
    for (int i = 1; i <= 49; ++i) content += std::string(300, 'W') + "\n";
    world.writeErrors(content + std::string(100, 'W') + "\n");
    base::Twips atCheckpoint = 0;
    world.atYield(1, [&] { atCheckpoint = world.list().column(7).width; });
    world.expand();
    EXPECT_GE(atCheckpoint, world.list().cellWidth(ExpansionWorld::kEntry + 50, 7));
    EXPECT_LT(atCheckpoint, world.list().cellWidth(ExpansionWorld::kEntry + 1, 7));
    EXPECT_GE(world.list().column(7).width, world.list().cellWidth(ExpansionWorld::kEntry + 1, 7))
        << "all rows in the end";
}

TEST_F(PaceOfExpansion, HasNoCheckpointWhileTheCountStandsAtFifty) {
    world.globals.options.ErrorsListFilter = {{u'W', true}};
    std::string content;
    for (int i = 0; i < 50; ++i) content += "line\n";
    for (int i = 0; i < 500; ++i) content += errorLine("", "", "", "W1", "hidden") + "\n";
    world.writeErrors(content);
    const Steps steps = stepsOfExpansion();
    EXPECT_EQ(std::ranges::count(steps, "repaint 50"), 1);
    EXPECT_EQ(std::ranges::count(steps, "yield 50"), 1);
    EXPECT_EQ(world.platform.pump.yields, 1);
}

TEST_F(PaceOfExpansion, KnowsNoWishToCancelBeforeTheStripIsThereAlsoAfterACancelledOne) {
    world.writeLines(120);
    world.atYield(1, [&] { world.pressCancel(); });
    world.expand();
    ASSERT_EQ(childCount(), 50) << "the first one was cancelled";
    CollapseEntry(world.globals, world.view(), ExpansionWorld::kEntry);
    world.calls.restart();
    world.platform.pump.hasInput = [&] { return world.calls.countOf("MessagePump.inputWaiting") <= 49; };
    int withoutStrip = 0;
    world.platform.pump.atYield = [&](int) {
        if (world.globals.frmCancel) return;
        ++withoutStrip;
        EXPECT_EQ(world.calls.countOf("Form."), 0) << "to look for the wish makes no strip";
        EXPECT_TRUE(world.forms().live.empty());
    };
    world.expand();
    EXPECT_EQ(withoutStrip, 49);
    EXPECT_EQ(childCount(), 120);
}

} // namespace
} // namespace cvlog::details
