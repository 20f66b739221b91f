#include "handles.h"

#include <string>

#include "failures.h"

namespace tamarok::odbc {

namespace {

/// The kind of the handle above: an environment has none.
constexpr SQLSMALLINT parentType(SQLSMALLINT type) noexcept
{
    return type == SQL_HANDLE_STMT ? SQL_HANDLE_DBC : SQL_HANDLE_ENV;
}

} // namespace

// The reason of a failure lies with the handle above.
template <SQLSMALLINT type>
SQLHANDLE Handle<type>::allocate(SQLHANDLE parent)
{
    SQLHANDLE handle = SQL_NULL_HANDLE;
    if (succeeded(SQLAllocHandle(type, parent, &handle))) return handle;
    if (parent == SQL_NULL_HANDLE)
        throw Error{errors::providerFailure, "The ODBC driver manager cannot be started.", std::string{sourceName}};
    throw failure(readDiagnostics(parentType(type), parent));
}

template class Handle<SQL_HANDLE_ENV>;
template class Handle<SQL_HANDLE_DBC>;
template class Handle<SQL_HANDLE_STMT>;

EnvironmentHandle makeEnvironment()
{
    EnvironmentHandle environment{SQL_NULL_HANDLE};
    SQLSetEnvAttr(environment.get(), SQL_ATTR_ODBC_VERSION, asPointer(SQL_OV_ODBC3), 0);
    return environment;
}

} // namespace tamarok::odbc
