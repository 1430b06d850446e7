#pragma once

#include "ports/message_boxes.h"

namespace cvlog::platform::win32 {

/// Boxes belong to the thread's active window, which they disable; without one, to all windows of the thread.
class MessageBoxes : public ports::MessageBoxes {
public:
    void inform(std::u16string_view title, std::u16string_view text, ports::BoxIcon icon) override;
    bool ask(std::u16string_view title, std::u16string_view text, ports::BoxIcon icon) override;
};

} // namespace cvlog::platform::win32
