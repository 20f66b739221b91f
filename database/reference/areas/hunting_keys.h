#pragma once

#include <map>
#include <string>
#include <vector>

#include "area_keys.h"

/// The rows that records of hunting refer to.
namespace tamarok::database {

/// A hunting district with its organisational units.
struct HuntingDistrict {
    std::int32_t id;
    std::int32_t level;  ///< ACCESS_LEVELS.ID of its own unit
    std::int32_t office; ///< ACCESS_LEVELS.ID of the forest office above
};

struct HuntingKeys {
    /// Reads the keys. Errors: provider failures.
    explicit HuntingKeys(ado::Connection& connection);

    /// Returns a forest location of the unit, Null where it has none.
    Variant pickPlace(Random& random, std::int32_t level) const;

    std::vector<HuntingDistrict> districts;                   ///< those in use
    std::vector<std::int32_t> hunters;                        ///< PERSONAL.ID_PERSONAL of natural persons
    std::vector<std::int32_t> buyers;                         ///< PERSONAL.ID_PERSONAL of buyers of venison
    std::map<std::int32_t, std::vector<std::int32_t>> places; ///< WALDORT.ID_WALDORT by ACCESS_LEVELS.ID
};

/// A hunting year: 1 April to 31 March.
struct HuntingYear {
    std::string name; ///< such as "2024/25"
    Date first;
    Date last;
};

/// Returns the hunting year of a day.
HuntingYear huntingYearOf(Date day);

} // namespace tamarok::database
