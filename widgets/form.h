#pragma once

#include "base/area.h"
#include "base/failure.h"
#include "base/font.h"
#include "widgets/form_peer.h"
#include "widgets/form_widgets.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace cvlog::widgets {

class ListView;
class PeerFactory;

/// A strip has neither a frame nor a caption that can be seen.
enum class Border { Sizable, FixedDialog, Strip };
/// What the mouse pointer says over a window.
enum class Pointer { Default = 0, Hourglass = 11, Busy = 13 };
enum class WindowState { Normal = 0, Maximised = 2 };
/// Who wants a form to go: its user, by the window's own means, or the program.
enum class UnloadMode { User = 0, Code = 1 };

/// Receives what happens to a form. It is held while it is told, so it may let the form go.
class FormOwner {
public:
    virtual ~FormOwner() = default;
    /// The client area has another size.
    virtual void formResized() {}
    /// The form is about to go.
    virtual void formQueryUnload(UnloadMode) {}
    /// The form goes; its window is still there.
    virtual void formUnload() {}
};

/// A list that fills a part of a form.
struct PlacedList {
    ListView* list; // not owned: it ends before the form, or after it was taken off
    base::Area area;
};

/// A window of its own. It is loaded, not shown, when it is made; unloaded it can do nothing any more. Widgets are
/// reached by Tab in the order in which they were put on it.
class Form {
public:
    Form(PeerFactory& peers, Border border, std::u16string_view caption);
    /// Unloads without telling anybody.
    ~Form();
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    void setOwner(std::weak_ptr<FormOwner> owner) noexcept { owner_ = std::move(owner); }
    FormPeer* peer() const noexcept { return peer_.get(); }
    bool isLoaded() const noexcept { return peer_ != nullptr; }
    /// 0 once it is unloaded.
    std::int32_t windowHandle() const;

    Border border() const noexcept { return border_; }
    const std::u16string& caption() const noexcept { return caption_; }
    void setCaption(std::u16string_view caption);
    const base::Font& font() const noexcept { return font_; }

    /// The window in its normal state, frame included, in twips of the screen. None: the system chooses.
    const std::optional<base::Area>& placement() const noexcept { return placement_; }
    void setPlacement(const base::Area& placement);
    WindowState state() const noexcept { return state_; }
    void setState(WindowState state);
    /// The size inside the frame: left and top are 0.
    base::Area clientArea() const noexcept { return client_; }
    void setClientSize(base::Twips width, base::Twips height);

    const std::deque<Label>& labels() const noexcept { return labels_; }
    const std::deque<Button>& buttons() const noexcept { return buttons_; }
    const std::deque<PictureBox>& pictureBoxes() const noexcept { return pictureBoxes_; }
    const std::optional<PlacedList>& list() const noexcept { return list_; }
    void add(Label label);
    void add(Button button);
    void add(PictureBox picture);
    // What is on the form, by its number from 0 in the order in which it was put there.
    void moveButton(std::size_t button, const base::Area& area);
    void movePictureBox(std::size_t box, const base::Area& area);
    void setPicture(std::size_t box, std::shared_ptr<const ports::Picture> picture);
    /// Gives the button the focus, now or when the form is active.
    void focusButton(std::size_t button);
    /// Puts a list on the form or moves it there.
    void place(ListView& list, const base::Area& area);
    /// Takes the list off: its window goes back to where lists wait.
    void takeOffList() noexcept;

    /// A form that is not enabled takes no input of its user.
    bool enabled() const noexcept { return enabled_; }
    void setEnabled(bool enabled);
    Pointer pointer() const noexcept { return pointer_; }
    void setPointer(Pointer pointer);

    bool visible() const noexcept { return visible_; }
    /// Shows it beside other windows; with a window as its owner it stays in front of that one and goes with it. Throws
    /// when there is no such window.
    void show(std::int32_t ownerWindow = 0, Activation activation = Activation::Take);
    /// Shows it in front of all windows of the program, which take no input meanwhile, and comes back when it is
    /// unloaded.
    void showModal(std::int32_t ownerWindow = 0);
    /// In front of the program's other windows, and on the screen again when somebody has hidden its window.
    void bringToFront(Activation activation = Activation::Take);
    bool isActive() const { return peer_ && peer_->isActive(); }
    void unload() { unload(UnloadMode::Code); }

    // What the user did in the peer's window.
    void userCloses() { unload(UnloadMode::User); }
    /// The window goes without being asked, as it does with its owner window.
    void windowLost() { unload(UnloadMode::Code); }
    void userClicks(const Button& button);
    /// The button got the focus, from whomever.
    void userFocuses(const Button& button);
    void userMoved(const base::Area& placement, WindowState state) noexcept;
    void userResized(base::Twips clientWidth, base::Twips clientHeight);

private:
    void unload(UnloadMode mode);

    Border border_;
    std::u16string caption_;
    base::Font font_;
    std::weak_ptr<FormOwner> owner_;
    std::optional<base::Area> placement_;
    WindowState state_ = WindowState::Normal;
    base::Area client_;
    std::deque<Label> labels_;
    std::deque<Button> buttons_;
    std::deque<PictureBox> pictureBoxes_;
    std::optional<PlacedList> list_;
    bool enabled_ = true;
    Pointer pointer_ = Pointer::Default;
    bool visible_ = false;
    bool unloading_ = false;
    std::unique_ptr<FormPeer> peer_;
};

} // namespace cvlog::widgets
