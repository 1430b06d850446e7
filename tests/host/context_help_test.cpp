// Help from the host's file, and by F1 in an open menu.

#include "host/context_help.h"

#include "host/menu_help_hook.h"
#include "tests/support/fault_sweep.h"
#include "tests/support/log_world.h"

namespace cvlog::host {
namespace {

using ports::FilteredMessage;
using Showing = platform::headless::RecordingHelpViewer::Showing;

constexpr FilteredMessage kF1InMenu = {2, 0x100, 0x70};

class ContextHelp : public testing::Test {
protected:
    void SetUp() override {
        mainWindow->set(u"hwnd", 4711);
        world.host.workspace->set(u"CalvettaWindow", mainWindow);
        ASSERT_TRUE(world.open());
    }
    std::vector<Showing>& shown() { return world.platform.helpViewer.shown; }

    tests::LogWorld world;
    std::shared_ptr<tests::ScriptObject> mainWindow =
        std::make_shared<tests::ScriptObject>("MainWindow", world.calls);
};

TEST_F(ContextHelp, OpensTheHostsFileForTheHostsWindow) {
    ShowContextHelp(world.globals, u"1001");
    ASSERT_EQ(shown().size(), 1U);
    EXPECT_EQ(shown()[0], (Showing{4711, u"C:\\Prod\\Calvetta.hlp", 1001}));
}

TEST_F(ContextHelp, IgnoresEveryFailure) {
    ShowContextHelp(world.globals, u"no number");
    ShowContextHelp(world.globals, u"99999999999");
    EXPECT_TRUE(shown().empty());
    mainWindow->raise(u"hwnd", tests::CallCounter::injectedError());
    ShowContextHelp(world.globals, u"5");
    ASSERT_EQ(shown().size(), 1U) << "without an owner";
    EXPECT_EQ(shown()[0].owner, 0);
    world.host.workspace->raise(u"GetHelpFile", tests::CallCounter::injectedError());
    ShowContextHelp(world.globals, u"5");
    EXPECT_EQ(shown().size(), 1U);
    world.close();
    ShowContextHelp(world.globals, u"5");
    EXPECT_EQ(shown().size(), 1U);
}

TEST(FaultSweepOfHelp, ShowsItOrNot) {
    tests::FaultSweep<tests::LogWorld> sweep;
    sweep.arrange = [] { return tests::openWorld(0); };
    sweep.scenario = [](tests::LogWorld& world) {
        const MenuHelp help(world.globals, u"3");
        world.platform.messageFilters.send(kF1InMenu);
    };
    sweep.check = [](tests::LogWorld& world, const tests::SweepRun& run) {
        EXPECT_FALSE(run.error);
        EXPECT_FALSE(world.platform.messageFilters.isInstalled());
        EXPECT_LE(world.platform.helpViewer.shown.size(), 1U);
    };
    sweep.leastCalls = 3;
    sweep.run();
}

class MenuHelpHook : public ContextHelp {
protected:
    platform::headless::HeadlessMessageFilters& filters() { return world.platform.messageFilters; }
    core::MenuHelpState& state() { return world.globals.menuHelp; }
    void install(std::u16string_view context) { InstallMenuHelpHook(world.globals, context); }
};

TEST_F(MenuHelpHook, TakesTheFirstF1OfAMenuAndShowsHelpOnce) {
    install(u"1001");
    EXPECT_FALSE(state().MenuHelpShown);
    EXPECT_TRUE(filters().send(kF1InMenu));
    EXPECT_TRUE(state().MenuHelpShown);
    EXPECT_FALSE(filters().send(kF1InMenu)) << "passed on";
    ASSERT_EQ(shown().size(), 1U);
    EXPECT_EQ(shown()[0].context, 1001);
    RemoveMenuHelpHook(world.globals);
    install(u"7");
    EXPECT_TRUE(filters().send(kF1InMenu)) << "another menu";
    EXPECT_EQ(shown().back().context, 7);
    RemoveMenuHelpHook(world.globals);
}

TEST_F(MenuHelpHook, PassesOnEverythingElse) {
    install(u"1001");
    constexpr FilteredMessage kOthers[] = {{0, 0x100, 0x70}, {1, 0x100, 0x70}, {5, 0x100, 0x70},
                                           {2, 0x101, 0x70}, {2, 0x104, 0x70}, {2, 0x200, 0x70},
                                           {2, 0x100, 0x71}, {2, 0x100, 0x0D}, {2, 0x100, 0x100000070}};
    for (const FilteredMessage& message : kOthers) EXPECT_FALSE(filters().send(message));
    EXPECT_TRUE(shown().empty());
    EXPECT_FALSE(state().MenuHelpShown);
    RemoveMenuHelpHook(world.globals);
}

TEST_F(MenuHelpHook, TakesF1OnceWithoutAContextToo) {
    install(u"");
    EXPECT_TRUE(filters().send(kF1InMenu));
    EXPECT_FALSE(filters().send(kF1InMenu));
    EXPECT_TRUE(shown().empty());
    RemoveMenuHelpHook(world.globals);
}

TEST_F(MenuHelpHook, IsInstalledOnceAndKeepsItsContext) {
    install(u"1");
    filters().send(kF1InMenu);
    install(u"2");
    EXPECT_EQ(filters().installations, 1);
    EXPECT_EQ(state().MenuHelpContext, u"1");
    EXPECT_TRUE(state().MenuHelpShown);
    RemoveMenuHelpHook(world.globals);
    EXPECT_EQ(state().MenuHelpHook, nullptr);
    EXPECT_EQ(state().MenuHelpContext, u"");
    EXPECT_FALSE(filters().isInstalled());
    RemoveMenuHelpHook(world.globals);
}

TEST_F(MenuHelpHook, ThatTheSystemRefusesLeavesMenusWithoutHelp) {
    const auto foreign = filters().install([](const FilteredMessage&) { return false; });
    install(u"1");
    EXPECT_EQ(state().MenuHelpHook, nullptr);
    RemoveMenuHelpHook(world.globals);
    EXPECT_TRUE(filters().isInstalled()) << "the other one";
}

TEST_F(MenuHelpHook, GoesWithAnyLogAlsoOneThatHasNotInstalledIt) {
    auto other = std::make_shared<core::CVLog>(world.globals);
    install(u"1001");
    other.reset();
    EXPECT_FALSE(filters().isInstalled());
    EXPECT_EQ(state().MenuHelpContext, u"");
}

TEST_F(MenuHelpHook, MayBeRemovedByTheHostThatIsAskedForTheFile) {
    install(u"1001");
    world.host.workspace->before(u"GetHelpFile", [this] { RemoveMenuHelpHook(world.globals); });
    EXPECT_TRUE(filters().send(kF1InMenu));
    EXPECT_EQ(shown().size(), 1U);
    EXPECT_EQ(shown()[0].context, 1001);
    EXPECT_FALSE(filters().isInstalled());
}

TEST_F(MenuHelpHook, GuardRemovesItOnEveryPath) {
    try {
        const MenuHelp help(world.globals, u"1");
        EXPECT_TRUE(filters().isInstalled());
        throw std::runtime_error("the menu's failure");
    } catch (const std::runtime_error&) {
    }
    EXPECT_FALSE(filters().isInstalled());
}

} // namespace
} // namespace cvlog::host
