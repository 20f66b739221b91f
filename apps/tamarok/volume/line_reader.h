#pragma once

#include <cstdint>
#include <streambuf>
#include <string>
#include <string_view>

namespace tamarok::cli {

/// Reads a text line by line in constant memory. A line ends with LF or CR LF, the last one possibly with
/// the text. A byte order mark before the first line is skipped.
class LineReader {
public:
    /// Longest line that is returned whole, in bytes.
    static constexpr std::size_t longestLine = std::size_t{1} << 16;

    /// Reads from where `source` stands; it must outlive the reader.
    explicit LineReader(std::streambuf& source);

    /// Reads the next line without its end; it is valid until the next call. False after the last line.
    bool next(std::string_view& line);

    /// Whether the line is only the beginning of one that is longer than `longestLine`.
    bool wasCut() const noexcept { return cut_; }
    /// Number of the line, from 1.
    std::int64_t number() const noexcept { return number_; }
    /// Bytes taken so far.
    std::int64_t position() const noexcept { return position_; }
    /// The part of the following lines that is in the buffer already.
    std::string_view ahead() const noexcept { return {buffer_.data() + begin_, end_ - begin_}; }

private:
    bool fill();
    void dropRestOfLine();
    void take(std::size_t count) noexcept;

    std::streambuf& source_;
    std::string buffer_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    std::int64_t number_ = 0;
    std::int64_t position_ = 0;
    bool cut_ = false;
};

} // namespace tamarok::cli
