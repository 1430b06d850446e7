#include "base/byte_sum.h"

#include "base/byte_words.h"

#include <algorithm>
#include <cstring>

namespace cvlog::base {

namespace {

constexpr std::size_t kBytes = 0x100;
constexpr std::size_t kBytesOfStep = 2 * kBytesOfWord;

/// A sum in the making. Two of them grow side by side, as each addition waits for the one before it. The build keeps
/// compilers from taking many turns at once: fetching numbers from all over a table cannot be done at once, and what
/// they bring together and take apart again costs twice the time.
class Sum {
public:
    explicit Sum(const std::int64_t* ofPair) noexcept : ofPair_(ofPair) {}

    void addStep(const char* bytes) noexcept {
        for (std::size_t at = 0; at < kBytesOfStep; at += 4) {
            even_ += ofPairAt(bytes + at);
            odd_ += ofPairAt(bytes + at + 2);
        }
    }
    void addWord(std::uint64_t word) noexcept {
        even_ += ofPair_[word & 0xFFFF];
        odd_ += ofPair_[word >> 16 & 0xFFFF];
        even_ += ofPair_[word >> 32 & 0xFFFF];
        odd_ += ofPair_[word >> 48];
    }
    std::int64_t value() const noexcept { return even_ + odd_; }

private:
    std::int64_t ofPairAt(const char* bytes) const noexcept {
        std::uint16_t pair = 0;
        std::memcpy(&pair, bytes, sizeof pair);
        return ofPair_[pair];
    }

    const std::int64_t* ofPair_;
    std::int64_t even_ = 0;
    std::int64_t odd_ = 0;
};

// The last bytes of a word, the others NUL.
std::uint64_t lastOf(std::uint64_t word, std::size_t count) noexcept {
    return count == 0 ? 0 : word >> (kBytesOfWord - count) * 8;
}

} // namespace

std::int64_t ByteSum::ofShort(std::string_view bytes) const noexcept {
    std::int64_t sum = 0;
    for (const char byte : bytes) sum += ofByte_[static_cast<unsigned char>(byte)];
    return sum;
}

// What is left behind the last whole step is taken from the last sixteen bytes, with NULs for those that were taken: how
// much it is differs from text to text, and a branch on it would be foretold badly.
std::int64_t ByteSum::ofLong(std::string_view bytes) {
    if (ofPair_.empty()) makePairs();
    Sum sum(ofPair_.data());
    for (std::size_t at = 0; at + kBytesOfStep <= bytes.size(); at += kBytesOfStep)
        sum.addStep(bytes.data() + at);
    const char* const end = bytes.data() + bytes.size();
    const std::size_t left = bytes.size() % kBytesOfStep;
    const std::size_t inLast = std::min(left, kBytesOfWord);
    sum.addWord(lastOf(wholeWordAt(end - kBytesOfWord), inLast));
    sum.addWord(lastOf(wholeWordAt(end - kBytesOfStep), left - inLast));
    return sum.value() - static_cast<std::int64_t>(kBytesOfStep - left) * ofByte_[0];
}

void ByteSum::makePairs() {
    std::vector<std::int64_t> made;
    made.reserve(kBytes * kBytes);
    for (const std::int64_t second : ofByte_)
        for (const std::int64_t first : ofByte_) made.push_back(first + second);
    ofPair_ = std::move(made);
}

} // namespace cvlog::base
