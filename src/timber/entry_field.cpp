#include "timber/entry_field.h"

#include <optional>
#include <string>

#include "runtime/convert.h"

#include "tamarok/error.h"

namespace tamarok::timber {

double enteredNumber(std::string_view text, std::string_view field, const Regional& regional)
{
    const std::optional<double> number = convert::parseNumber(text, regional);
    if (!number)
        throw Error{errors::typeMismatch,
                    "Type mismatch: \"" + std::string{text} + "\" in field " + std::string{field} + " is no number.",
                    "Comm_Set"};
    return *number;
}

} // namespace tamarok::timber
