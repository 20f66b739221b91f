#pragma once

#include <array>
#include <cstdint>
#include <string_view>

/// The fields that a list view reads besides its columns, by list type: they name the record of a row.
namespace tamarok::lists {

/// Stands for no column where a table names columns by id.
inline constexpr std::int16_t noColumn = -1;

/// The fields of one list type. A field is an SQL text, or the expression of a column of the type.
struct RowFields {
    std::string_view type;
    std::array<std::int16_t, 2> joins{noColumn, noColumn}; ///< columns whose joins the fields need
    std::string_view tag = "";                             ///< expression of the item's Tag; "" for none
    std::array<std::string_view, 3> tagGroups{};           ///< its group expressions
    std::int16_t tagColumn = noColumn;                     ///< the column that is the tag
    std::string_view key = "";                             ///< expression that names the record
    std::string_view keyGroup = "";                        ///< its group expression; "" for none
    std::int16_t keyColumn = noColumn;                     ///< the column that is the key

    constexpr bool hasTag() const noexcept { return !tag.empty() || tagColumn != noColumn; }
};

/// Stands in a tag for the carriage return, as the session's dialect joins it to texts.
inline constexpr std::string_view joinedReturn = "{CR}";

/// Returns the fields of a list type, compared exactly; nullptr for a type whose last column names the record.
const RowFields* findRowFields(std::string_view type) noexcept;

} // namespace tamarok::lists
