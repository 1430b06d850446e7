#include "base/compact_text.h"

#include "base/text.h"

#include <algorithm>

namespace cvlog::base {

void CompactText::clear() noexcept {
    isAscii_ = true;
    ascii_.clear();
    wide_.clear();
}

void CompactText::append(std::u16string_view text) {
    const bool isPlain = std::ranges::all_of(text, [](char16_t unit) { return unit < 0x80; });
    if (isAscii_ && !isPlain) makeWide();
    if (isAscii_)
        ascii_.append(text.begin(), text.end());
    else
        wide_.append(text);
}

void CompactText::appendUtf8(std::string_view bytes) {
    if (isAscii_ && base::isAscii(bytes)) {
        ascii_.append(bytes);
        return;
    }
    makeWide();
    fromUtf8(bytes, wide_, wide_.size());
}

void CompactText::appendAscii(char byte) {
    if (isAscii_)
        ascii_.push_back(byte);
    else
        wide_.push_back(static_cast<char16_t>(byte));
}

void CompactText::makeWide() {
    if (!isAscii_) return;
    wide_.resize(ascii_.size());
    widenAscii(ascii_, wide_.data());
    ascii_.clear();
    isAscii_ = false;
}

} // namespace cvlog::base
