#pragma once

#include "com/guids.h"

#include <windows.h>

#include <ole2.h>

#include <functional>
#include <vector>

namespace cvlog::tests {

/// A host's sink that counts, and does something in its handler. It lives on the stack: its references are only
/// counted, from 1.
class CountingSink final : public IDispatch {
public:
    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
        const bool known = id == IID_IUnknown || id == IID_IDispatch || id == com::kLogEvents;
        *result = known ? this : nullptr;
        return known ? (AddRef(), S_OK) : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return DISP_E_UNKNOWNNAME; }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        ids.push_back(id);
        if (handler) handler();
        return answer;
    }

    ULONG references = 1;
    std::vector<DISPID> ids;
    std::function<void()> handler;
    HRESULT answer = S_OK;
};

} // namespace cvlog::tests
