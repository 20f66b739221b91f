#include <cmath>

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/powers_of_ten.h"

namespace tamarok::convert {

double roundHalfEven(double number, std::int32_t places)
{
    if (places < 0 || places >= static_cast<std::int32_t>(powersOfTen.size()))
        throw Error{errors::invalidArgument,
                    "Invalid argument: a number cannot be rounded to " + std::to_string(places) + " decimals."};
    const double scale = powersOfTen[static_cast<std::size_t>(places)];
    const double scaled = number * scale;
    if (!std::isfinite(scaled))
        throw Error{errors::overflow,
                    "Overflow: a number is too large to be rounded to " + std::to_string(places) + " decimals."};
    return nearestEven(scaled) / scale;
}

} // namespace tamarok::convert
