#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "tamarok/date.h"

namespace tamarok::database {

/// Returns the name of a record, such as "B24-000017" for the prefix "B": two digits of the year and a running number.
std::string recordName(std::string_view prefix, Date date, std::int64_t number);

/// Returns the name of a timber list, such as "L24-000017": two digits of the year and a running number.
std::string listName(Date date, std::int64_t number);

/// Returns the name of an invoice or settlement, such as "A1-24-000017": version key, two digits of the
/// year of the delivery and the number of the delivery.
/// @param version  index into profile::versions
std::string documentName(std::size_t version, Date date, std::int64_t number);

} // namespace tamarok::database
