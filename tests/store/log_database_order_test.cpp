#include "automation/error.h"
#include "store/log_database.h"
#include "tests/support/log_world.h"

#include <gtest/gtest.h>

// What is done before what when a log is opened and closed, and odd answers of the settings on the way.

namespace cvlog::store {
namespace {

using tests::LogWorld;

struct Icons {
    bool small;
    bool header;
    friend bool operator==(Icons, Icons) = default;
};

void PrintTo(Icons icons, std::ostream* out) {
    *out << (icons.small ? "small " : "- ") << (icons.header ? "header" : "-");
}

/// What all lists show at each change of one list's looks, list by list.
class WatchedIcons {
public:
    explicit WatchedIcons(LogWorld& world) : world_(world) {
        world.calls.insideCall = [this](const std::string& name) {
            if (name != "List.appearanceChanged") return;
            for (std::size_t i = 0; i < world_.controls.size(); ++i)
                seen[i].push_back(
                    {world_.list(i).smallIcons() != nullptr, world_.list(i).headerIcons() != nullptr});
        };
    }
    ~WatchedIcons() { world_.calls.insideCall = nullptr; }
    WatchedIcons(const WatchedIcons&) = delete;
    WatchedIcons& operator=(const WatchedIcons&) = delete;

    std::vector<Icons> seen[2];

private:
    LogWorld& world_;
};

TEST(OrderOfALog, UnbindsTheSmallIconsBeforeTheHeaderIconsListByList) {
    const auto world = tests::openWorld(2);
    world->add({u"", 0, u"", u"row", u""});
    WatchedIcons watched(*world);
    world->close();
    constexpr Icons kBoth{true, true}, kHeader{false, true}, kNone{false, false};
    EXPECT_EQ(watched.seen[0], (std::vector<Icons>{kHeader, kNone, kNone, kNone}));
    EXPECT_EQ(watched.seen[1], (std::vector<Icons>{kBoth, kBoth, kHeader, kNone}));
}

TEST(OrderOfALog, AttachesTheHeaderIconsBeforeTheSmallIcons) {
    const auto world = tests::openWorld(1);
    world->close();
    ASSERT_TRUE(world->open());
    WatchedIcons watched(*world);
    world->add({u"", 0, u"", u"row", u""});
    ASSERT_GE(watched.seen[0].size(), 2U);
    EXPECT_EQ(watched.seen[0][0], (Icons{false, true}));
    EXPECT_EQ(watched.seen[0][1], (Icons{true, true}));
}

TEST(OrderOfALog, TakesTheParentAwayBeforeVisibleIsReadAndAfterItIsSaved) {
    const auto world = tests::openWorld(1);
    const automation::ObjectRef container = world->host.workspace;
    std::vector<std::string> parents;
    world->calls.insideCall = [&](const std::string& name) {
        if (name.starts_with("Settings."))
            parents.push_back(name + (world->globals.placement.Parent ? " with" : " without"));
    };
    world->globals.placement.Parent = container;
    world->globals.LogWindowVisible = true;
    world->close();
    EXPECT_EQ(world->globals.placement.Parent, nullptr);
    EXPECT_TRUE(world->globals.LogWindowVisible) << "taking the parent away hides nothing";
    world->globals.placement.Parent = container;
    ASSERT_TRUE(world->open());
    EXPECT_EQ(world->globals.placement.Parent, nullptr);
    EXPECT_EQ(parents, (std::vector<std::string>{"Settings.save with", "Settings.get without"}));
    world->calls.insideCall = nullptr;
}

TEST(RememberedVisibilityOfALog, IsFalseForATextOf64Kilobytes) {
    LogWorld world;
    world.platform.settings.save(u"Calvetta", u"Activity Log", u"Visible", std::u16string(64 * 1024, u'1'));
    world.globals.LogWindowVisible = true;
    EXPECT_TRUE(world.open());
    EXPECT_FALSE(world.globals.LogWindowVisible);
}

TEST(RememberedVisibilityOfALog, IsNotSavedOverByAnOpening) {
    LogWorld world;
    world.platform.settings.save(u"Calvetta", u"Activity Log", u"Visible", u"yes");
    EXPECT_TRUE(world.open());
    EXPECT_EQ(world.platform.settings.get(u"Calvetta", u"Activity Log", u"Visible", u"1"), u"yes");
}

} // namespace
} // namespace cvlog::store
