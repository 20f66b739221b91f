#include "sql_literal.h"

#include <array>
#include <cstdio>

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok::com {

namespace {

/// The form that the server reads in every language, to the millisecond.
std::string dateLiteral(Date date)
{
    const CivilTime parts = toCivil(date);
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "'%04d-%02d-%02dT%02d:%02d:%02d.%03d'", parts.year, parts.month, parts.day,
                  parts.hour, parts.minute, parts.second, parts.millisecond);
    return text.data();
}

} // namespace

std::string sqlLiteral(const Variant& value)
{
    switch (value.kind()) {
    case Variant::Kind::Empty:
    case Variant::Kind::Null: return "NULL";
    case Variant::Kind::Boolean: return value.asBoolean() == Boolean{true} ? "1" : "0";
    case Variant::Kind::Integer: return std::to_string(value.asInteger());
    case Variant::Kind::Long: return std::to_string(value.asLong());
    case Variant::Kind::LongLong: return std::to_string(value.asLongLong());
    case Variant::Kind::Double: return convert::toPlainText(value.asDouble());
    case Variant::Kind::Date: return dateLiteral(value.asDate());
    case Variant::Kind::String: return "N'" + text::replaceAll(value.asString(), "'", "''") + "'";
    case Variant::Kind::Object:
    case Variant::Kind::Array: break;
    }
    throw Error{errors::typeMismatch, "Type mismatch: an SQL statement takes no object and no array."};
}

} // namespace tamarok::com
