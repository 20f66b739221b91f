#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "list_type.h"

#include "tamarok/tmkvar.h"

namespace tamarok::catalogue {

/// The expression of a column in a detail list, "" for an id without a row.
std::string detailText(const ListType& type, std::int16_t id, std::string_view versionKey, const TmkVar& session);

/// The expression of a column in the SELECT clause of an aggregate list: a measure is summed.
/// The version key is converted to upper case first.
std::string aggregateText(const ListType& type, std::int16_t id, std::string_view versionKey, const TmkVar& session);

/// The expression of a column in the GROUP BY clause of an aggregate list, "" unless the column is a key.
/// The version key is converted to upper case first.
std::string groupText(const ListType& type, std::int16_t id, std::string_view versionKey, const TmkVar& session);

} // namespace tamarok::catalogue
