#pragma once

#include <iosfwd>
#include <span>

#include "offered_classes.h"

namespace tamarok::com {

/// Writes the interface description (IDL): record, dual interfaces in slot order, classes.
void writeDescription(std::ostream& out, std::span<const OfferedRow> classes);

/// Writes the C++ source with a class for each dual interface, whose methods pass their arguments on to the class map,
/// and the tables of classes and interfaces.
void writeTypedMethods(std::ostream& out, std::span<const OfferedRow> classes);

} // namespace tamarok::com
