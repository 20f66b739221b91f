#pragma once

#include <string>

#include "odbc/support/tsql_database.h"

#include "tamarok/ado.h"

namespace tamarok::database::test {

/// A copy of a reference database on the T-SQL server: its schema, procedures and rows.
class ServerSample {
public:
    /// @param original  an embedded reference database
    explicit ServerSample(const ado::ConnectionRef& original);

    /// Opens a connection with the back end for ODBC.
    ado::ConnectionRef connect() const;
    const std::string& connectionText() const noexcept { return database_.connectionText(); }

private:
    tamarok::test::TsqlDatabase database_{"sample"};
};

} // namespace tamarok::database::test
