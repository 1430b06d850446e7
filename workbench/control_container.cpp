#include "workbench/control_container.h"

#include "workbench/com_call.h"
#include "workbench/failure.h"

namespace workbench {

namespace {

// OLE measures in hundredths of a millimetre.
SIZEL toHimetric(const RECT& area, HWND window) {
    const int dpi = static_cast<int>(GetDpiForWindow(window));
    return {MulDiv(area.right - area.left, 2540, dpi), MulDiv(area.bottom - area.top, 2540, dpi)};
}

} // namespace

ControlContainer::ControlContainer(HWND window, const wchar_t* progId, const RECT& area)
    : window_(window), frame_(makeObject<ControlFrame>(window)),
      site_(makeObject<ControlSite>(window, frame_)) {
    site_->place(area);
    create(progId);
    activate(OLEIVERB_INPLACEACTIVATE);
    check(object_.As(&inPlace_), L"Activating the control in its window");
    site_->setInPlaceObject(inPlace_);
    place(area);
}

ControlContainer::~ControlContainer() {
    if (inPlace_) {
        inPlace_->UIDeactivate();
        inPlace_->InPlaceDeactivate();
    }
    frame_->SetActiveObject(nullptr, nullptr);
    object_->Close(OLECLOSE_NOSAVE);
    object_->SetClientSite(nullptr);
    site_->windowGone();
    frame_->windowGone();
}

void ControlContainer::create(const wchar_t* progId) {
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
    SIZEL extent = toHimetric(site_->area(), window_);
    object_->SetExtent(DVASPECT_CONTENT, &extent);
    object_.As(&dispatch_);
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
    SIZEL extent = toHimetric(area, window_);
    object_->SetExtent(DVASPECT_CONTENT, &extent);
    inPlace_->SetObjectRects(&area, &area);
}

void ControlContainer::show(bool visible) {
    visible_ = visible;
    ShowWindow(controlWindow(), visible ? SW_SHOW : SW_HIDE);
}

void ControlContainer::bringToFront() {
    SetWindowPos(controlWindow(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void ControlContainer::focus() {
    if (visible_) {
        object_->DoVerb(OLEIVERB_UIACTIVATE, nullptr, site_.Get(), 0, window_, &site_->area());
        const HWND control = controlWindow();
        const HWND focused = GetFocus();
        if (control && focused != control && !IsChild(control, focused)) {
            SetFocus(control);
        }
    }
}

bool ControlContainer::translate(MSG& message) {
    const bool isKey = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
    IOleInPlaceActiveObject* active = frame_->activeObject();
    return isKey && active && active->TranslateAccelerator(&message) == S_OK;
}

} // namespace workbench
