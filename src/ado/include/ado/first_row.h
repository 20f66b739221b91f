#pragma once

#include <optional>
#include <string_view>
#include <utility>

#include "tamarok/ado.h"

/// The one way in which the library reads from the database.
namespace tamarok::ado {

/// Opens `statement` forward-only, tests for rows, gives the columns of the first row to `read`,
/// and closes. Returns false, without calling `read`, where there is no row.
/// Errors: 91 no connection, failures of the database and of `read`.
template <class Read>
bool readFirst(const ado::ConnectionRef& connection, std::string_view statement, Read&& read,
               ado::LockType lockType = ado::LockType::ReadOnly)
{
    ado::Recordset rows;
    rows.Open(statement, connection, ado::CursorType::OpenForwardOnly, lockType, -1);
    const bool found = !rows.AtEOF();
    if (found) {
        std::forward<Read>(read)(rows.Fields());
    }
    rows.Close();
    return found;
}

/// The first column of the first row (Null included), or nothing where there is no row.
inline std::optional<Variant> readFirstValue(const ado::ConnectionRef& connection, std::string_view statement,
                                             ado::LockType lockType = ado::LockType::ReadOnly)
{
    std::optional<Variant> value;
    readFirst(
        connection, statement, [&](const ado::FieldCollection& fields) { value = fields.Item(0).Value(); }, lockType);
    return value;
}

} // namespace tamarok::ado
