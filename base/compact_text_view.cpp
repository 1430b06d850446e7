#include "base/compact_text_view.h"

#include "base/text.h"

#include <algorithm>
#include <cstring>
#include <ostream>

namespace cvlog::base {

bool CompactTextView::equalsIgnoringCase(CompactTextView other) const noexcept {
    if (size() != other.size()) return false;
    if (!inBytes() && !other.inBytes()) return base::equalsIgnoringCase(wide(), other.wide());
    for (std::size_t i = 0; i < size(); ++i) {
        const char16_t here = (*this)[i];
        const char16_t there = other[i];
        if (here != there && foldCase(here) != foldCase(there)) return false;
    }
    return true;
}

bool operator==(CompactTextView left, CompactTextView right) noexcept {
    if (left.size() != right.size()) return false;
    if (left.inBytes() && right.inBytes()) return left.bytes() == right.bytes();
    if (!left.inBytes() && !right.inBytes()) return left.wide() == right.wide();
    const std::string_view bytes = left.inBytes() ? left.bytes() : right.bytes();
    const std::u16string_view wide = left.inBytes() ? right.wide() : left.wide();
    return std::equal(wide.begin(), wide.end(), bytes.begin(),
                      [](char16_t unit, char byte) { return unit == static_cast<unsigned char>(byte); });
}

std::u16string_view CompactTextView::in(std::u16string& buffer) const {
    if (!inBytes()) return wide();
    buffer.resize(size());
    widenAscii(bytes(), buffer.data());
    return buffer;
}

void CompactTextView::appendTo(std::u16string& text) const {
    if (!inBytes()) {
        text += wide();
        return;
    }
    const std::size_t before = text.size();
    text.resize(before + size());
    widenAscii(bytes(), text.data() + before);
}

CompactTextView::operator std::u16string() const {
    std::u16string text;
    appendTo(text);
    return text;
}

std::string CompactTextView::toUtf8() const {
    return inBytes() ? std::string(bytes()) : base::toUtf8(wide());
}

std::ostream& operator<<(std::ostream& out, CompactTextView text) { return out << text.toUtf8(); }

} // namespace cvlog::base
