#pragma once

#include "tests/windows/com_test.h"

#include <functional>

namespace cvlog::tests {

/// A container's sink that counts what it is told of a control, and does something when the picture changes.
class ViewSink final : public IAdviseSink {
public:
    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
        const bool known = id == IID_IUnknown || id == IID_IAdviseSink;
        *result = known ? this : nullptr;
        return known ? (AddRef(), S_OK) : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }
    STDMETHODIMP_(void) OnDataChange(FORMATETC*, STGMEDIUM*) override { ++dataChanges; }
    STDMETHODIMP_(void) OnViewChange(DWORD aspect, LONG index) override {
        EXPECT_EQ(aspect, static_cast<DWORD>(DVASPECT_CONTENT));
        EXPECT_EQ(index, -1);
        ++changes;
        if (handler) handler();
    }
    STDMETHODIMP_(void) OnRename(IMoniker*) override {}
    STDMETHODIMP_(void) OnSave() override { ++saves; }
    STDMETHODIMP_(void) OnClose() override { ++closes; }

    std::function<void()> handler;
    int changes = 0;
    int dataChanges = 0;
    int saves = 0;
    int closes = 0;
    ULONG references = 1;
};

} // namespace cvlog::tests
