#pragma once

#include <string_view>

namespace tamarok::tsql {

/// Whether the server's documentation lists the word as a reserved keyword, so that it needs brackets or quotes to
/// serve as an alias. isReserved (keyword.h) knows only the words that mean something to the parser.
bool isReservedWord(std::string_view word);

} // namespace tamarok::tsql
