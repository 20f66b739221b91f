#include "timber/volume_formulas.h"

#include <cmath>
#include <string>

#include "tamarok/error.h"

namespace tamarok::timber {

double checkedResult(double value, std::string_view what)
{
    if (std::isnan(value))
        throw Error{errors::invalidArgument, "Invalid argument: " + std::string{what} + " is no number.", "Timber"};
    if (std::isinf(value)) throw Error{errors::overflow, "Overflow: " + std::string{what} + " is too large.", "Timber"};
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
