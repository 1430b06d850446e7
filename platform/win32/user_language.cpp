#include "platform/win32/user_language.h"

#include "platform/win32/windows_headers.h"

namespace cvlog::platform::win32 {

resources::Language userLanguage() noexcept {
    return resources::languageForLangId(GetUserDefaultUILanguage());
}

} // namespace cvlog::platform::win32
