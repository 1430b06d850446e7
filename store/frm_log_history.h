#pragma once

#include "core/globals.h"
#include "store/history_loading.h"
#include "widgets/form.h"
#include "widgets/menu_item.h"

#include <memory>

namespace cvlog::store {

/// The window that shows every record of the log in one list.
class FrmLogHistory : public widgets::FormOwner,
                      private widgets::ListViewOwner,
                      public std::enable_shared_from_this<FrmLogHistory> {
public:
    /// Throws when the system makes no window.
    explicit FrmLogHistory(core::Globals& globals);
    ~FrmLogHistory() override;

    /// Puts the window in its place with the list in it.
    void load();
    /// See store::LoadHistory.
    void LoadHistory(std::int32_t sessionStart);
    /// Shows the window in front of its owner and comes back when it is unloaded.
    void showModal(std::int32_t ownerWindow) { form_.showModal(ownerWindow); }
    void bringToFront();
    bool isLoaded() const noexcept { return form_.isLoaded(); }
    void unload() { form_.unload(); }

    widgets::Form& form() noexcept { return form_; }
    const core::LogViews::ListRef& lvHistory() const noexcept { return lvHistory_; }
    const widgets::MenuItemRef& mnuPopUpHistory() const noexcept { return mnuPopUpHistory_; }
    HistoryProgress& progress() noexcept { return progress_; }
    /// The database whose records the list shows; null once it has gone.
    std::shared_ptr<Database> database() const noexcept { return database_.lock(); }

private:
    void formResized() override;
    void formUnload() override;
    void keyPressed(widgets::KeyEvent& key) override;
    void mouseReleased(widgets::MouseButton button) override;
    void doubleClicked() override;
    void showMenu();
    void run(const widgets::MenuItem& chosen);

    core::Globals& globals_;
    std::shared_ptr<void> apartment_; // while the window is open
    widgets::Form form_;
    core::LogViews::ListRef lvHistory_;
    widgets::MenuItemRef mnuPopUpHistory_;
    HistoryProgress progress_;
    std::weak_ptr<Database> database_;
};

/// Opens the history in front of the host's main window and comes back when it is closed. One that is open comes to
/// the front instead. A history that cannot be read reaches the caller; no window is left then.
void ShowHistory(core::Globals& globals);

/// Closes the history if it is open.
void UnloadHistory(core::Globals& globals) noexcept;

} // namespace cvlog::store
