#include "areas/sales_rows.h"

#include <algorithm>

#include "tamarok/convert.h"

namespace tamarok::database::sales {

std::vector<std::string> contractNames(ado::Connection& connection)
{
    std::vector<std::string> names;
    for (const std::vector<Variant>& row : rowsOf(connection, "SELECT VERTRAG_NAME FROM VERTRAEGE ORDER BY ID_VERTRAG"))
        names.push_back(convert::toText(row.at(0)));
    return names;
}

// Every query has an order, so that a seed draws the same keys on every database.
Keys::Keys(ado::Connection& connection) :
    partners{idsOf(connection, "SELECT ID_PERSONAL FROM PERSONAL ORDER BY ID_PERSONAL")},
    customers{idsOf(connection, "SELECT ID_PERSONAL FROM PERSONAL WHERE KUNDE = 1 ORDER BY ID_PERSONAL")},
    owners{idsOf(connection, "SELECT ID_PERSONAL FROM PERSONAL WHERE GRUPPE = 'Waldbesitzer' ORDER BY ID_PERSONAL")},
    carriers{idsOf(connection, "SELECT ID_PERSONAL FROM PERSONAL WHERE GRUPPE = 'Frächter' ORDER BY ID_PERSONAL")},
    contractors{
        idsOf(connection, "SELECT ID_PERSONAL FROM PERSONAL WHERE GRUPPE = 'Unternehmer' ORDER BY ID_PERSONAL")},
    districts{idsOf(connection, "SELECT ID FROM ACCESS_LEVELS WHERE RIGHT(ACCESS_LEVELS,2) <> '00' ORDER BY ID")},
    locations{idsOf(connection, "SELECT ID_WALDORT FROM WALDORT ORDER BY ID_WALDORT")},
    users{idsOf(connection, "SELECT ID FROM USERS ORDER BY ID")}, objects{idsOf(connection,
                                                                                "SELECT ID FROM OBJEKT ORDER BY ID")},
    projects{idsOf(connection, "SELECT ID FROM BB_T_PROJEKT_PLANUNG ORDER BY ID")},
    orders{idsOf(connection, "SELECT ID FROM BB_T_AUFTRAGS_PLANUNG ORDER BY ID")}
{
    // RELTABLE.RELTABLE_ID of the lists that a timber list calls RELTABLE1 to RELTABLE10.
    constexpr std::int32_t firstFreeList = 11;
    constexpr std::int32_t lastFreeList = 20;
    for (std::int32_t list = firstFreeList; list <= lastFreeList; ++list)
        freeLists.push_back(
            idsOf(connection, "SELECT ID FROM RELTABLE WHERE RELTABLE_ID = " + std::to_string(list) + " ORDER BY ID"));
}

Variant orNull(Random& random, std::uint32_t nullPerMille, Variant value)
{
    return random.chance(nullPerMille) ? Variant{Null{}} : std::move(value);
}

std::string numberOfYear(std::string_view prefix, Date day, std::int64_t number)
{
    constexpr std::size_t width = 5;
    return std::string{prefix} + shortYear(day) + "-" + paddedNumber(number, width);
}

double quarters(double price)
{
    // A price of 0 would leave invoices without value.
    return std::max(0.25, convert::roundHalfEven(price * 4.0, 0) / 4.0);
}

} // namespace tamarok::database::sales
