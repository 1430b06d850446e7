#include "view/log_control.h"

#include "automation/error.h"
#include "base/failure.h"
#include "core/cv_log.h"
#include "core/log_resources.h"
#include "hostapi/font_object.h"
#include "view/controls_object.h"
#include "view/list_object.h"
#include "view/log_columns.h"
#include "view/log_control_ids.h"
#include "view/log_dbl_click.h"
#include "view/log_describer.h"
#include "view/log_keys.h"
#include "view/log_menu.h"
#include "view/menu_object.h"
#include "view/row_copy.h"
#include "view/sorting.h"

namespace cvlog::view {

namespace {

// In the menu's order; the items of the columns menu are one array.
void addMenuObjects(std::vector<NamedControl>& controls, const widgets::MenuItemRef& menu) {
    controls.push_back({menu->name, makeMenuItemObject(menu)});
    if (!menu->items.empty() && menu->items.front()->index)
        return controls.push_back({menu->items.front()->name, makeMenuArrayObject(menu)});
    for (const widgets::MenuItemRef& item : menu->items) addMenuObjects(controls, item);
}

automation::ObjectRef controlsOf(const ListRef& list, const ListFontRef& font,
                                 const widgets::MenuItemRef& menu) {
    std::vector<NamedControl> controls = {{u"lvLog", makeListObject(list, font)}};
    addMenuObjects(controls, menu);
    return makeControls(std::move(controls));
}

} // namespace

LogControl::LogControl(core::Globals& globals)
    : globals_(globals),
      lvLog_(std::make_shared<widgets::ListView>(globals.platform.collator, globals.platform.measurer,
                                                 globals.LogViews.rowIds())),
      mnuPopUpLog_(MakeLogMenu(globals.platform.language)),
      font_(std::make_shared<ListFont>(globals.platform.fonts, lvLog_)),
      controls_(controlsOf(lvLog_, font_, mnuPopUpLog_)) {
    font_->changed = [this] { markChanged(kFontId); };
    LocaliseColumns(globals_, *lvLog_);
    lvLog_->setDescriber(std::make_shared<LogDescriber>(globals_.platform.language));
    lvLog_->attach(globals_.platform.peers.makeListView(*lvLog_));
    base::ignoring([&] { globals_.LogViews.add(lvLog_); });
    try {
        fillList();
    } catch (...) {
        leaveViews(); // a control that was never made must not stay among the lists
        throw;
    }
    lvLog_->setOwner(this);
}

void LogControl::fillList() {
    SetUpColumns(globals_, *lvLog_, *findMenuItem(mnuPopUpLog_, u"mnuCol"));
    if (globals_.store.CurrentLog && globals_.LogViews.count() > 1) {
        core::AttachImageLists(globals_, *lvLog_);
        CopyAllRows(*globals_.LogViews.first(), *lvLog_);
    }
}

void LogControl::leaveViews() noexcept {
    base::ignoring([&] { globals_.LogViews.remove(*lvLog_); });
    lvLog_->setOwner(nullptr);
    lvLog_->attach(nullptr); // the window goes now, even if someone still holds the list
}

LogControl::~LogControl() {
    font_->changed = nullptr; // others may hold the list's objects longer
    leaveViews();
}

void LogControl::setBackColor(std::uint32_t colour) {
    askToChange(kBackColorId);
    lvLog_->setColours({colour, lvLog_->colours().fore});
    markChanged(kBackColorId);
}

void LogControl::setForeColor(std::uint32_t colour) {
    askToChange(kForeColorId);
    lvLog_->setColours({lvLog_->colours().back, colour});
    markChanged(kForeColorId);
}

void LogControl::setEnabled(bool enabled) {
    askToChange(kEnabledId);
    lvLog_->setEnabled(enabled);
    markChanged(kEnabledId);
}

automation::ObjectRef LogControl::font() { return font_->object(); }

void LogControl::setFont(const automation::ObjectRef& font) {
    askToChange(kFontId);
    const ListFontRef holder = font_; // reading a foreign font may run anything
    holder->put(font);
}

void LogControl::setAmbientFont(const std::optional<base::Font>& font) { font_->setAmbient(font); }

ControlProperties LogControl::properties() {
    return {lvLog_->colours().back, lvLog_->colours().fore, lvLog_->enabled(), font_->toStore()};
}

void LogControl::restore(const ControlProperties& stored) {
    std::optional<base::Font> look;
    if (stored.font) look = hostapi::FontObject(stored.font).read();
    lvLog_->setColours({stored.backColor, lvLog_->colours().fore});
    lvLog_->setColours({stored.backColor, stored.foreColor});
    lvLog_->setEnabled(stored.enabled);
    if (look)
        font_->restore(stored.font, *look);
    else
        font_->restoreDefault();
    unsaved_ = false;
}

void LogControl::askToChange(std::int32_t property) const {
    const auto ask = mayChange; // who is asked may destroy what asks
    if (ask && !ask(property))
        throw automation::AutomationError(automation::code::kSetNotPermitted, u"Set not permitted");
}

void LogControl::markChanged(std::int32_t property) {
    unsaved_ = true;
    const auto tell = propertyChanged; // and who is told; nothing of the control is used afterwards
    if (tell) tell(property);
}

void LogControl::passFocus(bool got, std::u16string_view event) noexcept {
    // A handler may destroy this control: what comes after it is copied first.
    const std::shared_ptr<core::CVLog> log = globals_.store.CurrentLog;
    // Nobody was told that the focus went while an entry was opened; so it is no news that it is back.
    const bool isNews = !got || !focused_;
    if (!globals_.ExpansionBusy) focused_ = got;
    if (const auto handler = focusChanged) base::ignoring([&] { handler(got); });
    if (log && isNews) base::ignoring([&] { log->FireEvent(event); });
}

void LogControl::gotFocus() { passFocus(true, u"GotFocus"); }

void LogControl::lostFocus() { passFocus(false, u"LostFocus"); }

void LogControl::run(const std::function<void(const CommandTarget&)>& action) noexcept {
    base::ignoring([&] {
        const std::shared_ptr<void> apartment = globals_.hold();
        const CommandTarget target{globals_, lvLog_, mnuPopUpLog_, weak_from_this().lock()};
        action(target);
    });
}

void LogControl::doubleClick(const automation::ObjectRef& f) { LogDblClick(globals_, f); }

void LogControl::columnClicked(int column) {
    run([column](const CommandTarget& target) { SortByColumn(target.globals, target.list, column); });
}

void LogControl::doubleClicked() {
    run([](const CommandTarget& target) { LogDblClick(target.globals, target.control); });
}

void LogControl::keyPressed(widgets::KeyEvent& key) {
    run([&key](const CommandTarget& target) { LogKeyPressed(target, key); });
}

void LogControl::keyReleased(widgets::KeyEvent& key) {
    run([&key](const CommandTarget& target) { LogKeyReleased(target, key); });
}

void LogControl::mouseReleased(widgets::MouseButton button) {
    run([button](const CommandTarget& target) {
        if (button == widgets::MouseButton::Right) base::ignoring([&] { ShowMenuAndDispatch(target); });
        target.list->repaint();
    });
}

} // namespace cvlog::view
