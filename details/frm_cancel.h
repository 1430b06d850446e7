#pragma once

#include "details/busy.h"
#include "widgets/form.h"
#include "widgets/image_list.h"

#include <memory>
#include <optional>

namespace cvlog::details {

/// The strip over a list whose entry takes long to open: what is going on, and a button to stop it. There is one at
/// most; while it is loaded, `Globals::frmCancel` holds it and `ExpansionBusy` is set.
class FrmCancel : public widgets::FormOwner, public std::enable_shared_from_this<FrmCancel> {
public:
    explicit FrmCancel(core::Globals& globals) : globals_(globals) {}

    /// Throws when the system makes no window.
    static std::shared_ptr<FrmCancel> load(core::Globals& globals);

    /// In twips of the screen.
    void move(const base::Area& place) { form_->setPlacement(place); }
    /// In front of the top-level window in which that window lies, and goes with it. In front of none when that fails.
    void show(std::int32_t window, widgets::Activation activation);
    /// False once it is unloaded, by whomever.
    bool isLoaded() const noexcept { return form_ && form_->isLoaded(); }
    /// Its user wants the expansion to stop. False again after the unload.
    bool Cancelled() const noexcept { return cancelled_; }
    void ShowNextFrame();
    void unload() noexcept;

    const widgets::Form& form() const noexcept { return *form_; }
    /// The number of the frame that is shown, from 1; 0 before the first.
    int frame() const noexcept { return frame_; }

private:
    void formResized() override;
    void formUnload() override;
    void fill();

    core::Globals& globals_;
    std::shared_ptr<void> apartment_; // while the window is open
    std::optional<Busy> busy_;
    std::optional<widgets::Form> form_;
    widgets::ImageList ilCancel_;
    bool cancelled_ = false;
    int frame_ = 0;
};

} // namespace cvlog::details
