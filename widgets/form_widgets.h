#pragma once

#include "base/area.h"
#include "ports/pictures.h"

#include <functional>
#include <memory>
#include <string>

namespace cvlog::widgets {

/// What lies on a form: an area in twips of the form's client area. Set up before it is put on the form.
struct Label {
    base::Area area;
    std::u16string caption; // broken into lines where it is too long for one
};

/// A push button. '&' in the caption marks the key that presses it together with Alt.
struct Button {
    base::Area area;
    std::u16string caption;
    bool isDefault = false; // Enter presses it
    bool isCancel = false;  // Esc presses it
    std::function<void()> clicked;
    std::function<void()> gotFocus = {};
};

/// A picture in the middle of its area, as large as fits.
struct PictureBox {
    base::Area area;
    std::shared_ptr<const ports::Picture> picture; // null: an empty area
};

} // namespace cvlog::widgets
