#include "details/frm_cancel.h"

#include "base/failure.h"
#include "resources/form_layouts.h"

#include <algorithm>

namespace cvlog::details {

namespace {

using Layout = resources::CancelLayout;

constexpr std::u16string_view kCaption = u"Cancel";
constexpr int kFillerCaption = 128;
constexpr int kCancelCaption = 129;
constexpr std::u16string_view kFrames[] = {u"Turn1", u"Turn2", u"Turn3", u"Turn4", u"Turn5"};

// In the order in which they are put on the form: the picture first, so that it lies over the button.
constexpr std::size_t pbxCancel = 0;
constexpr std::size_t cmdFiller = 0;
constexpr std::size_t cmdCancel = 1;

} // namespace

std::shared_ptr<FrmCancel> FrmCancel::load(core::Globals& globals) {
    if (const std::shared_ptr<FrmCancel> before = globals.frmCancel) before->unload();
    const auto made = std::make_shared<FrmCancel>(globals);
    made->apartment_ = globals.hold();
    made->form_.emplace(globals.platform.peers, widgets::Border::Strip, kCaption);
    made->form_->setOwner(made);
    made->fill();
    made->busy_.emplace(globals);
    globals.frmCancel = made;
    return made;
}

void FrmCancel::fill() {
    const auto text = [&](int id) { return std::u16string(resources::text(globals_.platform.language, id)); };
    for (const std::u16string_view frame : kFrames)
        base::ignoring([&] { ilCancel_.add(frame, globals_.platform.pictures.builtIn(frame)); });
    form_->add(widgets::PictureBox{{}, nullptr});
    form_->add(widgets::Button{
        .area = {},
        .caption = text(kFillerCaption),
        .clicked = {},
        // It never keeps the focus, so that Enter always means Cancel.
        .gotFocus = [this] { form_->focusButton(cmdCancel); },
    });
    form_->add(widgets::Button{
        .area = {},
        .caption = text(kCancelCaption),
        .isDefault = true,
        .isCancel = true,
        .clicked = [this] { cancelled_ = true; },
    });
}

void FrmCancel::show(std::int32_t window, widgets::Activation activation) {
    if (!base::ignoring([&] { form_->show(window, activation); })) form_->show(0, activation);
}

void FrmCancel::ShowNextFrame() {
    if (ilCancel_.count() == 0 || !isLoaded()) return;
    frame_ = frame_ % ilCancel_.count() + 1;
    form_->setPicture(pbxCancel, ilCancel_.shared(frame_ - 1));
}

void FrmCancel::unload() noexcept {
    const std::shared_ptr<FrmCancel> keep = shared_from_this();
    if (form_) base::ignoring([&] { form_->unload(); });
}

void FrmCancel::formResized() {
    const base::Area inside = form_->clientArea();
    const base::Twips width = std::min(Layout::kCancelWidth, inside.width);
    const base::Area button = {inside.width - width, 0, width, inside.height};
    const base::Twips across = globals_.platform.screens.borderWidth();
    const base::Twips down = globals_.platform.screens.borderHeight();
    const base::Twips side = std::max(0.0F, button.height - 6 * down);
    form_->moveButton(cmdFiller, {0, 0, button.left, inside.height});
    form_->moveButton(cmdCancel, button);
    form_->movePictureBox(pbxCancel, {button.left + 3 * across, button.top + 3 * down, side, side});
}

void FrmCancel::formUnload() {
    cancelled_ = false;
    busy_.reset();
    if (globals_.frmCancel.get() == this) globals_.frmCancel.reset();
}

} // namespace cvlog::details
