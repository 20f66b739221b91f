#include "volume_formulas.h"

#include <cmath>
#include <string>

#include "tamarok/error.h"

namespace tamarok::timber {

void refuseResult(std::string_view what)
{
    throw Error{errors::overflow, "Overflow: " + std::string{what} + " is too large.", "Timber"};
}

double checkedRoot(double value, std::string_view what)
{
    if (value < 0)
        throw Error{errors::invalidArgument, "Invalid argument: the root of " + std::string{what} + " is negative.",
                    "Timber"};
    return std::sqrt(value);
}

} // namespace tamarok::timber
