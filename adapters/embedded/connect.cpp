#include "tamarok_embedded/connect.h"

#include <memory>
#include <utility>

#include "connection_text.h"
#include "failures.h"
#include "file_checks.h"
#include "opening.h"
#include "path_text.h"
#include "session.h"
#include "tamarok_embedded/catalogue.h"

#include "tamarok/ado_backend.h"

namespace tamarok::embedded {

namespace {

ado::ConnectionRef connectionOf(std::unique_ptr<Database> database, const OpenOptions& options, std::string text)
{
    auto session = std::make_unique<EmbeddedSession>(std::make_unique<Engine>(std::move(database), options.procedures));
    return std::make_shared<ado::Connection>(std::move(session), std::move(text));
}

/// The session is known by its type: a connection may belong to any back end.
Engine& engineOf(const ado::Connection& connection)
{
    auto* const session = dynamic_cast<EmbeddedSession*>(&connection.session());
    if (session == nullptr) {
        throw Error{errors::invalidArgument, "The connection is not one of the embedded database.",
                    std::string{sourceName}};
    }
    return session->engine();
}

} // namespace

/// The file is checked before SQLite opens it, for the sake of the messages.
ado::ConnectionRef openConnection(const DatabasePath& path, const OpenOptions& options, std::string text)
{
    checkDatabaseFile(path, options.mode == OpenMode::ReadOnly);
    return connectionOf(std::make_unique<Database>(path, options.mode, options.dateOrder), options, std::move(text));
}

ado::ConnectionRef connect(const std::filesystem::path& file, const OpenOptions& options)
{
    const DatabasePath path = resolvePath(textOf(file));
    if (options.mode == OpenMode::Create) {
        createDatabaseFile(path);
    }
    return openConnection(path, options, composeConnectionText(textOf(file), options));
}

ado::ConnectionRef connectText(std::string_view connectionText)
{
    const ConnectionTarget target = parseConnectionText(connectionText);
    return connect(pathOf(target.file), target.options);
}

ado::ConnectionRef connectInMemory(const OpenOptions& options)
{
    return connectionOf(std::make_unique<Database>(options.dateOrder), options,
                        composeConnectionText(":memory:", options));
}

std::string translate(ado::Connection& connection, std::string_view statement)
{
    return engineOf(connection).translate(statement);
}

std::vector<tsql::Table> tables(ado::Connection& connection)
{
    return engineOf(connection).tables();
}

} // namespace tamarok::embedded
