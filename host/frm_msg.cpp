#include "host/frm_msg.h"

#include "resources/form_layouts.h"
#include "widgets/form.h"
#include "widgets/timer.h"

namespace cvlog::host {

namespace {

using resources::AlertLayout;

constexpr int kOkCaption = 126;
constexpr int kAlertText = 127;
constexpr int kSecondsOpen = 5;

/// The alert window. The timer goes with the form's last moment, so it never fires into a window that is gone.
class FrmMsg : public widgets::FormOwner {
public:
    explicit FrmMsg(core::Globals& globals)
        : form_(globals.platform.peers, widgets::Border::FixedDialog, u"Alert!"),
          Timer1_(globals.platform.peers, kSecondsOpen * 1000, [this] { form_.unload(); }) {
        const auto text = [&](int id) {
            return std::u16string(resources::text(globals.platform.language, id));
        };
        form_.setClientSize(AlertLayout::kClient.width, AlertLayout::kClient.height);
        std::shared_ptr<const ports::Picture> picture;
        base::ignoring([&] { picture = globals.platform.pictures.builtIn(u"Alert"); });
        form_.add(widgets::PictureBox{AlertLayout::kPicture, std::move(picture)});
        form_.add(widgets::Label{AlertLayout::kText, text(kAlertText)});
        form_.add(
            widgets::Button{AlertLayout::kOk, text(kOkCaption), true, true, [this] { form_.unload(); }});
        Timer1_.enable();
    }

    widgets::Form& form() noexcept { return form_; }

private:
    void formUnload() override { Timer1_.disable(); }

    widgets::Form form_;
    widgets::Timer Timer1_;
};

std::int32_t mainWindow(core::Globals& globals) {
    return base::valueOr(0, [&] { return globals.store.Workspace.mainWindow().hwnd(); });
}

} // namespace

void ShowAlert(core::Globals& globals) {
    const auto keep = globals.hold();
    const std::int32_t owner = mainWindow(globals);
    const auto alert = std::make_shared<FrmMsg>(globals);
    alert->form().setOwner(alert);
    alert->form().showModal(owner);
}

} // namespace cvlog::host
