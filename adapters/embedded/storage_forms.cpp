#include "storage_forms.h"

#include <cmath>
#include <limits>
#include <string_view>

#include "parameters.h"

namespace tamarok::embedded {

namespace {

/// Whether a whole number is in the range of a type. A FLOAT holds those of up to 32 bits exactly.
bool isWithin(std::int64_t number, tsql::TypeKind kind)
{
    switch (kind) {
    case tsql::TypeKind::TinyInt: return number >= 0 && number <= UINT8_MAX;
    case tsql::TypeKind::SmallInt: return number >= INT16_MIN && number <= INT16_MAX;
    case tsql::TypeKind::Int: return number >= INT32_MIN && number <= INT32_MAX;
    case tsql::TypeKind::BigInt:
    case tsql::TypeKind::Float: return true;
    default: return false;
    }
}

/// True if the text cannot be too long: a character takes at least one byte.
bool isShortText(std::string_view text, const tsql::Type& type)
{
    switch (type.kind) {
    case tsql::TypeKind::VarChar:
    case tsql::TypeKind::NVarChar: return type.length < 0 || text.size() <= static_cast<std::size_t>(type.length);
    case tsql::TypeKind::Text:
    case tsql::TypeKind::NText: return true;
    default: return false;
    }
}

/// True for a day without time that every date type holds unrounded.
bool isPlainDay(Date date, tsql::TypeKind kind)
{
    constexpr double first = 2.0;    // 1 January 1900
    constexpr double last = 65532.0; // 1 June 2079
    const bool dates = kind == tsql::TypeKind::SmallDateTime || kind == tsql::TypeKind::DateTime ||
                       kind == tsql::TypeKind::Date || kind == tsql::TypeKind::DateTime2;
    return dates && date.days >= first && date.days <= last && date.days == std::trunc(date.days);
}

/// True if a value needs neither conversion nor check for a column of that type. Conservative: returns false when
/// unsure, and the converting statement then decides.
bool isStoredUnchanged(const Variant& value, const tsql::Type& type)
{
    switch (value.kind()) {
    case Variant::Kind::Empty:
    case Variant::Kind::Null: return true;
    case Variant::Kind::Boolean: return type.kind == tsql::TypeKind::Bit;
    case Variant::Kind::Integer: return isWithin(value.asInteger(), type.kind);
    case Variant::Kind::Long: return isWithin(value.asLong(), type.kind);
    case Variant::Kind::LongLong: return type.kind != tsql::TypeKind::Float && isWithin(value.asLongLong(), type.kind);
    case Variant::Kind::Double: return type.kind == tsql::TypeKind::Float && std::isfinite(value.asDouble());
    case Variant::Kind::Date: return isPlainDay(value.asDate(), type.kind);
    case Variant::Kind::String: return isShortText(value.asString(), type);
    case Variant::Kind::Object:
    case Variant::Kind::Array: break;
    }
    return false;
}

} // namespace

/// One parameter that needs a conversion makes the whole row take the converting statement.
bool areStoredUnchanged(std::span<const tsql::Type> types, std::span<const std::int32_t> wanted,
                        std::span<const ado::Parameter> parameters)
{
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const ado::Parameter& parameter = parameterAt(parameters, wanted[i]);
        if (!hasDeclaredType(parameter) || !isStoredUnchanged(parameter.value, types[i])) {
            return false;
        }
    }
    return true;
}

} // namespace tamarok::embedded
