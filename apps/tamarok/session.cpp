#include "session.h"

#include "tamarok/date.h"

namespace tamarok::cli {

TmkVar commandSession(const ado::ConnectionRef& connection)
{
    TmkVar session;
    session.db_ADO = connection;
    if (connection) session.strConnection = connection->ConnectionString();
    session.strLanguage = "GERMAN";
    session.strDateFormat = commandDateFormat;
    session.ID_User = 1;
    session.DateFrom = makeDate(1900, 1, 1);
    session.DateTo = makeDate(2050, 12, 31);
    session.DateFromDefault = makeDate(1900, 1, 1);
    session.intDateToDays = 3650;
    return session;
}

} // namespace tamarok::cli
