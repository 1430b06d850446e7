#include "tests/support/errors_file_fuzz.h"

#include "base/text.h"
#include "details/errors_file.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace cvlog::tests {

namespace {

constexpr std::size_t kControlBytes = 4;

/// Gives its content in pieces of any size.
class FileInPieces : public ports::OpenFile {
public:
    FileInPieces(std::string_view content, std::uint64_t sizeAtOpening, std::uint32_t seed)
        : content_(content), size_(sizeAtOpening), random_(seed), mostAtOnce_(std::size_t{1} << (seed % 18)) {
    }
    std::uint64_t size() const noexcept override { return size_; }
    std::size_t read(std::span<char> bytes) override {
        const std::size_t count =
            std::min({bytes.size(), content_.size() - at_, 1 + random_() % mostAtOnce_});
        content_.copy(bytes.data(), count, at_);
        at_ += count;
        return count;
    }

private:
    std::string_view content_;
    std::uint64_t size_;
    std::mt19937 random_;
    std::size_t mostAtOnce_;
    std::size_t at_ = 0;
};

std::vector<std::string_view> linesOf(std::string_view content) {
    std::vector<std::string_view> lines;
    while (!content.empty()) {
        const std::size_t end = content.find('\n');
        std::string_view line = content.substr(0, end);
        content.remove_prefix(end == std::string_view::npos ? content.size() : end + 1);
        if (end != std::string_view::npos && line.ends_with('\r')) line.remove_suffix(1);
        lines.push_back(line);
    }
    return lines;
}

std::uint64_t sizeAtOpening(std::string_view content, std::uint32_t seed) {
    switch (seed / 18 % 4) {
    case 0: // it is written to afterwards
        return seed % (content.size() + 1);
    case 1: // it is cut afterwards
        return content.size() + seed % 100'000;
    default:
        return content.size();
    }
}

} // namespace

std::string faultOfErrorsFile(std::string_view input) {
    std::uint32_t seed = 0;
    for (const char byte : input.substr(0, kControlBytes))
        seed = seed * 256 + static_cast<unsigned char>(byte);
    const std::string_view content = input.substr(std::min(input.size(), kControlBytes));
    const std::uint64_t size = sizeAtOpening(content, seed);
    details::ErrorsFile file(std::make_unique<FileInPieces>(content, size, seed));
    std::size_t number = 0;
    const auto read = static_cast<std::size_t>(std::min<std::uint64_t>(size, content.size()));
    for (const std::string_view expected : linesOf(content.substr(0, read))) {
        const std::string which = "line " + std::to_string(++number);
        std::span<char> line;
        if (!file.nextLine(line)) return which + " is missing";
        if (!std::ranges::equal(line, expected)) return which + " is another one";
        std::ranges::fill(line, '\n'); // its memory is the caller's
    }
    std::span<char> beyond;
    for (int times = 0; times < 2; ++times)
        if (file.nextLine(beyond)) return "there is a line too many";
    return {};
}

std::string RandomErrorsFiles::next() {
    static constexpr std::string_view kEnds[] = {"\n", "\r\n", "\r", "\n\n", "\r\r\n", "\x1A", ""};
    std::string input;
    for (std::size_t i = 0; i < kControlBytes; ++i) input += static_cast<char>(below(256));
    const std::size_t kind = below(200);
    const std::size_t size = below(kind == 0 ? 300'000 : kind < 20 ? 5'000 : 200);
    const std::size_t longestLine = 1 + below(2 * size + 2);
    while (input.size() < size) {
        std::string line(below(longestLine), 'x');
        if (!line.empty()) line[below(line.size())] = static_cast<char>(below(256));
        input += line;
        input += kEnds[below(std::size(kEnds))];
    }
    return input;
}

} // namespace cvlog::tests
