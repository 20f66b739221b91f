#pragma once

#include <cstdint>
#include <span>
#include <sqlite3.h>
#include <string>
#include <string_view>
#include <vector>

#include "translation/step.h"

#include "tamarok/ado_backend.h"

/// Values between SQLite's storage and the component interface.
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

/// What is known of the columns of a translated query.
struct ResultLayout {
    std::vector<ado::ColumnInfo> columns;
    std::vector<Reading> readings;
};

ResultLayout layoutOf(const std::vector<ResultColumn>& columns);

/// Value of a column of the row that `statement` stands on.
/// Error 0x80004005 for a stored date that is none, 6 for a whole number beyond its column's type.
Variant readValue(sqlite3_stmt* statement, int column, Reading reading);

/// Point in time out of its stored form; false where `text` is of another form.
bool parseStoredDate(std::string_view text, Date& date) noexcept;
/// The stored form, 23 characters. Error 6 outside the range of dates.
std::string storedDate(Date date);

/// Text of a column, empty for Null.
std::string columnText(sqlite3_stmt* statement, int column);

/// True if every parameter can be bound for a column of its type as it is: no conversion, no check.
/// `types` and `wanted` (the parameter's index) go by the "?" of the statement.
bool lieAsGiven(std::span<const tsql::Type> types, std::span<const std::int32_t> wanted,
                std::span<const ado::Parameter> parameters);

void bindText(sqlite3_stmt* statement, int position, std::string_view text);
/// Binds a value as it is stored. Error 13 for an object or an array.
void bindValue(sqlite3_stmt* statement, int position, const Variant& value);
/// The parameter of that index. Error 0x80040E14 where none was given.
const ado::Parameter& parameterAt(std::span<const ado::Parameter> parameters, std::int32_t index);
/// A parameter's value converted to its type.
Variant typedParameter(const ado::Parameter& parameter);
/// Binds the parameters that a translated text wants, `wanted` naming one for each "?".
/// A value is converted to its parameter's type first. Error 0x80040E14 where one is missing.
void bindParameters(sqlite3_stmt* statement, std::span<const std::int32_t> wanted,
                    std::span<const ado::Parameter> parameters);

/// A name in double quotes for SQLite text.
std::string quoted(std::string_view name);

/// SQLite text that converts a parameter, "?", for the storage in a column of `type`.
std::string storageExpression(const tsql::Type& type);

} // namespace tamarok::embedded
