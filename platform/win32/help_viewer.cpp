#include "platform/win32/help_viewer.h"

#include "platform/win32/wide_text.h"
#include "platform/win32/windows_headers.h"

#include <string>

namespace cvlog::platform::win32 {

namespace {

std::string codePageName(std::u16string_view text) {
    const std::wstring name = nameText(text);
    const int size = WideCharToMultiByte(CP_ACP, 0, name.c_str(), -1, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_ACP, 0, name.c_str(), -1, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

} // namespace

void HelpViewer::showContext(std::int32_t ownerWindow, std::u16string_view file, std::int32_t context) {
    const auto owner = reinterpret_cast<HWND>(static_cast<std::intptr_t>(ownerWindow));
    if (!WinHelpA(owner, codePageName(file).c_str(), HELP_CONTEXT, static_cast<ULONG_PTR>(context)))
        throw std::runtime_error("no help");
}

} // namespace cvlog::platform::win32
