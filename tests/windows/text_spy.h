#pragma once

#include <windows.h>

#include <ole2.h>

#include <string>
#include <vector>

namespace cvlog::tests {

/// Sees what becomes of texts (BSTR) that a test makes: how often each is freed. It takes the place of the system's
/// allocator's observer, and the cache of texts is off as soon as there was one.
class TextSpy final : public IMallocSpy {
public:
    /// The one of the process: the system keeps it while an allocation that it saw is not freed.
    static TextSpy& instance();

    /// A new text that is watched.
    BSTR make(const wchar_t* text);
    /// How often each watched text was freed, in the order of their making.
    std::vector<int> frees() const;
    void forget() { watched_.clear(); }

    STDMETHODIMP QueryInterface(REFIID id, void** result) override;
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP_(SIZE_T) PreAlloc(SIZE_T size) override { return size; }
    STDMETHODIMP_(void*) PostAlloc(void* memory) override;
    STDMETHODIMP_(void*) PreFree(void* memory, BOOL) override;
    STDMETHODIMP_(void) PostFree(BOOL) override {}
    STDMETHODIMP_(SIZE_T) PreRealloc(void* memory, SIZE_T size, void** given, BOOL) override {
        return *given = memory, size;
    }
    STDMETHODIMP_(void*) PostRealloc(void* memory, BOOL) override { return memory; }
    STDMETHODIMP_(void*) PreGetSize(void* memory, BOOL) override { return memory; }
    STDMETHODIMP_(SIZE_T) PostGetSize(SIZE_T size, BOOL) override { return size; }
    STDMETHODIMP_(void*) PreDidAlloc(void* memory, BOOL) override { return memory; }
    STDMETHODIMP_(int) PostDidAlloc(void*, BOOL, int actual) override { return actual; }
    STDMETHODIMP_(void) PreHeapMinimize() override {}
    STDMETHODIMP_(void) PostHeapMinimize() override {}

private:
    struct Watched {
        void* memory;
        int frees = 0;
        bool usedAgain = false; // by somebody else, after it was freed
    };

    TextSpy();
    ~TextSpy() = default;

    bool making_ = false;
    std::vector<Watched> watched_;
};

} // namespace cvlog::tests
