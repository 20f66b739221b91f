#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "tamarok/ado.h"

namespace tamarok::dialogs {

/// The sample database of the tests of master data, with the table `entryTable`. One program runs them on the embedded
/// database, another on the T-SQL server.
class MasterDataHome {
public:
    virtual ~MasterDataHome() = default;
    virtual std::string connectionText() const = 0;
    virtual ado::ConnectionRef open(std::string_view connectionText) const = 0;

protected:
    MasterDataHome() = default;
    MasterDataHome(const MasterDataHome&) = delete;
    MasterDataHome& operator=(const MasterDataHome&) = delete;
};

/// A table whose rows are entered by a recordset that does not show their key.
inline constexpr std::string_view entryTable =
    "CREATE TABLE ENTRY_TEST (ID INT IDENTITY(1,1) NOT NULL PRIMARY KEY, CODE NVARCHAR(5), AMOUNT FLOAT, "
    "NAME NVARCHAR(20), ID_ACCESS_LEVELS INT)";

/// Defined once per program. Nothing where there is no server.
std::unique_ptr<MasterDataHome> makeMasterDataHome();

} // namespace tamarok::dialogs
