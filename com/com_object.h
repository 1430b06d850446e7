#pragma once

#include "com/module.h"

#include <unknwn.h>

#include <atomic>

namespace cvlog::com {

/// The IUnknown of an object that can be part of another: every interface answers for the outer object, and only the
/// outer object holds the inner one. Derived classes use CVLOG_DELEGATE_UNKNOWN for each of their interfaces.
class ComObject {
public:
    explicit ComObject(IUnknown* outer) : inner_(*this), outer_(outer ? outer : &inner_) {}
    virtual ~ComObject() = default;
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    /// The object's own IUnknown: the one reference that its maker gets.
    IUnknown* inner() noexcept { return &inner_; }
    IUnknown* outer() const noexcept { return outer_; }

protected:
    /// The interface as a pointer without a new reference; null for an unknown one. Never asked for IUnknown.
    virtual void* interfaceOf(REFIID id) noexcept = 0;

private:
    class Inner final : public IUnknown {
    public:
        explicit Inner(ComObject& object) : object_(object) {}
        STDMETHODIMP QueryInterface(REFIID id, void** result) override;
        STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
        STDMETHODIMP_(ULONG) Release() override;

    private:
        ComObject& object_;
        std::atomic<ULONG> references_{1};
    };

    ModuleLock lock_;
    Inner inner_;
    IUnknown* outer_; // not counted: the outer object lives longer
};

} // namespace cvlog::com

#define CVLOG_DELEGATE_UNKNOWN()                                                                             \
    STDMETHODIMP QueryInterface(REFIID id, void** result) override {                                         \
        return outer()->QueryInterface(id, result);                                                          \
    }                                                                                                        \
    STDMETHODIMP_(ULONG) AddRef() override { return outer()->AddRef(); }                                     \
    STDMETHODIMP_(ULONG) Release() override { return outer()->Release(); }
