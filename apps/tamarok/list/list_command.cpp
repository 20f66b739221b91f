#include "list/list_command.h"

#include <utility>

#include "connections.h"
#include "host_platform.h"
#include "list/column_labels.h"
#include "list/column_words.h"
#include "list/visible_services.h"
#include "session.h"

#include "tamarok/ado.h"

namespace tamarok::cli {

namespace {

TmkVar listSession(const ListOptions& options)
{
    TmkVar session = commandSession(openForReading(options.database));
    session.bolOracle = options.oracle;
    session.strLanguage = options.language;
    return session;
}

/// The list with the columns that the user named.
ListRequest listRequest(const ListOptions& options, const TmkVar& session)
{
    requireListType(options.list.type);
    ListRequest list = options.list;
    list.ids = columnIds(list.type, options.columns, session);
    list.orderIds = columnIds(list.type, options.orderColumns, session);
    return list;
}

} // namespace

int runList(const ListOptions& options, Output& output)
{
    const PlatformScope scope{commandPlatform(options.locale)};
    const TmkVar session = listSession(options);
    const ListRequest list = listRequest(options, session);
    const ListQuery query = composeList(list, session);
    prepareList(list.type, session);
    ado::Recordset records;
    records.Open(query.statement(session, list.limit), session.db_ADO);
    const auto printer = makeListPrinter(options.format, output, columnHeaders(list.type, list.ids, session),
                                         columnPatterns(list.type, list.ids, session));
    printRows(records, *printer, list.limit);
    return 0;
}

int runSql(const ListOptions& options, Output& output)
{
    const PlatformScope scope{commandPlatform(options.locale)};
    const TmkVar session = listSession(options);
    output.write(composeList(listRequest(options, session), session).statement(session, options.list.limit) + "\n");
    output.flush();
    return 0;
}

} // namespace tamarok::cli
