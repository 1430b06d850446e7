#pragma once

#include <windows.h>

#include <unknwn.h>
#include <wrl/client.h>

#include <utility>

namespace workbench {

using Microsoft::WRL::ComPtr;

/// Reference counting and QueryInterface for an object that implements `First` and `Rest`. Born without a
/// reference: `makeObject` takes the first. Every method belongs to the thread that made the object.
template <class First, class... Rest>
class ComObject : public First, public Rest... {
public:
    ComObject() = default;
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override {
        if (!result) {
            return E_POINTER;
        }
        *result = iid == IID_IUnknown ? static_cast<First*>(this) : findInterface(iid);
        if (!*result) {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }

    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }

    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) {
            delete this;
        }
        return left;
    }

protected:
    virtual ~ComObject() = default;

    /// The interface of that identity, or null; override to add one or to hold one back.
    virtual void* findInterface(REFIID iid) {
        void* found = iid == __uuidof(First) ? static_cast<First*>(this) : nullptr;
        ((found = !found && iid == __uuidof(Rest) ? static_cast<Rest*>(this) : found), ...);
        return found;
    }

private:
    ULONG references_ = 0;
};

template <class T, class... Arguments>
ComPtr<T> makeObject(Arguments&&... arguments) {
    return ComPtr<T>(new T(std::forward<Arguments>(arguments)...));
}

} // namespace workbench
