#include "entry_field.h"

#include <string>

#include "tamarok/error.h"

namespace tamarok::timber {

void refuseEntry(std::string_view text, std::string_view field)
{
    throw Error{errors::typeMismatch,
                "Type mismatch: \"" + std::string{text} + "\" in field " + std::string{field} + " is no number.",
                "Comm_Set"};
}

} // namespace tamarok::timber
