#include "base/byte_sum.h"

namespace cvlog::base {

// Two sums grow side by side. The build keeps compilers from taking many turns at once: fetching numbers from all over
// a table cannot be done at once, and what they bring together and take apart again costs twice the time.
std::int64_t sumOf(std::string_view bytes, const NumbersOfBytes& numbers) noexcept {
    constexpr std::size_t kTurn = 4;
    const auto of = [&numbers](char byte) { return numbers[static_cast<unsigned char>(byte)]; };
    std::int64_t even = 0;
    std::int64_t odd = 0;
    for (; bytes.size() >= kTurn; bytes.remove_prefix(kTurn)) {
        even += of(bytes[0]);
        odd += of(bytes[1]);
        even += of(bytes[2]);
        odd += of(bytes[3]);
    }
    for (const char byte : bytes) even += of(byte);
    return even + odd;
}

} // namespace cvlog::base
