#pragma once

#include "com/com_ptr.h"
#include "com/module.h"

#include <ocidl.h>

#include <atomic>

namespace cvlog::com {

/// A small object of one interface that lives by its references, the first of which is its maker's.
template <class Interface>
class HeapObject : public Interface {
public:
    HeapObject(const HeapObject&) = delete;
    HeapObject& operator=(const HeapObject&) = delete;

    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
        if (!result) return E_POINTER;
        const bool known = id == IID_IUnknown || answersTo(id);
        *result = known ? static_cast<Interface*>(this) : nullptr;
        if (!known) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

protected:
    HeapObject() = default;
    virtual ~HeapObject() = default;
    virtual bool answersTo(REFIID id) const noexcept { return id == __uuidof(Interface); }

private:
    ModuleLock lock_;
    std::atomic<ULONG> references_{1};
};

/// A sink's connection to a point, until its end. The sink is told with `detach()`, so that a source that goes on
/// raising after it was told to stop is not heard.
template <class Sink, class Base>
class SinkConnection final : public Base {
public:
    SinkConnection(ComPtr<IConnectionPoint> point, ComPtr<Sink> sink, DWORD cookie)
        : point_(std::move(point)), sink_(std::move(sink)), cookie_(cookie) {}
    ~SinkConnection() override {
        sink_->detach();
        point_->Unadvise(cookie_);
    }

private:
    ComPtr<IConnectionPoint> point_;
    ComPtr<Sink> sink_;
    DWORD cookie_;
};

} // namespace cvlog::com
