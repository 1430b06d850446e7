#pragma once

#include "tests/windows/com_test.h"

#include <ocidl.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace cvlog::tests {

/// A container's bag that can be told to fail, and to run something whenever it is read.
class Bag final : public IPropertyBag {
public:
    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
        const bool known = id == IID_IUnknown || id == IID_IPropertyBag;
        *result = known ? this : nullptr;
        return known ? (AddRef(), S_OK) : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }
    STDMETHODIMP Read(LPCOLESTR name, VARIANT* value, IErrorLog*) override {
        asked.emplace_back(name);
        if (reading) reading(name);
        if (const auto failure = failures.find(name); failure != failures.end()) return failure->second;
        const auto found = values.find(name);
        return found == values.end() ? E_INVALIDARG : VariantCopy(value, &found->second);
    }
    STDMETHODIMP Write(LPCOLESTR name, VARIANT* value) override {
        written.emplace_back(name);
        if (failures.contains(name)) return failures[name];
        return VariantCopy(&values[name], value);
    }

    std::map<std::wstring, Variant> values;
    std::map<std::wstring, HRESULT> failures;
    std::vector<std::wstring> asked;
    std::vector<std::wstring> written;
    std::function<void(const std::wstring&)> reading;
    ULONG references = 1;
};

/// A container's log of what was wrong in its bag.
class ErrorLog final : public IErrorLog {
public:
    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
        const bool known = id == IID_IUnknown || id == IID_IErrorLog;
        *result = known ? this : nullptr;
        return known ? (AddRef(), S_OK) : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }
    STDMETHODIMP AddError(LPCOLESTR name, EXCEPINFO* info) override {
        errors[name] = info->scode;
        return S_OK;
    }
    std::map<std::wstring, HRESULT> errors;
    ULONG references = 1;
};

} // namespace cvlog::tests
