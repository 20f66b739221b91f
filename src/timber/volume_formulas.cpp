#include "timber/volume_formulas.h"

#include <cmath>
#include <string>

#include "tamarok/error.h"

namespace tamarok::timber {

double checkedResult(double value, std::string_view what)
{
    // Out of finite numbers "no number" arises only where an intermediate result overflowed before.
    if (!std::isfinite(value))
        throw Error{errors::overflow, "Overflow: " + std::string{what} + " is too large.", "Timber"};
    return value;
}

double checkedRoot(double value, std::string_view what)
{
    if (value < 0)
        throw Error{errors::invalidArgument, "Invalid argument: the root of " + std::string{what} + " is negative.",
                    "Timber"};
    return std::sqrt(value);
}

} // namespace tamarok::timber
