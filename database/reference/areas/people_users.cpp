#include <array>
#include <string>
#include <vector>

#include "areas/people_rows.h"
#include "areas/people_writers.h"

namespace tamarok::database::people {
namespace {

using ado::DataType;

constexpr std::array userColumns{
    BulkInsert::Column{"ID", DataType::Integer},
    BulkInsert::Column{"NAME"},
    BulkInsert::Column{"LONGNAME"},
    BulkInsert::Column{"ID_ACCESS_LEVELS", DataType::Integer},
    BulkInsert::Column{"DISABLE", DataType::Boolean},
};

// None of these surnames belongs to a user who signs in.
constexpr std::array surnames{"Aschauer", "Brenner",  "Danner",   "Ertl",   "Fasching", "Grill",       "Hausmann",
                              "Jandl",    "Kirchner", "Lorenz",   "Mader",  "Neuhold",  "Pfister",     "Rauch",
                              "Sailer",   "Trattner", "Urban",    "Vogler", "Wieser",   "Zangerl",     "Amann",
                              "Burger",   "Daxner",   "Enzinger", "Frank",  "Gerstl",   "Hinterholzer"};
constexpr std::array firstNames{"Agnes",  "Bernd",  "Cornelia", "Dominik", "Edith",  "Florian", "Gabriele", "Heinz",
                                "Irene",  "Jakob",  "Karin",    "Leo",     "Monika", "Niklas",  "Olga",     "Philipp",
                                "Renate", "Sabine", "Theresa",  "Ulrich",  "Verena", "Werner",  "Xaver"};

constexpr int propertyCount = 60;

/// ID_USERS and every flag, all of them 0.
void writeProperties(ado::Connection& connection, std::int32_t first, std::int32_t last)
{
    std::vector<std::string> names{"ID_USERS"};
    names.reserve(propertyCount + 1);
    for (int number = 1; number <= propertyCount; ++number)
        names.push_back("B" + paddedNumber(number, 3));
    std::vector<BulkInsert::Column> columns;
    columns.reserve(names.size());
    for (const std::string& name : names)
        columns.push_back({name, columns.empty() ? DataType::Integer : DataType::Boolean});
    BulkInsert properties{connection, "USERS_PROPERTY", columns};
    for (std::size_t column = 1; column < columns.size(); ++column)
        properties[column] = false;
    for (std::int32_t id = first; id <= last; ++id) {
        properties[0] = id;
        properties.insert();
    }
}

} // namespace

// Names and surnames are drawn; the sign-in name tells that the account belongs to a branch office.
void writeUsers(ado::Connection& connection, const ReferenceOptions& options)
{
    Random random = randomOf(options, Stream::users);
    const std::int32_t first = idsOf(connection, "SELECT MAX(ID) FROM USERS").front() + 1;
    const std::vector<std::int32_t> levels =
        idsOf(connection, "SELECT ID FROM ACCESS_LEVELS WHERE RIGHT(ACCESS_LEVELS,2) <> '00' ORDER BY ID");
    BulkInsert users{connection, "USERS", userColumns};
    for (std::int32_t id = first; id <= options.records; ++id) {
        std::string name{random.pick(firstNames)};
        name.append(" ").append(random.pick(surnames));
        insertRow(users, {id, "AUSSENSTELLE" + paddedNumber(id, 4), name, random.pick(levels), true});
    }
    writeProperties(connection, first, options.records);
}

} // namespace tamarok::database::people
