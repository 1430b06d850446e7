#include "platform/win32/plain_glyphs.h"

#include <algorithm>

namespace cvlog::platform::win32 {

namespace {

constexpr WORD kNoGlyph = 0xFFFF;

} // namespace

void PlainGlyphs::lookUp(HDC dc) {
    std::array<wchar_t, kEnd - kFirst> characters{};
    for (std::size_t i = 0; i < characters.size(); ++i) characters[i] = static_cast<wchar_t>(kFirst + i);
    const auto count = static_cast<DWORD>(characters.size());
    TEXTMETRICW metrics{};
    // Fonts of bitmaps have no glyphs of their own, and what a font lacks the system takes from another one.
    usable_ = GetTextMetricsW(dc, &metrics) && (metrics.tmPitchAndFamily & TMPF_TRUETYPE) &&
              GetGlyphIndicesW(dc, characters.data(), static_cast<int>(count), glyphs_.data(),
                               GGI_MARK_NONEXISTING_GLYPHS) == count &&
              std::find(glyphs_.begin(), glyphs_.end(), kNoGlyph) == glyphs_.end();
}

bool PlainGlyphs::find(base::CompactTextView text, std::vector<WORD>& glyphs) const {
    if (!usable_) return false;
    return text.inBytes() ? findEach(text.bytes(), glyphs) : findEach(text.wide(), glyphs);
}

template <class Text>
bool PlainGlyphs::findEach(Text text, std::vector<WORD>& glyphs) const {
    glyphs.resize(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto place = static_cast<std::size_t>(text[i]) - kFirst; // huge for what comes before the first
        if (place >= glyphs_.size()) return false;
        glyphs[i] = glyphs_[place];
    }
    return true;
}

} // namespace cvlog::platform::win32
