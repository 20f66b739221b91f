#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "functions/catalog.h"
#include "functions/conversion.h"
#include "functions/number_text.h"

/// Functions of numbers. Where the result's type follows the argument, whole numbers stay whole; a text counts
/// as a float.
namespace tamarok::embedded::functions {

namespace {

constexpr double pi = 3.14159265358979323846;

bool isWhole(const Call& call, std::size_t index) noexcept
{
    return call.storage(index) == Storage::Whole;
}

[[noreturn]] void failDomain(std::string_view value)
{
    failWith(3623, "An invalid floating point operation occurred.", value);
}

// The type of the call, which the translation gives behind the `own` arguments of a function where the result may leave
// it: 0 for int, -1 for money, 100 * precision + scale for a decimal.
constexpr std::int64_t intCode = 0;
constexpr std::int64_t moneyCode = -1;

void resultTyped(Call& call, std::size_t own, double number)
{
    const std::int64_t code = call.count() > own ? call.whole(own) : intCode;
    if (code == moneyCode) {
        call.result(checkedMoney(number, false));
    } else if (code > intCode) {
        call.result(checkedDecimal(number, code / 100, code % 100));
    } else {
        call.result(number);
    }
}

void resultTyped(Call& call, std::size_t own, std::int64_t number)
{
    if (call.count() <= own) return call.result(number);
    if (call.whole(own) != intCode) return resultTyped(call, own, static_cast<double>(number));
    call.result(checkedInt(number));
}

/// The result of a whole argument is whole and is cut. Error 8115 beyond 64 bits.
void resultCut(Call& call, std::size_t own, double result)
{
    constexpr double limit = 9223372036854775808.0; // 2^63, which a double holds exactly
    if (!(result < limit && result >= -limit)) {
        failWith(8115, "Arithmetic overflow error converting expression to data type bigint.", decimalText(result, 0));
    }
    resultTyped(call, own, static_cast<std::int64_t>(result));
}

void resultOfFloat(Call& call, double (*function)(double))
{
    if (call.anyNull()) return call.resultNull();
    call.result(function(call.real(0)));
}

double positive(Call& call, std::size_t index)
{
    const double number = call.real(index);
    if (!(number > 0.0)) failDomain(call.text(index));
    return number;
}

/// Limits the places of ROUND to a range that has no effect on the result.
std::int32_t placesOf(std::int64_t places) noexcept
{
    constexpr std::int64_t furthest = 400; // beyond the digits of any double
    return static_cast<std::int32_t>(std::clamp(places, -furthest, furthest));
}

} // namespace

/// ABS: the one whole number without a positive counterpart is error 8115.
void absolute(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    if (!isWhole(call, 0)) return call.result(std::fabs(call.real(0)));
    const std::int64_t number = call.whole(0);
    if (number == std::numeric_limits<std::int64_t>::min()) {
        failWith(8115, "Arithmetic overflow error converting expression to data type bigint.", call.text(0));
    }
    resultTyped(call, 1, number < 0 ? -number : number);
}

/// SIGN: -1, 0 or 1 in the type of the argument.
void sign(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    if (isWhole(call, 0)) {
        const std::int64_t number = call.whole(0);
        return call.result(std::int64_t{(number > 0) - (number < 0)});
    }
    const double number = call.real(0);
    call.result(static_cast<double>((number > 0.0) - (number < 0.0)));
}

/// ROUND(number, places [, function [, type]]): with a function other than 0, cuts.
void round(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    const std::int32_t places = placesOf(call.whole(1));
    const bool cut = call.count() > 2 && call.whole(2) != 0;
    if (!isWhole(call, 0)) {
        const double number = call.real(0);
        return resultTyped(call, 3, cut ? truncateTo(number, places) : roundHalfAway(number, places));
    }
    const std::int64_t number = call.whole(0);
    std::int64_t rounded = 0;
    if (!roundWhole(number, places, cut, rounded)) {
        failWith(8115, "Arithmetic overflow error converting expression to data type bigint.", call.text(0));
    }
    resultTyped(call, 3, rounded);
}

/// FLOOR: a whole number is returned as it is.
void floorOf(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    if (isWhole(call, 0)) return call.resultValue(0);
    call.result(std::floor(call.real(0)));
}

void ceiling(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    if (isWhole(call, 0)) return call.resultValue(0);
    call.result(std::ceil(call.real(0)));
}

/// SQRT: error 3623 for a negative number.
void squareRoot(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    const double number = call.real(0);
    if (number < 0.0) failDomain(call.text(0));
    call.result(std::sqrt(number));
}

void square(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    const double number = call.real(0);
    call.result(number * number);
}

/// The result has the type of the base: with a whole base it is whole.
void power(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    const double base = call.real(0);
    const double exponent = call.real(1);
    if (base == 0.0 && exponent < 0.0) fail(8134, "Divide by zero error encountered.");
    const double result = std::pow(base, exponent);
    if (std::isnan(result)) failDomain(call.text(0));
    if (!isWhole(call, 0)) return resultTyped(call, 2, result);
    resultCut(call, 2, result);
}

void exponential(Call& call)
{
    resultOfFloat(call, [](double number) { return std::exp(number); });
}

/// LOG(x): natural; LOG(x, base).
void logarithm(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    const double number = positive(call, 0);
    if (call.count() == 1) return call.result(std::log(number));
    const double base = positive(call, 1);
    // Its logarithm is 0, and no division by it is defined.
    if (base == 1.0) failDomain(call.text(1));
    call.result(std::log(number) / std::log(base));
}

void logarithm10(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    call.result(std::log10(positive(call, 0)));
}

void piValue(Call& call)
{
    call.result(pi);
}

void sine(Call& call)
{
    resultOfFloat(call, [](double number) { return std::sin(number); });
}

void cosine(Call& call)
{
    resultOfFloat(call, [](double number) { return std::cos(number); });
}

void tangent(Call& call)
{
    resultOfFloat(call, [](double number) { return std::tan(number); });
}

void arcTangent(Call& call)
{
    resultOfFloat(call, [](double number) { return std::atan(number); });
}

/// ASIN: error 3623 beyond -1 to 1; ACOS likewise.
void arcSine(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    const double number = call.real(0);
    if (std::fabs(number) > 1.0) failDomain(call.text(0));
    call.result(std::asin(number));
}

void arcCosine(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    const double number = call.real(0);
    if (std::fabs(number) > 1.0) failDomain(call.text(0));
    call.result(std::acos(number));
}

void arcTangentOfTwo(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    call.result(std::atan2(call.real(0), call.real(1)));
}

/// RADIANS and DEGREES of a whole number are whole: the server gives the result the type of the argument.
void radians(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    const double result = call.real(0) / 180.0 * pi;
    if (isWhole(call, 0)) return resultCut(call, 1, result);
    resultTyped(call, 1, result);
}

void degrees(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    const double result = call.real(0) / pi * 180.0;
    if (isWhole(call, 0)) return resultCut(call, 1, result);
    resultTyped(call, 1, result);
}

} // namespace tamarok::embedded::functions
