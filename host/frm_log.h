#pragma once

#include "core/globals.h"
#include "view/log_control.h"
#include "widgets/form.h"
#include "widgets/menu_item.h"

#include <memory>
#include <optional>

namespace cvlog::host {

/// The floating window of the log: one log control that fills it. It keeps the component's state alive as long as it
/// is open.
class FrmLog : public widgets::FormOwner, public std::enable_shared_from_this<FrmLog> {
public:
    explicit FrmLog(core::Globals& globals);

    /// Makes the window and the log in it. What the host or the settings do not say stays at its default; throws when
    /// the system makes no window.
    void load();
    /// Shows it in front of the owner window, or in front of none when the owner refuses; then to the front.
    void showBeside(const hostapi::HostWindow& owner, widgets::Activation activation);
    void bringToFront(widgets::Activation activation);
    /// Gives the focus back to the host's window; `Leave`: only when it was in this one.
    void unload(widgets::Activation hostWindow);
    /// Gives the focus to the log. Nothing happens in a window that is not loaded.
    void focusLog();

    widgets::Form* form() noexcept { return form_ ? &*form_ : nullptr; }
    view::LogControl* LogView() const noexcept { return logView_.get(); }
    const widgets::MenuItem& mnuPopUp() const noexcept { return mnuPopUp_; }

private:
    void formResized() override;
    void formQueryUnload(widgets::UnloadMode mode) override;
    void formUnload() override;
    void localise();
    void forget() noexcept;

    core::Globals& globals_;
    std::shared_ptr<void> apartment_; // while the window is open
    std::shared_ptr<view::LogControl> logView_;
    std::optional<widgets::Form> form_;
    widgets::MenuItem mnuPopUp_;
    widgets::Activation hostWindow_ = widgets::Activation::Take;
};

} // namespace cvlog::host
