#pragma once

#include <cstddef>
#include <span>

namespace cvlog::store {

enum class FileKind { Unknown, Sqlite, Jet };

inline constexpr std::size_t kFileKindBytes = 20;

/// What a database file is, by its first bytes (kFileKindBytes tell; fewer are fine and may give Unknown). A
/// file's name and extension say nothing.
FileKind fileKind(std::span<const std::byte> firstBytes) noexcept;

} // namespace cvlog::store
