#include "view/control_stream.h"

#include "automation/error.h"
#include "hostapi/font_object.h"

#include <bit>

namespace cvlog::view {

namespace {

constexpr std::uint32_t kMark = 0x53505643; // "CVPS"
constexpr std::uint16_t kVersion = 1;
constexpr std::size_t kHeadSize = 12;
constexpr std::size_t kLongestFace = 256;
constexpr std::size_t kLongestBody = 1024;
constexpr float kLargestPoints = 2000;
constexpr int kLargestWeight = 1000;

enum Stored : std::uint16_t {
    kStoredBackColor = 1,
    kStoredForeColor = 2,
    kStoredEnabled = 4,
    kStoredFont = 8,
    kAllStored = 15
};
enum Style : std::uint8_t { kItalic = 1, kUnderline = 2, kStrikethrough = 4, kAllStyles = 7 };

void require(bool sound) {
    if (!sound)
        throw automation::AutomationError(automation::code::kDamagedStorage,
                                          u"The stored properties are damaged");
}

class Writer {
public:
    template <class Number>
    void number(Number value) {
        for (std::size_t byte = 0; byte < sizeof(Number); ++byte)
            bytes.push_back(static_cast<std::uint8_t>(static_cast<std::uint64_t>(value) >> (8 * byte)));
    }
    std::vector<std::uint8_t> bytes;
};

class Reader {
public:
    explicit Reader(std::span<const std::uint8_t> bytes) : rest_(bytes) {}

    template <class Number>
    Number number() {
        require(rest_.size() >= sizeof(Number));
        std::uint64_t value = 0;
        for (std::size_t byte = 0; byte < sizeof(Number); ++byte)
            value |= static_cast<std::uint64_t>(rest_[byte]) << (8 * byte);
        rest_ = rest_.subspan(sizeof(Number));
        return static_cast<Number>(value);
    }
    bool atEnd() const noexcept { return rest_.empty(); }

private:
    std::span<const std::uint8_t> rest_;
};

void writeFont(Writer& writer, const base::Font& font) {
    const std::u16string_view face = std::u16string_view(font.face).substr(0, kLongestFace);
    writer.number(static_cast<std::uint16_t>(face.size()));
    for (const char16_t unit : face) writer.number(static_cast<std::uint16_t>(unit));
    writer.number(std::bit_cast<std::uint32_t>(font.points));
    writer.number(static_cast<std::uint16_t>(font.weight));
    writer.number(static_cast<std::uint8_t>((font.italic ? kItalic : 0) | (font.underline ? kUnderline : 0) |
                                            (font.strikethrough ? kStrikethrough : 0)));
    writer.number(static_cast<std::uint8_t>(font.charset));
}

base::Font readFont(Reader& reader) {
    base::Font font;
    const auto length = reader.number<std::uint16_t>();
    require(length <= kLongestFace);
    font.face.clear();
    for (std::uint16_t i = 0; i < length; ++i)
        font.face += static_cast<char16_t>(reader.number<std::uint16_t>());
    font.points = std::bit_cast<float>(reader.number<std::uint32_t>());
    require(font.points > 0 && font.points <= kLargestPoints); // false for what is no number
    font.weight = reader.number<std::uint16_t>();
    require(font.weight <= kLargestWeight);
    const auto style = reader.number<std::uint8_t>();
    require((style & ~kAllStyles) == 0);
    font.italic = (style & kItalic) != 0;
    font.underline = (style & kUnderline) != 0;
    font.strikethrough = (style & kStrikethrough) != 0;
    font.charset = reader.number<std::uint8_t>();
    return font;
}

bool readTruth(Reader& reader) {
    const auto truth = reader.number<std::uint8_t>();
    require(truth <= 1);
    return truth == 1;
}

std::uint16_t storedValues(const ControlProperties& properties) {
    const ControlProperties defaults;
    int values = 0;
    if (properties.backColor != defaults.backColor) values |= kStoredBackColor;
    if (properties.foreColor != defaults.foreColor) values |= kStoredForeColor;
    if (properties.enabled != defaults.enabled) values |= kStoredEnabled;
    if (properties.font) values |= kStoredFont;
    return static_cast<std::uint16_t>(values);
}

} // namespace

std::vector<std::uint8_t> encodeProperties(const ControlProperties& properties) {
    const std::uint16_t values = storedValues(properties);
    Writer body;
    if (values & kStoredBackColor) body.number(properties.backColor);
    if (values & kStoredForeColor) body.number(properties.foreColor);
    if (values & kStoredEnabled) body.number(static_cast<std::uint8_t>(properties.enabled ? 1 : 0));
    if (values & kStoredFont) writeFont(body, hostapi::FontObject(properties.font).read());
    Writer whole;
    whole.number(kMark);
    whole.number(static_cast<std::uint32_t>(body.bytes.size()));
    whole.number(kVersion);
    whole.number(values);
    whole.bytes.insert(whole.bytes.end(), body.bytes.begin(), body.bytes.end());
    return whole.bytes;
}

ControlProperties decodeProperties(const ByteSource& source, ports::Fonts& fonts) {
    std::vector<std::uint8_t> bytes(kHeadSize);
    source(bytes);
    Reader head(bytes);
    require(head.number<std::uint32_t>() == kMark);
    const auto size = head.number<std::uint32_t>();
    require(size <= kLongestBody);
    require(head.number<std::uint16_t>() == kVersion);
    const auto values = head.number<std::uint16_t>();
    require((values & ~kAllStored) == 0);

    bytes.resize(size);
    source(bytes);
    Reader body(bytes);
    ControlProperties properties;
    if (values & kStoredBackColor) properties.backColor = body.number<std::uint32_t>();
    if (values & kStoredForeColor) properties.foreColor = body.number<std::uint32_t>();
    if (values & kStoredEnabled) properties.enabled = readTruth(body);
    std::optional<base::Font> font;
    if (values & kStoredFont) font = readFont(body);
    require(body.atEnd());
    if (font) properties.font = fonts.make(*font);
    return properties;
}

} // namespace cvlog::view
