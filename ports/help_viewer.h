#pragma once

#include <cstdint>
#include <string_view>

namespace cvlog::ports {

class HelpViewer {
public:
    virtual ~HelpViewer() = default;
    /// Opens a help file at one of its contexts, for a window of the program (0: none). Throws when the viewer refuses.
    virtual void showContext(std::int32_t ownerWindow, std::u16string_view file, std::int32_t context) = 0;
};

} // namespace cvlog::ports
