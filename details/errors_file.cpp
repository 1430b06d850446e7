#include "details/errors_file.h"

#include <algorithm>
#include <cstring>

namespace cvlog::details {

namespace {

constexpr std::size_t kBlock = 64U << 10;
constexpr std::size_t kMostToSkip = 1U << 20; // at once

} // namespace

ErrorsFile::ErrorsFile(std::unique_ptr<ports::OpenFile> file)
    : file_(std::move(file)), unread_(file_->size()),
      buffer_(static_cast<std::size_t>(std::clamp<std::uint64_t>(unread_, 1, kBlock))) {}

bool ErrorsFile::nextLine(std::span<char>& line) {
    if (lineGoesOn_ && !skipRest()) {
        line = cut(0);
        return true;
    }
    std::size_t searched = begin_;
    for (;;) {
        const std::size_t end = findEnd(searched, end_);
        if (end < end_) {
            line = cut(end - begin_);
            ++begin_; // the LF
            if (!line.empty() && line.back() == '\r') line = line.first(line.size() - 1);
            return true;
        }
        const std::size_t known = end_ - begin_;
        if (known >= kLongestLine) {
            line = cut(kLongestLine);
            return lineGoesOn_ = true;
        }
        const bool more = readMore();
        searched = begin_ + known;
        if (more) continue;
        line = cut(end_ - begin_);
        return !line.empty();
    }
}

std::size_t ErrorsFile::findEnd(std::size_t from, std::size_t until) const noexcept {
    if (from == until) return until;
    const void* found = std::memchr(buffer_.data() + from, '\n', until - from);
    return found ? static_cast<std::size_t>(static_cast<const char*>(found) - buffer_.data()) : until;
}

std::span<char> ErrorsFile::cut(std::size_t size) noexcept {
    const std::span<char> taken(buffer_.data() + begin_, size);
    begin_ += size;
    return taken;
}

void ErrorsFile::makeRoom() {
    if (end_ < buffer_.size()) return;
    std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
    if (end_ == buffer_.size()) buffer_.resize(buffer_.size() * 2);
}

bool ErrorsFile::readMore() {
    if (unread_ == 0) return false;
    makeRoom();
    const std::span<char> room(buffer_.data() + end_, buffer_.size() - end_);
    const std::size_t count =
        file_->read(room.first(static_cast<std::size_t>(std::min<std::uint64_t>(room.size(), unread_))));
    unread_ = count == 0 ? 0 : unread_ - count;
    end_ += count;
    return count != 0;
}

// False when there is still more of it.
bool ErrorsFile::skipRest() {
    for (std::size_t skipped = 0; skipped < kMostToSkip;) {
        const std::size_t begin = begin_;
        const std::size_t end = findEnd(begin_, std::min(end_, begin_ + kMostToSkip));
        begin_ = end;
        skipped += end - begin;
        lineGoesOn_ = end == end_ || buffer_[end] != '\n';
        if (!lineGoesOn_) ++begin_;
        if (lineGoesOn_ && begin_ == end_) lineGoesOn_ = readMore();
        if (!lineGoesOn_) return true;
    }
    return false;
}

} // namespace cvlog::details
