#pragma once

#include "platform/win32/windows_headers.h"

#include <atomic>
#include <memory>
#include <oleauto.h>
#include <vector>

namespace cvlog::platform::win32 {

/// A COM enumerator over numbers, as they were when it was made.
class NumberEnumeration final : public IEnumVARIANT {
public:
    using Numbers = std::vector<LONG>;
    /// Keeps the code loaded as long as the enumerator lives.
    using CodeLock = std::shared_ptr<void>;

    /// Its maker has the one reference.
    NumberEnumeration(std::shared_ptr<const Numbers> numbers, CodeLock lock, std::size_t next = 0) noexcept
        : numbers_(std::move(numbers)), lock_(std::move(lock)), next_(next) {}

    STDMETHODIMP QueryInterface(REFIID id, void** result) override;
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override;
    STDMETHODIMP Next(ULONG count, VARIANT* elements, ULONG* fetched) override;
    STDMETHODIMP Skip(ULONG count) override;
    STDMETHODIMP Reset() override;
    STDMETHODIMP Clone(IEnumVARIANT** copy) override;

private:
    ~NumberEnumeration() = default;
    ULONG left() const noexcept { return static_cast<ULONG>(numbers_->size() - next_); }

    std::atomic<ULONG> references_{1};
    std::shared_ptr<const Numbers> numbers_; // shared with the copies
    CodeLock lock_;
    std::size_t next_;
};

} // namespace cvlog::platform::win32
