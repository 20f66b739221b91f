#include <algorithm>
#include <cmath>

#include "tamarok_tsql/type_rules.h"
#include "translation/emitter.h"

/// Long chains of operators, long argument lists and deeply nested CASE, written so that SQLite's fixed limits (a tree
/// of 1000 levels, 127 arguments, a parser stack of 100 symbols) are met late.
namespace tamarok::embedded::translation {

namespace {

constexpr std::size_t mostArguments = 127;

/// Appends the operands of a chain, with those of chains of the same kind inside it, which group alike.
void collectOperands(const ChainExpr& chain, std::vector<const Expr*>& operands)
{
    for (const Expr* operand : chain.operands) {
        if (operand->kind == chain.kind) {
            collectOperands(tsql::as<ChainExpr>(*operand), operands);
        } else {
            operands.push_back(operand);
        }
    }
}

/// Appends the operands of a concatenation. It groups alike from either side.
void collectTexts(const Expr& expr, std::vector<const Expr*>& operands)
{
    const bool joins = expr.kind == ExprKind::Binary && isText(expr.type);
    if (!joins) {
        operands.push_back(&expr);
        return;
    }
    collectTexts(*tsql::as<BinaryExpr>(expr).left, operands);
    collectTexts(*tsql::as<BinaryExpr>(expr).right, operands);
}

char operatorSign(TokenKind op)
{
    switch (op) {
    case TokenKind::Plus: return '+';
    case TokenKind::Minus: return '-';
    case TokenKind::Star: return '*';
    case TokenKind::Slash: return '/';
    default: return '%';
    }
}

} // namespace

void Emitter::checkLength(std::uint32_t offset) const
{
    constexpr std::size_t longestText = std::size_t{32} * 1024 * 1024;
    if (out_.size() <= longestText) return;
    source_.refuse(offset, messages::tooComplex,
                   "The query processor ran out of internal resources: the statement becomes longer than 32 MB.");
}

/// SQLite limits the height of its trees, and a chain is as high as it is long. A long one is written in parts of the
/// square root of its length, each in parentheses.
void Emitter::chain(const ChainExpr& chain, Binding need)
{
    std::vector<const Expr*> collected;
    collectOperands(chain, collected);
    operands(collected, chain.kind == ExprKind::And, need);
}

/// @param both  joined by AND, otherwise by OR
void Emitter::operands(std::span<const Expr* const> operands, bool both, Binding need)
{
    constexpr std::size_t longestFlat = 64;
    const Binding own = both ? Binding::And : Binding::Or;
    const auto root = static_cast<std::size_t>(std::sqrt(static_cast<double>(operands.size())));
    const std::size_t part = operands.size() <= longestFlat ? operands.size() : root + 1;
    const bool opened = open(own, need);
    for (std::size_t i = 0; i < operands.size(); ++i) {
        const bool begins = i % part == 0 && part < operands.size();
        if (begins && i != 0) write(")");
        if (i != 0) write(both ? " AND " : " OR ");
        if (begins) write("(");
        expression(*operands[i], both ? Binding::Not : Binding::And);
    }
    if (part < operands.size()) write(")");
    close(opened);
}

/// A short concatenation is SQLite's ||. A long one is a flat call, which copies each text once.
void Emitter::joinTexts(const BinaryExpr& binary, Binding need)
{
    constexpr std::size_t mostPlain = 16;
    std::vector<const Expr*> operands;
    collectTexts(binary, operands);
    if (operands.size() > mostPlain) {
        longCall("tm_concat", operands.size(), [&](std::size_t index) { asText(*operands[index]); });
        return;
    }
    const bool opened = open(Binding::Join, need);
    for (std::size_t i = 0; i < operands.size(); ++i) {
        if (i != 0) write(" || ");
        asText(*operands[i], i == 0 ? Binding::Join : Binding::Collate);
    }
    close(opened);
}

/// For functions of which f(a, b, c) is f(f(a, b), c) and f(a, f(b, c)): the arguments are divided evenly among inner
/// calls.
void Emitter::longCall(std::string_view function, std::size_t count, const std::function<void(std::size_t)>& argument)
{
    const std::size_t calls = (count + mostArguments - 1) / mostArguments;
    const std::size_t part = (count + calls - 1) / calls;
    write(function);
    write("(");
    for (std::size_t i = 0; i < count; ++i) {
        const bool begins = i % part == 0 && part < count;
        if (begins && i != 0) write(")");
        if (i != 0) write(", ");
        if (begins) {
            write(function);
            write("(");
        }
        argument(i);
    }
    write(part < count ? "))" : ")");
}

/// `steps` begins with the outermost operator. The last argument holds the operators in the order of the operands. A
/// longer chain has its beginning as a call in the place of the first operand.
void Emitter::flatCall(std::string_view function, std::span<const BinaryExpr* const> steps, const Type& type)
{
    constexpr std::size_t mostSteps = mostArguments - 2;
    const std::size_t count = std::min(steps.size(), mostSteps);
    write(function);
    write("(");
    if (count < steps.size()) {
        flatCall(function, steps.subspan(count), type);
    } else {
        as(*steps.back()->left, type);
    }
    std::string operators;
    for (std::size_t i = count; i > 0; --i) {
        write(", ");
        as(*steps[i - 1]->right, type);
        operators += operatorSign(steps[i - 1]->op);
    }
    write(", ");
    writeText(operators);
    write(")");
}

// --- CASE --------------------------------------------------------------------------------------

namespace {

/// Position of the branch that is nested so deeply that it must come last; the number of branches for ELSE, or where
/// none is. A branch in ELSE takes one symbol of the parser less than one after THEN.
std::size_t deepBranch(const CaseExpr& expr)
{
    constexpr std::uint16_t shallow = 6;
    const auto& deepest = *std::ranges::max_element(expr.arms, {}, [](const CaseArm& arm) { return arm.then->height; });
    const std::uint16_t height = deepest.then->height;
    const std::uint16_t other = expr.otherwise != nullptr ? expr.otherwise->height : 0;
    if (height <= shallow || height <= other) return expr.arms.size();
    return static_cast<std::size_t>(&deepest - expr.arms.data());
}

} // namespace

void Emitter::otherwise(const CaseExpr& expr)
{
    if (expr.otherwise != nullptr) {
        as(*expr.otherwise, expr.type);
    } else {
        write("NULL");
    }
}

/// The branches are converted to the common type of all of them: SQLite would give each row the type of its branch.
void Emitter::caseOf(const CaseExpr& expr)
{
    const std::size_t deep = deepBranch(expr);
    if (deep < expr.arms.size()) return caseWithLast(expr, deep);
    write("CASE ");
    if (expr.operand != nullptr) {
        operand(*expr.operand, expr.common, needsOperandCollation(expr), Binding::None);
        write(" ");
    }
    for (const CaseArm& arm : expr.arms) {
        write("WHEN ");
        if (expr.operand != nullptr) {
            operand(*arm.when, expr.common, false, Binding::None);
        } else {
            expression(*arm.when);
        }
        write(" THEN ");
        as(*arm.then, expr.type);
        write(" ");
    }
    if (expr.otherwise != nullptr) {
        write("ELSE ");
        as(*expr.otherwise, expr.type);
        write(" ");
    }
    write("END");
}

/// The operand, which is written once, chooses the number of a branch; the branch is then taken by its number:
/// CASE CASE x WHEN a THEN 0 WHEN b THEN 1 ELSE 2 END WHEN 1 THEN ... WHEN 2 THEN ... ELSE deep END.
void Emitter::caseWithLast(const CaseExpr& expr, std::size_t last)
{
    if (expr.operand == nullptr) return searchedWithLast(expr, last);
    write("CASE CASE ");
    operand(*expr.operand, expr.common, needsOperandCollation(expr), Binding::None);
    for (std::size_t i = 0; i < expr.arms.size(); ++i) {
        write(" WHEN ");
        operand(*expr.arms[i].when, expr.common, false, Binding::None);
        write(" THEN " + std::to_string(i));
    }
    write(" ELSE " + std::to_string(expr.arms.size()) + " END");
    for (std::size_t i = 0; i < expr.arms.size(); ++i) {
        if (i == last) continue;
        write(" WHEN " + std::to_string(i) + " THEN ");
        as(*expr.arms[i].then, expr.type);
    }
    write(" WHEN " + std::to_string(expr.arms.size()) + " THEN ");
    otherwise(expr);
    write(" ELSE ");
    as(*expr.arms[last].then, expr.type);
    write(" END");
}

/// The condition of the last branch is turned round: CASE WHEN c1 THEN t1 WHEN c2 IS NOT TRUE THEN rest ELSE t2 END,
/// where the rest is a CASE of the branches behind it.
void Emitter::searchedWithLast(const CaseExpr& expr, std::size_t last)
{
    write("CASE ");
    for (std::size_t i = 0; i < last; ++i) {
        write("WHEN ");
        expression(*expr.arms[i].when);
        write(" THEN ");
        as(*expr.arms[i].then, expr.type);
        write(" ");
    }
    write("WHEN ");
    expression(*expr.arms[last].when, Binding::Equality);
    write(" IS NOT TRUE THEN ");
    const std::span<const CaseArm> behind = expr.arms.subspan(last + 1);
    if (!behind.empty()) write("CASE ");
    for (const CaseArm& arm : behind) {
        write("WHEN ");
        expression(*arm.when);
        write(" THEN ");
        as(*arm.then, expr.type);
        write(" ");
    }
    if (!behind.empty()) write("ELSE ");
    otherwise(expr);
    if (!behind.empty()) write(" END");
    write(" ELSE ");
    as(*expr.arms[last].then, expr.type);
    write(" END");
}

} // namespace tamarok::embedded::translation
