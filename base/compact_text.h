#pragma once

#include "base/compact_text_view.h"

#include <string>
#include <string_view>

namespace cvlog::base {

/// A text in the making: in ASCII bytes as long as it has no other character, in UTF-16 from then on. Keeps its memory
/// when it is begun again.
class CompactText {
public:
    bool isAscii() const noexcept { return isAscii_; }
    /// The whole text while it is ASCII, else empty; and the other way round.
    std::string& ascii() noexcept { return ascii_; }
    std::u16string& wide() noexcept { return wide_; }
    /// Good until the text changes.
    CompactTextView view() const noexcept;

    void clear() noexcept;
    void append(std::u16string_view text);
    void appendUtf8(std::string_view bytes);
    void appendAscii(char byte);

private:
    void makeWide();

    bool isAscii_ = true;
    std::string ascii_;
    std::u16string wide_;
};

} // namespace cvlog::base
