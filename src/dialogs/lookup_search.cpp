#include "lookup_search.h"

#include "tamarok/convert.h"
#include "tamarok/text.h"

namespace tamarok::dialogs {

namespace {

/// Returns whether the first `length` characters of a cell, in upper case, are `wanted`. Compares from the front, so
/// that most cells are told apart by their first character.
bool beginsAs(std::string_view cell, std::size_t length, std::string_view wanted)
{
    std::size_t at = 0;
    std::size_t compared = 0;
    for (; length > 0 && at < cell.size(); --length) {
        if (compared == wanted.size()) return false;
        if (text::toUpper(text::decode(cell, at)) != text::decode(wanted, compared)) return false;
    }
    return compared == wanted.size();
}

} // namespace

std::optional<std::size_t> findCut(const LookupRows& rows, std::size_t column, std::size_t length,
                                   std::string_view value)
{
    if (column >= rows.columns()) return std::nullopt;
    const std::string wanted = text::toUpper(value);
    for (std::size_t row = 0; row < rows.count(); ++row) {
        const Variant& cell = rows.value(row, column);
        if (cell.isNull()) continue;
        if (cell.isString() ? beginsAs(cell.asString(), length, wanted)
                            : beginsAs(convert::toText(cell), length, wanted))
            return row;
    }
    return std::nullopt;
}

std::optional<std::size_t> findDefault(const LookupRows& rows, std::size_t column, std::string_view value)
{
    if (column >= rows.columns()) return std::nullopt;
    std::optional<std::size_t> beginning;
    for (std::size_t row = 0; row < rows.count(); ++row) {
        if (rows.value(row, column).isNull()) continue;
        const std::string cell = rows.text(row, column);
        if (cell == value) return row;
        if (!beginning && cell.starts_with(value)) beginning = row;
    }
    return beginning;
}

Retyped afterBackspace(std::string_view typed)
{
    const std::size_t length = text::length(typed);
    std::size_t at = 0;
    const char32_t key = text::decode(text::mid(typed, length - 1, 1), at);
    return {std::string{text::left(typed, length - 2)}, key};
}

} // namespace tamarok::dialogs
