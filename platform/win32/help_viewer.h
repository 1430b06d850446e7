#pragma once

#include "ports/help_viewer.h"

namespace cvlog::platform::win32 {

/// The system's help program. File names go in the system's code page.
class HelpViewer : public ports::HelpViewer {
public:
    void showContext(std::int32_t ownerWindow, std::u16string_view file, std::int32_t context) override;
};

} // namespace cvlog::platform::win32
