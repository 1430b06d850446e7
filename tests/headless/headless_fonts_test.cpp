#include "platform/headless/headless_fonts.h"

#include "hostapi/font_object.h"

#include <gtest/gtest.h>

namespace cvlog::platform::headless {
namespace {

base::Font unusualFont() {
    base::Font font;
    font.face = u"MS UI Gothic";
    font.points = 9.75F;
    font.weight = 600;
    font.italic = font.underline = font.strikethrough = true;
    font.charset = 128;
    return font;
}

class HeadlessFontsTest : public testing::Test {
protected:
    CallGate gate;
    HeadlessFonts fonts{gate};
};

TEST_F(HeadlessFontsTest, AFontSaysWhatItWasMadeOf) {
    EXPECT_EQ(hostapi::FontObject(fonts.make(unusualFont())).read(), unusualFont());
    EXPECT_EQ(hostapi::FontObject(fonts.make({})).read(), base::Font());
}

TEST_F(HeadlessFontsTest, EveryMemberCanBeChanged) {
    const automation::ObjectRef font = fonts.make({});
    const base::Font wanted = unusualFont();
    font->put(u"Name", std::u16string_view(wanted.face));
    font->put(u"Size", wanted.points);
    font->put(u"Weight", wanted.weight);
    font->put(u"Italic", true);
    font->put(u"Underline", true);
    font->put(u"Strikethrough", true);
    font->put(u"Charset", wanted.charset);
    EXPECT_EQ(hostapi::FontObject(font).read(), wanted);
    font->put(u"Bold", false);
    EXPECT_EQ(hostapi::FontObject(font).read().weight, 400);
    EXPECT_EQ(automation::toText(font->get(u"")), wanted.face) << "the name is the default member";
}

TEST_F(HeadlessFontsTest, TellsOfEachChangeUntilTheConnectionEnds) {
    const automation::ObjectRef font = fonts.make({});
    int changes = 0;
    auto connection = fonts.watch(font, [&] { ++changes; });
    ASSERT_NE(connection, nullptr);
    font->put(u"Size", 10);
    font->put(u"Bold", true);
    EXPECT_EQ(changes, 2);
    connection.reset();
    font->put(u"Size", 11);
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(static_cast<HeadlessFont&>(*font).listeners(), 0U);
}

TEST_F(HeadlessFontsTest, AListenerMayEndItsConnectionWhenItIsCalled) {
    const automation::ObjectRef font = fonts.make({});
    std::unique_ptr<automation::Connection> connection;
    int changes = 0;
    connection = fonts.watch(font, [&] {
        ++changes;
        connection.reset();
    });
    font->put(u"Size", 10);
    font->put(u"Size", 11);
    EXPECT_EQ(changes, 1);
}

} // namespace
} // namespace cvlog::platform::headless
