// A program that uses the installed library: it makes a database, fills a table and reads it back.
#include <iostream>
#include <tamarok/c_version.h>
#include <tamarok/comm_csel.h>
#include <tamarok/tmkvar.h>
#include <tamarok_embedded/connect.h>
#include <tamarok_loc/loc_service.h>

int main(int argc, char** argv)
{
    if (argc != 2) return 2;
    using namespace tamarok;

    TmkVar session;
    session.db_ADO = embedded::connect(argv[1], {.mode = embedded::OpenMode::Create});
    session.db_ADO->Execute("CREATE TABLE LOGS (ID_LOG INT NOT NULL PRIMARY KEY, HA NVARCHAR(20))");
    session.db_ADO->Execute("INSERT INTO LOGS (ID_LOG, HA) VALUES (1, 'Fichte'), (2, 'FICHTE'), (3, 'fichte ')");

    const Comm_CSel columns;
    ado::Recordset logs;
    logs.Open("SELECT COUNT(*), MIN(" + columns.GetColumn(22, "R", session) + ") FROM LOGS WHERE LOGS.HA = 'Fichte'",
              session.db_ADO);
    std::cout << "Tamarok_Comm " << C_Version{}.DLL_Version() << ": " << logs.Fields().Item(0).Value().asLong()
              << " logs, " << logs.Fields().Item(1).Value().asString() << '\n';
    logs.Close();
    return loc::makeLocService() ? 0 : 1;
}
