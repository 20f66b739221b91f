#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tamarok/files.h"

namespace tamarok::settings {

/// The byte order mark of UTF-8.
inline constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// Reads the lines of a file one after the other. LF and CRLF end a line; any other CR is part of it. Takes memory for
/// the longest line.
class LineReader {
public:
    explicit LineReader(const File& file) : file_{file} {}

    /// Goes to the next line. @return false at the end of the file
    bool next();

    /// The bytes of the line without its end and without a byte order mark. Valid until the next call of `next`.
    std::string_view line() const noexcept { return line_; }
    /// Number of lines read, which is the number of the present one.
    std::int64_t count() const noexcept { return count_; }
    /// Whether the file begins with a byte order mark; known from the first line on.
    bool hasByteOrderMark() const noexcept { return hasByteOrderMark_; }

private:
    bool fill();
    void take(std::size_t length, std::size_t endLength);

    const File& file_;
    std::uint64_t position_ = 0; ///< in the file, behind `buffer_`
    std::string buffer_;
    std::size_t begin_ = 0; ///< of the next line in `buffer_`
    std::string_view line_;
    std::int64_t count_ = 0;
    bool hasByteOrderMark_ = false;
};

/// Returns the end of the first line of a file: LF or CRLF; CRLF if no line is ended.
std::string_view lineEndOf(const File& file);

/// Tells whether the last line of a file has no end.
bool endsUnended(const File& file);

} // namespace tamarok::settings
