#include "store/file_kind.h"

#include <cstring>
#include <string_view>

namespace cvlog::store {

namespace {

bool hasAt(std::span<const std::byte> bytes, std::size_t offset, std::string_view text) noexcept {
    return bytes.size() >= offset + text.size() &&
           std::memcmp(bytes.data() + offset, text.data(), text.size()) == 0;
}

} // namespace

FileKind fileKind(std::span<const std::byte> firstBytes) noexcept {
    using namespace std::string_view_literals;
    if (hasAt(firstBytes, 0, "SQLite format 3\0"sv)) return FileKind::Sqlite;
    const bool jetMark = hasAt(firstBytes, 0, "\0\x01\0\0"sv);
    if (jetMark &&
        (hasAt(firstBytes, 4, "Standard Jet DB\0"sv) || hasAt(firstBytes, 4, "Standard ACE DB\0"sv)))
        return FileKind::Jet;
    return FileKind::Unknown;
}

} // namespace cvlog::store
