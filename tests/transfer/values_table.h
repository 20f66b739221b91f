#pragma once

#include "tamarok/ado.h"

namespace tamarok::test {

/// Makes tables of a user with a column of each type, and rows with the values that are easily changed on their way:
/// Null and "", trailing blanks, umlauts, an emoji, backslashes before line ends, 1 MB of text, the ends of the
/// numbers, dates before 1900 and with times. Names of a
/// column and an index contain a blank.
void makeValueTables(ado::Connection& connection);

} // namespace tamarok::test
