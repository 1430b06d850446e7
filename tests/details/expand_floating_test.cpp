// The floating log's own window goes, or is shown elsewhere, while an entry is opened in it.

#include "base/failure.h"
#include "details/expand_entry.h"
#include "tests/support/expansion_world.h"
#include "tests/support/placed_log.h"
#include "view/log_columns.h"

namespace cvlog::details {
namespace {

struct Meanwhile {
    const char* name;
    std::function<void(tests::LogWorld&)> run;
};

void PrintTo(const Meanwhile& meanwhile, std::ostream* out) { *out << meanwhile.name; }

platform::headless::HeadlessFormPeer* windowOfLog(tests::LogWorld& world) {
    for (auto* form : world.platform.peers.forms.live)
        if (form->form().caption() != u"Cancel") return form;
    return nullptr;
}

const Meanwhile kMeanwhile[] = {
    {"Hide", [](tests::LogWorld& world) { host::PutVisible(world.globals, false); }},
    {"TheUserClosesIt",
     [](tests::LogWorld& world) {
         if (auto* form = windowOfLog(world)) form->userCloses();
     }},
    {"HideAndShow",
     [](tests::LogWorld& world) {
         host::PutVisible(world.globals, false);
         host::PutVisible(world.globals, true);
     }},
    {"CloseDB", [](tests::LogWorld& world) { world.close(); }},
    {"EndOfTheLogObject", [](tests::LogWorld& world) { world.log.reset(); }},
    {"AColumnIsHidden", [](tests::LogWorld& world) { view::ShowColumn(world.globals, u"Method", false); }},
};

class ExpandInTheFloatingLog : public tests::PlacedLog, public testing::WithParamInterface<Meanwhile> {
protected:
    void runIn(int yield) {
        world.globals.options.KeepInSession = true;
        host::PutVisible(globals(), true);
        ASSERT_TRUE(floats());
        std::string lines;
        for (int i = 0; i < 170; ++i) lines += "line\n";
        world.platform.files.addFile(tests::kErrorsPath, lines);
        world.add({u"M1", 2, u"P1", u"opened", u"given.errors"});
        bool ran = false;
        world.platform.pump.atYield = [&](int number) {
            if (number == yield && !std::exchange(ran, true)) GetParam().run(world);
        };
        const auto list = globals().LogViews.first();
        ASSERT_TRUE(list);
        base::ignoring([&] { ExpandEntry(globals(), list, list->rowCount()); });
        world.platform.pump.atYield = nullptr;
        EXPECT_TRUE(ran);
        EXPECT_FALSE(globals().ExpansionBusy);
        EXPECT_EQ(globals().frmCancel, nullptr);
        EXPECT_EQ(world.platform.files.openFiles(), 0);
        if (auto* form = windowOfLog(world)) {
            EXPECT_TRUE(form->form().enabled());
            EXPECT_EQ(form->form().pointer(), widgets::Pointer::Default);
        }
    }
};

TEST_P(ExpandInTheFloatingLog, EndsWellInTheFirstYield) { runIn(1); }
TEST_P(ExpandInTheFloatingLog, EndsWellInALaterYield) { runIn(2); }
TEST_P(ExpandInTheFloatingLog, EndsWellInTheLastYield) { runIn(3); }

INSTANTIATE_TEST_SUITE_P(Actions, ExpandInTheFloatingLog, testing::ValuesIn(kMeanwhile),
                         [](const auto& instance) { return std::string(instance.param.name); });

} // namespace
} // namespace cvlog::details
