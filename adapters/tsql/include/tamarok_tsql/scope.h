#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "tamarok_tsql/arena.h"
#include "tamarok_tsql/ast.h"
#include "tamarok_tsql/schema.h"

namespace tamarok::tsql {

/// A table, view or derived table under the name by which columns refer to it.
struct Source {
    Name name;
    const Table* table = nullptr;
    std::span<OutputColumn> outputs; ///< of a derived table
    Scope* scope = nullptr;
    std::uint32_t number = 0; ///< distinguishes the sources of a statement
    bool renamed = false;     ///< a derived table whose columns are named after its alias: A (X, Y)

    std::size_t columnCount() const { return table != nullptr ? table->columns.size() : outputs.size(); }
    std::string_view columnName(std::size_t index) const
    {
        return table != nullptr ? std::string_view(table->columns[index].name) : outputs[index].name;
    }
    Type columnType(std::size_t index) const
    {
        return table != nullptr ? table->columns[index].type : outputs[index].type;
    }
    std::int32_t find(const Name& column) const;
};

/// The column of a table or view that a column of a query shows.
struct BaseColumn {
    const Table* table = nullptr; ///< nullptr for an expression
    std::size_t column = 0;
};

/// Follows a column through the derived tables around it down to the column of a table or view, where there is one.
inline BaseColumn baseOf(const OutputColumn& output)
{
    const Source* base = output.base;
    auto index = static_cast<std::size_t>(output.baseColumn);
    while (base != nullptr && base->table == nullptr) {
        const OutputColumn& inner = base->outputs[index];
        base = inner.base;
        index = static_cast<std::size_t>(inner.baseColumn);
    }
    return base == nullptr ? BaseColumn{} : BaseColumn{base->table, index};
}

/// The sources that columns of one SELECT, UPDATE or DELETE may refer to. A scope refers to the one around it, so that
/// a subquery sees the columns of its outer query.
struct Scope {
    Scope* parent = nullptr;
    ArenaList<Source*> sources;
    ArenaList<ColumnExpr*> used; ///< kept where ROWNUM needs it
    bool collectUsed = false;
    bool aggregated = false; ///< an aggregate was met
    bool plain = false;      ///< a clause is being bound that may not contain an aggregate
};

} // namespace tamarok::tsql
