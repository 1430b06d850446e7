#include "host/window_placement.h"

#include "automation/value.h"
#include "base/text.h"
#include "resources/form_layouts.h"

#include <algorithm>
#include <cmath>

namespace cvlog::host {

namespace {

using base::Area;
using base::Twips;
using Layout = resources::FloatingLogLayout;

constexpr Twips kFarthest = 1'000'000; // no desktop is larger

/// The settings of one section.
class Section {
public:
    Section(core::Globals& globals, std::u16string_view name)
        : settings_(globals.platform.settings), product_(globals.store.Workspace.productName()), name_(name) {
    }

    std::optional<Twips> number(std::u16string_view key) const {
        const std::u16string text = settings_.get(product_, name_, key, u"");
        if (text.empty()) return std::nullopt;
        const Twips number = automation::toSingle(text);
        return std::isfinite(number) && std::abs(number) <= kFarthest ? std::optional(number) : std::nullopt;
    }
    void save(std::u16string_view key, Twips value) const {
        settings_.save(product_, name_, key, base::decimal(static_cast<std::int32_t>(std::lround(value))));
    }

private:
    ports::SettingsStore& settings_;
    std::u16string product_;
    std::u16string_view name_;
};

std::optional<Area> storedArea(const Section& section) {
    const auto left = section.number(u"Left");
    const auto top = section.number(u"Top");
    const auto width = section.number(u"Width");
    const auto height = section.number(u"Height");
    if (!left || !top || !width || !height) return std::nullopt;
    return Area{*left, *top, *width, *height};
}

Area onScreen(const Area& wanted, const Area& work) {
    Area area = wanted;
    area.width = std::clamp(area.width, std::min(Layout::kLeastWidth, work.width), work.width);
    area.height = std::clamp(area.height, std::min(Layout::kLeastHeight, work.height), work.height);
    area.left = std::clamp(area.left, work.left, work.left + work.width - area.width);
    area.top = std::clamp(area.top, work.top, work.top + work.height - area.height);
    return area;
}

Area centred(const Area& size, const Area& work) {
    return onScreen({work.left + (work.width - size.width) / 2, work.top + (work.height - size.height) / 2,
                     size.width, size.height},
                    work);
}

} // namespace

void RestorePlacement(core::Globals& globals, widgets::Form& form, std::u16string_view section,
                      Area defaults) {
    std::optional<Area> stored;
    widgets::WindowState state = widgets::WindowState::Normal;
    base::ignoring([&] {
        const Section settings(globals, section);
        stored = storedArea(settings);
        if (stored && settings.number(u"State") == static_cast<Twips>(widgets::WindowState::Maximised))
            state = widgets::WindowState::Maximised;
    });
    const Area work = globals.platform.screens.workArea(stored.value_or(defaults));
    form.setPlacement(stored ? onScreen(*stored, work) : centred(defaults, work));
    if (state != form.state()) form.setState(state);
}

void SavePlacement(core::Globals& globals, const widgets::Form& form, std::u16string_view section) noexcept {
    base::ignoring([&] {
        if (!form.placement()) return;
        const Area area = *form.placement();
        const auto state = static_cast<Twips>(form.state());
        const Section settings(globals, section);
        settings.save(u"Left", area.left);
        settings.save(u"Top", area.top);
        settings.save(u"Width", area.width);
        settings.save(u"Height", area.height);
        settings.save(u"State", state);
    });
}

} // namespace cvlog::host
