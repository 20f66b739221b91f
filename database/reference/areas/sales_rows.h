#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "areas/area_keys.h"
#include "bulk_insert.h"
#include "random.h"

#include "tamarok/ado.h"
#include "tamarok/date.h"

// What the parts of the sales area share besides areas/area_keys.h: their keys and drawn values.
namespace tamarok::database::sales {

// --- keys ----------------------------------------------------------------------------------------

using Ids = std::vector<std::int32_t>;

/// Returns the names of all contracts by their IDs. Errors: provider failures.
std::vector<std::string> contractNames(ado::Connection& connection);

/// The keys that every part of the area refers to.
struct Keys {
    explicit Keys(ado::Connection& connection);

    Ids partners, customers, owners, carriers, contractors; ///< PERSONAL.ID_PERSONAL
    Ids districts;                                          ///< ACCESS_LEVELS.ID of forest districts
    Ids locations;                                          ///< WALDORT.ID_WALDORT
    Ids users;                                              ///< USERS.ID
    Ids objects, projects, orders;                          ///< OBJEKT, BB_T_PROJEKT_PLANUNG, BB_T_AUFTRAGS_PLANUNG
    std::vector<Ids> freeLists;                             ///< RELTABLE.ID of the ten free lists
};

// --- drawn values --------------------------------------------------------------------------------

/// How many of 1000 rows lack a key that nearly all of them have.
constexpr std::uint32_t fewNulls = 30;

/// `value`, or Null in `nullPerMille` of 1000 cases.
Variant orNull(Random& random, std::uint32_t nullPerMille, Variant value);

/// The year of a day in two digits and a running number, such as "T24-00017".
std::string numberOfYear(std::string_view prefix, Date day, std::int64_t number);

/// Rounds a price to quarters of a euro; at least one quarter.
double quarters(double price);

} // namespace tamarok::database::sales
