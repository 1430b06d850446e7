#pragma once

#include "com/com_object.h"
#include "ports/fonts.h"
#include "view/log_control.h"

#include <windows.h>

#include <ocidl.h>

namespace cvlog::com {

/// How containers store the control: in a property bag, a stream, or a storage with one stream. Part of the control:
/// its references are the control's.
class ControlPersistence final : public IPersistPropertyBag,
                                 public IPersistStreamInit,
                                 public IPersistStorage {
public:
    ControlPersistence(const ComObject& owner, view::LogControl& control, ports::Fonts& fonts)
        : owner_(owner), control_(control), fonts_(fonts) {}

    /// Null for an interface that is not here. Without a new reference.
    void* interfaceOf(REFIID id) noexcept;

    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
        return owner_.outer()->QueryInterface(id, result);
    }
    STDMETHODIMP_(ULONG) AddRef() override { return owner_.outer()->AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return owner_.outer()->Release(); }

    // IPersist
    STDMETHODIMP GetClassID(CLSID* id) override;

    // IPersistPropertyBag and IPersistStreamInit
    STDMETHODIMP InitNew() override;
    STDMETHODIMP Load(IPropertyBag* bag, IErrorLog* log) override;
    STDMETHODIMP Save(IPropertyBag* bag, BOOL clearDirty, BOOL saveAll) override;

    // IPersistStreamInit and IPersistStorage
    STDMETHODIMP IsDirty() override;
    STDMETHODIMP Load(LPSTREAM stream) override;
    STDMETHODIMP Save(LPSTREAM stream, BOOL clearDirty) override;
    STDMETHODIMP GetSizeMax(ULARGE_INTEGER* size) override;

    // IPersistStorage. No storage is held between calls.
    STDMETHODIMP InitNew(IStorage* storage) override;
    STDMETHODIMP Load(IStorage* storage) override;
    STDMETHODIMP Save(IStorage* storage, BOOL sameAsLoad) override;
    STDMETHODIMP SaveCompleted(IStorage* storage) override;
    STDMETHODIMP HandsOffStorage() override;

private:
    const ComObject& owner_;
    view::LogControl& control_;
    ports::Fonts& fonts_;
    enum class Saved { Nowhere, OwnStorage, Copy } saved_ = Saved::Nowhere; // since the last completion
};

} // namespace cvlog::com
