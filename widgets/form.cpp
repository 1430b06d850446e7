#include "widgets/form.h"

#include "widgets/peer_factory.h"

#include <stdexcept>

namespace cvlog::widgets {

Form::Form(PeerFactory& peers, Border border, std::u16string_view caption)
    : border_(border), caption_(caption), peer_(peers.makeForm(*this)) {}

Form::~Form() {
    unloading_ = true;
    takeOffList();
}

std::int32_t Form::windowHandle() const { return peer_ ? peer_->windowHandle() : 0; }

void Form::setCaption(std::u16string_view caption) {
    caption_ = caption;
    if (peer_) peer_->captionChanged();
}

void Form::setPlacement(const base::Area& placement) {
    placement_ = placement;
    if (peer_) peer_->placementChanged();
}

void Form::setState(WindowState state) {
    state_ = state;
    if (peer_) peer_->placementChanged();
}

void Form::setClientSize(base::Twips width, base::Twips height) {
    client_ = {0, 0, width, height};
    if (peer_) peer_->clientSizeChanged();
}

void Form::add(Label label) {
    labels_.push_back(std::move(label));
    if (peer_) peer_->labelAdded(labels_.back());
}

void Form::add(Button button) {
    buttons_.push_back(std::move(button));
    if (peer_) peer_->buttonAdded(buttons_.back());
}

void Form::add(PictureBox picture) {
    pictureBoxes_.push_back(std::move(picture));
    if (peer_) peer_->pictureBoxAdded(pictureBoxes_.back());
}

void Form::moveButton(std::size_t button, const base::Area& area) {
    buttons_.at(button).area = area;
    if (peer_) peer_->buttonMoved(buttons_.at(button));
}

void Form::movePictureBox(std::size_t box, const base::Area& area) {
    pictureBoxes_.at(box).area = area;
    if (peer_) peer_->pictureBoxMoved(pictureBoxes_.at(box));
}

void Form::setPicture(std::size_t box, std::shared_ptr<const ports::Picture> picture) {
    pictureBoxes_.at(box).picture = std::move(picture);
    if (peer_) peer_->pictureChanged(pictureBoxes_.at(box));
}

void Form::focusButton(std::size_t button) {
    if (peer_) peer_->focusButton(buttons_.at(button));
}

void Form::setEnabled(bool enabled) {
    enabled_ = enabled;
    if (peer_) peer_->enabledChanged();
}

void Form::setPointer(Pointer pointer) {
    pointer_ = pointer;
    if (peer_) peer_->pointerChanged();
}

void Form::place(ListView& list, const base::Area& area) {
    if (list_ && list_->list != &list) takeOffList();
    list_ = PlacedList{&list, area};
    if (peer_) peer_->listPlaced(list, area);
}

void Form::takeOffList() noexcept {
    const std::optional<PlacedList> placed = std::exchange(list_, std::nullopt);
    if (placed && peer_) peer_->listTakenOff(*placed->list);
}

void Form::show(std::int32_t ownerWindow, Activation activation) {
    if (!peer_) throw std::logic_error("the form is unloaded");
    const std::shared_ptr<FormOwner> keep = owner_.lock();
    peer_->show(ownerWindow, activation);
    visible_ = isLoaded(); // its owner may unload it when it hears of its size
}

void Form::showModal(std::int32_t ownerWindow) {
    if (!peer_) throw std::logic_error("the form is unloaded");
    const std::shared_ptr<FormOwner> keep = owner_.lock();
    visible_ = true;
    try {
        peer_->runModal(ownerWindow);
    } catch (...) {
        visible_ = false;
        throw;
    }
}

void Form::bringToFront(Activation activation) {
    if (peer_) peer_->bringToFront(activation);
}

void Form::unload(UnloadMode mode) {
    if (!peer_ || std::exchange(unloading_, true)) return;
    const std::shared_ptr<FormOwner> owner = owner_.lock();
    if (owner) base::ignoring([&] { owner->formQueryUnload(mode); });
    if (owner) base::ignoring([&] { owner->formUnload(); });
    takeOffList();
    visible_ = false;
    peer_.reset();
}

void Form::userClicks(const Button& button) {
    const std::shared_ptr<FormOwner> keep = owner_.lock();
    if (const std::function<void()> clicked = button.clicked) clicked();
}

void Form::userFocuses(const Button& button) {
    const std::shared_ptr<FormOwner> keep = owner_.lock();
    if (const std::function<void()> gotFocus = button.gotFocus) gotFocus();
}

void Form::userMoved(const base::Area& placement, WindowState state) noexcept {
    placement_ = placement;
    state_ = state;
}

void Form::userResized(base::Twips clientWidth, base::Twips clientHeight) {
    client_ = {0, 0, clientWidth, clientHeight};
    if (const std::shared_ptr<FormOwner> owner = owner_.lock()) owner->formResized();
}

} // namespace cvlog::widgets
