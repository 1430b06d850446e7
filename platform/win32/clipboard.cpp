// Readers that know only the code page find that form; all others get the text unchanged. The two forms are put in
// two goes. The clipboard takes nothing when it was emptied by nobody's window, so a hidden one owns it until both
// are there; the second go leaves the owner as it is.

#include "platform/win32/clipboard.h"

#include "platform/win32/handles.h"
#include "platform/win32/module.h"
#include "platform/win32/wide_text.h"

#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>
#include <string>

namespace cvlog::platform::win32 {

namespace {

// Programs that watch the clipboard hold it for a moment after each change.
constexpr int kAttempts = 10;
constexpr DWORD kPauseMilliseconds = 10;

// Sizes of either form stay within the system's 32 bits.
constexpr std::size_t kLongestText = std::numeric_limits<int>::max() / sizeof(char16_t) - 1;

void releaseMemory(HGLOBAL memory) noexcept { GlobalFree(memory); }
void releaseWindow(HWND window) noexcept { DestroyWindow(window); }
using Memory = Owned<HGLOBAL, releaseMemory>;
using Window = Owned<HWND, releaseWindow>;

class LockedMemory {
public:
    explicit LockedMemory(HGLOBAL memory) : memory_(memory), data_(GlobalLock(memory)) {
        if (!data_) throw std::bad_alloc();
    }
    ~LockedMemory() { GlobalUnlock(memory_); }
    LockedMemory(const LockedMemory&) = delete;
    LockedMemory& operator=(const LockedMemory&) = delete;
    void* data() const noexcept { return data_; }

private:
    HGLOBAL memory_;
    void* data_;
};

/// The clipboard, open as long as it lives.
class OpenClipboardScope {
public:
    explicit OpenClipboardScope(HWND owner) {
        for (int attempt = 1; !OpenClipboard(owner); ++attempt) {
            if (attempt == kAttempts) throw std::runtime_error("another program holds the clipboard");
            Sleep(kPauseMilliseconds);
        }
    }
    ~OpenClipboardScope() { CloseClipboard(); }
    OpenClipboardScope(const OpenClipboardScope&) = delete;
    OpenClipboardScope& operator=(const OpenClipboardScope&) = delete;
};

Window hiddenWindow() {
    Window window(
        CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, thisModule(), nullptr));
    if (!window) throw std::runtime_error("no window to own the clipboard by");
    return window;
}

std::string codePageText(std::u16string_view text) {
    std::string bytes;
    if (text.empty()) return bytes;
    const std::wstring_view wide = wideView(text);
    const auto length = static_cast<int>(wide.size());
    const int size = WideCharToMultiByte(CP_ACP, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
    if (size <= 0) throw std::runtime_error("the text has no form in the code page");
    bytes.resize(static_cast<std::size_t>(size));
    WideCharToMultiByte(CP_ACP, 0, wide.data(), length, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

Memory zeroedMemory(std::size_t size) {
    Memory memory(GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size));
    if (!memory) throw std::bad_alloc();
    return memory;
}

// The system owns the memory from then on.
void give(UINT format, Memory& memory) {
    if (!SetClipboardData(format, memory.get()))
        throw std::runtime_error("the clipboard did not take the text");
    memory.release();
}

void replaceByCodePageText(HWND owner, const std::string& bytes) {
    Memory memory = zeroedMemory(bytes.size() + 1);
    std::memcpy(LockedMemory(memory.get()).data(), bytes.data(), bytes.size());
    const OpenClipboardScope open(owner);
    if (!EmptyClipboard()) throw std::runtime_error("the clipboard was not emptied");
    give(CF_TEXT, memory);
}

void addUnicodeText(Memory memory, std::u16string_view text) {
    const LockedMemory locked(memory.get()); // until the clipboard is closed again
    std::memcpy(locked.data(), text.data(), text.size() * sizeof(char16_t));
    const OpenClipboardScope open(nullptr);
    give(CF_UNICODETEXT, memory);
}

} // namespace

void Clipboard::setText(std::u16string_view text) {
    if (text.size() > kLongestText) throw std::length_error("the text is too long for the clipboard");
    Memory unicode = zeroedMemory((text.size() + 1) * sizeof(char16_t)); // before anything is replaced
    const Window owner = hiddenWindow();
    replaceByCodePageText(owner.get(), codePageText(text));
    addUnicodeText(std::move(unicode), text);
}

} // namespace cvlog::platform::win32
