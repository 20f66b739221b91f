#include "odbc/support/tsql_database.h"

#include <iostream>
#include <random>
#include <vector>

#include "support/tsql_server.h"
#include "tamarok_odbc/connect.h"

#include "tamarok/ado.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"

namespace tamarok::test {

namespace {

ado::ConnectionRef connectToMaster()
{
    return odbc::connectText(tsqlServer().value() + "DATABASE=master");
}

/// A database that another run is just dropping, or still uses, is left to it.
void dropLeftovers()
{
    const ado::ConnectionRef master = connectToMaster();
    std::vector<std::string> names;
    ado::Recordset rows;
    for (rows.Open("SELECT name FROM sys.databases WHERE name LIKE 'tamarok_test_%' AND create_date < "
                   "DATEADD(DAY, -1, GETDATE())",
                   master);
         !rows.AtEOF(); rows.MoveNext())
        names.push_back(convert::toText(rows.Fields().Item(0).Value()));
    for (const std::string& name : names) {
        try {
            master->Execute("DROP DATABASE " + name);
        } catch (const Error& error) {
            std::cerr << "The database " << name << " of an earlier run stays: " << error.what() << '\n';
        }
    }
}

} // namespace

std::string tsqlDatabase(const std::string& name)
{
    connectToMaster()->Execute("IF DB_ID('" + name + "') IS NULL CREATE DATABASE " + name);
    return tsqlServer().value() + "DATABASE=" + name;
}

void dropTsqlDatabase(const std::string& name)
{
    connectToMaster()->Execute("DROP DATABASE " + name);
}

TsqlDatabase::TsqlDatabase(std::string_view purpose) :
    name_{"tamarok_test_" + std::string{purpose} + "_" + std::to_string(std::random_device{}())}
{
    dropLeftovers();
    text_ = tsqlDatabase(name_);
}

TsqlDatabase::~TsqlDatabase()
{
    try {
        dropTsqlDatabase(name_);
    } catch (const Error& error) {
        std::cerr << "The database " << name_ << " could not be dropped: " << error.what() << '\n';
    }
}

} // namespace tamarok::test
