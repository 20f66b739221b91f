#include <string>
#include <string_view>

#include "dialect/sql_template.h"

#include "tamarok/comm_get.h"
#include "tamarok/convert.h"

// The statement that finds the rate of a wage type in a month.

namespace tamarok {

namespace {

// A wage type with SLA has rates of its own by date. Any other takes the rate of the machine, or of the group in which
// the person was in that month, with the amount of the group in that month.
constexpr std::string_view rateTemplate =
    "SELECT EINHEIT.NAME, (CASE WHEN ISNULL(LOHNARTEN.SLA,0)=1 THEN"
    " (SELECT TOP 1 RATE FROM ONETODATE WHERE TABLE_COLUMN = 'LOHNARTEN.SATZ' AND TABLE_ID = {TYPE}"
    " AND YEAR(DATUM)*100+MONTH(DATUM) <= {MONTH} ORDER BY DATUM DESC) ELSE"
    "{MACHINE? (SELECT SATZ FROM MASCHINENBUCH WHERE ID = {MACHINE}):"
    " (SELECT TOP 1 BETRAG FROM LOHNGRUPPE WHERE NAME IN"
    " (SELECT TOP 1 TEXT FROM ONETODATE WHERE TABLE_COLUMN = 'PERSONAL.LOHNGRUPPE' AND TABLE_ID = {PERSON}"
    " AND YEAR(DATUM)*100+MONTH(DATUM) <= {MONTH} ORDER BY ONETODATE.DATUM DESC)"
    " AND YEAR(DATEWHILE)*100+MONTH(DATEWHILE) <= {MONTH} ORDER BY DATEWHILE DESC)}"
    " END) AS SATZ FROM LOHNARTEN INNER JOIN EINHEIT ON EINHEIT.ID = LOHNARTEN.EINHEIT"
    " WHERE EINHEIT.NAME IS NOT NULL AND LOHNARTEN.ID = {TYPE}";

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
    return dialect::fill(rateTemplate, dialect::sqlServer,
                         {{"TYPE", std::to_string(ID_Lohnarten)},
                          {"MONTH", monthNumber(Jahr, monat)},
                          {"PERSON", std::to_string(ID_Personal)},
                          {"MACHINE", ID_Maschinenbuch == 0 ? std::string{} : std::to_string(ID_Maschinenbuch)}});
}

} // namespace tamarok
