#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "areas/people_rows.h"
#include "areas/people_work.h"
#include "areas/people_writers.h"

#include "tamarok/convert.h"

namespace tamarok::database::people {
namespace {

/// Rates rise once a year, on 1 January. The first year lies before the data, so that each month has a rate.
constexpr std::int32_t yearsOfRates = 7;
constexpr double yearlyRise = 0.03;

/// Day and share of the present rate of a year of rates. @param age  0 for the year of the last day of the data
struct RateYear {
    Date from;
    double share;
};
RateYear rateYear(const ReferenceOptions& options, std::int32_t age)
{
    return {makeDate(toCivil(options.baseDate).year - age, 1, 1), 1.0 - yearlyRise * age};
}

constexpr std::array historyColumns{textColumn("TABLE_COLUMN"), wholeColumn("TABLE_ID"), dayColumn("DATUM"),
                                    numberColumn("RATE"), textColumn("TEXT")};
constexpr std::array groupColumns{textColumn("NAME"), dayColumn("DATEWHILE"), numberColumn("BETRAG")};

void writeWageGroups(ado::Connection& connection, const ReferenceOptions& options)
{
    BulkInsert row{connection, "LOHNGRUPPE", groupColumns};
    for (const WageGroup& group : wageGroups()) {
        for (std::int32_t age = yearsOfRates; age-- > 0;) {
            const RateYear year = rateYear(options, age);
            insertRow(row, {group.name, year.from, rounded(group.rate * year.share)});
        }
    }
}

void writeWageTypes(ado::Connection& connection, const ReferenceOptions& options, BulkInsert& history)
{
    for (const std::vector<Variant>& type :
         rowsOf(connection, "SELECT ID, SATZ FROM LOHNARTEN WHERE SLA = 1 AND SATZ IS NOT NULL ORDER BY ID")) {
        for (std::int32_t age = yearsOfRates; age-- > 0;) {
            const RateYear year = rateYear(options, age);
            const double rate = rounded(convert::toDouble(type.at(1)) * year.share);
            insertRow(history, {"LOHNARTEN.SATZ", type.at(0), year.from, rate, Null{}});
        }
    }
}

/// Returns the group below, "" for the lowest and for an unknown one.
std::string_view groupBelow(std::string_view name)
{
    std::string_view below;
    for (const WageGroup& group : wageGroups()) {
        if (group.name == name) return below;
        below = group.name;
    }
    return {};
}

/// A worker above the lowest group came into the present one up to three years ago.
void writeWorkersGroups(ado::Connection& connection, const ReferenceOptions& options, BulkInsert& history)
{
    constexpr std::string_view column = "PERSONAL.LOHNGRUPPE";
    const Date begin = rateYear(options, yearsOfRates - 1).from;
    for (const std::vector<Variant>& worker :
         rowsOf(connection, "SELECT ID_PERSONAL, LOHNGRUPPE FROM PERSONAL WHERE LOHNGRUPPE IS NOT NULL ORDER BY 1")) {
        const std::string_view below = groupBelow(worker.at(1).asString());
        if (!below.empty()) insertRow(history, {column, worker.at(0), begin, Null{}, below});
        const std::int32_t age = convert::toLong(worker.at(0)) % 4;
        const Date raised = below.empty() ? begin : rateYear(options, age).from;
        insertRow(history, {column, worker.at(0), raised, Null{}, worker.at(1)});
    }
}

/// Drivers of heavy machines have the higher wage.
void writeDriversWages(ado::Connection& connection)
{
    connection.Execute("INSERT INTO MASCHINENBUCH (ID,NUMMER,BEZEICHNUNG,SATZ) SELECT ID,NUMMER,BEZEICHNUNG,"
                       "(CASE WHEN ISNULL(LEISTUNG_KW,0) > 120 THEN 18.6 ELSE 17.35 END) FROM SCH_MASCHINENBUCH");
}

} // namespace

void writeWageRates(ado::Connection& connection, const ReferenceOptions& options)
{
    writeWageGroups(connection, options);
    BulkInsert history{connection, "ONETODATE", historyColumns};
    writeWageTypes(connection, options, history);
    writeWorkersGroups(connection, options, history);
    writeDriversWages(connection);
}

} // namespace tamarok::database::people
