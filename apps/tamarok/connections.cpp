#include "connections.h"

#include <algorithm>
#include <clocale>
#include <span>
#include <string>
#include <vector>

#include "session.h"
#include "tamarok_embedded/backend.h"
#include "tamarok_embedded/connect.h"
#ifdef TAMAROK_WITH_ODBC
#include "tamarok_odbc/backend.h"
#include "tamarok_odbc/connect.h"
#endif

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok::cli {

namespace {

/// The provider name under which an ODBC back end is registered.
constexpr std::string_view odbcProvider = "Tamarok.Odbc";

/// True for what reading an option that has no row writes: no value, or 0.
bool isDefaultValue(const Variant& value)
{
    if (value.isNull() || value.isEmpty()) return true;
    const std::string written = convert::toText(value);
    return text::trim(written).empty() || (convert::isNumeric(value) && convert::toDouble(value) == 0.0);
}

/// Stands for tmk_OPTIONEN_INS on a connection that only reads. Reading an option without a row calls the procedure
/// to make one with the default, which then counts without the row. Any other call is refused.
embedded::Procedure defaultOption()
{
    return {"tmk_OPTIONEN_INS",
            {{"PROPERTY"}, {"KIND"}, {"VALUE"}},
            [](embedded::ProcedureScope&, std::span<const Variant> arguments) {
                if (isDefaultValue(arguments[2])) return;
                throw Error{errors::providerFailure, "The option '" + convert::toText(arguments[0]) +
                                                         "' cannot be written: the database is open for reading only."};
            }};
}

/// Opens a server without looking at the session's date format.
ado::ConnectionRef openServer(std::string_view odbcText)
{
    // The driver manager converts for drivers without wide functions, by the locale of the process.
    std::setlocale(LC_CTYPE, "");
    return backends().open(odbcProvider, odbcText);
}

} // namespace

ado::BackendRegistry backends()
{
    ado::BackendRegistry registry;
    embedded::registerBackend(registry);
#ifdef TAMAROK_WITH_ODBC
    odbc::registerBackend(registry);
#endif
    return registry;
}

ado::ConnectionRef openConnection(std::string_view connectionText)
{
    return backends().open(connectionText);
}

ado::ConnectionRef openDatabase(const std::string& file)
{
    return embedded::connect(file);
}

ado::ConnectionRef openForReading(const std::string& file)
{
    embedded::OpenOptions options;
    options.mode = embedded::OpenMode::ReadOnly;
    options.procedures.add(defaultOption());
    return embedded::connect(file, options);
}

bool hasOdbc()
{
    const ado::BackendRegistry registry = backends();
    const std::vector<std::string_view> providers = registry.providers();
    return std::ranges::find(providers, odbcProvider) != providers.end();
}

ado::ConnectionRef openOdbc(std::string_view odbcText)
{
    ado::ConnectionRef connection = openServer(odbcText);
#ifdef TAMAROK_WITH_ODBC
    odbc::requireDateFormat(*connection, commandDateFormat);
#endif
    return connection;
}

ado::ConnectionRef ServerTexts::open(std::string_view connectionText) const
{
    const auto known = texts_.find(connectionText);
    return known != texts_.end() ? openOdbc(known->second) : openConnection(connectionText);
}

ado::ConnectionRef openDatabase(const DatabaseChoice& choice)
{
    return choice.odbc ? openOdbc(*choice.odbc) : openDatabase(choice.file);
}

ado::ConnectionRef openForReading(const DatabaseChoice& choice)
{
    return choice.odbc ? openOdbc(*choice.odbc) : openForReading(choice.file);
}

ado::ConnectionRef openToCheck(const DatabaseChoice& choice)
{
    return choice.odbc ? openServer(*choice.odbc) : openForReading(choice.file);
}

} // namespace tamarok::cli
