#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "areas/people_rows.h"

/// The workers and the keys to which their work is charged.
namespace tamarok::database::people {

/// A wage group of the workers with its present wage per hour.
struct WageGroup {
    std::string_view name;
    double rate;
};

/// The groups from the lowest wage to the highest.
std::span<const WageGroup> wageGroups() noexcept;

struct Worker {
    std::int32_t id;
    std::int32_t level;
    double rate; ///< wage per hour of the worker's group
};

/// A key with the key that follows from it: a kind of service with its product, a planned order with its project, a
/// forest location or cost centre with its level. The second is 0 for none.
struct KeyPair {
    std::int32_t id;
    std::int32_t other;
};

struct WorkKeys {
    std::vector<Worker> workers;
    std::vector<std::int32_t> districts;
    std::vector<KeyPair> services;
    std::vector<KeyPair> orders;
    std::vector<KeyPair> places;
    std::vector<KeyPair> costCentres;
    std::vector<std::int32_t> costTypes;
    std::vector<std::int32_t> methods;
    std::vector<std::int32_t> procedures;
    std::vector<std::int32_t> objects;
    std::vector<std::int32_t> facilities;
    std::vector<std::int32_t> marks;
    std::vector<std::int32_t> owners;
    std::vector<std::int32_t> users;
};

/// Reads the keys. Errors: provider failures.
WorkKeys readWorkKeys(ado::Connection& connection);

/// A pair whose second key is `other`, or any pair where there is none.
const KeyPair& pickOf(Random& random, const std::vector<KeyPair>& pairs, std::int32_t other);

/// Null for 0.
Variant keyOf(std::int32_t id);

/// Keys of WARENEINHEIT.
inline constexpr std::int32_t cubicMetres = 1;
inline constexpr std::int32_t pieces = 3;

/// Whether a product is harvested timber, which is measured in solid cubic metres; other work counts pieces.
bool isHarvest(std::int32_t product);

} // namespace tamarok::database::people
