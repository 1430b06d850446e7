#pragma once

#include "view/log_control.h"
#include "widgets/peer_factory.h"

#include <windows.h>

namespace cvlog::com {

/// The control as a picture. Its natural size is that of its window while a container shows one, and the extent that
/// the container gave it otherwise; drawn at another size it is scaled, not laid out anew.
class ControlPicture {
public:
    ControlPicture(view::LogControl& control, widgets::PeerFactory& peers) noexcept
        : control_(control), peers_(peers) {}

    /// In hundredths of a millimetre.
    const SIZEL& extent() const noexcept { return extent_; }
    void setExtent(const SIZEL& extent) noexcept { extent_ = extent; }
    /// Whether a container shows the control's window.
    void setActive(bool active) noexcept { active_ = active; }

    /// The natural size in pixels of a resolution; 0 for the screen's.
    SIZE pixels(int dpi = 0) const noexcept;
    /// Draws into a place in logical units of a device or a metafile. A metafile gets the pixels of `target`, or the
    /// screen's without one. Throws std::runtime_error when the system has no room for the picture.
    void draw(HDC dc, const RECT& place, HDC target) const;

private:
    /// The natural size where it shows, and its resolution.
    struct Layout {
        SIZE size;
        int dpi;
    };
    Layout natural() const noexcept;
    Layout scaled(double factor) const noexcept;
    Layout layoutFor(SIZE device) const noexcept;
    void drawOnDevice(HDC dc, const RECT& place) const;

    view::LogControl& control_;
    widgets::PeerFactory& peers_;
    SIZEL extent_{12'000, 6'000};
    bool active_ = false;
};

} // namespace cvlog::com
