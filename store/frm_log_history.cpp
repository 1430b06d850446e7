#include "store/frm_log_history.h"

#include "base/failure.h"
#include "base/text.h"
#include "core/log_resources.h"
#include "host/context_help.h"
#include "host/help_contexts.h"
#include "host/menu_help_hook.h"
#include "host/window_placement.h"
#include "resources/form_layouts.h"
#include "store/history_commands.h"
#include "store/history_describer.h"
#include "store/history_menu.h"

#include <algorithm>

namespace cvlog::store {

namespace {

using Layout = resources::HistoryLayout;

constexpr std::u16string_view kSection = u"Activity Log History";
constexpr int kCaption = 152;
constexpr int kMessageColumn = 106;

std::u16string text(const core::Globals& globals, int id) {
    return std::u16string(resources::text(globals.platform.language, id));
}

using Command = void (*)(core::Globals&, FrmLogHistory&);

struct MenuCommand {
    std::u16string_view item;
    Command run;
};

constexpr MenuCommand kMenuCommands[] = {
    {u"mnuHistoryShowErrors", ShowHistoryErrors}, {u"mnuHistoryDelete", DeleteHistoryRecords},
    {u"mnuHistoryClear", ClearLogHistory},        {u"mnuHistoryCopy", CopyHistoryRecords},
    {u"mnuHistorySave", ReportHistory},
};

} // namespace

FrmLogHistory::FrmLogHistory(core::Globals& globals)
    : globals_(globals), apartment_(globals.hold()),
      form_(globals.platform.peers, widgets::Border::Sizable, text(globals, kCaption)),
      lvHistory_(std::make_shared<widgets::ListView>(globals.platform.collator, globals.platform.measurer)),
      mnuPopUpHistory_(MakeHistoryMenu()), database_(globals.store.LogDatabase) {
    widgets::Column column;
    column.key = u"Message";
    column.caption = text(globals, kMessageColumn);
    column.width = Layout::kColumnWidth;
    lvHistory_->setColumns({column});
    lvHistory_->setDescriber(std::make_shared<HistoryDescriber>(globals.platform.language));
    lvHistory_->attach(globals.platform.peers.makeListView(*lvHistory_));
    lvHistory_->setOwner(this);
}

FrmLogHistory::~FrmLogHistory() {
    form_.unload();
    lvHistory_->setOwner(nullptr);
    lvHistory_->attach(nullptr); // the window goes now, even if someone still holds the list
}

void FrmLogHistory::load() {
    form_.setOwner(weak_from_this());
    base::ignoring([&] { lvHistory_->setSmallIcons(core::LoadLogResources(globals_).ilLog); });
    base::ignoring([&] {
        host::RestorePlacement(globals_, form_, kSection, {0, 0, Layout::kWidth, Layout::kHeight});
    });
    if (isLoaded())
        form_.place(*lvHistory_, form_.clientArea()); // the host, asked on the way, may have it closed
}

void FrmLogHistory::LoadHistory(std::int32_t sessionStart) {
    const std::shared_ptr<FrmLogHistory> keep = shared_from_this();
    store::LoadHistory(globals_, *lvHistory_, progress_, sessionStart);
}

void FrmLogHistory::bringToFront() {
    base::ignoring([&] { form_.bringToFront(); });
}

void FrmLogHistory::formResized() {
    if (form_.list()) form_.place(*lvHistory_, form_.clientArea());
}

void FrmLogHistory::formUnload() {
    host::SavePlacement(globals_, form_, kSection);
    if (globals_.store.frmLogHistory.get() == this) globals_.store.frmLogHistory.reset();
}

void FrmLogHistory::keyPressed(widgets::KeyEvent& key) {
    const std::shared_ptr<FrmLogHistory> keep = shared_from_this();
    constexpr std::int16_t kEsc = 27, kDelete = 46, kC = 67, kF1 = 112, kF10 = 121;
    constexpr std::int16_t kShift = 1, kCtrl = 2;
    switch (key.code) {
    case kF1:
        key.code = 0;
        host::ShowContextHelp(globals_, base::decimal(host::kHistoryListHelp));
        break;
    case kF10:
        if ((key.shift & kShift) == 0) break;
        key.code = 0;
        base::ignoring([&] { showMenu(); });
        break;
    case kDelete:
        base::ignoring([&] { DeleteHistoryRecords(globals_, *this); });
        break;
    case kC:
        if ((key.shift & kCtrl) != 0) base::ignoring([&] { CopyHistoryRecords(globals_, *this); });
        break;
    case kEsc:
        unload();
        break;
    default:
        break;
    }
}

void FrmLogHistory::mouseReleased(widgets::MouseButton button) {
    const std::shared_ptr<FrmLogHistory> keep = shared_from_this();
    if (button == widgets::MouseButton::Right) base::ignoring([&] { showMenu(); });
}

void FrmLogHistory::doubleClicked() {
    const std::shared_ptr<FrmLogHistory> keep = shared_from_this();
    base::ignoring([&] {
        PrepareHistoryMenu(globals_, mnuPopUpHistory_, *lvHistory_);
        const widgets::MenuItemRef showErrors = findMenuItem(mnuPopUpHistory_, u"mnuHistoryShowErrors");
        if (showErrors->visible) ShowHistoryErrors(globals_, *this);
    });
}

void FrmLogHistory::showMenu() {
    PrepareHistoryMenu(globals_, mnuPopUpHistory_, *lvHistory_);
    if (!isLoaded()) return; // the host was asked
    const widgets::MenuItemRef showErrors = findMenuItem(mnuPopUpHistory_, u"mnuHistoryShowErrors");
    widgets::MenuItemRef chosen;
    {
        const std::int32_t context = findMenuItem(mnuPopUpHistory_, u"mnuHistoryClear")->helpContext;
        const host::MenuHelp help(globals_, base::decimal(context));
        const auto peer = globals_.platform.peers.makePopupMenu(
            *mnuPopUpHistory_, showErrors->visible ? showErrors.get() : nullptr);
        chosen = peer->popUp(form_.windowHandle());
    }
    if (chosen && isLoaded()) run(*chosen);
}

void FrmLogHistory::run(const widgets::MenuItem& chosen) {
    const auto command = std::ranges::find(kMenuCommands, chosen.name, &MenuCommand::item);
    if (command != std::end(kMenuCommands)) command->run(globals_, *this);
}

void ShowHistory(core::Globals& globals) {
    if (const std::shared_ptr<FrmLogHistory> open = globals.store.frmLogHistory) return open->bringToFront();
    const std::shared_ptr<void> apartment = globals.hold();
    const auto window = std::make_shared<FrmLogHistory>(globals);
    globals.store.frmLogHistory = window;
    const base::ScopeExit closing([&] { window->unload(); });
    window->load();
    window->LoadHistory(globals.store.LastRecordNum);
    const std::int32_t owner = base::valueOr(0, [&] { return globals.store.Workspace.mainWindow().hwnd(); });
    if (window->isLoaded()) window->showModal(owner);
}

void UnloadHistory(core::Globals& globals) noexcept {
    if (const std::shared_ptr<FrmLogHistory> open = globals.store.frmLogHistory) {
        base::ignoring([&] { open->unload(); });
    }
}

} // namespace cvlog::store
