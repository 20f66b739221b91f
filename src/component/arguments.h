#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "tamarok/ado.h"
#include "tamarok/component.h"
#include "tamarok/tmkvar.h"
#include "tamarok/variant.h"

/// Converts one argument to its declared type. Every error names the parameter.
namespace tamarok::component::argument {

bool toBoolean(const Variant& value, const ParameterInfo& parameter);
std::uint8_t toByte(const Variant& value, const ParameterInfo& parameter);
std::int16_t toInteger(const Variant& value, const ParameterInfo& parameter);
std::int32_t toLong(const Variant& value, const ParameterInfo& parameter);
double toDouble(const Variant& value, const ParameterInfo& parameter);
Date toDate(const Variant& value, const ParameterInfo& parameter);
std::string toString(const Variant& value, const ParameterInfo& parameter);
/// The value unchanged, and Empty for a missing argument.
const Variant& toVariant(const Variant& value);
std::vector<std::int16_t> toIntegers(const Variant& value, const ParameterInfo& parameter);
std::vector<std::string> toStrings(const Variant& value, const ParameterInfo& parameter);
/// An array of Strings as the caller receives it back. @param lower  the lower bound that it came with
Variant fromStrings(const std::vector<std::string>& values, std::int32_t lower);

ObjectRef toObject(const Variant& value, const ParameterInfo& parameter);
ado::ConnectionRef toConnection(const Variant& value, const ParameterInfo& parameter);
std::shared_ptr<ado::Recordset> toRecordset(const Variant& value, const ParameterInfo& parameter);
ado::Recordset& requireRecordset(const Variant& value, const ParameterInfo& parameter);
ado::Command& toCommand(const Variant& value, const ParameterInfo& parameter);
TmkVar& toRecord(const Variant& value, const ParameterInfo& parameter);

} // namespace tamarok::component::argument
