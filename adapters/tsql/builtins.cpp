#include "tamarok_tsql/builtins.h"

#include <array>

#include "name_table.h"

namespace tamarok::tsql {
namespace {

/// A text has fewer than 10^9 characters, so lengths and positions are below that.
constexpr std::int64_t longestText = 1000000000;

/// The functions in alphabetical order. LPAD, RPAD, INSTR, TO_CHAR, TO_DATE, TO_NUMBER, CHR, SUBSTR, LENGTH, TRUNC
/// and MOD stand in statements that the system composes for Oracle.
constexpr NameTable builtins{std::array{
    Builtin{"ABS", "n", ResultRule::SameNumber},
    Builtin{"ACOS", "n", ResultRule::Float},
    Builtin{"ASCII", "t", ResultRule::Int, 255},
    Builtin{"ASIN", "n", ResultRule::Float},
    Builtin{"ATAN", "n", ResultRule::Float},
    Builtin{"ATN2", "nn", ResultRule::Float},
    Builtin{"AVG", "n", ResultRule::SameNumber, -1, FunctionKind::Aggregate},
    Builtin{"CEIL", "n", ResultRule::SameNumber},
    Builtin{"CEILING", "n", ResultRule::SameNumber},
    Builtin{"CHAR", "i", ResultRule::Text1},
    Builtin{"CHARINDEX", "ttI", ResultRule::Int, longestText},
    Builtin{"CHR", "i", ResultRule::Text1},
    Builtin{"CONCAT", "tt*", ResultRule::TextMax},
    Builtin{"COS", "n", ResultRule::Float},
    Builtin{"COUNT", "a", ResultRule::Int, -1, FunctionKind::Aggregate},
    Builtin{"COUNT_BIG", "a", ResultRule::BigInt, -1, FunctionKind::Aggregate},
    Builtin{"DATALENGTH", "a", ResultRule::Int, longestText},
    Builtin{"DATEADD", "pid", ResultRule::SameDate},
    Builtin{"DATEDIFF", "pdd", ResultRule::Int},
    Builtin{"DATENAME", "pd", ResultRule::Text30},
    Builtin{"DATEPART", "pd", ResultRule::Int},
    Builtin{"DAY", "d", ResultRule::Int, 31},
    Builtin{"DB_NAME", "", ResultRule::Text128},
    Builtin{"DEGREES", "n", ResultRule::SameNumber},
    Builtin{"DENSE_RANK", "", ResultRule::BigInt, -1, FunctionKind::Window},
    Builtin{"EOMONTH", "dI", ResultRule::Date},
    Builtin{"EXP", "n", ResultRule::Float},
    Builtin{"FLOOR", "n", ResultRule::SameNumber},
    Builtin{"GETDATE", "", ResultRule::DateTime},
    Builtin{"GETUTCDATE", "", ResultRule::DateTime},
    Builtin{"INSTR", "ttII", ResultRule::Int, longestText},
    Builtin{"ISDATE", "a", ResultRule::Int, 1},
    Builtin{"ISNUMERIC", "a", ResultRule::Int, 1},
    Builtin{"LEFT", "ti", ResultRule::TextLike},
    Builtin{"LEN", "t", ResultRule::Int, longestText},
    Builtin{"LENGTH", "t", ResultRule::Int, longestText},
    Builtin{"LOG", "nN", ResultRule::Float},
    Builtin{"LOG10", "n", ResultRule::Float},
    Builtin{"LOWER", "t", ResultRule::TextLike},
    Builtin{"LPAD", "tiT", ResultRule::TextMax},
    Builtin{"LTRIM", "tT", ResultRule::TextLike},
    Builtin{"MAX", "a", ResultRule::Same, -1, FunctionKind::Aggregate},
    Builtin{"MIN", "a", ResultRule::Same, -1, FunctionKind::Aggregate},
    Builtin{"MOD", "nn", ResultRule::SameNumber},
    Builtin{"MONTH", "d", ResultRule::Int, 12},
    Builtin{"NCHAR", "i", ResultRule::Text1},
    Builtin{"NEWID", "", ResultRule::Guid},
    Builtin{"NTILE", "i", ResultRule::BigInt, -1, FunctionKind::Window},
    Builtin{"PATINDEX", "tt", ResultRule::Int, longestText},
    Builtin{"PI", "", ResultRule::Float},
    Builtin{"POWER", "nn", ResultRule::SameNumber},
    Builtin{"RADIANS", "n", ResultRule::SameNumber},
    Builtin{"RANK", "", ResultRule::BigInt, -1, FunctionKind::Window},
    Builtin{"REPLACE", "ttt", ResultRule::TextMax},
    Builtin{"REPLICATE", "ti", ResultRule::TextMax},
    Builtin{"REVERSE", "t", ResultRule::TextLike},
    Builtin{"RIGHT", "ti", ResultRule::TextLike},
    Builtin{"ROUND", "niI", ResultRule::SameNumber},
    Builtin{"ROW_NUMBER", "", ResultRule::BigInt, -1, FunctionKind::Window},
    Builtin{"RPAD", "tiT", ResultRule::TextMax},
    Builtin{"RTRIM", "tT", ResultRule::TextLike},
    Builtin{"SCOPE_IDENTITY", "", ResultRule::BigInt},
    Builtin{"SIGN", "n", ResultRule::SameNumber, 1},
    Builtin{"SIN", "n", ResultRule::Float},
    Builtin{"SPACE", "i", ResultRule::TextMax},
    Builtin{"SQRT", "n", ResultRule::Float},
    Builtin{"SQUARE", "n", ResultRule::Float},
    Builtin{"STDDEV", "n", ResultRule::Float, -1, FunctionKind::Aggregate},
    Builtin{"STDEV", "n", ResultRule::Float, -1, FunctionKind::Aggregate},
    Builtin{"STDEVP", "n", ResultRule::Float, -1, FunctionKind::Aggregate},
    Builtin{"STR", "nII", ResultRule::Text30},
    Builtin{"STUFF", "tiit", ResultRule::TextMax},
    Builtin{"SUBSTR", "tiI", ResultRule::TextLike},
    Builtin{"SUBSTRING", "tii", ResultRule::TextLike},
    Builtin{"SUM", "n", ResultRule::SameNumber, -1, FunctionKind::Aggregate},
    Builtin{"SUSER_SNAME", "", ResultRule::Text128},
    Builtin{"SYSDATETIME", "", ResultRule::DateTime},
    Builtin{"TAN", "n", ResultRule::Float},
    Builtin{"TO_CHAR", "aT", ResultRule::TextMax},
    Builtin{"TO_DATE", "tT", ResultRule::DateTime},
    Builtin{"TO_NUMBER", "aT", ResultRule::Float},
    Builtin{"TRIM", "t", ResultRule::TextLike},
    Builtin{"TRUNC", "aA", ResultRule::SameNumber},
    Builtin{"UNICODE", "t", ResultRule::Int},
    Builtin{"UPPER", "t", ResultRule::TextLike},
    Builtin{"VAR", "n", ResultRule::Float, -1, FunctionKind::Aggregate},
    Builtin{"VARP", "n", ResultRule::Float, -1, FunctionKind::Aggregate},
    Builtin{"YEAR", "d", ResultRule::Int, 9999},
}};

/// A part of a date as DATEADD and its like may spell it. The full name is what the SQLite functions get.
struct DatePart {
    std::string_view written;
    std::string_view name;
};

constexpr std::array dateParts{
    DatePart{"year", "year"},
    DatePart{"yyyy", "year"},
    DatePart{"yy", "year"},
    DatePart{"quarter", "quarter"},
    DatePart{"qq", "quarter"},
    DatePart{"q", "quarter"},
    DatePart{"month", "month"},
    DatePart{"mm", "month"},
    DatePart{"m", "month"},
    DatePart{"dayofyear", "dayofyear"},
    DatePart{"dy", "dayofyear"},
    DatePart{"y", "dayofyear"},
    DatePart{"day", "day"},
    DatePart{"dd", "day"},
    DatePart{"d", "day"},
    DatePart{"week", "week"},
    DatePart{"wk", "week"},
    DatePart{"ww", "week"},
    DatePart{"iso_week", "iso_week"},
    DatePart{"isowk", "iso_week"},
    DatePart{"isoww", "iso_week"},
    DatePart{"weekday", "weekday"},
    DatePart{"dw", "weekday"},
    DatePart{"w", "weekday"},
    DatePart{"hour", "hour"},
    DatePart{"hh", "hour"},
    DatePart{"minute", "minute"},
    DatePart{"mi", "minute"},
    DatePart{"n", "minute"},
    DatePart{"second", "second"},
    DatePart{"ss", "second"},
    DatePart{"s", "second"},
    DatePart{"millisecond", "millisecond"},
    DatePart{"ms", "millisecond"},
    DatePart{"microsecond", "microsecond"},
    DatePart{"mcs", "microsecond"},
};

} // namespace

const Builtin* findBuiltin(const Name& name)
{
    return builtins.find(name.text);
}

/// The table is short, so it is searched from the beginning.
std::string_view findDatePart(std::string_view written)
{
    for (const DatePart& part : dateParts) {
        if (sameName(part.written, written)) return part.name;
    }
    return {};
}

} // namespace tamarok::tsql
