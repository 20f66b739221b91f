#pragma once

#include <cstdint>
#include <span>
#include <sqlite3.h>
#include <string_view>

#include "tamarok/ado_backend.h"

/// Binds values to the parameters of a SQLite statement.
namespace tamarok::embedded {

/// Binds a text, which SQLite copies. @param position from 1
void bindText(sqlite3_stmt* statement, int position, std::string_view text);

/// Binds a value in its stored form. Error 13 for an object or an array. @param position from 1
void bindValue(sqlite3_stmt* statement, int position, const Variant& value);

/// The parameter of that index, counted from 0. Error 0x80040E14 if the caller gave none.
const ado::Parameter& parameterAt(std::span<const ado::Parameter> parameters, std::int32_t index);

/// True if the parameter's value has its declared type already.
bool hasDeclaredType(const ado::Parameter& parameter);

/// A parameter's value, converted to its declared type. Error 13 or 6 if that fails.
Variant typedParameter(const ado::Parameter& parameter);

/// Binds the parameters of a translated text, each converted to its declared type.
/// @param wanted  for each "?" of the text, the index of its parameter
void bindParameters(sqlite3_stmt* statement, std::span<const std::int32_t> wanted,
                    std::span<const ado::Parameter> parameters);

} // namespace tamarok::embedded
