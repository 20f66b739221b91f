#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#pragma GCC visibility push(default)

/// Queries about the list types as a whole. The columns and clauses of one type are operations of Comm_CSel.
namespace tamarok::catalogue {

/// One list type. The views are valid until the program ends.
struct ListTypeInfo {
    std::string_view key;  ///< such as "LOG"
    std::string_view base; ///< what opens its FROM body: the main table, of some types with a join
    std::int16_t label;    ///< number of its name in table STRINGS
    std::size_t columns;   ///< number of its columns
    bool hasVersions;      ///< its columns take a version key: Comm_CSel::GetColumn reads them, not GetColumnTyp
    bool correctsSelect;   ///< Comm_CSel::CorrectStrSelect composes its SELECT list
};

/// One column of a list type.
struct ColumnInfo {
    std::int16_t id;
    std::int16_t label;       ///< number of its label in table STRINGS
    std::string_view measure; ///< the function that an aggregated list applies, "SUM" or "MAX"; "" for a key
};

/// Returns the keys of all list types, such as "LOG", in the order of the table of list types.
std::vector<std::string_view> listTypeKeys();

/// Returns the list type of a key, compared without regard to case. Error 5, with the nearest known key, for an
/// unknown one.
ListTypeInfo listTypeInfo(std::string_view key);

/// Returns the columns of a list type by rising id. Error 5 as above.
std::vector<ColumnInfo> columnsOf(std::string_view key);

} // namespace tamarok::catalogue

#pragma GCC visibility pop
