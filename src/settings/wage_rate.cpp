#include <string>

#include "tamarok/comm_get.h"
#include "tamarok/convert.h"

// The statement that finds the rate of a wage type in a month.

namespace tamarok {

namespace {

/// Returns year and month as one number: 202403. Error 6 beyond 32 bits, also of the year alone.
std::string monthNumber(std::int32_t year, std::int32_t month)
{
    const std::int64_t years = convert::checkedLong(std::int64_t{year} * 100, "The year times 100");
    return std::to_string(convert::checkedLong(years + month, "The year times 100 plus the month"));
}

} // namespace

std::string Comm_Get::getSatzLohnerfassung(std::int32_t ID_Lohnarten, std::int32_t Jahr, std::int32_t monat,
                                           std::int32_t ID_Personal, std::int32_t ID_Maschinenbuch) const
{
    const std::string wageType = std::to_string(ID_Lohnarten);
    const std::string month = monthNumber(Jahr, monat);
    std::string statement = "SELECT EINHEIT.NAME, (CASE WHEN ISNULL(LOHNARTEN.SLA,0)=1 THEN"
                            " (SELECT TOP 1 RATE FROM ONETODATE WHERE TABLE_COLUMN = 'LOHNARTEN.SATZ' AND TABLE_ID = " +
                            wageType + " AND YEAR(DATUM)*100+MONTH(DATUM) <= " + month + " ORDER BY DATUM DESC) ELSE";
    if (ID_Maschinenbuch != 0)
        statement += " (SELECT SATZ FROM MASCHINENBUCH WHERE ID = " + std::to_string(ID_Maschinenbuch) + ")";
    else
        statement += " (SELECT TOP 1 BETRAG FROM LOHNGRUPPE WHERE NAME IN (SELECT TOP 1 TEXT FROM ONETODATE WHERE "
                     "TABLE_COLUMN = 'PERSONAL.LOHNGRUPPE' AND TABLE_ID = " +
                     std::to_string(ID_Personal) + " AND YEAR(DATUM)*100+MONTH(DATUM) <= " + month +
                     " ORDER BY ONETODATE.DATUM DESC) AND YEAR(DATEWHILE)*100+MONTH(DATEWHILE) <= " + month +
                     " ORDER BY DATEWHILE DESC)";
    return statement +
           " END) AS SATZ FROM LOHNARTEN INNER JOIN EINHEIT ON EINHEIT.ID = LOHNARTEN.EINHEIT WHERE "
           "EINHEIT.NAME IS NOT NULL AND LOHNARTEN.ID = " +
           wageType;
}

} // namespace tamarok
