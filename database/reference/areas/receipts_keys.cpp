#include "areas/receipts_keys.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <memory>

#include "tamarok/convert.h"
#include "tamarok/error.h"

namespace tamarok::database {
namespace {

/// Runs a query and calls `visit` with a function that returns the value of a column in the current row.
template <class Visit>
void forEachRow(ado::Connection& connection, std::string_view statement, Visit visit)
{
    ado::Recordset rows;
    rows.Open(statement, ado::ConnectionRef{std::shared_ptr<void>{}, &connection});
    for (; !rows.AtEOF(); rows.MoveNext())
        visit([&](std::int32_t column) -> Variant { return rows.Fields().Item(column).Value(); });
    rows.Close();
}

std::string textOf(const Variant& value)
{
    return value.isNull() ? std::string{} : convert::toText(value);
}

std::int32_t wholeOf(const Variant& value)
{
    return value.isNull() ? 0 : convert::toLong(value);
}

struct KeySource {
    std::string_view table;
    std::string_view code;
    std::string_view id;
    std::string_view condition; ///< besides DISABLE; may be empty
};

constexpr std::array keySources{
    KeySource{"KOSTENART", "NUMBER", "ID", "TABLE_NAME = 'FORST'"},
    KeySource{"LEISTUNGSART", "NUMBER", "ID", "TABLE_NAME = 'FORST'"},
    KeySource{"PRODUKT", "NUMBER", "ID", "TABLE_NAME = 'FORST'"},
    KeySource{"WARENKATALOG", "NUMMER", "ART_ID", ""},
    KeySource{"WARENEINHEIT", "EINHEIT", "EINHEIT_ID", ""},
    KeySource{"HOLZART", "HA", "ID", ""},
    KeySource{"HOLZSORTE", "HS", "ID", ""},
    KeySource{"GUETEKLASSE", "GKL", "ID", ""},
    KeySource{"STKL", "STKL", "ID", ""},
    KeySource{"FARBE", "FARBE", "ID", ""},
    KeySource{"BUCHNR", "NUMMER", "BUCHNR_ID", ""},
    KeySource{"HOLZPLATZ", "NUMMER", "ID", ""},
    KeySource{"BB_HAUSHALT", "NUMMER", "ID", ""},
    KeySource{"BB_TSM_BAGMV1", "SHORT", "ID", ""},
    KeySource{"BB_TSM_SOGMV", "SHORT", "ID", ""},
    KeySource{"BB_TSM_STKLGMV", "NUMMER", "ID", ""},
    KeySource{"BB_T_ABGABEART_VERWENDUNG", "SHORT", "ID", ""},
    KeySource{"BB_T_ABGANGSART", "SHORT", "ID", ""},
    KeySource{"BB_T_BESTANDESART", "SHORT", "ID", ""},
    KeySource{"BB_T_BETRIEBSART", "SHORT", "ID", ""},
    KeySource{"BB_T_ERFULLUNGSORT", "SHORT", "ID", ""},
    KeySource{"BB_T_HAB_STATUS", "SHORT", "ID", ""},
    KeySource{"BB_T_HOLZSCHADEN", "SHORT", "ID", ""},
    KeySource{"BB_T_HOLZVERKAUFSSTATUS", "SHORT", "ID", ""},
    KeySource{"BB_T_KZ_LEISTUNG", "SHORT", "ID", ""},
    KeySource{"BB_T_KZ_MEHRWERTSTEUER", "SHORT", "ID", ""},
    KeySource{"BB_T_LEI_ARBEITSVERFAHEREN", "SHORT", "ID", ""},
    KeySource{"BB_T_MEHRWERTSTEUER", "SHORT", "ID", ""},
    KeySource{"BB_T_MESSVERFAHREN", "SHORT", "ID", ""},
    KeySource{"BB_T_MISCHUNGSFORM", "SHORT", "ID", ""},
    KeySource{"BB_T_OBJEKTE", "NUMMER", "ID", ""},
    KeySource{"BB_T_PREIS_GRUPPE", "SHORT", "ID", ""},
    KeySource{"BB_T_PREIS_RINDE", "SHORT", "ID", ""},
    KeySource{"BB_T_PREIS_RUCKEN", "SHORT", "ID", ""},
    KeySource{"BB_T_PROJEKT_PLANUNG", "NUMMER", "ID", ""},
    KeySource{"BB_T_RECHNUNGSTYP_BELEG", "SHORT", "ID", ""},
    KeySource{"BB_T_SAATGUTHERKUNFT", "SHORT", "ID", ""},
    KeySource{"BB_T_SAATGUTQUALITAT", "SHORT", "ID", ""},
    KeySource{"BB_T_STANDORT", "SHORT", "ID", ""},
    KeySource{"BB_T_UNTERKONTO", "SHORT", "ID", ""},
    KeySource{"BB_T_VERKAUFSART", "SHORT", "ID", ""},
    KeySource{"BB_T_VERKAUFSVERFAHREN", "SHORT", "ID", ""},
    KeySource{"BB_T_VERKAUFSZIEL", "SHORT", "ID", ""},
    KeySource{"BB_T_VERTRAG", "SHORT", "ID", ""},
    KeySource{"BB_T_VOLLZUGSMASSNAHME", "SHORT", "ID", ""},
    KeySource{"BB_T_ZAHLART", "SHORT", "ID", "ISNULL(STORNO,0) = 0"},
    KeySource{"BB_T_ZU_U_ABSCHLAGE_Z_ROH", "SHORT", "ID", ""},
    KeySource{"BB_T_ZUFALLIGES_EREIGNIS", "SHORT", "ID", ""},
    KeySource{"BB_T_ZUGANGSART", "SHORT", "ID", ""},
};

std::string statementOf(const KeySource& source)
{
    std::string statement = "SELECT [" + std::string{source.code} + "], " + std::string{source.id} + " FROM " +
                            std::string{source.table} + " WHERE ISNULL(DISABLE,0) = 0";
    if (!source.condition.empty()) statement += " AND " + std::string{source.condition};
    return statement + " ORDER BY " + std::string{source.id};
}

/// Returns the entry of a level, or any entry of the map if the level has none; 0 if the map is empty.
std::int32_t pickOfLevel(const std::map<std::int32_t, std::vector<std::int32_t>>& byLevel, std::int32_t level,
                         Random& random)
{
    const std::uint32_t other = random.below(1000);
    if (byLevel.empty()) return 0;
    auto found = byLevel.find(level);
    if (found == byLevel.end()) found = std::next(byLevel.begin(), static_cast<std::ptrdiff_t>(other % byLevel.size()));
    return random.pick(found->second);
}

[[noreturn]] void failNotFound(std::string_view what, std::string_view name)
{
    throw Error{errors::itemNotFound, std::string{what} + " '" + std::string{name} + "' is not in the reference data.",
                "writeReceipts"};
}

} // namespace

CodeTable::CodeTable(ado::Connection& connection, std::string_view statement)
{
    forEachRow(connection, statement, [&](auto value) {
        ids_.push_back(wholeOf(value(1)));
        idByCode_.emplace(textOf(value(0)), ids_.back());
    });
}

std::int32_t CodeTable::id(std::string_view code) const
{
    if (code.empty()) return 0;
    const auto found = idByCode_.find(code);
    if (found == idByCode_.end()) failNotFound("The code", code);
    return found->second;
}

std::int32_t CodeTable::pick(Random& random) const
{
    return ids_.empty() ? 0 : random.pick(ids_);
}

ReceiptKeys::ReceiptKeys(ado::Connection& connection)
{
    for (const KeySource& source : keySources)
        tables_.emplace(source.table, CodeTable{connection, statementOf(source)});
    readPlaces(connection);
    readLevels(connection);
    readPartners(connection);
}

void ReceiptKeys::readPlaces(ado::Connection& connection)
{
    forEachRow(connection,
               "SELECT ID_WALDORT, ID_ACCESS_LEVELS, WO4, WO5, WO6, LANGNAME FROM WALDORT WHERE ISNULL(DISABLE,0) = 0 "
               "AND ID_ACCESS_LEVELS IS NOT NULL ORDER BY ID_WALDORT",
               [&](auto value) {
                   placesByLevel_[wholeOf(value(1))].push_back(places_.size());
                   places_.push_back({wholeOf(value(0)), wholeOf(value(1)),
                                      textOf(value(2)) + textOf(value(3)) + textOf(value(4)), textOf(value(5))});
               });
    if (places_.empty()) failNotFound("A row of the table", "WALDORT");
}

void ReceiptKeys::readLevels(ado::Connection& connection)
{
    forEachRow(connection, "SELECT ID, ACCESS_LEVELS FROM ACCESS_LEVELS ORDER BY ID", [&](auto value) {
        codeOfLevel_.emplace(wholeOf(value(0)), textOf(value(1)));
        levelOfCode_.emplace(textOf(value(1)), wholeOf(value(0)));
    });
    forEachRow(connection,
               "SELECT ID, ID_ACCESS_LEVELS FROM KOSTENSTELLE WHERE ISNULL(DISABLE,0) = 0 AND TABLE_NAME = 'FORST' "
               "ORDER BY ID",
               [&](auto value) { costCentresByLevel_[wholeOf(value(1))].push_back(wholeOf(value(0))); });
}

void ReceiptKeys::readPartners(ado::Connection& connection)
{
    forEachRow(connection,
               "SELECT ID_PERSONAL, GRUPPE, ID_ACCESS_LEVELS FROM PERSONAL WHERE ISNULL(DISABLE,0) = 0 "
               "AND GRUPPE IS NOT NULL ORDER BY ID_PERSONAL",
               [&](auto value) {
                   const std::string group = textOf(value(1));
                   const std::int32_t level = wholeOf(value(2));
                   partnersByGroup_[group].push_back(wholeOf(value(0)));
                   if (group == "Waldbesitzer") ownersByLevel_[level].push_back(wholeOf(value(0)));
                   if (group == "Unternehmer" && level != 0) contractorsOfLevels_.push_back(wholeOf(value(0)));
               });
}

const CodeTable& ReceiptKeys::table(std::string_view name) const
{
    const auto found = tables_.find(name);
    if (found == tables_.end()) failNotFound("The table", name);
    return found->second;
}

const ForestPlace& ReceiptKeys::place(Random& random) const
{
    return random.pick(places_);
}

const ForestPlace& ReceiptKeys::placeOfLevel(std::int32_t level, Random& random) const
{
    const auto found = placesByLevel_.find(level);
    return found == placesByLevel_.end() ? place(random) : places_[random.pick(found->second)];
}

std::int32_t ReceiptKeys::levelAbove(std::int32_t level, std::size_t groups) const
{
    const auto own = codeOfLevel_.find(level);
    if (own == codeOfLevel_.end()) return 0;
    std::string code = own->second;
    const std::size_t digits = std::min(2 * groups, code.size());
    code.replace(code.size() - digits, digits, digits, '0');
    const auto found = levelOfCode_.find(code);
    return found == levelOfCode_.end() ? 0 : found->second;
}

std::int32_t ReceiptKeys::costCentre(std::int32_t level, Random& random) const
{
    return pickOfLevel(costCentresByLevel_, level, random);
}

std::int32_t ReceiptKeys::owner(std::int32_t level, Random& random) const
{
    return pickOfLevel(ownersByLevel_, level, random);
}

std::int32_t ReceiptKeys::contractor(Random& random) const
{
    constexpr std::uint32_t perMilleOfLevels = 700;
    const bool belongsToLevel = random.chance(perMilleOfLevels);
    return belongsToLevel && !contractorsOfLevels_.empty() ? random.pick(contractorsOfLevels_)
                                                           : partner("Unternehmer", random);
}

std::int32_t ReceiptKeys::partner(std::string_view group, Random& random) const
{
    const auto found = partnersByGroup_.find(group);
    if (found == partnersByGroup_.end()) failNotFound("A partner of the group", group);
    return random.pick(found->second);
}

Date laterDay(Date date, std::int32_t days, Date lastDay)
{
    const Date later{date.days + days};
    return later > lastDay ? Date{} : later;
}

Date dateOfHead(std::int32_t index, std::int32_t count, Date lastDay, Random& random)
{
    constexpr double daysOfData = 3.0 * 365.0;
    constexpr double freeDaysBefore = 45.0;
    constexpr double freeDaysAfter = 5.0;
    const double part = (index + random.unit()) / count * (daysOfData - freeDaysBefore - freeDaysAfter);
    return Date{lastDay.days - daysOfData + freeDaysBefore + static_cast<std::int32_t>(part)};
}

} // namespace tamarok::database
