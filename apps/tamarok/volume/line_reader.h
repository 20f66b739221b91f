#pragma once

#include <cstdint>
#include <streambuf>
#include <string>
#include <string_view>

namespace tamarok::cli {

/// The lines of a text, one after the other, in constant memory. A line ends with LF or CR LF; the last
/// one may end with the text. A byte order mark before the first line is passed over.
class LineReader {
public:
    /// The longest line that is given whole.
    static constexpr std::size_t longestLine = std::size_t{1} << 16;

    /// Reads from where `source` stands; it must outlive the reader.
    explicit LineReader(std::streambuf& source);

    /// The next line without its end, valid until the next call; false behind the last one.
    bool next(std::string_view& line);

    /// Whether the line is only the beginning of one that is longer than `longestLine`.
    bool wasCut() const noexcept { return cut_; }
    /// Number of the line, from 1.
    std::int64_t number() const noexcept { return number_; }
    /// Bytes taken so far.
    std::int64_t position() const noexcept { return position_; }
    /// What is read already of the lines to come.
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
