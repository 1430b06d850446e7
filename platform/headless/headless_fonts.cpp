#include "platform/headless/headless_fonts.h"

#include "base/failure.h"

namespace cvlog::platform::headless {

namespace {

using automation::DispatchTable;
using automation::Member;
using automation::MemberKind;
using automation::on;
using automation::Type;
using automation::Value;
using Arguments = std::span<Value>;

// As font objects of desktops number them; the name is the default member.
enum MemberId : std::int32_t {
    kName = 0,
    kSize = 2,
    kBold = 3,
    kItalic = 4,
    kUnderline = 5,
    kStrikethrough = 6,
    kWeight = 7,
    kCharset = 8,
};

template <class Get>
Member readable(std::u16string_view name, std::int32_t id, Type type, Get get) {
    return {
        name, id, MemberKind::PropertyGet,
        type, {}, on<HeadlessFont>([get](HeadlessFont& target, Arguments) { return get(target.font()); })};
}

template <class Put>
Member settable(std::u16string_view name, std::int32_t id, Type type, Put put) {
    return {name,
            id,
            MemberKind::PropertyPut,
            Type::Nothing,
            {{name, type}},
            on<HeadlessFont>([name, put](HeadlessFont& target, Arguments a) {
                target.change(name, [&](base::Font& font) { put(font, a[0]); });
            })};
}

class Listener : public automation::EventSink {
public:
    explicit Listener(std::function<void()> changed) : changed_(std::move(changed)) {}
    void onEvent(std::int32_t, std::span<Value>) override { changed_(); }

private:
    std::function<void()> changed_;
};

} // namespace

class HeadlessFont::SinkConnection : public automation::Connection {
public:
    SinkConnection(std::shared_ptr<HeadlessFont> font, std::uint32_t cookie)
        : font_(std::move(font)), cookie_(cookie) {}
    ~SinkConnection() override { font_->events_.unadvise(cookie_); }

private:
    std::shared_ptr<HeadlessFont> font_;
    std::uint32_t cookie_;
};

const DispatchTable& HeadlessFont::members() {
    using base::Font;
    static const DispatchTable table = {
        readable(u"Name", kName, Type::Text, [](const Font& font) { return font.face; }),
        settable(u"Name", kName, Type::Text,
                 [](Font& font, const Value& value) { font.face = value.as<std::u16string>(); }),
        readable(u"Size", kSize, Type::Single, [](const Font& font) { return font.points; }),
        settable(u"Size", kSize, Type::Single,
                 [](Font& font, const Value& value) { font.points = value.as<float>(); }),
        readable(u"Bold", kBold, Type::Boolean,
                 [](const Font& font) { return font.weight >= base::kBoldFrom; }),
        settable(u"Bold", kBold, Type::Boolean,
                 [](Font& font, const Value& value) {
                     font.weight = value.as<bool>() ? base::kBoldWeight : base::kNormalWeight;
                 }),
        readable(u"Italic", kItalic, Type::Boolean, [](const Font& font) { return font.italic; }),
        settable(u"Italic", kItalic, Type::Boolean,
                 [](Font& font, const Value& value) { font.italic = value.as<bool>(); }),
        readable(u"Underline", kUnderline, Type::Boolean, [](const Font& font) { return font.underline; }),
        settable(u"Underline", kUnderline, Type::Boolean,
                 [](Font& font, const Value& value) { font.underline = value.as<bool>(); }),
        readable(u"Strikethrough", kStrikethrough, Type::Boolean,
                 [](const Font& font) { return font.strikethrough; }),
        settable(u"Strikethrough", kStrikethrough, Type::Boolean,
                 [](Font& font, const Value& value) { font.strikethrough = value.as<bool>(); }),
        readable(u"Weight", kWeight, Type::Int32, [](const Font& font) { return font.weight; }),
        settable(u"Weight", kWeight, Type::Int32,
                 [](Font& font, const Value& value) { font.weight = value.as<std::int32_t>(); }),
        readable(u"Charset", kCharset, Type::Int32, [](const Font& font) { return font.charset; }),
        settable(u"Charset", kCharset, Type::Int32,
                 [](Font& font, const Value& value) { font.charset = value.as<std::int32_t>(); }),
    };
    return table;
}

std::unique_ptr<automation::Connection> HeadlessFont::connect(std::shared_ptr<automation::EventSink> sink) {
    const std::uint32_t cookie = events_.advise(std::move(sink));
    return std::make_unique<SinkConnection>(std::static_pointer_cast<HeadlessFont>(shared_from_this()),
                                            cookie);
}

automation::ObjectRef HeadlessFonts::make(const base::Font& font) {
    gate_.pass("Fonts.make");
    return std::make_shared<HeadlessFont>(font);
}

std::unique_ptr<automation::Connection> HeadlessFonts::watch(const automation::ObjectRef& font,
                                                             std::function<void()> changed) {
    gate_.pass("Fonts.watch");
    std::unique_ptr<automation::Connection> connection;
    base::ignoring([&] { connection = font->connect(std::make_shared<Listener>(std::move(changed))); });
    return connection;
}

} // namespace cvlog::platform::headless
