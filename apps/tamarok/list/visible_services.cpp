#include "list/visible_services.h"

#include "tamarok/comm_lock.h"
#include "tamarok/text.h"

namespace tamarok::cli {

void prepareList(const std::string& type, const TmkVar& session)
{
    if (!text::equalsNoCase(type, "BBLTN")) return;
    // A session without a level sees every row, as in every other list of the command line.
    std::string where;
    if (session.ID_Access_Levels != 0)
        Comm_Lock{}.Access_Levels("BB_LEISTUNGS_KOPF", where, session, session.ID_Access_Levels);
    session.db_ADO->Execute("CREATE TABLE #BB_LEISTUNGS_KOPF (ID INT NOT NULL PRIMARY KEY)");
    session.db_ADO->Execute("INSERT INTO #BB_LEISTUNGS_KOPF (ID) SELECT ID FROM BB_LEISTUNGS_KOPF" +
                            (where.empty() ? std::string{} : " WHERE " + where));
}

} // namespace tamarok::cli
