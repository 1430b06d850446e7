#include "base/compact_text.h"

#include "base/text.h"

namespace cvlog::base {

void CompactText::clear() noexcept {
    isAscii_ = true;
    ascii_.clear();
    wide_.clear();
}

CompactTextView CompactText::view() const noexcept {
    return isAscii_ ? CompactTextView(std::string_view(ascii_)) : CompactTextView(wide_);
}

void CompactText::append(std::u16string_view text) {
    if (isAscii_ && !base::isAscii(text)) makeWide();
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
