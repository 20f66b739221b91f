#include "list/list_command.h"

#include <utility>

#include "connections.h"
#include "host_platform.h"
#include "list/column_headers.h"
#include "session.h"

#include "tamarok/ado.h"

namespace tamarok::cli {

namespace {

TmkVar listSession(const ListOptions& options)
{
    TmkVar session = commandSession(openForReading(options.database));
    session.bolOracle = options.oracle;
    return session;
}

} // namespace

int runList(const ListOptions& options, Output& output)
{
    const PlatformScope scope{commandPlatform(options.locale)};
    const TmkVar session = listSession(options);
    const ListQuery query = composeList(options.list, session);
    ado::Recordset records;
    records.Open(query.statement(session, options.list.limit), session.db_ADO);
    const auto printer =
        makeListPrinter(options.format, output, columnHeaders(options.list.type, options.list.ids, session));
    printRows(records, *printer, options.list.limit);
    return 0;
}

int runSql(const ListOptions& options, Output& output)
{
    const PlatformScope scope{commandPlatform(options.locale)};
    const TmkVar session = listSession(options);
    output.write(composeList(options.list, session).statement(session, options.list.limit) + "\n");
    output.flush();
    return 0;
}

} // namespace tamarok::cli
