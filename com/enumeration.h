#pragma once

#include "com/firewall.h"
#include "com/heap_object.h"

#include <windows.h>

#include <unknwn.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace cvlog::com {

/// An enumerator over what there was when it was made. Kind names its `Interface`, the `Element` that callers get, and
/// the `Item` that stands for one here: it holds its references, and `give()` makes an element with references of the
/// caller's own.
template <class Kind>
class Enumeration final : public HeapObject<typename Kind::Interface> {
public:
    using Interface = typename Kind::Interface;
    using Element = typename Kind::Element;
    using Items = std::vector<typename Kind::Item>;

    static HRESULT make(Items items, Interface** result) noexcept {
        return firewall([&]() -> HRESULT {
            if (!result) return E_POINTER;
            *result = nullptr;
            *result = new Enumeration(std::make_shared<const Items>(std::move(items)), 0);
            return S_OK;
        });
    }

    STDMETHODIMP Next(ULONG count, Element* elements, ULONG* fetched) override {
        if (fetched) *fetched = 0;
        if (!elements || (count != 1 && !fetched)) return E_POINTER;
        const ULONG given = std::min(count, left());
        for (ULONG i = 0; i < given; ++i) elements[i] = Kind::give((*items_)[next_++]);
        if (fetched) *fetched = given;
        return given == count ? S_OK : S_FALSE;
    }
    STDMETHODIMP Skip(ULONG count) override {
        const ULONG skipped = std::min(count, left());
        next_ += skipped;
        return skipped == count ? S_OK : S_FALSE;
    }
    STDMETHODIMP Reset() override {
        next_ = 0;
        return S_OK;
    }
    STDMETHODIMP Clone(Interface** copy) override {
        if (!copy) return E_POINTER;
        *copy = new (std::nothrow) Enumeration(items_, next_);
        return *copy ? S_OK : E_OUTOFMEMORY;
    }

private:
    Enumeration(std::shared_ptr<const Items> items, std::size_t next)
        : items_(std::move(items)), next_(next) {}

    ULONG left() const noexcept { return static_cast<ULONG>(items_->size() - next_); }

    std::shared_ptr<const Items> items_; // shared with the copies
    std::size_t next_;
};

} // namespace cvlog::com
