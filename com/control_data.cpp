#include "com/control_data.h"

#include "base/failure.h"
#include "com/firewall.h"
#include "platform/win32/handles.h"

#include <shlobj.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace cvlog::com {

namespace {

constexpr int kHimetricAMillimetre = 100;

const FORMATETC kFormats[] = {
    {CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, -1, TYMED_ENHMF},
    {CF_METAFILEPICT, nullptr, DVASPECT_CONTENT, -1, TYMED_MFPICT},
    {CF_BITMAP, nullptr, DVASPECT_CONTENT, -1, TYMED_GDI},
};

class ScreenDc {
public:
    ScreenDc() noexcept : dc_(GetDC(nullptr)) {}
    ~ScreenDc() { ReleaseDC(nullptr, dc_); }
    ScreenDc(const ScreenDc&) = delete;
    ScreenDc& operator=(const ScreenDc&) = delete;
    operator HDC() const noexcept { return dc_; }

private:
    HDC dc_;
};

template <class Handle>
Handle checked(Handle handle) {
    if (!handle) throw std::runtime_error("no room for a picture");
    return handle;
}

} // namespace

STDMETHODIMP ControlData::GetData(FORMATETC* format, STGMEDIUM* medium) {
    if (!format || !medium) return E_POINTER;
    *medium = {};
    const HRESULT known = QueryGetData(format);
    if (FAILED(known)) return known;
    return firewall([&] {
        const ComPtr<IUnknown> keep(owner_.outer());
        if (format->cfFormat == CF_ENHMETAFILE) {
            give(medium->hEnhMetaFile);
            medium->tymed = TYMED_ENHMF;
        } else if (format->cfFormat == CF_METAFILEPICT) {
            give(medium->hMetaFilePict);
            medium->tymed = TYMED_MFPICT;
        } else {
            give(medium->hBitmap);
            medium->tymed = TYMED_GDI;
        }
        return S_OK;
    });
}

STDMETHODIMP ControlData::QueryGetData(FORMATETC* format) {
    if (!format) return E_POINTER;
    const auto* found =
        std::find_if(std::begin(kFormats), std::end(kFormats),
                     [format](const FORMATETC& each) { return each.cfFormat == format->cfFormat; });
    if (found == std::end(kFormats)) return DV_E_FORMATETC;
    if (format->dwAspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    if (format->lindex != -1) return DV_E_LINDEX;
    return format->tymed & found->tymed ? S_OK : DV_E_TYMED;
}

// As large as the extent, whatever number of pixels the picture has.
void ControlData::give(HENHMETAFILE& file) const {
    const ScreenDc screen;
    const SIZEL& extent = picture_.extent();
    const RECT frame{0, 0, extent.cx, extent.cy};
    const HDC recorder = checked(CreateEnhMetaFileW(screen, nullptr, &frame, nullptr));
    const auto units = [&screen](LONG himetric, int pixels, int millimetres) {
        return MulDiv(himetric, GetDeviceCaps(screen, pixels),
                      kHimetricAMillimetre * GetDeviceCaps(screen, millimetres));
    };
    const bool drawn = base::ignoring([&] {
        const RECT place{0, 0, units(extent.cx, HORZRES, HORZSIZE), units(extent.cy, VERTRES, VERTSIZE)};
        picture_.draw(recorder, place, nullptr);
    });
    file = CloseEnhMetaFile(recorder);
    if (!drawn) DeleteEnhMetaFile(std::exchange(file, nullptr));
    checked(file);
}

void ControlData::give(HMETAFILEPICT& file) const {
    const SIZEL& extent = picture_.extent();
    const HDC recorder = checked(CreateMetaFileW(nullptr));
    SetMapMode(recorder, MM_ANISOTROPIC);
    SetWindowOrgEx(recorder, 0, 0, nullptr);
    SetWindowExtEx(recorder, extent.cx, extent.cy, nullptr);
    const bool drawn = base::ignoring([&] {
        picture_.draw(recorder, {0, 0, extent.cx, extent.cy}, nullptr);
    });
    const HMETAFILE closed = CloseMetaFile(recorder);
    const HGLOBAL memory = drawn && closed ? GlobalAlloc(GMEM_MOVEABLE, sizeof(METAFILEPICT)) : nullptr;
    auto* picture = memory ? static_cast<METAFILEPICT*>(GlobalLock(memory)) : nullptr;
    if (!picture) {
        DeleteMetaFile(closed);
        GlobalFree(memory);
        throw std::runtime_error("no room for a picture");
    }
    *picture = {MM_ANISOTROPIC, extent.cx, extent.cy, closed};
    GlobalUnlock(memory);
    file = memory;
}

void ControlData::give(HBITMAP& bitmap) const {
    const ScreenDc screen;
    const SIZE size = picture_.pixels();
    const platform::win32::MemoryDc dc(checked(CreateCompatibleDC(screen)));
    const HBITMAP made = checked(CreateCompatibleBitmap(screen, size.cx, size.cy));
    const HGDIOBJ before = SelectObject(dc.get(), made);
    const bool drawn = base::ignoring([&] { picture_.draw(dc.get(), {0, 0, size.cx, size.cy}, nullptr); });
    SelectObject(dc.get(), before);
    if (!drawn) DeleteObject(made);
    bitmap = checked(drawn ? made : nullptr);
}

STDMETHODIMP ControlData::GetCanonicalFormatEtc(FORMATETC* format, FORMATETC* same) {
    if (!format || !same) return E_POINTER;
    *same = *format;
    same->ptd = nullptr; // the picture is the same for all devices
    return DATA_S_SAMEFORMATETC;
}

STDMETHODIMP ControlData::EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) {
    if (!formats) return E_POINTER;
    *formats = nullptr;
    if (direction != DATADIR_GET) return E_NOTIMPL;
    return SHCreateStdEnumFmtEtc(static_cast<UINT>(std::size(kFormats)), kFormats, formats);
}

STDMETHODIMP ControlData::DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink, DWORD* connection) {
    return firewall([&] {
        const ComPtr<IUnknown> keep(owner_.outer());
        const HRESULT made = listeners_ ? S_OK : CreateDataAdviseHolder(&listeners_);
        return FAILED(made) ? made : listeners_->Advise(this, format, flags, sink, connection);
    });
}

STDMETHODIMP ControlData::DUnadvise(DWORD connection) {
    return firewall([&] { return listeners_ ? listeners_->Unadvise(connection) : OLE_E_NOCONNECTION; });
}

STDMETHODIMP ControlData::EnumDAdvise(IEnumSTATDATA** connections) {
    if (!connections) return E_POINTER;
    *connections = nullptr;
    return firewall([&] { return listeners_ ? listeners_->EnumAdvise(connections) : S_OK; });
}

void ControlData::tell() {
    const ComPtr<IDataAdviseHolder> told = listeners_;
    if (told) told->SendOnDataChange(this, 0, 0);
}

} // namespace cvlog::com
