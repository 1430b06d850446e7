#pragma once

#include "ports/code_page.h"

namespace cvlog::platform::win32 {

/// The ANSI code page of the system's user interface.
class CodePage : public ports::CodePage {
public:
    void decode(std::string_view bytes, std::u16string& text) override;
};

} // namespace cvlog::platform::win32
