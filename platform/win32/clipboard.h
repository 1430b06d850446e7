#pragma once

#include "ports/clipboard.h"

namespace cvlog::platform::win32 {

class Clipboard : public ports::Clipboard {
public:
    void setText(std::u16string_view text) override;
};

} // namespace cvlog::platform::win32
