#include "com/control_persistence.h"

#include "com/com_ptr.h"
#include "com/container_bag.h"
#include "com/firewall.h"
#include "com/guids.h"
#include "view/control_stream.h"

namespace cvlog::com {

namespace {

constexpr wchar_t kStreamName[] = L"Contents";

void check(HRESULT result) {
    if (FAILED(result)) throw automation::AutomationError(result, u"The storage fails");
}

view::ByteSource sourceOf(IStream* stream) {
    return [stream](std::span<std::uint8_t> bytes) {
        while (!bytes.empty()) {
            ULONG read = 0;
            check(stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &read));
            if (read == 0 || read > bytes.size())
                throw automation::AutomationError(automation::code::kDamagedStorage,
                                                  u"The stored properties end too early");
            bytes = bytes.subspan(read);
        }
    };
}

void writeAll(IStream* stream, const std::vector<std::uint8_t>& bytes) {
    ULONG written = 0;
    check(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written));
    if (written != bytes.size()) check(STG_E_MEDIUMFULL);
}

} // namespace

void* ControlPersistence::interfaceOf(REFIID id) noexcept {
    if (id == IID_IPersistPropertyBag) return static_cast<IPersistPropertyBag*>(this);
    if (id == IID_IPersistStreamInit || id == IID_IPersist) return static_cast<IPersistStreamInit*>(this);
    if (id == IID_IPersistStorage) return static_cast<IPersistStorage*>(this);
    return nullptr;
}

STDMETHODIMP ControlPersistence::GetClassID(CLSID* id) {
    return id ? (*id = kControlClass, S_OK) : E_POINTER;
}

STDMETHODIMP ControlPersistence::InitNew() {
    return firewall([&] {
        const ComPtr<IUnknown> keep(owner_.outer());
        control_.restore({});
        return S_OK;
    });
}

// A bag runs whatever it likes, up to letting go of the control: the control is held until the end.
STDMETHODIMP ControlPersistence::Load(IPropertyBag* bag, IErrorLog* log) {
    return firewall([&]() -> HRESULT {
        if (!bag) return E_POINTER;
        const ComPtr<IUnknown> keep(owner_.outer());
        ContainerBag values(bag, log);
        values.logging([&] { control_.restore(view::readProperties(values)); });
        return S_OK;
    });
}

STDMETHODIMP ControlPersistence::Save(IPropertyBag* bag, BOOL clearDirty, BOOL) {
    return firewall([&]() -> HRESULT {
        if (!bag) return E_POINTER;
        const ComPtr<IUnknown> keep(owner_.outer());
        ContainerBag values(bag);
        view::writeProperties(control_.properties(), values);
        if (clearDirty) control_.markSaved();
        return S_OK;
    });
}

STDMETHODIMP ControlPersistence::IsDirty() { return control_.unsaved() ? S_OK : S_FALSE; }

STDMETHODIMP ControlPersistence::Load(LPSTREAM stream) {
    return firewall([&]() -> HRESULT {
        if (!stream) return E_POINTER;
        const ComPtr<IUnknown> keep(owner_.outer());
        const ComPtr<IStream> held(stream);
        control_.restore(view::decodeProperties(sourceOf(stream), fonts_));
        return S_OK;
    });
}

STDMETHODIMP ControlPersistence::Save(LPSTREAM stream, BOOL clearDirty) {
    return firewall([&]() -> HRESULT {
        if (!stream) return E_POINTER;
        const ComPtr<IUnknown> keep(owner_.outer());
        const ComPtr<IStream> held(stream);
        writeAll(stream, view::encodeProperties(control_.properties()));
        if (clearDirty) control_.markSaved();
        return S_OK;
    });
}

STDMETHODIMP ControlPersistence::GetSizeMax(ULARGE_INTEGER* size) {
    return firewall([&]() -> HRESULT {
        if (!size) return E_POINTER;
        const ComPtr<IUnknown> keep(owner_.outer());
        size->QuadPart = view::encodeProperties(control_.properties()).size();
        return S_OK;
    });
}

STDMETHODIMP ControlPersistence::InitNew(IStorage* storage) { return storage ? InitNew() : E_POINTER; }

STDMETHODIMP ControlPersistence::Load(IStorage* storage) {
    return firewall([&]() -> HRESULT {
        if (!storage) return E_POINTER;
        ComPtr<IStream> stream;
        check(storage->OpenStream(kStreamName, nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, &stream));
        return Load(stream.Get());
    });
}

STDMETHODIMP ControlPersistence::Save(IStorage* storage, BOOL sameAsLoad) {
    return firewall([&]() -> HRESULT {
        if (!storage) return E_POINTER;
        const ComPtr<IUnknown> keep(owner_.outer());
        ComPtr<IStream> stream;
        check(storage->CreateStream(kStreamName, STGM_CREATE | STGM_WRITE | STGM_SHARE_EXCLUSIVE, 0, 0,
                                    &stream));
        const HRESULT result = Save(stream.Get(), FALSE);
        saved_ = FAILED(result) ? Saved::Nowhere : sameAsLoad ? Saved::OwnStorage : Saved::Copy;
        return result;
    });
}

// Only now has the container committed what it keeps of the control. A copy counts when it becomes the control's own.
STDMETHODIMP ControlPersistence::SaveCompleted(IStorage* storage) {
    if (saved_ == Saved::OwnStorage || (saved_ == Saved::Copy && storage)) control_.markSaved();
    saved_ = Saved::Nowhere;
    return S_OK;
}

STDMETHODIMP ControlPersistence::HandsOffStorage() { return S_OK; }

} // namespace cvlog::com
