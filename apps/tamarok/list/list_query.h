#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tamarok/tmkvar.h"

namespace tamarok::cli {

/// What a list is to show.
struct ListRequest {
    std::string type = "LOG";
    std::vector<std::int16_t> ids;
    std::string version = "R";          ///< settlement, R or A1 to A8
    bool group = false;                 ///< sum the measures; one row for each combination of the other columns
    std::string where;                  ///< condition without the word WHERE
    std::vector<std::int16_t> whereIds; ///< columns that the condition reads: their tables are joined
    std::vector<std::int16_t> orderIds;
    bool descending = false;           ///< on every order column
    std::optional<std::int64_t> limit; ///< greatest number of rows
};

/// The clauses of a list, as the library's operations compose them.
struct ListQuery {
    std::string select;
    std::string from;
    std::string where;
    std::string groupBy;
    std::string orderBy; ///< with its words, " ORDER BY ...", or empty

    /// The whole statement for the session's dialect. Oracle text has no limit, since ROWNUM counts before
    /// grouping and ordering; the caller stops reading instead.
    std::string statement(const TmkVar& session, std::optional<std::int64_t> limit) const;
};

/// Raised for a list type or column that does not exist, or cannot be ordered by.
struct UnknownColumn {
    std::string message;
};

/// Composes a list. Throws UnknownColumn, and the errors of the operations.
ListQuery composeList(const ListRequest& request, const TmkVar& session);

/// The expression of one column; empty where the type has no such column.
std::string columnExpression(const std::string& type, std::int16_t id, const std::string& version,
                             const TmkVar& session);

/// Throws UnknownColumn where there is no such list type.
void requireListType(const std::string& type);

} // namespace tamarok::cli
