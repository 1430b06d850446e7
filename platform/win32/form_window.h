#pragma once

#include "platform/win32/form_controls.h"
#include "platform/win32/form_frame.h"
#include "platform/win32/form_modal.h"
#include "widgets/form.h"

namespace cvlog::platform::win32 {

/// Shows a form in a top-level window of the system. What lies on it has the resolution of the window, its place
/// on the screen that of the screen.
class FormWindow : public widgets::FormPeer, private FormFrameEvents {
public:
    /// The host outlives the peer. Throws std::runtime_error when the system makes no window.
    FormWindow(widgets::Form& model, HostWindow& host);
    ~FormWindow() override;
    FormWindow(const FormWindow&) = delete;
    FormWindow& operator=(const FormWindow&) = delete;

    /// Null once an owner window took it along.
    HWND window() const noexcept { return frame_->window(); }

    std::int32_t windowHandle() const override;
    void captionChanged() override;
    void placementChanged() override;
    void clientSizeChanged() override;
    void labelAdded(const widgets::Label& label) override { controls_.add(label); }
    void buttonAdded(const widgets::Button& button) override { controls_.add(button); }
    void pictureBoxAdded(const widgets::PictureBox& picture) override { controls_.add(picture); }
    void buttonMoved(const widgets::Button& button) override { controls_.moved(button); }
    void pictureBoxMoved(const widgets::PictureBox& picture) override { controls_.moved(picture); }
    void pictureChanged(const widgets::PictureBox& picture) override { controls_.changed(picture); }
    void focusButton(const widgets::Button& button) override;
    void enabledChanged() override;
    void pointerChanged() override;
    void listPlaced(widgets::ListView& list, const base::Area& area) override;
    void listTakenOff(widgets::ListView& list) noexcept override;
    void show(std::int32_t owner, widgets::Activation activation) override;
    /// Throws as `show` does.
    void runModal(std::int32_t owner) override;
    void bringToFront(widgets::Activation activation) override;
    bool isActive() const override;

private:
    bool formMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
    void windowLost() override;
    bool controlMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    void commanded(int command, int notice);
    void resolutionChanged(int dpi, RECT place);
    void activated(bool active) noexcept;
    bool focusChild() noexcept;
    bool showPointer() const noexcept;
    void focusNext(WPARAM next, bool isWindow) const noexcept;
    void applyIcons();
    /// The window comes up. The peer may be gone afterwards.
    void present(HWND owner, bool activate);
    /// As the system's function; without the focus whatever the command says. The peer may be gone afterwards.
    void showWindow(int command, bool activate);
    void tellPlacement() noexcept;
    /// The peer may be gone afterwards.
    void tellClientSize(bool always = false);

    widgets::Form& form_;
    std::shared_ptr<FormFrame> frame_;
    FormControls controls_;
    IconHandle smallIcon_;
    IconHandle largeIcon_;
    HWND lastFocus_ = nullptr;
    std::shared_ptr<ModalRun> run_;
    int dpi_ = 0;
    bool quiet_ = false;    // nothing that happens to the window activates it
    bool sizeTold_ = false; // since the window was shown
};

} // namespace cvlog::platform::win32
