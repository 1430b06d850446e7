#pragma once

#include "com/com_ptr.h"

#include <windows.h>

#include <objidl.h>

namespace cvlog::com {

/// The one sink that an object tells when its picture changes, as IViewObject has it.
class ViewAdvice {
public:
    /// Replaces the sink. One that wants to hear at once is told before this returns.
    HRESULT set(DWORD aspects, DWORD flags, IAdviseSink* sink);
    /// Each place may be null.
    HRESULT get(DWORD* aspects, DWORD* flags, IAdviseSink** sink) const;
    bool isWanted() const noexcept { return sink_ != nullptr; }
    /// The sink may do anything meanwhile; whoever calls this holds the object.
    void tell();

private:
    ComPtr<IAdviseSink> sink_;
    DWORD aspects_ = 0;
    DWORD flags_ = 0;
};

} // namespace cvlog::com
