#pragma once

#include <span>
#include <string>
#include <variant>
#include <vector>

#include "odbc_api.h"

#include "tamarok/ado.h"

namespace tamarok::odbc {

/// The values of a statement's parameters in the form of the driver manager. They must outlive the execution.
class BoundParameters {
public:
    explicit BoundParameters(std::span<const ado::Parameter> parameters);

    /// Binds the values to the "?" of a statement.
    void bind(SQLHANDLE statement);

private:
    struct Bound {
        std::variant<SQLCHAR, SQLSMALLINT, SQLINTEGER, SQLBIGINT, SQLDOUBLE, SQL_TIMESTAMP_STRUCT,
                     std::vector<SQLWCHAR>>
            value;
        SQLSMALLINT cType = SQL_C_WCHAR;
        SQLSMALLINT sqlType = SQL_WVARCHAR;
        SQLULEN size = 0;
        SQLSMALLINT digits = 0;
        SQLLEN length = 0; ///< in bytes, or SQL_NULL_DATA
    };

    static Bound boundOf(const ado::Parameter& parameter);
    static Bound boundText(const std::string& text, ado::DataType type);
    static Bound boundDate(Date date);

    std::vector<Bound> bound_;
};

/// A value as parameter: of the type of a column, sent in the form of its own kind.
ado::Parameter parameterOf(const Variant& value, ado::DataType type);

} // namespace tamarok::odbc
