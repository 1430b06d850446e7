#include "platform/win32/message_boxes.h"

#include "platform/win32/wide_text.h"
#include "platform/win32/windows_headers.h"

namespace cvlog::platform::win32 {

namespace {

UINT iconFlag(ports::BoxIcon icon) noexcept {
    switch (icon) {
    case ports::BoxIcon::Information:
        return MB_ICONINFORMATION;
    case ports::BoxIcon::Exclamation:
        return MB_ICONEXCLAMATION;
    case ports::BoxIcon::Critical:
        return MB_ICONERROR;
    }
    return 0;
}

int show(std::u16string_view title, std::u16string_view text, UINT flags) {
    const HWND owner = GetActiveWindow();
    return MessageBoxW(owner, shownText(text).c_str(), shownText(title).c_str(),
                       flags | MB_SETFOREGROUND | (owner ? 0U : MB_TASKMODAL));
}

} // namespace

void MessageBoxes::inform(std::u16string_view title, std::u16string_view text, ports::BoxIcon icon) {
    show(title, text, MB_OK | iconFlag(icon));
}

bool MessageBoxes::ask(std::u16string_view title, std::u16string_view text, ports::BoxIcon icon) {
    return show(title, text, MB_YESNO | iconFlag(icon)) == IDYES;
}

} // namespace cvlog::platform::win32
