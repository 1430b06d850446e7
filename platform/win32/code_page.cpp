#include "platform/win32/code_page.h"

#include "platform/win32/windows_headers.h"

#include <limits>
#include <stdexcept>

namespace cvlog::platform::win32 {

void CodePage::decode(std::string_view bytes, std::u16string& text) {
    text.clear();
    if (bytes.empty()) return;
    if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        throw std::length_error("the text is too long");
    const auto size = static_cast<int>(bytes.size());
    text.resize(bytes.size()); // no code page has characters of more units than bytes
    const int count =
        MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, reinterpret_cast<wchar_t*>(text.data()), size);
    if (count == 0) throw std::runtime_error("the text cannot be decoded");
    text.resize(static_cast<std::size_t>(count));
}

} // namespace cvlog::platform::win32
