#include <array>

#include "tamarok_tsql/builtins.h"
#include "tamarok_tsql/type_rules.h"
#include "translation/emitter.h"

namespace tamarok::embedded::translation {

namespace {

struct FunctionName {
    std::string_view builtin;
    std::string_view sqlite;
};

/// The functions that have another name in SQLite: because the name is a keyword there, because two names
/// mean the same function, or because SQLite's function of that name does something else.
constexpr std::array functionNames{
    FunctionName{"CEIL", "CEILING"},     FunctionName{"COUNT_BIG", "COUNT"},
    FunctionName{"LEFT", "\"LEFT\""},    FunctionName{"REPLACE", "\"REPLACE\""},
    FunctionName{"RIGHT", "\"RIGHT\""},  FunctionName{"SCOPE_IDENTITY", "last_insert_rowid"},
    FunctionName{"STDDEV", "tm_stdev"},  FunctionName{"STDEV", "tm_stdev"},
    FunctionName{"STDEVP", "tm_stdevp"}, FunctionName{"SYSDATETIME", "GETDATE"},
    FunctionName{"VAR", "tm_var"},       FunctionName{"VARP", "tm_varp"},
};

std::string_view sqliteFunction(const Builtin& builtin)
{
    for (const FunctionName& row : functionNames) {
        if (row.builtin == builtin.name) return row.sqlite;
    }
    return builtin.name;
}

} // namespace

/// A fraction with a whole value, which SQLite may store as a whole number, must stay a fraction there.
bool computesLikeArgument(const Builtin& builtin)
{
    return builtin.name == "POWER" || builtin.name == "DEGREES" || builtin.name == "RADIANS";
}

/// Converts an argument as the letter of the function's pattern says (see Builtin). After the end of the pattern the
/// letter before "*" goes on. POWER, DEGREES and RADIANS of a fraction are
/// computed in floating point.
void Emitter::argument(const FunctionExpr& function, std::size_t index)
{
    const std::string_view pattern = function.builtin->arguments;
    const Expr& expr = *function.arguments[index];
    const char letter = index < pattern.size() && pattern[index] != '*' ? pattern[index] : pattern[pattern.size() - 2];
    switch (letter) {
    case 't':
    case 'T': asText(expr); return;
    case 'n':
    case 'N':
        if (isDate(expr.type)) {
            source_.refuse(expr.offset, 8116,
                           "Argument data type date is invalid for argument " + std::to_string(index + 1) + " of " +
                               std::string(function.builtin->name) + " function.");
        }
        if (index == 0 && isFraction(expr.type) && computesLikeArgument(*function.builtin)) {
            number("tm_float", expr);
        } else {
            as(expr, isText(expr.type) ? makeType(TypeKind::Float) : expr.type);
        }
        return;
    case 'i':
    case 'I': as(expr, isWhole(expr.type) || isOpen(expr.type) ? expr.type : makeType(TypeKind::Int)); return;
    case 'd':
    case 'D': as(expr, isDate(expr.type) ? expr.type : makeType(TypeKind::DateTime)); return;
    case 'p': writeText(findDatePart(tsql::as<ColumnExpr>(expr).name.text)); return;
    default: expression(expr);
    }
}

/// Functions with the server's meaning are registered under the server's names, so that most calls only get their
/// arguments converted.
void Emitter::uncheckedFunction(const FunctionExpr& function)
{
    if (function.builtin->isAggregate()) return aggregate(function);
    if (function.builtin->arguments.ends_with('*')) {
        return longCall(sqliteFunction(*function.builtin), function.arguments.size(),
                        [&](std::size_t index) { argument(function, index); });
    }
    write(sqliteFunction(*function.builtin));
    write("(");
    for (std::size_t i = 0; i < function.arguments.size(); ++i) {
        if (i != 0) write(", ");
        argument(function, i);
    }
    if (function.builtin->name == "REPLACE") replaceLength(function.arguments[0]->type);
    resultType(function);
    write(")");
    if (function.over != nullptr) over(*function.over);
}

/// The server cuts the result of REPLACE to 8000 bytes unless the text is of a (max) type.
void Emitter::replaceLength(const Type& type)
{
    constexpr int mostBytes = 8000;
    constexpr int bytesOfUnit = 2;
    if (!isText(type) || type.length < 0) return;
    write(", " + std::to_string(isNational(type) ? mostBytes / bytesOfUnit : mostBytes));
}

/// SQLite's SUM of whole numbers has 64 bits and its AVG is a float. The server's results are int or bigint with
/// overflow checks, and AVG is cut.
void Emitter::aggregateName(const FunctionExpr& function)
{
    const std::string_view name = function.builtin->name;
    const bool big = function.type.kind == TypeKind::BigInt;
    if (name == "SUM" && isWhole(function.type)) {
        write(big ? "tm_sum_big" : "tm_sum_int");
    } else if (name == "AVG" && isWhole(function.type)) {
        write(big ? "tm_avg_big" : "tm_avg_int");
    } else {
        write(sqliteFunction(*function.builtin));
    }
}

/// The aggregate, with a conversion around it where SQLite gives another type than the server: sums of decimals and of
/// amounts of money are rounded to their scale, averages cut.
void Emitter::aggregate(const FunctionExpr& function)
{
    const bool average = function.builtin->name == "AVG";
    const bool sums = average || function.builtin->name == "SUM";
    const bool rounded = sums && function.type.kind == TypeKind::Decimal;
    const bool amount = sums && isMoney(function.type);
    if (rounded) write(average ? "tm_decimal_cut(" : "tm_decimal(");
    if (amount) write(average ? "tm_money(TRUNC(" : "tm_money(");
    aggregateName(function);
    write(function.distinct ? "(DISTINCT " : "(");
    if (function.star) {
        write("*");
    } else {
        const Expr& value = *function.arguments[0];
        // MIN, MAX and DISTINCT compare texts, which needs the collation.
        const bool ordered = function.builtin->result == ResultRule::Same || function.distinct;
        if (ordered) {
            collated(value);
        } else {
            expression(value);
        }
    }
    write(")");
    if (function.over != nullptr) over(*function.over);
    if (amount) write(average ? ", 4))" : ")");
    if (rounded) write(", 38, " + std::to_string(function.type.scale) + ")");
}

/// PARTITION BY and ORDER BY compare texts by collation TAMAROK. A default frame is the same on both.
void Emitter::over(const Over& over)
{
    write(" OVER (");
    bool first = true;
    for (const Expr* partition : over.partition) {
        write(first ? "PARTITION BY " : ", ");
        first = false;
        collated(*partition);
    }
    bool firstOrder = true;
    for (const OrderItem& item : over.order) {
        write(!firstOrder ? ", " : first ? "ORDER BY " : " ORDER BY ");
        firstOrder = false;
        collated(*item.value);
        if (item.descending) write(" DESC");
    }
    write(")");
}

} // namespace tamarok::embedded::translation
