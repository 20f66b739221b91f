#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "areas/area_keys.h"
#include "bulk_insert.h"
#include "random.h"
#include "tamarok_database/reference_options.h"

#include "tamarok/ado.h"
#include "tamarok/date.h"

/// What the writers of partners, machines, wages and services share.
namespace tamarok::database::people {

/// The random streams of the area; each writer draws from its own.
enum class Stream : std::uint64_t { users, partners, owners, machines, groups, wageEntry, services, forestWages };

Random randomOf(const ReferenceOptions& options, Stream stream);

/// The value with that many decimals, halves away from zero.
double rounded(double value, int decimals = 2);

/// Months of the data: the month of the base date and the 35 before it.
inline constexpr std::int32_t monthCount = 36;

struct Month {
    std::int32_t year;
    std::int32_t month;
};

/// @param index  0 for the first month to monthCount - 1 for the month of the base date
Month monthAt(const ReferenceOptions& options, std::int32_t index);

/// Index of the month of a record, so that the records cover all months in the order of their numbers.
/// @param record  1 to `options.records`
std::int32_t monthIndexOf(const ReferenceOptions& options, std::int32_t record);

/// Last day of the month, not after the base date.
Date lastDayOf(const ReferenceOptions& options, Month month);

/// Monday to Friday of the month, not after the base date.
Date workingDay(const ReferenceOptions& options, Month month, Random& random);

/// A day up to that many days before the base date. @param days at least 1
Date dayBefore(const ReferenceOptions& options, Random& random, std::int32_t days);

/// How many of 1000 optional keys of people's records are Null.
inline constexpr std::uint32_t nullsPerMille = 30;

/// The value in `perMille` of 1000 cases, else Null.
Variant sometimes(Random& random, std::uint32_t perMille, const Variant& value);

/// One parameterised UPDATE statement that runs for many rows, found by a key of whole numbers.
class RowUpdate {
public:
    /// @param connection  must outlive the object
    RowUpdate(ado::Connection& connection, std::string_view table, std::span<const BulkInsert::Column> columns,
              std::string_view keyColumn);

    /// @param values  one for each column, in their order. Errors: provider failures.
    void run(const std::vector<Variant>& values, std::int32_t key);

private:
    ado::Command command_;
};

} // namespace tamarok::database::people
