#include "tamarok_odbc/backend.h"

#include <string>

#include "tamarok_odbc/connect.h"

namespace tamarok::odbc {

// The names of the usual OLE DB providers let their connection texts work unchanged.
void registerBackend(ado::BackendRegistry& registry)
{
    for (const std::string_view name : {provider, std::string_view{"SQLOLEDB"}, std::string_view{"SQLNCLI11"},
                                        std::string_view{"MSOLEDBSQL"}, std::string_view{"MSDASQL"}})
        registry.add(std::string{name}, connectText);
}

} // namespace tamarok::odbc
