// Readers that know only the code page find that form; all others get the text unchanged.

#include "platform/win32/clipboard.h"

#include "platform/win32/handles.h"
#include "platform/win32/wide_text.h"

#include <cstring>
#include <string>

namespace cvlog::platform::win32 {

namespace {

void releaseMemory(HGLOBAL memory) noexcept { GlobalFree(memory); }
using Memory = Owned<HGLOBAL, releaseMemory>;

/// The clipboard, open as long as it lives.
class OpenClipboardScope {
public:
    OpenClipboardScope() {
        if (!OpenClipboard(nullptr)) throw std::runtime_error("another program holds the clipboard");
    }
    ~OpenClipboardScope() { CloseClipboard(); }
    OpenClipboardScope(const OpenClipboardScope&) = delete;
    OpenClipboardScope& operator=(const OpenClipboardScope&) = delete;
};

std::string codePageText(std::u16string_view text) {
    const std::wstring_view wide = wideView(text);
    const auto length = static_cast<int>(wide.size());
    std::string bytes;
    if (length == 0) return bytes;
    const int size = WideCharToMultiByte(CP_ACP, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(size));
    WideCharToMultiByte(CP_ACP, 0, wide.data(), length, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

// Zeroed memory with room for the bytes and one more character; the system owns it once the clipboard took it.
void put(UINT format, const void* data, std::size_t size, std::size_t zero) {
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size + zero);
    if (!block) throw std::bad_alloc();
    Memory memory(block);
    if (size != 0) {
        void* target = GlobalLock(block);
        if (!target) throw std::bad_alloc();
        std::memcpy(target, data, size);
        GlobalUnlock(block);
    }
    if (!SetClipboardData(format, block)) throw std::runtime_error("the clipboard did not take the text");
    memory.release();
}

} // namespace

void Clipboard::setText(std::u16string_view text) {
    const std::string bytes = codePageText(text);
    const OpenClipboardScope open;
    if (!EmptyClipboard()) throw std::runtime_error("the clipboard was not emptied");
    put(CF_TEXT, bytes.data(), bytes.size(), sizeof(char));
    put(CF_UNICODETEXT, text.data(), text.size() * sizeof(char16_t), sizeof(char16_t));
}

} // namespace cvlog::platform::win32
