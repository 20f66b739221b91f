#include "tamarok_tsql/builtins.h"
#include "tamarok_tsql/type_rules.h"
#include "translation/emitter.h"

namespace tamarok::embedded::sql {

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
        if (function.builtin->name == "POWER" && index == 0 && isFraction(expr.type)) {
            number("tm_float", expr);
        } else {
            as(expr, isText(expr.type) ? makeType(TypeKind::Float) : expr.type);
        }
        return;
    case 'i':
    case 'I': as(expr, isWhole(expr.type) || isOpen(expr.type) ? expr.type : makeType(TypeKind::Int)); return;
    case 'd':
    case 'D': as(expr, isDate(expr.type) ? expr.type : makeType(TypeKind::DateTime)); return;
    case 'p': writeText(findDatePart(sql::as<ColumnExpr>(expr).name.text)); return;
    default: expression(expr);
    }
}

void Emitter::function(const FunctionExpr& function)
{
    if (function.builtin->aggregate) return aggregate(function);
    write(function.builtin->sqliteName);
    write("(");
    for (std::size_t i = 0; i < function.arguments.size(); ++i) {
        if (i != 0) write(", ");
        argument(function, i);
    }
    write(")");
    if (function.over != nullptr) over(*function.over);
}

void Emitter::aggregateName(const FunctionExpr& function)
{
    const std::string_view name = function.builtin->name;
    const bool window = function.over != nullptr;
    if (name == "SUM" && isWhole(function.type) && !window) {
        write(function.type.kind == TypeKind::BigInt ? "tm_sum_big" : "tm_sum_int");
    } else if (name == "AVG" && isWhole(function.type) && !window) {
        write("tm_avg_int");
    } else {
        write(function.builtin->sqliteName);
    }
}

void Emitter::aggregate(const FunctionExpr& function)
{
    const bool average = function.builtin->name == "AVG";
    const bool sums = average || function.builtin->name == "SUM";
    const bool rounded = sums && function.type.kind == TypeKind::Decimal;
    const bool cut = average && isWhole(function.type) && function.over != nullptr;
    if (rounded) write(average ? "tm_decimal_cut(" : "tm_decimal(");
    if (cut) write("CAST(");
    aggregateName(function);
    write(function.distinct ? "(DISTINCT " : "(");
    if (function.star) {
        write("*");
    } else {
        const Expr& value = *function.arguments[0];
        const bool ordered = function.builtin->result == ResultRule::Same || function.distinct;
        if (ordered) {
            collated(value);
        } else {
            expression(value);
        }
    }
    write(")");
    if (function.over != nullptr) over(*function.over);
    if (cut) write(" AS INTEGER)");
    if (rounded) write(", 38, " + std::to_string(function.type.scale) + ")");
}

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

} // namespace tamarok::embedded::sql
