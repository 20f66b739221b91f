#include "connections.h"

#include <algorithm>
#include <string>
#include <vector>

#include "tamarok_embedded/backend.h"

#include "tamarok/connection_text.h"

namespace tamarok::cli {

namespace {

/// The provider name under which an ODBC back end is registered.
constexpr std::string_view odbcProvider = "Tamarok.Odbc";

} // namespace

ado::BackendRegistry backends()
{
    ado::BackendRegistry registry;
    embedded::registerBackend(registry);
    return registry;
}

ado::ConnectionRef openConnection(std::string_view connectionText)
{
    return backends().open(connectionText);
}

std::string databaseText(const std::string& file)
{
    return "Provider=" + std::string{embedded::provider} + ";Data Source=" + ado::connectionValue(file);
}

ado::ConnectionRef openDatabase(const std::string& file)
{
    return openConnection(databaseText(file));
}

bool hasOdbc()
{
    const ado::BackendRegistry registry = backends();
    const std::vector<std::string_view> providers = registry.providers();
    return std::ranges::find(providers, odbcProvider) != providers.end();
}

ado::ConnectionRef openOdbc(std::string_view odbcText)
{
    return backends().open(odbcProvider, odbcText);
}

} // namespace tamarok::cli
