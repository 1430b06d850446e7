#include "core/log_resources.h"

#include "base/failure.h"
#include "hostapi/font_object.h"

namespace cvlog::core {

namespace {

void addBuiltIn(Globals& globals, widgets::ImageList& images,
                std::initializer_list<std::u16string_view> keys) {
    for (const std::u16string_view key : keys)
        base::ignoring([&] { images.add(key, globals.platform.pictures.builtIn(key)); });
}

} // namespace

LogResources& LoadLogResources(Globals& globals) {
    if (!globals.frmLogResources) {
        auto form = std::make_unique<LogResources>();
        form->ilLog = std::make_shared<widgets::ImageList>();
        form->templates = LogTemplates::localised(globals.platform.language);
        form->ilSort = std::make_shared<widgets::ImageList>();
        addBuiltIn(globals, *form->ilLog, {u"Good", u"Suspect", u"Failure", u"Cancel", u"Bad", u"Session"});
        addBuiltIn(globals, *form->ilSort, {u"SortEmpty", u"SortUp", u"SortDown"});
        globals.frmLogResources = std::move(form);
    }
    return *globals.frmLogResources;
}

automation::ObjectRef ResourceFont(Globals& globals) {
    if (const automation::ObjectRef font = LoadLogResources(globals).Font) return font;
    const automation::ObjectRef made = globals.platform.fonts.make(base::Font());
    LogResources& form = LoadLogResources(globals); // what made the font may have unloaded the form
    if (!form.Font) form.Font = made;
    return form.Font;
}

void SetResourceFont(Globals& globals, const automation::ObjectRef& font) {
    hostapi::FontObject(font).read();
    LoadLogResources(globals).Font = font; // what the font ran may have unloaded the form
}

void AttachImageLists(Globals& globals, widgets::ListView& list) noexcept {
    if (list.headerIcons() && list.smallIcons()) return;
    base::ignoring([&] { list.setHeaderIcons(LoadLogResources(globals).ilSort); });
    base::ignoring([&] { list.setSmallIcons(LoadLogResources(globals).ilLog); });
}

} // namespace cvlog::core
