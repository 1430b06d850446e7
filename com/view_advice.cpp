#include "com/view_advice.h"

#include <utility>

namespace cvlog::com {

HRESULT ViewAdvice::set(DWORD aspects, DWORD flags, IAdviseSink* sink) {
    if (sink && !(aspects & DVASPECT_CONTENT)) return DV_E_DVASPECT;
    const ComPtr<IAdviseSink> before = std::exchange(sink_, sink); // it goes when everything here is in order
    aspects_ = aspects;
    flags_ = flags;
    if (flags & ADVF_PRIMEFIRST) tell();
    return S_OK;
}

HRESULT ViewAdvice::get(DWORD* aspects, DWORD* flags, IAdviseSink** sink) const {
    if (aspects) *aspects = aspects_;
    if (flags) *flags = flags_;
    return sink ? sink_.CopyTo(sink) : S_OK;
}

void ViewAdvice::tell() {
    const ComPtr<IAdviseSink> told = sink_;
    if (!told) return;
    if (flags_ & ADVF_ONLYONCE) {
        sink_.Reset();
        aspects_ = flags_ = 0;
    }
    told->OnViewChange(DVASPECT_CONTENT, -1);
}

} // namespace cvlog::com
