#pragma once

#include "platform/win32/handles.h"
#include "ports/text_measurer.h"

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

namespace cvlog::platform::win32 {

/// Widths exactly as the system's own measuring gives them, at the screen's resolution. The characters of
/// simple scripts are measured once each and added up, in fonts where that was checked to give the same;
/// everything else is asked for. Only the first kLongestMeasured code units of a text count.
class TextMeasurer : public ports::TextMeasurer {
public:
    static constexpr std::size_t kLongestMeasured = 32'768;

    TextMeasurer();
    ~TextMeasurer() override;
    std::uint32_t fontNumber(const base::Font& font) override;
    base::Twips width(std::uint32_t fontNumber, base::CompactTextView text) override;

private:
    class MeasuredFont;
    static constexpr std::size_t kUsualWidths = 1024;
    int dpi_;
    std::array<base::Twips, kUsualWidths> twips_{}; // by pixels: looked up faster than divided
    MemoryDc dc_;
    std::vector<std::unique_ptr<MeasuredFont>> fonts_;
};

} // namespace cvlog::platform::win32
