#pragma once

#include <windows.h>

#include <functional>
#include <utility>

namespace cvlog::tests {

/// Makes objects of one class, each by a function. Lives as long as it is referred to.
class ClassFactory final : public IClassFactory {
public:
    /// Answers as QueryInterface of a new object does.
    using Make = std::function<HRESULT(REFIID id, void** result)>;
    explicit ClassFactory(Make make) : make_(std::move(make)) {}

    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
        if (id != IID_IUnknown && id != IID_IClassFactory) return *result = nullptr, E_NOINTERFACE;
        return AddRef(), *result = this, S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }
    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** result) override {
        return outer ? CLASS_E_NOAGGREGATION : make_(id, result);
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }

private:
    ~ClassFactory() = default;
    ULONG references_ = 1;
    Make make_;
};

} // namespace cvlog::tests
