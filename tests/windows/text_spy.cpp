#include "tests/windows/text_spy.h"

#include <gtest/gtest.h>

namespace cvlog::tests {

TextSpy& TextSpy::instance() {
    static TextSpy spy;
    return spy;
}

TextSpy::TextSpy() {
    // Texts that are freed would else wait in a cache, unseen.
    const auto noCache = reinterpret_cast<void(WINAPI*)()>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"oleaut32.dll"), "SetOaNoCache")));
    EXPECT_NE(noCache, nullptr);
    if (noCache) noCache();
    EXPECT_EQ(CoRegisterMallocSpy(this), S_OK);
}

BSTR TextSpy::make(const wchar_t* text) {
    making_ = true;
    const BSTR made = SysAllocString(text);
    making_ = false;
    return made;
}

std::vector<int> TextSpy::frees() const {
    std::vector<int> counts;
    for (const Watched& watched : watched_) counts.push_back(watched.frees);
    return counts;
}

STDMETHODIMP TextSpy::QueryInterface(REFIID id, void** result) {
    const bool known = id == IID_IUnknown || id == IID_IMallocSpy;
    *result = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
}

STDMETHODIMP_(void*) TextSpy::PostAlloc(void* memory) {
    for (Watched& watched : watched_)
        if (watched.memory == memory && watched.frees > 0) watched.usedAgain = true;
    if (making_) watched_.push_back({memory});
    return memory;
}

STDMETHODIMP_(void*) TextSpy::PreFree(void* memory, BOOL) {
    for (Watched& watched : watched_)
        if (watched.memory == memory && !watched.usedAgain) ++watched.frees;
    return memory;
}

} // namespace cvlog::tests
