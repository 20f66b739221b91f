#pragma once

#include <string>

#include "tamarok/ado.h"
#include "tamarok/variant.h"

namespace tamarok::database {

/// Appends a value as a T-SQL literal that a column of its type takes without loss, whatever the settings of the
/// session: wide texts, dates as yyyymmdd, numbers of type FLOAT with an exponent, decimals as texts, since the rows of
/// one VALUES clause would otherwise share one precision.
/// @param type  the type of the column
/// Error 13 for a value that no column holds.
void appendLiteral(std::string& text, const Variant& value, ado::DataType type);

/// Appends a text as N'...'. A line end behind a backslash would be left out by the server, a zero would end the
/// statement, and "$(" begins a variable of some clients: such texts are written in parts.
void appendTextLiteral(std::string& text, std::string_view value);

} // namespace tamarok::database
