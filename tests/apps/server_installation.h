#pragma once

#include <map>
#include <string>
#include <string_view>

#include "tamarok/ado.h"

namespace tamarok::test {

/// A batch with the newer one of the two collations that compare exactly; the server at hand may have that one alone.
std::string withNewestCollation(std::string_view batch);

/// Makes the reference schema in an empty database of the T-SQL server, with its procedures, texts and master data.
void makeInstallation(const ado::ConnectionRef& server);

/// Everything that a database of the T-SQL server holds: the rows of each table, the columns and the procedures.
std::map<std::string, std::string> dumpOf(const ado::ConnectionRef& server);

} // namespace tamarok::test
