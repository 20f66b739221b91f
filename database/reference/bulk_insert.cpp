#include "bulk_insert.h"

#include <memory>
#include <string>

namespace tamarok::database {

BulkInsert::BulkInsert(ado::Connection& connection, std::string_view table, std::span<const Column> columns)
{
    // A reference without ownership: the caller owns the connection.
    command_.ActiveConnection = ado::ConnectionRef{std::shared_ptr<void>{}, &connection};
    std::string names;
    std::string placeholders;
    for (const Column& column : columns) {
        if (!names.empty()) {
            names += ',';
            placeholders += ',';
        }
        names += column.name;
        placeholders += '?';
        command_.Parameters().push_back(
            command_.CreateParameter(column.name, column.type, ado::ParameterDirection::Input, 0, Null{}));
    }
    command_.CommandText = "INSERT INTO " + std::string{table} + " (" + names + ") VALUES (" + placeholders + ")";
}

void BulkInsert::clear()
{
    for (ado::Parameter& parameter : command_.Parameters())
        parameter.value = Null{};
}

void BulkInsert::insert()
{
    command_.Execute();
}

} // namespace tamarok::database
