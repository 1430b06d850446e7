#pragma once

#include <concepts>
#include <cstddef>
#include <iosfwd>
#include <limits>
#include <string>
#include <string_view>

namespace cvlog::base {

/// A text that lies elsewhere, in ASCII bytes or in UTF-16. Counted in code units, of which a byte is one. The same text
/// may lie in either way.
class CompactTextView {
public:
    CompactTextView() noexcept = default;
    CompactTextView(std::string_view ascii) noexcept
        : units_(ascii.data()), size_(ascii.size() & kMostUnits), inBytes_(true) {}
    /// Of anything that is UTF-16.
    template <std::convertible_to<std::u16string_view> Text>
    CompactTextView(const Text& text) noexcept : CompactTextView(Wide{text}) {}

    std::size_t size() const noexcept { return size_; }
    bool empty() const noexcept { return size_ == 0; }
    bool inBytes() const noexcept { return inBytes_; }
    /// Only where it lies in bytes.
    std::string_view bytes() const noexcept { return {static_cast<const char*>(units_), size_}; }
    /// Only where it does not.
    std::u16string_view wide() const noexcept { return {static_cast<const char16_t*>(units_), size_}; }

    char16_t operator[](std::size_t index) const noexcept {
        return inBytes_ ? static_cast<unsigned char>(bytes()[index]) : wide()[index];
    }
    /// Its first units, so many at most.
    CompactTextView first(std::size_t count) const noexcept {
        return inBytes_ ? CompactTextView(bytes().substr(0, count))
                        : CompactTextView(wide().substr(0, count));
    }
    bool equalsIgnoringCase(CompactTextView other) const noexcept;
    friend bool operator==(CompactTextView left, CompactTextView right) noexcept;

    /// All of it in UTF-16: where it lies, or in the buffer, which is good as long as neither changes.
    std::u16string_view in(std::u16string& buffer) const;
    void appendTo(std::u16string& text) const;
    explicit operator std::u16string() const;
    std::string toUtf8() const;
    friend std::ostream& operator<<(std::ostream& out, CompactTextView text);

private:
    struct Wide {
        std::u16string_view text;
    };
    explicit CompactTextView(Wide wide) noexcept
        : units_(wide.text.data()), size_(wide.text.size() & kMostUnits), inBytes_(false) {}

    static constexpr std::size_t kMostUnits = std::numeric_limits<std::size_t>::max() >> 1;

    const void* units_ = nullptr;
    // Side by side, so that all of it is passed in two registers.
    std::size_t size_ : std::numeric_limits<std::size_t>::digits - 1 = 0;
    std::size_t inBytes_ : 1 = false;
};

} // namespace cvlog::base
