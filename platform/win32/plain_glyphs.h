#pragma once

#include "base/compact_text_view.h"
#include "platform/win32/windows_headers.h"

#include <array>
#include <vector>

namespace cvlog::platform::win32 {

/// The glyphs of a font's plain letters, digits and signs, looked up once. A text of nothing else, as most are, can be
/// drawn by them: it looks the same, and the system does not look for scripts that it would have to shape.
class PlainGlyphs {
public:
    /// Takes the font that the context draws with.
    void lookUp(HDC dc);
    /// False, and the glyphs mean nothing, for a text that has to be drawn by its characters.
    bool find(base::CompactTextView text, std::vector<WORD>& glyphs) const;

private:
    template <class Text>
    bool findEach(Text text, std::vector<WORD>& glyphs) const;

    static constexpr std::size_t kFirst = 0x20;
    static constexpr std::size_t kEnd = 0x7F;
    std::array<WORD, kEnd - kFirst> glyphs_{};
    bool usable_ = false;
};

} // namespace cvlog::platform::win32
