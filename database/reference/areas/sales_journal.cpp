#include "areas/sales_parts.h"

namespace tamarok::database::sales {

void writeInvoiceJournal(ado::Connection& connection)
{
    connection.Execute("INSERT INTO RECHNUNGSJOURNAL (R_NAME,VER_TYPE,INVDATE,KUNDEN_ID,MANDANTEN_ID,RART_ID,STORNO,"
                       "ID_ACCESS_LEVELS) SELECT R_NAME,VER_TYPE,INVDATE,KUNDEN_ID,MANDANTEN_ID,RART_ID,STORNO,"
                       "ID_ACCESS_LEVELS FROM HEADERRECH ORDER BY INVDATE,R_NAME,VER_TYPE");
}

} // namespace tamarok::database::sales
