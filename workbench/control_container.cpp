#include "workbench/control_container.h"

#include "workbench/com_call.h"
#include "workbench/control_object.h"
#include "workbench/failure.h"

namespace workbench {

namespace {

// OLE measures in hundredths of a millimetre.
SIZEL toHimetric(const RECT& area, HWND window) {
    const int dpi = static_cast<int>(GetDpiForWindow(window));
    return {MulDiv(area.right - area.left, 2540, dpi), MulDiv(area.bottom - area.top, 2540, dpi)};
}

} // namespace

ControlContainer::ControlContainer(HWND window, std::wstring name)
    : window_(window), name_(std::move(name)), frame_(makeObject<ControlFrame>(window)),
      site_(makeObject<ControlSite>(window, frame_)) {}

std::shared_ptr<ControlContainer> ControlContainer::create(HWND window, const wchar_t* progId,
                                                           const std::wstring& name, const RECT& area) {
    const std::shared_ptr<ControlContainer> made(new ControlContainer(window, name));
    made->site_->place(area);
    made->createControl(progId);
    made->activate(OLEIVERB_INPLACEACTIVATE);
    check(made->object_.As(&made->inPlace_), L"Activating the control in its window");
    made->site_->setInPlaceObject(made->inPlace_);
    made->show(false);
    ComPtr<IDispatch> members;
    made->object_.As(&members);
    made->extended_ = makeControlObject(made, std::move(members));
    made->site_->setExtendedControl(made->extended_);
    return made;
}

void ControlContainer::close() {
    show(false);
    if (const auto inPlace = std::exchange(inPlace_, nullptr)) {
        inPlace->UIDeactivate();
        inPlace->InPlaceDeactivate();
    }
    frame_->SetActiveObject(nullptr, nullptr);
    site_->setExtendedControl(nullptr);
    extended_.Reset();
    if (const auto object = std::exchange(object_, nullptr)) {
        object->Close(OLECLOSE_NOSAVE);
        object->SetClientSite(nullptr);
    }
    site_->windowGone();
    frame_->windowGone();
}

void ControlContainer::createControl(const wchar_t* progId) {
    check(createObject(progId).As(&object_), L"Asking the control for its object interface");
    DWORD status = 0;
    object_->GetMiscStatus(DVASPECT_CONTENT, &status);
    const bool siteFirst = status & OLEMISC_SETCLIENTSITEFIRST;
    if (siteFirst) {
        check(object_->SetClientSite(site_.Get()), L"Giving the control its site");
    }
    ComPtr<IPersistStreamInit> state;
    if (SUCCEEDED(object_.As(&state))) {
        state->InitNew();
    }
    if (!siteFirst) {
        check(object_->SetClientSite(site_.Get()), L"Giving the control its site");
    }
    object_->SetHostNames(L"Workbench", nullptr);
    OleSetContainedObject(object_.Get(), TRUE);
}

void ControlContainer::activate(LONG verb) {
    check(object_->DoVerb(verb, nullptr, site_.Get(), 0, window_, &site_->area()), L"Activating the control");
}

HWND ControlContainer::controlWindow() const {
    HWND window = nullptr;
    if (inPlace_) {
        inPlace_->GetWindow(&window);
    }
    return window;
}

void ControlContainer::place(const RECT& area) {
    site_->place(area);
    if (visible_) { // a control may show itself when it is moved
        SIZEL extent = toHimetric(area, window_);
        object_->SetExtent(DVASPECT_CONTENT, &extent);
        inPlace_->SetObjectRects(&area, &area);
    }
}

void ControlContainer::show(bool visible) {
    const HWND control = controlWindow();
    const HWND focus = GetFocus();
    visible_ = visible && control;
    ShowWindow(control, visible_ ? SW_SHOW : SW_HIDE);
    if (visible_) {
        place(site_->area());
    } else if (control && IsChild(control, focus)) {
        SetFocus(window_); // a hidden window would keep the keys
    }
}

void ControlContainer::bringToFront() {
    SetWindowPos(controlWindow(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void ControlContainer::sendToBack() {
    SetWindowPos(controlWindow(), HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void ControlContainer::focus() {
    if (visible_) {
        activate(OLEIVERB_UIACTIVATE);
        const HWND control = controlWindow();
        const HWND focused = GetFocus();
        if (control && focused != control && !IsChild(control, focused)) {
            SetFocus(control);
        }
    }
}

bool ControlContainer::translate(MSG& message) {
    const bool isKey = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
    const HWND control = isKey ? controlWindow() : nullptr;
    const bool concerned = control && (message.hwnd == control || IsChild(control, message.hwnd));
    const ComPtr<IOleInPlaceActiveObject> active = frame_->activeObject();
    return concerned && active && active->TranslateAccelerator(&message) == S_OK;
}

} // namespace workbench
