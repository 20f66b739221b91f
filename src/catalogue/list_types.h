#pragma once

#include <span>
#include <string_view>

#include "column_table.h"

namespace tamarok::catalogue {

/// A list type: its key, the text that opens its FROM clause, and its tables.
struct ListType {
    std::string_view key;
    std::string_view base;
    const ColumnTable* columns; ///< nullptr where GetColumnTyp has no row of the type
    const JoinTable* joins;     ///< nullptr where no column of the type needs a join
};

/// All list types, in the order of the dispatch.
std::span<const ListType> listTypes() noexcept;

/// The type of that key, compared without regard to case, or nullptr.
const ListType* findListType(std::string_view key);

/// The deduction list, which is no list type of its own.
extern const ColumnTable absColumns;

} // namespace tamarok::catalogue
