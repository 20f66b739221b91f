#include <array>
#include <string>

#include "areas/areas.h"
#include "areas/people_rows.h"

namespace tamarok::database {
namespace {

using ado::DataType;

constexpr std::array levelColumns{
    BulkInsert::Column{"ID", DataType::Integer},
    BulkInsert::Column{"ACCESS_LEVELS"},
    BulkInsert::Column{"NAME"},
    BulkInsert::Column{"NAME_LANG"},
    BulkInsert::Column{"FUNKTIONSBEREICH"},
    BulkInsert::Column{"ID_ACL_0", DataType::Integer},
    BulkInsert::Column{"ID_ACL_1", DataType::Integer},
    BulkInsert::Column{"ID_ACL_2", DataType::Integer},
};

constexpr std::array places{"Tannau",    "Fichtenthal", "Buchbach",  "Eichgraben", "Lärchenfeld", "Föhrenwald",
                            "Erlau",     "Eschenried",  "Ulmitz",    "Lindach",    "Birkenstein", "Weidenau",
                            "Haselbach", "Ebersdorf",   "Hirschegg", "Auerhahn",   "Fuchsberg",   "Dachsgrub",
                            "Rehbach",   "Gamsstein",   "Steinwald", "Moosegg",    "Quellgrund"};

/// A place's name; with a number once all of them are used.
std::string placeName(std::int32_t index)
{
    const auto count = static_cast<std::int32_t>(places.size());
    const std::string name = places.at(static_cast<std::size_t>(index % count));
    return index < count ? name : name + " " + std::to_string(index / count + 1);
}

/// Adds organisations with forest offices, senior offices and districts below them, until there are enough levels.
class LevelWriter {
public:
    LevelWriter(ado::Connection& connection, std::int32_t last) :
        last_{last}, id_{lastId(connection, "ACCESS_LEVELS")}, levels_{connection, "ACCESS_LEVELS", levelColumns}
    {}

    bool isDone() const { return id_ >= last_; }

    /// @param number  group of the code, 1 to 99
    void writeOrganisation(std::int32_t number)
    {
        constexpr std::int32_t offices = 99;
        const std::string code = paddedNumber(number, 2);
        insert(code + "000000", code, "Forstverband " + placeName(number), "Zentrale");
        for (std::int32_t office = 1; office <= offices && !isDone(); ++office)
            writeForestOffice(code + paddedNumber(office, 2), std::to_string(number) + paddedNumber(office, 2));
    }

private:
    static constexpr std::int32_t children = 3;

    void writeForestOffice(const std::string& code, const std::string& name)
    {
        insert(code + "0000", "AFF " + name, "Amt für Forstwirtschaft " + placeName(office_++), "Forstamt");
        const std::int32_t forestOffice = id_;
        for (std::int32_t i = 1; i <= children && !isDone(); ++i)
            writeSeniorOffice(code + paddedNumber(i, 2), name + std::to_string(i), forestOffice);
    }

    void writeSeniorOffice(const std::string& code, const std::string& name, std::int32_t forestOffice)
    {
        const std::string place = placeName(seniorOffice_++);
        insert(code + "00", "OBF " + name, "Oberförsterei " + place, "Oberförsterei");
        const std::int32_t seniorOffice = id_;
        for (std::int32_t i = 1; i <= children && !isDone(); ++i)
            insert(code + paddedNumber(i, 2), "REV " + name + std::to_string(i),
                   "Revier " + place + " " + std::to_string(i), "Revier", id_ + 1, seniorOffice, forestOffice);
    }

    /// Only districts refer to the levels above them: themselves, their senior office and their forest office.
    void insert(const std::string& code, const std::string& name, const std::string& longName, const char* area,
                const Variant& district = Null{}, const Variant& seniorOffice = Null{},
                const Variant& forestOffice = Null{})
    {
        insertRow(levels_, {++id_, code, name, longName, area, district, seniorOffice, forestOffice});
    }

    std::int32_t last_;
    std::int32_t id_;
    BulkInsert levels_;
    std::int32_t office_ = 0;
    std::int32_t seniorOffice_ = 0;
};

} // namespace

void writeLevels(ado::Connection& connection, const ReferenceOptions& options)
{
    // The given levels use the groups 01 and 02.
    constexpr std::int32_t firstOrganisation = 3;
    LevelWriter writer{connection, options.records};
    for (std::int32_t number = firstOrganisation; !writer.isDone(); ++number)
        writer.writeOrganisation(number);
}

} // namespace tamarok::database
