#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "tamarok/ado.h"
#include "tamarok/convert.h"

/// Reads the first row of a query: opens the statement forward-only, tests for a row, reads, closes.
///
/// All functions throw Error 91 without a connection and pass on failures of the database. Every
/// statement is sent as it stands, without parameters.
namespace tamarok::ado {

/// Calls `read` with the columns of the first row. Returns false, without the call, if there is no row.
/// @param lockType  read-only by default; the contract asks for an unspecified lock in two places
template <class Read>
bool readFirst(const ConnectionRef& connection, std::string_view statement, Read&& read,
               LockType lockType = LockType::ReadOnly)
{
    Recordset rows;
    rows.Open(statement, connection, CursorType::OpenForwardOnly, lockType, -1);
    const bool found = !rows.AtEOF();
    if (found) std::forward<Read>(read)(rows.Fields());
    rows.Close();
    return found;
}

/// Returns the first column of the first row (Null included), or nothing if there is no row.
inline std::optional<Variant> readFirstValue(const ConnectionRef& connection, std::string_view statement,
                                             LockType lockType = LockType::ReadOnly)
{
    std::optional<Variant> value;
    readFirst(
        connection, statement, [&](const FieldCollection& fields) { value = fields.Item(0).Value(); }, lockType);
    return value;
}

/// Returns a field's value as it goes into a message or a statement: Null gives "".
/// Error 13 for a value without a text form.
inline std::string fieldText(const Variant& value)
{
    return value.isNull() ? std::string{} : convert::toText(value);
}

/// Returns the text of the first column of the first row; "" for Null and if there is no row.
inline std::string readFirstText(const ConnectionRef& connection, std::string_view statement)
{
    const std::optional<Variant> value = readFirstValue(connection, statement);
    return value ? fieldText(*value) : std::string{};
}

/// Tells whether a query has any row.
inline bool hasRow(const ConnectionRef& connection, std::string_view statement)
{
    return readFirst(connection, statement, [](const FieldCollection&) {});
}

/// Calls `read` with the columns of the first row and does not test for one: reading a column of an
/// empty result is Error 3021. For queries whose row must be there.
template <class Read>
void readExisting(const ConnectionRef& connection, std::string_view statement, Read&& read)
{
    Recordset rows;
    rows.Open(statement, connection);
    std::forward<Read>(read)(rows.Fields());
    rows.Close();
}

} // namespace tamarok::ado
