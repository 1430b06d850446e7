#include "view/list_font.h"

#include "hostapi/font_object.h"

namespace cvlog::view {

ListFont::ListFont(ports::Fonts& fonts, const ListRef& list)
    : fonts_(fonts), list_(list), held_(fonts, [this](const base::Font& look) {
          show(look);
          own_ = true;
          tellChanged();
      }) {}

void ListFont::show(const base::Font& look) {
    if (const ListRef list = list_.lock()) list->setFont(look);
}

void ListFont::tellChanged() const {
    const auto tell = changed; // who is told may let go of this font
    if (tell) tell();
}

automation::ObjectRef ListFont::object() {
    const ListRef list = liveList(list_);
    if (!held_.object()) held_.hold(fonts_.make(list->font()));
    return held_.object();
}

void ListFont::put(const automation::ObjectRef& font) {
    restore(font, hostapi::FontObject(font).read());
    tellChanged();
}

void ListFont::setAmbient(const std::optional<base::Font>& font) {
    ambient_ = font;
    if (!own_) restoreDefault();
}

void ListFont::restore(const automation::ObjectRef& font, const base::Font& look) {
    show(look);
    held_.hold(font);
    own_ = true;
}

void ListFont::restoreDefault() {
    const ListRef list = list_.lock();
    if (!list) return;
    const bool sameLook = list->font() == defaultFont();
    if (!own_ && sameLook) return;
    if (!sameLook) list->setFont(defaultFont());
    own_ = false;
    // A new object when asked: the container's own is never handed out for others to change.
    held_.hold(nullptr);
}

automation::ObjectRef ListFont::toStore() {
    const ListRef list = list_.lock();
    return own_ && list && list->font() != defaultFont() ? object() : nullptr;
}

} // namespace cvlog::view
