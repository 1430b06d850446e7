#pragma once

#include "tests/windows/com_test.h"

#include <ocidl.h>

#include <functional>
#include <vector>

namespace cvlog::tests {

/// A container's sink that notes which properties it is asked for and told of.
class NotifySink final : public IPropertyNotifySink {
public:
    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
        const bool known = id == IID_IUnknown || id == IID_IPropertyNotifySink;
        *result = known ? this : nullptr;
        return known ? (AddRef(), S_OK) : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }
    STDMETHODIMP OnChanged(DISPID id) override {
        changed.push_back(id);
        if (handler) handler();
        return E_FAIL; // a failing sink is not the caller's concern
    }
    STDMETHODIMP OnRequestEdit(DISPID id) override {
        asked.push_back(id);
        if (asking) asking();
        return answer;
    }

    std::vector<DISPID> changed;
    std::vector<DISPID> asked;
    std::function<void()> handler;
    std::function<void()> asking;
    HRESULT answer = S_OK;
    ULONG references = 1;
};

} // namespace cvlog::tests
