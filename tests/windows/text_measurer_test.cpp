// Widths are exactly what the system's own measuring says, however they were found.

#include "base/text.h"
#include "platform/win32/screen_units.h"
#include "platform/win32/system_font.h"
#include "platform/win32/text_measurer.h"
#include "platform/win32/wide_text.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace cvlog::platform::win32 {
namespace {

base::Font font(std::u16string face, float points, int weight = 400, bool italic = false) {
    base::Font made;
    made.face = std::move(face);
    made.points = points;
    made.weight = weight;
    made.italic = italic;
    return made;
}

std::vector<base::Font> fonts() {
    return {base::Font(),
            font(u"Tahoma", 8.25F),
            font(u"Tahoma", 14, 700),
            font(u"Tahoma", 11, 400, true),
            font(u"System", 10),
            font(u"MS Sans Serif", 8.25F),
            font(u"Courier New", 9),
            font(u"MS UI Gothic", 9),
            font(u"Gulim", 9),
            font(u"WenQuanYi Micro Hei", 10),
            font(u"No Such Font", 10)};
}

base::Twips systemWidth(const base::Font& font, std::u16string_view text) {
    const MemoryDc dc(CreateCompatibleDC(nullptr));
    const FontHandle handle = makeFont(font, screenDpi());
    const HGDIOBJ previous = SelectObject(dc.get(), handle.get());
    SIZE size{};
    GetTextExtentPoint32W(dc.get(), wideView(text).data(), static_cast<int>(text.size()), &size);
    SelectObject(dc.get(), previous);
    return toTwips(size.cx, screenDpi());
}

TEST(Win32TextMeasurer, GivesTheSystemsWidths) {
    const std::vector<std::u16string> texts = {
        u"",
        u"a",
        u"2024-02-29 23:59:59",
        u"AVATAR To. Ty, fi ffi",
        u"tab\tinside",
        u"line\r\nbreak",
        std::u16string(u"nul\0inside", 10),
        u"\u65E5\u672C\u8A9E\u30C6\u30B9\u30C8",
        u"\uD55C\uAD6D\uC5B4 text",
        u"\u0301 combining e\u0301",
        u"\u0645\u0631\u062D\u0628\u0627",
        u"emoji \U0001F600 \U0001F468\u200D\U0001F469",
        std::u16string(u"lone ") + char16_t(0xD800) + u" and " + char16_t(0xDC00),
        u"caf\u00E9 \u00AD soft",
    };
    TextMeasurer measurer;
    for (const base::Font& each : fonts()) {
        const std::uint32_t number = measurer.fontNumber(each);
        for (int round = 0; round < 2; ++round) // the second finds everything remembered
            for (const auto& text : texts)
                EXPECT_EQ(measurer.width(number, text), systemWidth(each, text)) << base::toUtf8(text);
    }
}

TEST(Win32TextMeasurer, GivesTheSystemsWidthsOfRandomTexts) {
    std::mt19937 random(3);
    const auto between = [&random](unsigned low, unsigned high) {
        return static_cast<char16_t>(low + random() % (high - low + 1));
    };
    TextMeasurer measurer;
    for (const base::Font& each : fonts()) {
        const std::uint32_t number = measurer.fontNumber(each);
        for (int i = 0; i < 200; ++i) {
            std::u16string text;
            for (int length = between(1, 40), kind = between(0, 3); length > 0; --length)
                text += kind == 0   ? between(0x20, 0x7E)
                        : kind == 1 ? between(0xA0, 0x24F)
                        : kind == 2 ? between(0x3041, 0x30FF)
                                    : between(1, 0xFFFF);
            ASSERT_EQ(measurer.width(number, text), systemWidth(each, text)) << "text " << i;
        }
    }
}

TEST(Win32TextMeasurer, NumbersFontsByTheirProperties) {
    TextMeasurer measurer;
    const std::uint32_t plain = measurer.fontNumber(font(u"Tahoma", 8));
    EXPECT_NE(plain, 0U);
    EXPECT_EQ(measurer.fontNumber(font(u"Tahoma", 8)), plain);
    EXPECT_NE(measurer.fontNumber(font(u"Tahoma", 9)), plain);
    EXPECT_NE(measurer.fontNumber(font(u"Tahoma", 8, 700)), plain);
    EXPECT_NE(measurer.fontNumber(font(u"Courier New", 8)), plain);
}

TEST(Win32TextMeasurer, MeasuresTheStartOfEndlessTexts) {
    TextMeasurer measurer;
    const std::uint32_t number = measurer.fontNumber(base::Font());
    const base::Twips one = measurer.width(number, u"x");
    const std::u16string longest(TextMeasurer::kLongestMeasured, u'x');
    EXPECT_EQ(measurer.width(number, longest), one * static_cast<float>(longest.size()));
    EXPECT_EQ(measurer.width(number, longest + longest), measurer.width(number, longest));
}

} // namespace
} // namespace cvlog::platform::win32
