#pragma once

#include <string_view>

namespace tamarok {
struct TmkVar;
}

namespace tamarok::dialect {

/// The words in which the SQL texts of the two databases differ. A statement that differs takes its
/// words from here, either as a member or by its name in a template (sql_template.h).
///
/// Required by the contract: most statements of the library are written for SQL Server alone and go to
/// Oracle unchanged. Use a word only where the statement is known to have two forms.
struct Dialect {
    bool isOracle;                        ///< a choice between two whole texts; condition {ORACLE?...:...}
    std::string_view nullFunction;        ///< {ISNULL}
    std::string_view concatenation;       ///< {CONCAT}, without blanks
    std::string_view spacedConcatenation; ///< {+}, with a blank on either side
    std::string_view carriageReturn;      ///< {CR}, joins two texts by a carriage return
    std::string_view emptyText;           ///< {NOTEXT}, an empty text literal
    std::string_view longTextColumn;      ///< {LONG}, a column name that Oracle reserves
    std::string_view fromDual;            ///< {DUAL}, FROM of a SELECT without a table; no leading blank
    std::string_view zeros;               ///< {ZEROS}, as many zeros as ACCESS_LEVELS has digits

    // Row limits. Their spelling differs from operation to operation and is part of the contract.
    std::string_view top;         ///< {TOP}, behind SELECT
    std::string_view andFirstRow; ///< {ROWNUM}, behind a condition
    std::string_view selectFirst; ///< {SELECTFIRST}, opens a SELECT of one row
    std::string_view whereFirst;  ///< {WHEREFIRST}, closes that SELECT or precedes " AND " and its condition
    std::string_view selectNone;  ///< {SELECTNONE}, opens a SELECT of columns without rows
    std::string_view whereNone;   ///< {WHERENONE}, closes that SELECT; on Oracle it leaves one row
};

inline constexpr Dialect sqlServer{
    .isOracle = false,
    .nullFunction = "ISNULL",
    .concatenation = "+",
    .spacedConcatenation = " + ",
    .carriageReturn = " + CHAR(13) + ",
    .emptyText = "''",
    .longTextColumn = "LONG",
    .fromDual = "",
    .zeros = "REPLICATE(0,LEN(ACCESS_LEVELS))",
    .top = "TOP 1",
    .andFirstRow = "",
    .selectFirst = "SELECT TOP 1 ",
    .whereFirst = "",
    .selectNone = "SELECT TOP 0 ",
    .whereNone = "",
};

inline constexpr Dialect oracle{
    .isOracle = true,
    .nullFunction = "NVL",
    .concatenation = "||",
    .spacedConcatenation = " || ",
    .carriageReturn = " || CHR(13) || ",
    .emptyText = "NULL",
    .longTextColumn = "LONG_",
    .fromDual = "FROM DUAL",
    .zeros = "LPAD('0',LEN(ACCESS_LEVELS),'0')",
    .top = "",
    .andFirstRow = " AND rownum=1",
    .selectFirst = "SELECT ",
    .whereFirst = " WHERE rownum = 1",
    .selectNone = "SELECT ",
    .whereNone = " WHERE rownum=1",
};

/// The dialect of the session's database, by TmkVar::bolOracle.
const Dialect& of(const TmkVar& session) noexcept;

} // namespace tamarok::dialect
