#include "volume/csv_fields.h"

namespace tamarok::cli {

namespace {

constexpr char quote = '"';

constexpr bool isBlank(char c) noexcept
{
    return c == ' ' || c == '\t';
}

std::string_view trimmed(std::string_view field) noexcept
{
    while (!field.empty() && isBlank(field.front()))
        field.remove_prefix(1);
    while (!field.empty() && isBlank(field.back()))
        field.remove_suffix(1);
    return field;
}

} // namespace

char csvSeparator(std::string_view header) noexcept
{
    bool quoted = false;
    for (const char c : header) {
        if (c == quote) quoted = !quoted;
        if (c == ';' && !quoted) return ';';
    }
    return ',';
}

bool CsvFields::split(std::string_view line)
{
    fields_.clear();
    // Fields are so short that a look at each character is faster than a search for each separator.
    std::size_t begin = 0;
    for (std::size_t at = 0; at < line.size(); ++at) {
        const char c = line[at];
        if (c == quote) {
            fields_.clear();
            return splitQuoted(line);
        }
        if (c != separator_) continue;
        fields_.push_back(trimmed(line.substr(begin, at - begin)));
        begin = at + 1;
    }
    fields_.push_back(trimmed(line.substr(begin)));
    return true;
}

bool CsvFields::splitQuoted(std::string_view line)
{
    unquoted_.clear();
    unquoted_.reserve(line.size()); // the views into it must not move
    for (;;) {
        while (!line.empty() && isBlank(line.front()))
            line.remove_prefix(1);
        if (!line.starts_with(quote)) {
            const std::size_t end = line.find(separator_);
            fields_.push_back(trimmed(line.substr(0, end)));
            if (end == std::string_view::npos) return true;
            line.remove_prefix(end + 1);
            continue;
        }
        const std::size_t begin = unquoted_.size();
        line.remove_prefix(1);
        while (!line.empty() && (line.front() != quote || line.substr(1).starts_with(quote))) {
            if (line.front() == quote) line.remove_prefix(1);
            unquoted_ += line.front();
            line.remove_prefix(1);
        }
        if (line.empty()) return false;
        line.remove_prefix(1);
        fields_.push_back(std::string_view{unquoted_}.substr(begin));
        const std::size_t end = line.find(separator_);
        if (!trimmed(line.substr(0, end)).empty()) return false;
        if (end == std::string_view::npos) return true;
        line.remove_prefix(end + 1);
    }
}

} // namespace tamarok::cli
