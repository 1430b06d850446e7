#pragma once

#include "base/area.h"

#include <cstdint>

namespace cvlog::widgets {

struct Button;
struct Label;
struct PictureBox;
class ListView;

/// Whether a window that comes up or to the front takes the user's input, or leaves it where it is.
enum class Activation { Take, Leave };

/// Shows a form on a platform. The window exists, hidden, from the peer's making to its end; its end may come inside
/// one of its own events. It tells the form what the user does.
class FormPeer {
public:
    virtual ~FormPeer() = default;

    virtual std::int32_t windowHandle() const = 0;
    virtual void captionChanged() = 0;
    /// The program gave another placement or state. The form is told the client size that follows.
    virtual void placementChanged() = 0;
    /// The program wants the client area that the form has now.
    virtual void clientSizeChanged() = 0;
    // The widgets stay where they are as long as the form.
    virtual void labelAdded(const Label& label) = 0;
    virtual void buttonAdded(const Button& button) = 0;
    virtual void pictureBoxAdded(const PictureBox& picture) = 0;
    virtual void buttonMoved(const Button& button) = 0;
    virtual void pictureBoxMoved(const PictureBox& picture) = 0;
    virtual void pictureChanged(const PictureBox& picture) = 0;
    /// The form is told when the button has the focus.
    virtual void focusButton(const Button& button) = 0;
    virtual void enabledChanged() = 0;
    virtual void pointerChanged() = 0;
    virtual void listPlaced(ListView& list, const base::Area& area) = 0;
    virtual void listTakenOff(ListView& list) noexcept = 0;

    /// Throws when the window cannot be owned by that one (0: by none). A form in the normal state that was never
    /// placed comes up where the system chooses.
    virtual void show(std::int32_t ownerWindow, Activation activation) = 0;
    /// Shows it and runs messages until the peer's end.
    virtual void runModal(std::int32_t ownerWindow) = 0;
    /// A window that somebody else has hidden comes up again.
    virtual void bringToFront(Activation activation) = 0;
    /// Whether the user's input goes into this window.
    virtual bool isActive() const = 0;
};

} // namespace cvlog::widgets
