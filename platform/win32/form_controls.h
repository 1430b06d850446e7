#pragma once

#include "base/font.h"
#include "platform/win32/form_frame.h"
#include "platform/win32/handles.h"
#include "platform/win32/icon_strip.h"
#include "widgets/form_widgets.h"

#include <deque>

namespace cvlog::platform::win32 {

/// The windows of a form's labels, buttons and pictures. They refer to the form's widgets and go with its window.
class FormControls {
public:
    explicit FormControls(FormFrame& frame) noexcept : frame_(frame) {}

    /// Font and places are those of that resolution from now on.
    void setLook(const base::Font& font, int dpi);
    void add(const widgets::Label& label);
    void add(const widgets::Button& button);
    void add(const widgets::PictureBox& picture);
    void moved(const widgets::Button& button) noexcept;
    void moved(const widgets::PictureBox& picture) noexcept;
    void changed(const widgets::PictureBox& picture) noexcept;
    /// Null for what is not here.
    HWND windowOf(const widgets::Button& button) const noexcept;

    /// The button that a command comes from, or for which Enter or Esc stand; null for none.
    const widgets::Button* pressed(int command) const noexcept;
    /// The command of the button that Enter presses: the one with the focus, else the form's default; 0 for none.
    int enterCommand() const noexcept;
    /// Frames that button.
    void markEnterButton() const noexcept;
    void draw(const DRAWITEMSTRUCT& request);

private:
    struct PushButton {
        HWND window;
        const widgets::Button* button;
    };
    struct Picture {
        HWND window;
        const widgets::PictureBox* picture;
        IconStrip drawn;
        bool outdated = false; // what is on the screen
    };
    struct Placed {
        HWND window;
        base::Area area;
    };

    HWND makeControl(const wchar_t* windowClass, std::u16string_view text, DWORD style,
                     const base::Area& area, int command);
    void settle(const Placed& control) const noexcept;
    void moveTo(HWND control, const base::Area& area) noexcept;
    int commandOf(const PushButton& button) const noexcept;

    FormFrame& frame_;
    FontHandle font_;
    int dpi_ = 0;
    std::deque<Placed> placed_;
    std::deque<PushButton> buttons_;
    std::deque<Picture> pictures_;
};

} // namespace cvlog::platform::win32
