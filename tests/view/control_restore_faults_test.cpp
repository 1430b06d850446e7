// Every outward call fails while the control takes over stored properties or another font.

#include "platform/headless/headless_fonts.h"
#include "tests/support/fault_sweep.h"
#include "tests/support/log_world.h"
#include "view/control_stream.h"

#include <gtest/gtest.h>

namespace cvlog::view {
namespace {

using tests::LogWorld;

base::Font tahoma() {
    base::Font font;
    font.face = u"Tahoma";
    font.points = 20;
    return font;
}

std::unique_ptr<LogWorld> arranged() {
    auto world = std::make_unique<LogWorld>();
    world->peersMustAgree = false;
    world->addControl();
    return world;
}

std::vector<std::uint8_t> storedProperties() {
    LogWorld other;
    ControlProperties properties{1, 2, false, other.platform.fonts.make(tahoma())};
    return encodeProperties(properties);
}

void expectWhole(LogWorld& world, const tests::SweepRun& run) {
    const widgets::ListView& list = world.list();
    EXPECT_EQ(list.font(), run.error ? base::Font() : tahoma());
    EXPECT_EQ(list.enabled(), run.error.has_value());
    EXPECT_EQ(list.colours(), run.error ? widgets::Colours() : (widgets::Colours{1, 2}));
}

TEST(FaultSweepOfStoredProperties, TakesThemAllOrNone) {
    const std::vector<std::uint8_t> bytes = storedProperties();
    tests::FaultSweep<LogWorld> sweep;
    sweep.arrange = arranged;
    sweep.scenario = [&bytes](LogWorld& world) {
        std::size_t position = 0;
        world.controls[0]->restore(decodeProperties(
            [&](std::span<std::uint8_t> wanted) {
                for (std::uint8_t& byte : wanted) byte = bytes.at(position++);
            },
            world.platform.fonts));
    };
    sweep.check = expectWhole;
    sweep.leastCalls = 2;
    sweep.run();
}

TEST(FaultSweepOfFonts, AFailedPutKeepsTheFontAndTheListeningToIt) {
    std::shared_ptr<tests::ScriptObject> font;
    std::shared_ptr<platform::headless::HeadlessFont> before;
    tests::FaultSweep<LogWorld> sweep;
    sweep.arrange = [&] {
        auto world = arranged();
        before = std::make_shared<platform::headless::HeadlessFont>(base::Font());
        world->controls[0]->put(u"Font", automation::ObjectRef(before));
        font = std::make_shared<tests::ScriptObject>("font", world->calls);
        font->set(u"Name", u"Tahoma").set(u"Size", 20).set(u"Bold", false).set(u"Italic", false);
        font->set(u"Underline", false).set(u"Strikethrough", false).set(u"Weight", 400).set(u"Charset", 1);
        return world;
    };
    sweep.scenario = [&](LogWorld& world) { world.controls[0]->put(u"Font", automation::ObjectRef(font)); };
    sweep.check = [&](LogWorld& world, const tests::SweepRun& run) {
        EXPECT_EQ(world.list().font(), run.error ? base::Font() : tahoma());
        EXPECT_EQ(before->listeners(), run.error ? 1U : 0U);
        EXPECT_EQ(world.controls[0]->font(),
                  run.error ? automation::ObjectRef(before) : automation::ObjectRef(font));
    };
    sweep.leastCalls = 9;
    sweep.run();
}

} // namespace
} // namespace cvlog::view
