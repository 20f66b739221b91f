#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tamarok::cli {

/// The separator of a table by its header line: a semicolon where one stands outside quotes, else a comma.
char csvSeparator(std::string_view header) noexcept;

/// The fields of one line, reused from line to line.
class CsvFields {
public:
    explicit CsvFields(char separator) noexcept : separator_{separator} {}

    /// Splits a line. Blanks around a field do not belong to it. A field may stand in double quotes, in which
    /// a doubled quote stands for one. False where a quote is not closed or text follows a closed one.
    bool split(std::string_view line);

    std::size_t size() const noexcept { return fields_.size(); }
    /// Field by index from 0; valid until the next split, as is the line.
    std::string_view operator[](std::size_t index) const noexcept { return fields_[index]; }

private:
    bool splitQuoted(std::string_view line);

    char separator_;
    std::vector<std::string_view> fields_;
    std::string unquoted_; ///< contents of quoted fields
};

} // namespace tamarok::cli
