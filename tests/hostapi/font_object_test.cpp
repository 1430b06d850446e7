#include "hostapi/font_object.h"

#include "automation/error.h"
#include "tests/support/failure_code.h"
#include "tests/support/script_object.h"

#include <gtest/gtest.h>

#include <limits>

namespace cvlog::hostapi {
namespace {

using tests::failureCode;

class FontObjectTest : public testing::Test {
protected:
    void SetUp() override {
        font->set(u"Name", u"Tahoma").set(u"Size", 12.5).set(u"Bold", false).set(u"Italic", true);
        font->set(u"Underline", true).set(u"Strikethrough", false).set(u"Weight", 500).set(u"Charset", 128);
    }
    std::int32_t readingFails() {
        return failureCode([this] { FontObject(font).read(); });
    }
    tests::CallCounter calls;
    std::shared_ptr<tests::ScriptObject> font = std::make_shared<tests::ScriptObject>("font", calls);
};

TEST_F(FontObjectTest, ReadsEveryMember) {
    base::Font expected;
    expected.face = u"Tahoma";
    expected.points = 12.5F;
    expected.weight = 500;
    expected.italic = true;
    expected.underline = true;
    expected.charset = 128;
    EXPECT_EQ(FontObject(font).read(), expected);
}

TEST_F(FontObjectTest, TakesBoldForItsWordWhenTheWeightDoesNotFollow) {
    font->set(u"Bold", true).set(u"Weight", 400);
    EXPECT_EQ(FontObject(font).read().weight, 700);
    font->set(u"Weight", 900);
    EXPECT_EQ(FontObject(font).read().weight, 900);
}

TEST_F(FontObjectTest, RefusesNothing) {
    EXPECT_EQ(failureCode([] { FontObject().read(); }), automation::code::kObjectRequired);
}

TEST_F(FontObjectTest, RefusesAnObjectThatIsNoFont) {
    const auto page = std::make_shared<tests::ScriptObject>("page", calls);
    page->set(u"Name", u"a page has a name and a size as well").set(u"Size", 3);
    EXPECT_EQ(failureCode([&] { FontObject(page).read(); }), automation::code::kTypeMismatch);
}

TEST_F(FontObjectTest, LetsTheFontsOwnErrorReachTheCaller) {
    font->on(u"Underline", [](std::span<automation::Value>) -> automation::Value {
        throw automation::AutomationError(automation::code::kException, u"broken", u"the host");
    });
    EXPECT_EQ(readingFails(), automation::code::kException);
}

TEST_F(FontObjectTest, RefusesValuesThatNoFontCanHave) {
    for (const double size : {0.0, -8.0, 2001.0, std::numeric_limits<double>::quiet_NaN(),
                              std::numeric_limits<double>::infinity()}) {
        font->set(u"Size", size);
        EXPECT_EQ(readingFails(), automation::code::kInvalidPropertyValue) << size;
    }
    font->set(u"Size", 8).set(u"Weight", -1);
    EXPECT_EQ(readingFails(), automation::code::kInvalidPropertyValue);
    font->set(u"Weight", 1001);
    EXPECT_EQ(readingFails(), automation::code::kInvalidPropertyValue);
    font->set(u"Weight", 400).set(u"Charset", 256);
    EXPECT_EQ(readingFails(), automation::code::kInvalidPropertyValue);
    font->set(u"Charset", u"none");
    EXPECT_EQ(readingFails(), automation::code::kTypeMismatch);
}

} // namespace
} // namespace cvlog::hostapi
