#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok_tsql/types.h"
#include "translation/step.h"

#include "tamarok/ado_backend.h"

/// The server's column types: how they look from outside, how their values are read, and the SQLite text that
/// converts a value for storage.
namespace tamarok::embedded {

/// How a stored value of a column becomes a Variant.
enum class Reading : std::uint8_t {
    ByStorage,
    Boolean,
    Integer,
    Long,
    LongLong,
    Double,
    Date,
    TimeOfDay,
    Text,
    Binary
};

/// The columns of a translated query: their description for the caller, and how to read each of them.
struct ResultLayout {
    std::vector<ado::ColumnInfo> columns;
    std::vector<Reading> readings;
};

/// Describes the columns of a query.
ResultLayout layoutOf(const std::vector<ResultColumn>& columns);

/// A name in double quotes, as SQLite text has it.
std::string quoted(std::string_view name);

/// SQLite text that converts a parameter, "?", for storage in a column of `type`.
std::string storageExpression(const tsql::Type& type);

} // namespace tamarok::embedded
