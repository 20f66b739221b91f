#include "areas/sales_rows.h"

#include <algorithm>
#include <memory>

#include "tamarok/convert.h"

namespace tamarok::database::sales {
namespace {

constexpr std::int32_t daysOfData = 3 * 365;

/// Calls `visit` with the first field of every row.
template <class Visit>
void forEachRow(ado::Connection& connection, std::string_view statement, Visit visit)
{
    ado::Recordset rows;
    // A reference without ownership: the caller owns the connection.
    rows.Open(statement, ado::ConnectionRef{std::shared_ptr<void>{}, &connection});
    for (; !rows.AtEOF(); rows.MoveNext())
        visit(rows.Fields().Item(0).Value());
    rows.Close();
}

} // namespace

void insertRow(BulkInsert& rows, std::initializer_list<Variant> values)
{
    std::size_t column = 0;
    for (const Variant& value : values)
        rows[column++] = value;
    rows.insert();
}

Ids readIds(ado::Connection& connection, std::string_view statement)
{
    Ids ids;
    forEachRow(connection, statement, [&](const Variant& value) { ids.push_back(convert::toLong(value)); });
    return ids;
}

std::int32_t readNumber(ado::Connection& connection, std::string_view statement)
{
    std::int32_t number = 0;
    forEachRow(connection, statement, [&](const Variant& value) {
        if (!value.isNull()) number = convert::toLong(value);
    });
    return number;
}

std::vector<std::string> readTexts(ado::Connection& connection, std::string_view statement)
{
    std::vector<std::string> texts;
    forEachRow(connection, statement, [&](const Variant& value) { texts.push_back(convert::toText(value)); });
    return texts;
}

Keys::Keys(ado::Connection& connection) :
    partners{readIds(connection, "SELECT ID_PERSONAL FROM PERSONAL ORDER BY ID_PERSONAL")},
    customers{readIds(connection, "SELECT ID_PERSONAL FROM PERSONAL WHERE KUNDE = 1 ORDER BY ID_PERSONAL")},
    owners{readIds(connection, "SELECT ID_PERSONAL FROM PERSONAL WHERE GRUPPE = 'Waldbesitzer' ORDER BY ID_PERSONAL")},
    carriers{readIds(connection, "SELECT ID_PERSONAL FROM PERSONAL WHERE GRUPPE = 'Frächter' ORDER BY ID_PERSONAL")},
    contractors{
        readIds(connection, "SELECT ID_PERSONAL FROM PERSONAL WHERE GRUPPE = 'Unternehmer' ORDER BY ID_PERSONAL")},
    districts{readIds(connection, "SELECT ID FROM ACCESS_LEVELS WHERE RIGHT(ACCESS_LEVELS,2) <> '00' ORDER BY ID")},
    locations{readIds(connection, "SELECT ID_WALDORT FROM WALDORT ORDER BY ID_WALDORT")},
    users{readIds(connection, "SELECT ID FROM USERS ORDER BY ID")}, objects{readIds(
                                                                        connection,
                                                                        "SELECT ID FROM OBJEKT ORDER BY ID")},
    projects{readIds(connection, "SELECT ID FROM BB_T_PROJEKT_PLANUNG ORDER BY ID")},
    orders{readIds(connection, "SELECT ID FROM BB_T_AUFTRAGS_PLANUNG ORDER BY ID")}
{
    constexpr std::int32_t firstFreeList = 11;
    constexpr std::int32_t lastFreeList = 20;
    for (std::int32_t list = firstFreeList; list <= lastFreeList; ++list)
        freeLists.push_back(readIds(connection, "SELECT ID FROM RELTABLE WHERE RELTABLE_ID = " + std::to_string(list) +
                                                    " ORDER BY ID"));
}

Variant pickOrNull(Random& random, const Ids& items, std::uint32_t nullPerMille)
{
    if (random.chance(nullPerMille) || items.empty()) return Null{};
    return random.pick(items);
}

Variant orNull(Random& random, std::uint32_t nullPerMille, Variant value)
{
    return random.chance(nullPerMille) ? Variant{Null{}} : std::move(value);
}

Date drawDay(Random& random, Date baseDate)
{
    return Date{dayOf(baseDate).days - static_cast<double>(random.between(0, daysOfData - 1))};
}

Date notAfter(Date day, std::int32_t days, Date last)
{
    return std::min(Date{day.days + static_cast<double>(days)}, dayOf(last));
}

std::string numbered(std::string_view prefix, std::int64_t number, std::size_t width)
{
    std::string digits = std::to_string(number);
    if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
    return std::string{prefix} + digits;
}

std::string numberOfYear(std::string_view prefix, Date day, std::int64_t number)
{
    constexpr std::size_t width = 5;
    return numbered(std::string{prefix} + std::to_string(toCivil(day).year).substr(2) + "-", number, width);
}

double cents(double amount)
{
    return convert::roundHalfEven(amount, 2);
}

double quarters(double price)
{
    return std::max(0.25, convert::roundHalfEven(price * 4.0, 0) / 4.0);
}

} // namespace tamarok::database::sales
