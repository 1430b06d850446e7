#include "view/live_font.h"

#include "base/failure.h"
#include "hostapi/font_object.h"

#include <optional>

namespace cvlog::view {

struct LiveFont::Held {
    Changed changed;
    automation::ObjectRef object;

    void tell(const automation::ObjectRef& font) {
        std::optional<base::Font> now;
        base::ignoring([&] { now = hostapi::FontObject(font).read(); });
        // Reading may have run anything: only the font that is still held counts.
        if (!now || object != font) return;
        const Changed handler = changed;
        if (handler) handler(*now);
    }
};

LiveFont::LiveFont(ports::Fonts& fonts, Changed changed)
    : fonts_(fonts), held_(std::make_shared<Held>(Held{std::move(changed), nullptr})) {}

LiveFont::~LiveFont() {
    held_->changed = nullptr;
    held_->object = nullptr;
}

const automation::ObjectRef& LiveFont::object() const noexcept { return held_->object; }

void LiveFont::hold(automation::ObjectRef font) {
    std::unique_ptr<automation::Connection> connection;
    const auto listener = [held = std::weak_ptr<Held>(held_),
                           source = std::weak_ptr<automation::Object>(font)] {
        const std::shared_ptr<Held> holder = held.lock();
        const automation::ObjectRef changedFont = source.lock();
        if (holder && changedFont) holder->tell(changedFont);
    };
    if (font) base::ignoring([&] { connection = fonts_.watch(font, listener); });
    // The old ones go last: their end may run other code.
    std::swap(held_->object, font);
    std::swap(connection_, connection);
}

} // namespace cvlog::view
