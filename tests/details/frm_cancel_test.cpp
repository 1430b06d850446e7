#include "details/frm_cancel.h"

#include "tests/support/expansion_world.h"

#include <gtest/gtest.h>

namespace cvlog::details {
namespace {

using tests::ExpansionWorld;
using Areas = std::vector<base::Area>;

class FrmCancelTest : public testing::Test {
protected:
    ~FrmCancelTest() override {
        if (world.globals.frmCancel) world.globals.frmCancel->unload();
        tests::expectNothingLeft(world);
    }
    std::shared_ptr<FrmCancel> load() { return FrmCancel::load(world.globals); }
    platform::headless::HeadlessFormPeer& peer() { return *world.forms().live.back(); }
    ExpansionWorld world;
};

constexpr std::size_t kFiller = 0;
constexpr std::size_t kCancel = 1;

TEST_F(FrmCancelTest, HasItsTextsInTheUsersLanguage) {
    const auto dialog = load();
    EXPECT_EQ(dialog->form().caption(), u"Cancel");
    EXPECT_EQ(dialog->form().border(), widgets::Border::Strip);
    EXPECT_EQ(dialog->form().buttons().at(kFiller).caption, u"Expanding ...");
    EXPECT_EQ(dialog->form().buttons().at(kCancel).caption, u"      Cancel");
}

TEST_F(FrmCancelTest, IsBusyFromLoadToUnload) {
    EXPECT_FALSE(world.globals.ExpansionBusy);
    const auto dialog = load();
    EXPECT_TRUE(world.globals.ExpansionBusy);
    EXPECT_EQ(world.globals.frmCancel, dialog);
    dialog->unload();
    EXPECT_FALSE(world.globals.ExpansionBusy);
    EXPECT_EQ(world.globals.frmCancel, nullptr);
    EXPECT_FALSE(dialog->isLoaded());
}

TEST_F(FrmCancelTest, DoesNotEndWhatWasBusyBeforeIt) {
    const Busy outer(world.globals);
    load()->unload();
    EXPECT_TRUE(world.globals.ExpansionBusy);
}

TEST_F(FrmCancelTest, NotesTheWishToCancelAndStaysUntilItIsUnloaded) {
    const auto dialog = load();
    EXPECT_FALSE(dialog->Cancelled());
    peer().userClicks(kCancel);
    EXPECT_TRUE(dialog->Cancelled());
    EXPECT_TRUE(dialog->isLoaded());
    dialog->unload();
    EXPECT_FALSE(dialog->Cancelled());
    EXPECT_FALSE(load()->Cancelled());
}

TEST_F(FrmCancelTest, TakesNoClickOnItsTextForAWish) {
    const auto dialog = load();
    peer().userClicks(kFiller);
    EXPECT_FALSE(dialog->Cancelled());
}

TEST_F(FrmCancelTest, PassesTheFocusOnSoThatEnterAlwaysCancels) {
    const auto dialog = load();
    peer().userFocuses(kFiller);
    EXPECT_EQ(peer().focusedButton(), &dialog->form().buttons().at(kCancel));
    peer().userPressesEnter();
    EXPECT_TRUE(dialog->Cancelled());
}

TEST_F(FrmCancelTest, ShowsFiveFramesInTurn) {
    const auto dialog = load();
    EXPECT_EQ(dialog->frame(), 0);
    EXPECT_EQ(dialog->form().pictureBoxes().at(0).picture, nullptr);
    std::vector<const ports::Picture*> shown;
    for (const int frame : {1, 2, 3, 4, 5, 1}) {
        dialog->ShowNextFrame();
        EXPECT_EQ(dialog->frame(), frame);
        shown.push_back(dialog->form().pictureBoxes().at(0).picture.get());
    }
    EXPECT_EQ(shown.front(), shown.back());
    std::sort(shown.begin(), shown.end());
    EXPECT_EQ(std::unique(shown.begin(), shown.end()) - shown.begin(), 5);
}

TEST_F(FrmCancelTest, LaysItselfOutAsWideAsItIs) {
    const auto dialog = load();
    dialog->move({300, 600, 9'000, 300});
    EXPECT_EQ(dialog->form().clientArea(), (base::Area{0, 0, 9'000, 300}));
    EXPECT_EQ(dialog->form().buttons().at(kCancel).area, (base::Area{7'800, 0, 1'200, 300}));
    EXPECT_EQ(dialog->form().buttons().at(kFiller).area, (base::Area{0, 0, 7'800, 300}));
    EXPECT_EQ(dialog->form().pictureBoxes().at(0).area, (base::Area{7'845, 45, 210, 210}));
    dialog->move({300, 600, 5'000, 300});
    EXPECT_EQ(dialog->form().buttons().at(kCancel).area, (base::Area{3'800, 0, 1'200, 300}));
    EXPECT_EQ(dialog->form().buttons().at(kFiller).area.width, 3'800);
    dialog->move({300, 600, 600, 60});
    EXPECT_EQ(dialog->form().buttons().at(kFiller).area.width, 0);
    EXPECT_EQ(dialog->form().pictureBoxes().at(0).area.width, 0);
}

TEST_F(FrmCancelTest, InsetsItsPictureByThreeBordersOfEachKindAndLeavesThreeBelow) {
    struct {
        base::Twips side, top;
    } const borders[] = {{15, 15}, {30, 15}, {15, 30}, {7.5F, 22.5F}, {0, 0}};
    for (const auto& [side, top] : borders) {
        world.platform.screens.sideBorder = side;
        world.platform.screens.topBorder = top;
        const auto dialog = load();
        dialog->move({300, 600, 9'000, 300});
        EXPECT_EQ(dialog->form().buttons().at(kCancel).area, (base::Area{7'800, 0, 1'200, 300}));
        EXPECT_EQ(dialog->form().buttons().at(kFiller).area, (base::Area{0, 0, 7'800, 300}));
        EXPECT_EQ(dialog->form().pictureBoxes().at(0).area,
                  (base::Area{7'800 + 3 * side, 3 * top, 300 - 6 * top, 300 - 6 * top}))
            << side << ", " << top;
        dialog->unload();
    }
}

TEST_F(FrmCancelTest, LiesBesideNoOtherOfItsKind) {
    const auto first = load();
    const auto second = load();
    EXPECT_FALSE(first->isLoaded());
    EXPECT_EQ(world.globals.frmCancel, second);
}

TEST_F(FrmCancelTest, ComesUpWithoutAnOwnerThatRefuses) {
    world.forms().refusedOwners.insert(77);
    const auto dialog = load();
    dialog->show(77, widgets::Activation::Take);
    EXPECT_EQ(world.forms().shown.back(), (platform::headless::FormBook::Showing{u"Cancel", 0, false}));
    EXPECT_TRUE(dialog->form().visible());
}

TEST_F(FrmCancelTest, DoesWithoutPicturesThatCannotBeLoaded) {
    world.platform.gate.watcher = [](std::string_view call) {
        if (call == "Pictures.builtIn") throw std::runtime_error("no pictures");
    };
    const auto dialog = load();
    dialog->ShowNextFrame();
    EXPECT_EQ(dialog->frame(), 0);
    world.platform.gate.watcher = nullptr;
}

} // namespace
} // namespace cvlog::details
