#include <array>
#include <cmath>

#include "runtime/convert.h"

#include "tamarok/error.h"

namespace tamarok::convert {

namespace {

constexpr std::array powersOfTen{1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

} // namespace

double roundHalfEven(double number, std::int32_t places)
{
    if (places < 0 || places >= static_cast<std::int32_t>(powersOfTen.size()))
        throw Error{errors::invalidArgument,
                    "Invalid argument: a number cannot be rounded to " + std::to_string(places) + " decimals."};
    const double scale = powersOfTen[static_cast<std::size_t>(places)];
    const double scaled = number * scale;
    // A number too large to be scaled has no decimals that could be rounded away.
    if (!std::isfinite(scaled)) return number;
    return nearestEven(scaled) / scale;
}

} // namespace tamarok::convert
