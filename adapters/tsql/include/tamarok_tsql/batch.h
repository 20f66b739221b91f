#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok_tsql/date_text.h"
#include "tamarok_tsql/types.h"

#include "tamarok/variant.h"

/// The front end of the embedded database: SQL text of the system (SQL Server's, and what it
/// composes for Oracle) in, SQLite text out. No SQLite header is needed here.
namespace tamarok::embedded::sql {

struct TableColumn {
    std::string name;
    Type type;
    bool identity = false; ///< numbered by the database; is the rowid of the table
};

struct Table {
    std::string name;       ///< in declared spelling; a temporary table keeps its "#"
    std::string sqliteName; ///< quoted name to put into SQLite text
    std::vector<TableColumn> columns;
    std::vector<std::uint16_t> slots = {}; ///< made by `indexColumns`

    /// Makes look-ups by name immediate; to be called once, when `columns` is complete.
    void indexColumns();
    /// Position of a column, without regard to case; -1 for none.
    std::int32_t column(std::string_view wanted) const;
};

/// The tables that a statement may name.
class Catalog {
public:
    virtual ~Catalog() = default;
    /// Compares without regard to case; nullptr for an unknown table. The pointer lives until the
    /// catalog's tables change.
    virtual const Table* table(std::string_view name) const = 0;
};

struct ResultColumn {
    std::string name;      ///< empty for an unnamed expression
    std::string baseTable; ///< empty for an expression
    std::string baseColumn;
    Type type;
};

/// An argument of an EXEC: a literal value, or the statement's parameter of that index.
struct Argument {
    std::string name; ///< without "@"; empty for a positional one
    Variant value;
    std::int32_t parameter = -1;
};

/// One step of a batch, ready for SQLite.
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
        NoCount,    ///< SET NOCOUNT: `flag`
        DateFormat, ///< SET DATEFORMAT: `target` is dmy, mdy, ymd, ydm, myd or dym
        Nothing,    ///< accepted and without effect here (SET ANSI_NULLS and its kind, GO)
        JumpUnless, ///< `text` gives one row with one number; 0 or no row jumps to `jump`
        Jump        ///< to `jump`
    };
    Kind kind = Kind::Nothing;
    std::string text;
    std::vector<ResultColumn> columns;
    std::string target;
    /// Update and Delete: SELECT of the rowids of `target` that the statement would touch, with the
    /// same parameters in the same places; the engine probes row locks with it.
    std::string lockProbe;
    std::vector<Argument> arguments;
    std::size_t jump = 0;
    bool flag = false;
    /// Query that was asked for with a row key: the table whose rowid is the last column of `text`
    /// (not listed in `columns`); empty where the query has no single base table.
    std::string keyTable;
    /// For each "?" of `text` in order, the index of the statement's parameter.
    std::vector<std::int32_t> parameters;
    std::vector<std::int32_t> probeParameters;
    /// Insert of one row of parameters alone: the same statement without conversions, for values that
    /// lie in the file as they are given; empty for any other. `bareTypes` tells the column's type for
    /// each "?"; the parameters are those of `text`.
    std::string bareText;
    std::vector<Type> bareTypes;
    std::size_t sourceOffset = 0; ///< where the statement begins in the batch's text
};

/// A parsed batch. Statements are translated one at a time, just before they run, since an earlier
/// one may create the tables that a later one names.
class Batch {
public:
    /// Parses `text`. Throws Error 0x80040E14 that names the construct, its line and column for
    /// anything that is not understood; limits: 16 MB of text, 200 levels of nesting.
    static std::unique_ptr<Batch> parse(std::string_view text);

    virtual ~Batch() = default;

    /// Number of steps; IF ... ELSE is flattened into jumps (a jump may lead to `size()`, the end).
    virtual std::size_t size() const = 0;

    /// Translates step `index` against the catalog.
    /// @param withRowKey  for a Query on one base table, add its rowid as last column
    /// Throws Error 0x80040E14: unknown table or column (native error 208, 207), unsupported
    /// construct, types that do not go together.
    virtual Step translate(std::size_t index, const Catalog& catalog, DateOrder order,
                           bool withRowKey = false) const = 0;
};

} // namespace tamarok::embedded::sql
