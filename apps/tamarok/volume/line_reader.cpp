#include "volume/line_reader.h"

#include <algorithm>

namespace tamarok::cli {

namespace {

constexpr std::size_t blockSize = 4 * LineReader::longestLine;
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

} // namespace

LineReader::LineReader(std::streambuf& source) : source_{source}, buffer_(blockSize, '\0')
{
    while (end_ < byteOrderMark.size() && fill()) {}
    if (ahead().starts_with(byteOrderMark)) take(byteOrderMark.size());
}

bool LineReader::next(std::string_view& line)
{
    if (cut_) dropRestOfLine();
    std::size_t searched = 0;
    std::size_t length = std::string_view::npos;
    while ((length = ahead().find('\n', searched)) == std::string_view::npos) {
        searched = end_ - begin_;
        if (searched > longestLine || !fill()) break;
    }
    const bool ended = length != std::string_view::npos;
    if (!ended && begin_ == end_) return false;
    line = ahead().substr(0, length);
    cut_ = line.size() > longestLine;
    if (cut_) line = line.substr(0, longestLine);
    take(line.size() + (ended && !cut_ ? 1U : 0U));
    if (!cut_ && line.ends_with('\r')) line.remove_suffix(1);
    ++number_;
    return true;
}

void LineReader::take(std::size_t count) noexcept
{
    begin_ += count;
    position_ += static_cast<std::int64_t>(count);
}

void LineReader::dropRestOfLine()
{
    cut_ = false;
    do {
        const std::size_t length = ahead().find('\n');
        if (length != std::string_view::npos) return take(length + 1);
        take(end_ - begin_);
    } while (fill());
}

/// Reads on; false at the end of the text.
bool LineReader::fill()
{
    if (begin_ > 0) {
        std::copy(buffer_.begin() + static_cast<std::ptrdiff_t>(begin_),
                  buffer_.begin() + static_cast<std::ptrdiff_t>(end_), buffer_.begin());
        end_ -= begin_;
        begin_ = 0;
    }
    const std::streamsize got = source_.sgetn(buffer_.data() + end_, static_cast<std::streamsize>(blockSize - end_));
    end_ += static_cast<std::size_t>(got);
    return got > 0;
}

} // namespace tamarok::cli
