#pragma once

#include <string>
#include <string_view>

namespace cvlog::ports {

/// The code page in which the system's programs write plain text. Bytes below 128 are ASCII.
class CodePage {
public:
    virtual ~CodePage() = default;
    /// Replaces `text`, whose memory is used again. Bytes that stand for nothing give a replacement character.
    virtual void decode(std::string_view bytes, std::u16string& text) = 0;
};

} // namespace cvlog::ports
