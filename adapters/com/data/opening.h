#pragma once

#include <string_view>

#include "tamarok/ado.h"

namespace tamarok::data {

/// Opens the connection that a text names: one of the embedded database where its Provider is "Tamarok.Embedded",
/// otherwise one by ODBC. Errors: those of the back ends.
ado::ConnectionRef openConnection(std::string_view text);

/// The value of Provider in a connection text, of whatever style; empty where it names none.
std::string_view providerOf(std::string_view text);

/// Adds user and password to a connection text, in the style that the text has; an empty user or password adds nothing.
std::string withAccount(std::string text, std::string_view user, std::string_view password);

/// Makes a new file with the reference database: tables, texts and keys, and sample data with this number of measured
/// logs; none for 0. A file of that name is error 58 and stays as it is.
void makeDatabase(const std::string& file, std::int64_t logs);

} // namespace tamarok::data
