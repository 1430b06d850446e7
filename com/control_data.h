#pragma once

#include "com/com_object.h"
#include "com/com_ptr.h"
#include "com/control_picture.h"

#include <windows.h>

#include <objidl.h>

namespace cvlog::com {

/// The control's picture as data: metafiles and a bitmap, which containers keep to show instead of the control. Part of
/// the control: its references are the control's.
class ControlData final : public IDataObject {
public:
    ControlData(const ComObject& owner, const ControlPicture& picture) : owner_(owner), picture_(picture) {}

    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
        return owner_.outer()->QueryInterface(id, result);
    }
    STDMETHODIMP_(ULONG) AddRef() override { return owner_.outer()->AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return owner_.outer()->Release(); }

    STDMETHODIMP GetData(FORMATETC* format, STGMEDIUM* medium) override;
    STDMETHODIMP GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
    STDMETHODIMP QueryGetData(FORMATETC* format) override;
    STDMETHODIMP GetCanonicalFormatEtc(FORMATETC* format, FORMATETC* same) override;
    STDMETHODIMP SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) override;
    STDMETHODIMP DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink, DWORD* connection) override;
    STDMETHODIMP DUnadvise(DWORD connection) override;
    STDMETHODIMP EnumDAdvise(IEnumSTATDATA** connections) override;

    bool isWanted() const noexcept { return listeners_ != nullptr; }
    /// The picture is another one now. Listeners may do anything meanwhile; whoever calls this holds the control.
    void tell();

private:
    void give(HENHMETAFILE& file) const;
    void give(HMETAFILEPICT& file) const;
    void give(HBITMAP& bitmap) const;

    const ComObject& owner_;
    const ControlPicture& picture_;
    ComPtr<IDataAdviseHolder> listeners_;
};

} // namespace cvlog::com
