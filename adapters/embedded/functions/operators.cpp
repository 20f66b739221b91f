#include <cmath>
#include <limits>
#include <string>

#include "functions/catalog.h"
#include "functions/collation.h"
#include "functions/conversion.h"
#include "functions/date_conversion.h"
#include "functions/number_text.h"

/// Arithmetic and comparison as the server does them.
namespace tamarok::embedded::functions {

namespace {

/// An operation on 64-bit numbers. @return false for an overflow
using WholeOperation = bool (*)(std::int64_t, std::int64_t, std::int64_t&);

bool addWhole(std::int64_t a, std::int64_t b, std::int64_t& result) noexcept
{
    return !__builtin_add_overflow(a, b, &result);
}

bool subtractWhole(std::int64_t a, std::int64_t b, std::int64_t& result) noexcept
{
    return !__builtin_sub_overflow(a, b, &result);
}

bool multiplyWhole(std::int64_t a, std::int64_t b, std::int64_t& result) noexcept
{
    return !__builtin_mul_overflow(a, b, &result);
}

[[noreturn]] void failZero()
{
    fail(8134, "Divide by zero error encountered.");
}

/// Division by -1 is a negation: the smallest number divided by -1 overflows, which the processor answers with a trap.
bool divideWhole(std::int64_t a, std::int64_t b, std::int64_t& result)
{
    if (b == 0) failZero();
    if (b == -1) return subtractWhole(0, a, result);
    result = a / b;
    return true;
}

bool remainderWhole(std::int64_t a, std::int64_t b, std::int64_t& result)
{
    if (b == 0) failZero();
    result = b == -1 ? 0 : a % b;
    return true;
}

/// Computes in 64 bits and checks the result for int.
std::int64_t computeWhole(std::int64_t a, std::int64_t b, WholeType type, WholeOperation operation)
{
    std::int64_t result = 0;
    if (!operation(a, b, result)) {
        failWith(8115, "Arithmetic overflow error converting expression to data type bigint.",
                 std::to_string(a) + " and " + std::to_string(b));
    }
    return checkedWhole(result, type);
}

/// Converts both arguments to the type and computes.
void resultOfWhole(Call& call, WholeType type, WholeOperation operation)
{
    if (call.anyNull()) return call.resultNull();
    call.result(computeWhole(toWhole(call.value(0), type), toWhole(call.value(1), type), type, operation));
}

WholeOperation wholeOperation(char sign) noexcept
{
    switch (sign) {
    case '+': return addWhole;
    case '-': return subtractWhole;
    case '*': return multiplyWhole;
    case '/': return divideWhole;
    default: return remainderWhole;
    }
}

/// The operands are combined from the left by the signs in the last argument: (a, b, c, '-*') is (a - b) * c. Each
/// step is checked for overflow like a single operation.
void resultOfChain(Call& call, WholeType type)
{
    if (call.count() < 2 || call.anyNull()) return call.resultNull();
    const TextArgument signs = call.text(call.count() - 1);
    std::int64_t result = toWhole(call.value(0), type);
    for (std::size_t index = 0; index < signs.view().size() && index + 2 < call.count(); ++index) {
        result = computeWhole(result, toWhole(call.value(index + 1), type), type, wholeOperation(signs.view()[index]));
    }
    call.result(result);
}

bool isNumber(Storage storage) noexcept
{
    return storage == Storage::Whole || storage == Storage::Real;
}

/// SQLite has one whole type. A value within 32 bits counts as int, and so does one that is not whole.
bool isInt(const Call& call, std::size_t index) noexcept
{
    if (call.storage(index) != Storage::Whole) return true;
    const std::int64_t number = sqlite3_value_int64(call.value(index));
    return number == static_cast<std::int32_t>(number);
}

WholeType wholeTypeOf(const Call& call) noexcept
{
    return isInt(call, 0) && isInt(call, 1) ? WholeType::Int : WholeType::BigInt;
}

bool isStoredDate(const Call& call, std::size_t index)
{
    return call.storage(index) == Storage::Text && readStored(call.text(index)).has_value();
}

/// An operator on operands of unknown type: the server's name of it for messages, and both ways to compute it.
struct RuntimeOperator {
    std::string_view name;
    WholeOperation whole;
    double (*real)(double, double);
};

/// Two operands whose types are known only now. A text beside a number takes the number's type.
void resultOfRuntime(Call& call, const RuntimeOperator& operation)
{
    if (call.anyNull()) return call.resultNull();
    const Storage a = call.storage(0);
    const Storage b = call.storage(1);
    if (!isNumber(a) && !isNumber(b)) {
        fail(8117, "Operand data type nvarchar is invalid for " + std::string{operation.name} + " operator. Value: '" +
                       std::string{call.text(0).view()} + "'.");
    }
    // One float makes the result a float, as in the server's order of precedence.
    if (a == Storage::Real || b == Storage::Real) return call.result(operation.real(call.real(0), call.real(1)));
    resultOfWhole(call, wholeTypeOf(call), operation.whole);
}

double divideReal(double a, double b)
{
    if (b == 0.0) failZero();
    return a / b;
}

/// The remainder has the sign of the dividend, as on the server.
double remainderReal(double a, double b)
{
    if (b == 0.0) failZero();
    return std::fmod(a, b);
}

/// Moves the date argument `date` by the number argument `number`.
void resultMoved(Call& call, std::size_t date, std::size_t number, double direction)
{
    const Instant instant = *readStored(call.text(date));
    const double days = direction * call.real(number);
    constexpr double furthest = 4e6; // days; farther than any two dates, and safe to multiply
    const bool near = std::fabs(days) < furthest;
    const Instant moved = instant + (near ? std::llround(days * static_cast<double>(oneDay)) : lastDate);
    resultInstant(call, fitDate(moved, TypeKind::DateTime, call.text(number)));
}

/// Two whole numbers are compared as such, since a double would round those beyond 2^53.
int compareNumbers(const Call& call)
{
    if (call.storage(0) == Storage::Real || call.storage(1) == Storage::Real) {
        const double a = call.real(0);
        const double b = call.real(1);
        return (a > b) - (a < b);
    }
    const WholeType type = wholeTypeOf(call);
    const std::int64_t a = toWhole(call.value(0), type);
    const std::int64_t b = toWhole(call.value(1), type);
    return (a > b) - (a < b);
}

/// A text against a date is converted to datetime first.
int compareDates(const Call& call)
{
    const tsql::DateReading reading = readingOf(call);
    const Instant a = toDate(call.value(0), TypeKind::DateTime, reading);
    const Instant b = toDate(call.value(1), TypeKind::DateTime, reading);
    return (a > b) - (a < b);
}

/// Dates come first, numbers next, since a text beside either is converted to its type. Two texts are compared by
/// collation TAMAROK.
int compareValues(const Call& call)
{
    if (isStoredDate(call, 0) || isStoredDate(call, 1)) return compareDates(call);
    if (isNumber(call.storage(0)) || isNumber(call.storage(1))) return compareNumbers(call);
    const TextArgument a = call.text(0);
    const TextArgument b = call.text(1);
    const int result = compareTexts(a, b);
    return (result > 0) - (result < 0);
}

} // namespace

void tmIAdd(Call& call)
{
    resultOfWhole(call, WholeType::Int, addWhole);
}

void tmISub(Call& call)
{
    resultOfWhole(call, WholeType::Int, subtractWhole);
}

void tmIMul(Call& call)
{
    resultOfWhole(call, WholeType::Int, multiplyWhole);
}

void tmIDiv(Call& call)
{
    resultOfWhole(call, WholeType::Int, divideWhole);
}

void tmIMod(Call& call)
{
    resultOfWhole(call, WholeType::Int, remainderWhole);
}

void tmBAdd(Call& call)
{
    resultOfWhole(call, WholeType::BigInt, addWhole);
}

void tmBSub(Call& call)
{
    resultOfWhole(call, WholeType::BigInt, subtractWhole);
}

void tmBMul(Call& call)
{
    resultOfWhole(call, WholeType::BigInt, multiplyWhole);
}

void tmBDiv(Call& call)
{
    resultOfWhole(call, WholeType::BigInt, divideWhole);
}

void tmBMod(Call& call)
{
    resultOfWhole(call, WholeType::BigInt, remainderWhole);
}

void tmIntChain(Call& call)
{
    resultOfChain(call, WholeType::Int);
}

void tmBigIntChain(Call& call)
{
    resultOfChain(call, WholeType::BigInt);
}

void tmTinyIntChain(Call& call)
{
    resultOfChain(call, WholeType::TinyInt);
}

void tmSmallIntChain(Call& call)
{
    resultOfChain(call, WholeType::SmallInt);
}

namespace {

/// A step of a chain of amounts. The server rounds sums and products to four decimal places and cuts quotients.
double computeMoney(double a, double b, char sign)
{
    constexpr std::int32_t places = 4;
    switch (sign) {
    case '+': return roundHalfAway(a + b, places);
    case '-': return roundHalfAway(a - b, places);
    case '*': return roundHalfAway(a * b, places);
    case '/': return truncateTo(divideReal(a, b), places);
    default: return roundHalfAway(remainderReal(a, b), places);
    }
}

void resultOfMoneyChain(Call& call, bool small)
{
    if (call.count() < 2 || call.anyNull()) return call.resultNull();
    const TextArgument signs = call.text(call.count() - 1);
    double result = call.real(0);
    for (std::size_t index = 0; index < signs.view().size() && index + 2 < call.count(); ++index)
        result = checkedMoney(computeMoney(result, call.real(index + 1), signs.view()[index]), small);
    call.result(result);
}

} // namespace

void tmMoneyChain(Call& call)
{
    resultOfMoneyChain(call, false);
}

void tmSmallMoneyChain(Call& call)
{
    resultOfMoneyChain(call, true);
}

/// Exclusive or.
void tmXor(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    call.result(toWhole(call.value(0), WholeType::BigInt) ^ toWhole(call.value(1), WholeType::BigInt));
}

/// The texts joined; Null if one of them is Null, unlike CONCAT.
void tmConcat(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    std::string joined;
    for (std::size_t index = 0; index < call.count(); ++index)
        joined += call.text(index).view();
    call.result(std::string_view{joined});
}

void tmFDiv(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    call.result(divideReal(call.real(0), call.real(1)));
}

void tmFMod(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    call.result(remainderReal(call.real(0), call.real(1)));
}

/// + of unknown operands: moves a date by days, adds numbers, or joins texts.
void tmAdd(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    if (isStoredDate(call, 0) && isNumber(call.storage(1))) return resultMoved(call, 0, 1, 1.0);
    if (isStoredDate(call, 1) && isNumber(call.storage(0))) return resultMoved(call, 1, 0, 1.0);
    if (isNumber(call.storage(0)) || isNumber(call.storage(1))) {
        constexpr RuntimeOperator addition{"add", addWhole, [](double a, double b) { return a + b; }};
        return resultOfRuntime(call, addition);
    }
    std::string joined{call.text(0).view()};
    joined += call.text(1).view();
    call.result(std::string_view{joined});
}

/// - of unknown operands: moves a date back, gives the days between two dates, or subtracts numbers.
void tmSub(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    if (isStoredDate(call, 0) && isNumber(call.storage(1))) return resultMoved(call, 0, 1, -1.0);
    if (isStoredDate(call, 0) && isStoredDate(call, 1)) return tmDateDiffDays(call);
    constexpr RuntimeOperator subtraction{"subtract", subtractWhole, [](double a, double b) { return a - b; }};
    resultOfRuntime(call, subtraction);
}

void tmMul(Call& call)
{
    constexpr RuntimeOperator multiplication{"multiply", multiplyWhole, [](double a, double b) { return a * b; }};
    resultOfRuntime(call, multiplication);
}

void tmDiv(Call& call)
{
    constexpr RuntimeOperator division{"divide", divideWhole, divideReal};
    resultOfRuntime(call, division);
}

void tmMod(Call& call)
{
    constexpr RuntimeOperator modulo{"modulo", remainderWhole, remainderReal};
    resultOfRuntime(call, modulo);
}

/// -1, 0 or 1. Null if one side is Null, which makes the comparison unknown.
void tmCompare(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    call.result(std::int64_t{compareValues(call)});
}

/// NULLIF of operands whose types differ.
void tmNullIf(Call& call)
{
    if (call.isNull(0) || (!call.isNull(1) && compareValues(call) == 0)) return call.resultNull();
    call.resultValue(0);
}

void tmIsNull(Call& call)
{
    call.resultValue(call.isNull(0) ? 1 : 0);
}

} // namespace tamarok::embedded::functions
