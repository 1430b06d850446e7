#pragma once

#include "host/frm_log.h"
#include "host/log_placement.h"
#include "host/log_visibility.h"
#include "tests/support/fake_window.h"
#include "tests/support/log_world.h"

#include <gtest/gtest.h>

namespace cvlog::tests {

/// An open log whose host has a window for it, or none.
class PlacedLog : public testing::Test {
protected:
    PlacedLog() {
        EXPECT_TRUE(world.open());
        world.globals.LogWindowVisible = false;
        giveNoWindow();
        world.calls.restart();
    }
    ~PlacedLog() override {
        world.calls.disarm();
        world.calls.insideCall = nullptr;
        world.close();
        EXPECT_EQ(world.platform.peers.forms.faults, std::vector<std::string>());
        EXPECT_TRUE(world.platform.peers.forms.live.empty());
    }

    void giveWindow() {
        auto tools = std::make_shared<ScriptCollection>("Tools", world.calls);
        tools->add(u"", other.tool);
        tools->add(u"", window.tool);
        world.host.workspace->set(u"ActiveToolList", tools);
    }
    void giveNoWindow() {
        world.host.workspace->set(u"ActiveToolList",
                                  std::make_shared<ScriptCollection>("Tools", world.calls));
    }
    core::Globals& globals() { return world.globals; }
    core::PlacementState& placement() { return world.globals.placement; }
    bool floats() { return placement().frmLog != nullptr; }
    platform::headless::FormBook& forms() { return world.platform.peers.forms; }
    platform::headless::HeadlessFormPeer& floatingPeer() { return *forms().live.at(0); }
    automation::ObjectRef container() { return container_; }
    void setParent() { host::PutParent(globals(), container()); }
    /// Parent without the placing that a put brings.
    void assumeParent() { placement().Parent = container(); }
    automation::ObjectRef anotherContainer() {
        return std::make_shared<ScriptObject>("Another", world.calls);
    }

    LogWorld world;
    FakeWindow window{world.calls};
    FakeWindow other{world.calls}; // a tool that is not the last one

private:
    automation::ObjectRef container_ = std::make_shared<ScriptObject>("Container", world.calls);
};

} // namespace cvlog::tests
