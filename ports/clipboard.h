#pragma once

#include <string_view>

namespace cvlog::ports {

class Clipboard {
public:
    virtual ~Clipboard() = default;
    /// Replaces what the clipboard holds by a text, in the system's code page and as UTF-16, both ended by a zero;
    /// zeros inside stay. Throws when another program holds the clipboard, the text is too long or there is no
    /// memory; the clipboard is closed then too, and keeps what it held or has the text in the code page alone.
    virtual void setText(std::u16string_view text) = 0;
};

} // namespace cvlog::ports
