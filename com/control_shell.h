#pragma once

#include "com/com_ptr.h"
#include "com/control_data.h"
#include "com/control_persistence.h"
#include "com/control_picture.h"
#include "com/dispatch_shell.h"
#include "com/notify_point.h"
#include "com/view_advice.h"
#include "view/log_control.h"
#include "widgets/timer.h"

#include <windows.h>

#include <ocidl.h>
#include <oleidl.h>

namespace cvlog::platform::win32 {
class ListViewWindow;
}

namespace cvlog::com {

/// The class CVLogControl: the log control inside an ActiveX container. The list's window lives from creation to the
/// final release; activation moves it into the container's window, deactivation moves it back under the hidden one.
class ControlShell final : public DispatchShell,
                           public IOleObject,
                           public IOleInPlaceObject,
                           public IOleInPlaceActiveObject,
                           public IOleControl,
                           public IViewObjectEx,
                           public IQuickActivate,
                           public ISpecifyPropertyPages,
                           public IPerPropertyBrowsing,
                           public IProvideClassInfo2,
                           public IConnectionPointContainer {
public:
    ControlShell(IUnknown* outer, std::shared_ptr<Apartment> apartment);
    ~ControlShell() override;

    CVLOG_DELEGATE_UNKNOWN()

    // IOleObject
    STDMETHODIMP SetClientSite(IOleClientSite* site) override;
    STDMETHODIMP GetClientSite(IOleClientSite** site) override;
    STDMETHODIMP SetHostNames(LPCOLESTR application, LPCOLESTR document) override;
    STDMETHODIMP Close(DWORD saveOption) override;
    STDMETHODIMP SetMoniker(DWORD which, IMoniker* moniker) override;
    STDMETHODIMP GetMoniker(DWORD assign, DWORD which, IMoniker** moniker) override;
    STDMETHODIMP InitFromData(IDataObject* data, BOOL creation, DWORD reserved) override;
    STDMETHODIMP GetClipboardData(DWORD reserved, IDataObject** data) override;
    STDMETHODIMP DoVerb(LONG verb, LPMSG message, IOleClientSite* site, LONG index, HWND parent,
                        LPCRECT position) override;
    STDMETHODIMP EnumVerbs(IEnumOLEVERB** verbs) override;
    STDMETHODIMP Update() override;
    STDMETHODIMP IsUpToDate() override;
    STDMETHODIMP GetUserClassID(CLSID* id) override;
    STDMETHODIMP GetUserType(DWORD form, LPOLESTR* type) override;
    STDMETHODIMP SetExtent(DWORD aspect, SIZEL* size) override;
    STDMETHODIMP GetExtent(DWORD aspect, SIZEL* size) override;
    STDMETHODIMP Advise(IAdviseSink* sink, DWORD* connection) override;
    STDMETHODIMP Unadvise(DWORD connection) override;
    STDMETHODIMP EnumAdvise(IEnumSTATDATA** connections) override;
    STDMETHODIMP GetMiscStatus(DWORD aspect, DWORD* status) override;
    STDMETHODIMP SetColorScheme(LOGPALETTE* palette) override;

    // IOleWindow, of both in-place interfaces
    STDMETHODIMP GetWindow(HWND* window) override;
    STDMETHODIMP ContextSensitiveHelp(BOOL enter) override;

    // IOleInPlaceObject
    STDMETHODIMP InPlaceDeactivate() override;
    STDMETHODIMP UIDeactivate() override;
    STDMETHODIMP SetObjectRects(LPCRECT position, LPCRECT clip) override;
    STDMETHODIMP ReactivateAndUndo() override;

    // IOleInPlaceActiveObject
    STDMETHODIMP TranslateAccelerator(LPMSG message) override;
    STDMETHODIMP OnFrameWindowActivate(BOOL activate) override;
    STDMETHODIMP OnDocWindowActivate(BOOL activate) override;
    STDMETHODIMP ResizeBorder(LPCRECT border, IOleInPlaceUIWindow* window, BOOL frameWindow) override;
    STDMETHODIMP EnableModeless(BOOL enable) override;

    // IOleControl
    STDMETHODIMP GetControlInfo(CONTROLINFO* info) override;
    STDMETHODIMP OnMnemonic(MSG* message) override;
    STDMETHODIMP OnAmbientPropertyChange(DISPID property) override;
    STDMETHODIMP FreezeEvents(BOOL freeze) override;

    // IViewObjectEx
    STDMETHODIMP Draw(DWORD aspect, LONG index, void* hints, DVTARGETDEVICE* device, HDC target, HDC draw,
                      LPCRECTL bounds, LPCRECTL windowBounds, BOOL(STDMETHODCALLTYPE* proceed)(ULONG_PTR),
                      ULONG_PTR proceedArgument) override;
    STDMETHODIMP GetColorSet(DWORD aspect, LONG index, void* hints, DVTARGETDEVICE* device, HDC target,
                             LOGPALETTE** colours) override;
    STDMETHODIMP Freeze(DWORD aspect, LONG index, void* hints, DWORD* key) override;
    STDMETHODIMP Unfreeze(DWORD key) override;
    STDMETHODIMP SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override;
    STDMETHODIMP GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override;
    STDMETHODIMP GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, LPSIZEL size) override;
    STDMETHODIMP GetRect(DWORD aspect, LPRECTL area) override;
    STDMETHODIMP GetViewStatus(DWORD* status) override;
    STDMETHODIMP QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT place, LONG closeness,
                               DWORD* result) override;
    STDMETHODIMP QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT place, LONG closeness,
                              DWORD* result) override;
    STDMETHODIMP GetNaturalExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, HDC target,
                                  DVEXTENTINFO* wanted, LPSIZEL size) override;

    // IQuickActivate
    STDMETHODIMP QuickActivate(QACONTAINER* container, QACONTROL* told) override;
    STDMETHODIMP SetContentExtent(LPSIZEL size) override;
    STDMETHODIMP GetContentExtent(LPSIZEL size) override;

    // ISpecifyPropertyPages
    STDMETHODIMP GetPages(CAUUID* pages) override;

    // IPerPropertyBrowsing
    STDMETHODIMP GetDisplayString(DISPID property, BSTR* text) override;
    STDMETHODIMP MapPropertyToPage(DISPID property, CLSID* page) override;
    STDMETHODIMP GetPredefinedStrings(DISPID property, CALPOLESTR* strings, CADWORD* cookies) override;
    STDMETHODIMP GetPredefinedValue(DISPID property, DWORD cookie, VARIANT* value) override;

    // IProvideClassInfo2
    STDMETHODIMP GetClassInfo(ITypeInfo** info) override;
    STDMETHODIMP GetGUID(DWORD kind, GUID* id) override;

    // IConnectionPointContainer
    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override;
    STDMETHODIMP FindConnectionPoint(REFIID id, IConnectionPoint** point) override;

protected:
    void* interfaceOf(REFIID id) noexcept override;
    const IID* dispatchInterface() const noexcept override;

private:
    view::LogControl& control() const noexcept { return static_cast<view::LogControl&>(*target()); }
    /// Null once the control's list has lost its window.
    platform::win32::ListViewWindow* window() const noexcept;
    HRESULT activate(bool userInterface);
    HRESULT activateInPlace();
    HRESULT activateUserInterface();
    void placeWindow(HWND parent, const RECT& position, const RECT& clip);
    void giveFocusBack();
    void mousePressed();
    void focusChanged(bool got);
    /// The picture is another one now. Who listens hears of it from the message loop, once for all changes until then:
    /// who changes something must not meet foreign code halfway.
    void viewChanged();
    void tellViewChanged();
    bool mayChange(DISPID property);
    void propertyChanged(DISPID property);
    /// DISPID_UNKNOWN for all of them. What the container does not say stays as it is without a container.
    void readAmbients(DISPID property);
    /// The language of the container, or of the user where it does not say.
    LCID ambientLocale() const;
    HRESULT showProperties(HWND parent);

    NotifyPoint notifications_;
    ControlPersistence persistence_;
    ComPtr<IOleClientSite> site_;
    ComPtr<IOleInPlaceSite> inPlaceSite_;
    ComPtr<IOleInPlaceFrame> frame_;
    ComPtr<IOleInPlaceUIWindow> document_;
    ComPtr<IOleAdviseHolder> advises_;
    ControlPicture picture_;
    ControlData data_;
    ViewAdvice viewAdvice_;
    widgets::Timer viewTimer_;
    bool inPlaceActive_ = false;
    bool userInterfaceActive_ = false;
    bool clipped_ = false; // the window shows less than its size
};

} // namespace cvlog::com
