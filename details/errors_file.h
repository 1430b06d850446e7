#pragma once

#include "ports/file_reader.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace cvlog::details {

/// Reads an errors file line by line, in blocks. A line ends with LF, with CR LF, or with the file; an empty rest is no
/// line. All other bytes, lone CR, Ctrl+Z and NUL among them, are ordinary. What is written to the file after it was
/// opened is not read, so a writer cannot keep the reader going.
class ErrorsFile {
public:
    /// Of a longer line the rest is left out: it is no message that somebody would read. While that is skipped, empty
    /// lines are given out, so that the caller can see whether it is to go on.
    static constexpr std::size_t kLongestLine = 16U << 20;

    explicit ErrorsFile(std::unique_ptr<ports::OpenFile> file);

    /// The next line, without its end, in memory that the caller may change until the next call. False at the end of
    /// the file. Throws when the file cannot be read.
    bool nextLine(std::span<char>& line);

private:
    bool readMore();
    void makeRoom();
    bool skipRest();
    std::size_t findEnd(std::size_t from, std::size_t until) const noexcept;
    std::span<char> cut(std::size_t size) noexcept;

    std::unique_ptr<ports::OpenFile> file_;
    std::uint64_t unread_; // bytes of the file that were not asked for yet
    std::vector<char> buffer_;
    std::size_t begin_ = 0; // of what is in the buffer and was not given out
    std::size_t end_ = 0;
    bool lineGoesOn_ = false; // what is next belongs to a line that was cut
};

} // namespace cvlog::details
