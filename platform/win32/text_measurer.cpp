#include "platform/win32/text_measurer.h"

#include "base/byte_sum.h"
#include "platform/win32/screen_units.h"
#include "platform/win32/system_font.h"
#include "platform/win32/wide_text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <stdexcept>

namespace cvlog::platform::win32 {

namespace {

constexpr std::size_t kPageSize = 256;
constexpr std::size_t kUsualCount = 0x80;
constexpr std::int64_t kUnusual = std::int64_t{1} << 40; // more than any width; a text of them still adds up

struct Run {
    char16_t first;
    char16_t last;
};

/// Characters that stand alone: no joining, no combining, no reordering.
constexpr Run kSimpleRuns[] = {{0x20, 0x7E},     {0xA1, 0xAC},     {0xAE, 0xFF},     {0x3041, 0x3096},
                               {0x30A0, 0x30FF}, {0x4E00, 0x9FA5}, {0xAC00, 0xD7A3}, {0xFF01, 0xFF60}};

bool isSimple(char16_t unit) noexcept {
    return std::any_of(std::begin(kSimpleRuns), std::end(kSimpleRuns),
                       [unit](const Run& run) { return unit >= run.first && unit <= run.last; });
}

/// Pairs that fonts with kerning or ligatures would draw closer.
constexpr std::u16string_view kTightText =
    u"AVAToWa.Ty,fi fl ffi ffl LT P. r. f' 1:00:05 \"(jgy)\" \u3042\u30A2\u65E5\u672C\uD55C\uAD6D";

} // namespace

class TextMeasurer::MeasuredFont {
public:
    MeasuredFont(HDC dc, const base::Font& font, int dpi)
        : dc_(dc), font_(font), handle_(makeFont(font, dpi)) {
        const Selected selected(*this);
        std::u16string visible;
        for (char16_t unit = u' '; unit <= u'~'; ++unit) visible += unit;
        addsUp_ = sum(visible) == extent(visible) && sum(kTightText) == extent(kTightText);
        base::NumbersOfBytes usual;
        usual.fill(kUnusual);
        for (const char16_t unit : visible)
            if (addsUp_) usual[unit] = advance(unit);
        usual_ = base::ByteSum(usual);
    }

    const base::Font& font() const noexcept { return font_; }

    int width(base::CompactTextView text) {
        const std::int64_t usual = text.inBytes() ? usual_.of(text.bytes()) : usualSum(text.wide());
        return usual < kUnusual ? static_cast<int>(usual) : unusualWidth(text.in(wide_));
    }

private:
    int unusualWidth(std::u16string_view text) {
        if (addsUp_)
            if (const auto known = knownSum(text)) return *known;
        const Selected selected(*this);
        return addsUp_ && std::all_of(text.begin(), text.end(), isSimple) ? sum(text) : extent(text);
    }

    struct Selected {
        explicit Selected(const MeasuredFont& font)
            : dc(font.dc_), previous(SelectObject(dc, font.handle_.get())) {}
        ~Selected() { SelectObject(dc, previous); }
        Selected(const Selected&) = delete;
        Selected& operator=(const Selected&) = delete;
        HDC dc;
        HGDIOBJ previous;
    };
    using Page = std::array<int, kPageSize>;

    int extent(std::u16string_view text) const {
        SIZE size{};
        const std::wstring_view wide = wideView(text);
        if (!wide.empty() && !GetTextExtentPoint32W(dc_, wide.data(), static_cast<int>(wide.size()), &size))
            throw std::runtime_error("the text cannot be measured");
        return size.cx;
    }

    int sum(std::u16string_view text) {
        int total = 0;
        for (const char16_t unit : text) total += advance(unit);
        return total;
    }

    int advance(char16_t unit) {
        auto& page = pages_[unit / kPageSize];
        if (!page) {
            page = std::make_unique<Page>();
            page->fill(-1);
        }
        int& known = (*page)[unit % kPageSize];
        if (known < 0) known = extent({&unit, 1});
        return known;
    }

    /// Of a text of plain ASCII, which most are; kUnusual or more for any other. Looks at the whole text before
    /// it decides: without a branch for each character that takes half the time.
    std::int64_t usualSum(std::u16string_view text) const noexcept {
        std::int64_t total = 0;
        unsigned units = 0;
        for (const char16_t unit : text) {
            total += usual_.ofByte(unit % kUsualCount);
            units |= unit;
        }
        return units < kUsualCount ? total : kUnusual;
    }

    /// Nothing when a character is not simple or was not measured yet. A page only ever holds simple ones.
    std::optional<int> knownSum(std::u16string_view text) const noexcept {
        int total = 0;
        for (const char16_t unit : text) {
            const auto& page = pages_[unit / kPageSize];
            const int advance = page ? (*page)[unit % kPageSize] : -1;
            if (advance < 0) return std::nullopt;
            total += advance;
        }
        return total;
    }

    HDC dc_;
    base::Font font_;
    FontHandle handle_;
    bool addsUp_ = false;
    std::u16string wide_; // room for what was given in bytes
    base::ByteSum usual_; // advances, or kUnusual where they do not add up
    std::array<std::unique_ptr<Page>, 0x10000 / kPageSize> pages_;
};

TextMeasurer::TextMeasurer() : dpi_(screenDpi()), dc_(CreateCompatibleDC(nullptr)) {
    if (!dc_) throw std::runtime_error("no device context to measure with");
    for (std::size_t pixels = 0; pixels < twips_.size(); ++pixels)
        twips_[pixels] = toTwips(static_cast<int>(pixels), dpi_);
}

TextMeasurer::~TextMeasurer() = default;

std::uint32_t TextMeasurer::fontNumber(const base::Font& font) {
    const auto found = std::find_if(fonts_.begin(), fonts_.end(),
                                    [&font](const auto& known) { return known->font() == font; });
    if (found != fonts_.end()) return static_cast<std::uint32_t>(found - fonts_.begin()) + 1;
    fonts_.push_back(std::make_unique<MeasuredFont>(dc_.get(), font, dpi_));
    return static_cast<std::uint32_t>(fonts_.size());
}

base::Twips TextMeasurer::width(std::uint32_t fontNumber, base::CompactTextView text) {
    MeasuredFont& font = *fonts_.at(static_cast<std::size_t>(fontNumber) - 1);
    const int pixels = font.width(text.first(kLongestMeasured));
    const auto index = static_cast<std::size_t>(pixels);
    return index < twips_.size() ? twips_[index] : toTwips(pixels, dpi_);
}

} // namespace cvlog::platform::win32
