#include "host/frm_log.h"

#include "core/cv_log.h"
#include "host/log_placement.h"
#include "host/log_visibility.h"
#include "host/window_placement.h"
#include "resources/form_layouts.h"

namespace cvlog::host {

namespace {

using Layout = resources::FloatingLogLayout;

constexpr std::u16string_view kDesignCaption = u"Calvetta Activity Log";
constexpr std::u16string_view kSection = u"Activity Log";
constexpr int kPopUpCaption = 130;
constexpr int kHistoryCaption = 131;
constexpr int kLogName = 513;

} // namespace

FrmLog::FrmLog(core::Globals& globals) : globals_(globals) {}

void FrmLog::load() {
    apartment_ = globals_.hold();
    form_.emplace(globals_.platform.peers, widgets::Border::Sizable, kDesignCaption);
    form_->setOwner(weak_from_this());
    localise();
    base::ignoring([&] {
        RestorePlacement(globals_, *form_, kSection, {0, 0, Layout::kWidth, Layout::kHeight});
    });
    const auto view = std::make_shared<view::LogControl>(globals_);
    if (!form_->isLoaded()) return; // the host, asked on the way, had it closed
    logView_ = view;
    form_->place(logView_->lvLog(), form_->clientArea());
}

void FrmLog::localise() {
    const auto text = [&](int id) { return std::u16string(resources::text(globals_.platform.language, id)); };
    mnuPopUp_ = {.name = u"mnuPopUp", .caption = text(kPopUpCaption)};
    mnuPopUp_.items.push_back(std::make_shared<widgets::MenuItem>(
        widgets::MenuItem{.name = u"mnuHistory", .caption = text(kHistoryCaption)}));
    base::ignoring(
        [&] { form_->setCaption(globals_.store.Workspace.productName() + u" " + text(kLogName)); });
}

void FrmLog::showBeside(const hostapi::HostWindow& owner, widgets::Activation activation) {
    if (!form_) return;
    if (!base::ignoring([&] { form_->show(owner.hwnd(), activation); }))
        base::ignoring([&] { form_->show(0, activation); });
    bringToFront(activation);
}

void FrmLog::bringToFront(widgets::Activation activation) {
    if (form_) base::ignoring([&] { form_->bringToFront(activation); });
}

void FrmLog::unload(widgets::Activation hostWindow) {
    const std::shared_ptr<FrmLog> keep = shared_from_this();
    hostWindow_ = hostWindow;
    if (form_) form_->unload();
}

void FrmLog::focusLog() {
    if (logView_) logView_->lvLog().takeFocus();
}

void FrmLog::formResized() {
    if (logView_) form_->place(logView_->lvLog(), form_->clientArea());
}

void FrmLog::formQueryUnload(widgets::UnloadMode mode) {
    if (mode != widgets::UnloadMode::User) return;
    forget();
    if (globals_.store.CurrentLog) PutVisible(globals_, false);
}

void FrmLog::formUnload() {
    const bool focusHost = hostWindow_ == widgets::Activation::Take || form_->isActive();
    SavePlacement(globals_, *form_, kSection);
    forget();
    form_->takeOffList();
    logView_.reset();
    if (focusHost) base::ignoring([&] { FindHostWindow(globals_).setFocus(); });
}

void FrmLog::forget() noexcept {
    if (globals_.placement.frmLog.get() == this) globals_.placement.frmLog.reset();
}

} // namespace cvlog::host
