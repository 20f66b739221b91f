#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok_tsql/ast.h"
#include "tamarok_tsql/date_order.h"
#include "tamarok_tsql/parsed_batch.h"
#include "tamarok_tsql/schema.h"
#include "tamarok_tsql/types.h"
#include "translation/nesting.h"

namespace tamarok::embedded {

/// A column of a query's result.
struct ResultColumn {
    std::string name;      ///< empty for an unnamed expression
    std::string baseTable; ///< empty for an expression
    std::string baseColumn;
    tsql::Type type;
};

/// One step of a batch as SQLite text, or as an instruction to the engine.
struct Step {
    enum class Kind : std::uint8_t {
        Query, ///< `text` gives rows described by `columns`
        Insert,
        Update,
        Delete,    ///< `text` changes rows of `target`
        Define,    ///< DDL: `text` holds one or more SQLite statements
        Procedure, ///< EXEC: `target` is the procedure, `arguments` its arguments
        Begin,
        Commit,
        Rollback,
        NoCount,        ///< SET NOCOUNT: `flag`
        XactAbort,      ///< SET XACT_ABORT: `flag`
        IdentityInsert, ///< SET IDENTITY_INSERT of `target`: `flag`
        DateFormat,     ///< SET DATEFORMAT: `dateOrder`
        Nothing,        ///< accepted and without effect here (SET ANSI_NULLS and its kind, GO)
        JumpUnless,     ///< `text` gives one row with one number; 0 or no row jumps to `jump`
        Jump            ///< to `jump`
    };
    Kind kind = Kind::Nothing;
    std::string text;
    std::vector<ResultColumn> columns;
    std::string target;
    /// Update and Delete: SELECT of the rowids of `target` that the statement would touch, with the
    /// same parameters in the same places; the engine tests the row locks with it.
    std::string lockProbe;
    std::vector<tsql::Argument> arguments;
    std::size_t jump = 0;
    bool flag = false; ///< of SET; Insert: the database numbers the rows of an identity column
    tsql::DateOrder dateOrder = tsql::DateOrder::Dmy;
    /// Query translated with a row key: the table whose rowid is the last column of `text`
    /// (not listed in `columns`); empty where the query has no single base table.
    std::string keyTable;
    /// For each "?" of `text` in order, the index of the statement's parameter.
    std::vector<std::int32_t> parameters;
    std::vector<std::int32_t> probeParameters;
    /// Deeply nested constructs of `text`, for the message where SQLite's parser can go no deeper.
    std::vector<NestedConstruct> nested;
    /// Insert of one row of parameters alone: the same statement without conversions, for values that
    /// the file stores unchanged; empty for any other. `unconvertedTypes` has the column's type for
    /// each "?"; the parameters are those of `text`.
    std::string unconvertedText;
    std::vector<tsql::Type> unconvertedTypes;
    /// Update that assigns to a key: SELECT of the rowid and the new values of the assigned columns for each row that
    /// the statement touches; empty for any other. The engine moves the keys with it where the keys of some rows
    /// collide only until the statement has changed all rows.
    std::string newRows;
    std::vector<std::int32_t> newRowsParameters;
    struct Assigned {
        std::string column;
        bool inKey = false;
    };
    std::vector<Assigned> assigned; ///< the assigned columns, in the order of `newRows`
    std::size_t sourceOffset = 0;   ///< where the statement begins in the batch's text
};

/// The server's message for an INSERT that gives the identity column of a table a value (544) or none (545) against SET
/// IDENTITY_INSERT.
std::string identityRefusal(bool given, std::string_view table);

/// The index that lets only one Null into a unique key of a table, beside the key itself; its name begins with the
/// prefix, followed by what the key is: "constraint" or "index".
inline constexpr std::string_view oneNullPrefix = "~null.";
std::string oneNullIndexName(std::string_view kind, std::string_view table, std::string_view key);

/// Whether the last column of a query is the rowid of its base table.
enum class RowKey : bool { Omitted, Added };

/// Raises error 191 for a statement that is nested more deeply than SQLite's parser can follow, which gave up before
/// byte `position` of the text of `step`. The message names the construct with line and column.
[[noreturn]] void refuseNesting(const tsql::ParsedBatch& batch, const Step& step, std::size_t position);

/// Translates step `index` of a batch. Steps are translated one at a time, just before they run, since an
/// earlier one may create the tables that a later one names.
/// @param rowKey  Added: for a query on a single base table, its rowid becomes the last column
/// Errors: 0x80040E14 with line and column: unknown table or column (native error 208, 207), unsupported
/// construct, types that do not go together.
Step translateStep(const tsql::ParsedBatch& batch, std::size_t index, const tsql::Schema& schema, tsql::DateOrder order,
                   RowKey rowKey = RowKey::Omitted);

} // namespace tamarok::embedded
