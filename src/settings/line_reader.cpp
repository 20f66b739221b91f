#include "line_reader.h"

#include <algorithm>
#include <array>
#include <memory>

namespace tamarok::settings {

namespace {

constexpr std::size_t blockSize = std::size_t{1} << 16U;
constexpr std::string_view lineFeed = "\n";
constexpr std::string_view carriageReturnLineFeed = "\r\n";

} // namespace

bool LineReader::next()
{
    std::size_t searched = begin_;
    for (;;) {
        const std::size_t end = buffer_.find('\n', searched);
        if (end != std::string::npos) {
            take(end - begin_, 1);
            return true;
        }
        searched = buffer_.size() - begin_; // the bytes before are moved to the beginning
        if (fill()) continue;
        if (buffer_.empty()) return false;
        take(buffer_.size(), 0);
        return true;
    }
}

/// Moves the unread bytes to the beginning of the buffer and reads a block behind them. A block grows with the line, so
/// that a long line is not moved once for each block.
/// @return false at the end of the file
bool LineReader::fill()
{
    buffer_.erase(0, begin_);
    begin_ = 0;
    const std::size_t kept = buffer_.size();
    buffer_.resize(kept + std::max(kept, blockSize));
    const std::size_t count = file_.readAt(position_, std::span{buffer_}.subspan(kept));
    buffer_.resize(kept + count);
    position_ += count;
    return count != 0;
}

void LineReader::take(std::size_t length, std::size_t endLength)
{
    line_ = std::string_view{buffer_}.substr(begin_, length);
    begin_ += length + endLength;
    if (endLength != 0 && line_.ends_with('\r')) line_.remove_suffix(1);
    if (count_ == 0 && line_.starts_with(byteOrderMark)) {
        hasByteOrderMark_ = true;
        line_.remove_prefix(byteOrderMark.size());
    }
    ++count_;
}

std::string_view lineEndOf(const File& file)
{
    const auto block = std::make_unique<std::array<char, blockSize>>();
    bool afterReturn = false; // the block before ended with CR
    for (std::uint64_t position = 0;;) {
        const std::size_t count = file.readAt(position, *block);
        if (count == 0) return carriageReturnLineFeed;
        const std::string_view bytes{block->data(), count};
        const std::size_t end = bytes.find('\n');
        if (end != std::string_view::npos) {
            const bool hasReturn = end == 0 ? afterReturn : bytes[end - 1] == '\r';
            return hasReturn ? carriageReturnLineFeed : lineFeed;
        }
        afterReturn = bytes.ends_with('\r');
        position += count;
    }
}

bool endsUnended(const File& file)
{
    const std::uint64_t size = file.size();
    if (size == 0) return false;
    std::array<char, byteOrderMark.size()> bytes{};
    // A file that holds nothing but a byte order mark has no line.
    if (size == bytes.size() && file.readAt(0, bytes) == bytes.size() &&
        std::string_view{bytes.data(), bytes.size()} == byteOrderMark)
        return false;
    char last = '\n';
    file.readAt(size - 1, {&last, 1});
    return last != '\n';
}

} // namespace tamarok::settings
