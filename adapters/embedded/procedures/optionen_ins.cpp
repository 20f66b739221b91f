#include "procedures/optionen_ins.h"

#include <array>
#include <string>

#include "failures.h"

#include "tamarok/convert.h"
#include "tamarok/text.h"

namespace tamarok::embedded {

namespace {

struct ValueColumn {
    std::string_view name;
    std::string_view value; ///< expression that converts the text
};

/// By kind, from 1 on.
constexpr std::array valueColumns{
    ValueColumn{"TEXT_VALUE", "?"},
    ValueColumn{"NUMBER_VALUE", "CAST(? AS bigint)"},
    ValueColumn{"DOUBLE_VALUE", "CAST(? AS float)"},
    ValueColumn{"DATE_VALUE", "CAST(? AS datetime)"},
};

/// The column for a kind. Error 50000, the number of user-defined errors, for an unknown one.
const ValueColumn& columnOf(const Variant& kind)
{
    const std::int64_t number = kind.isNull() ? 0 : convert::toLongLong(kind);
    if (number < 1 || number > static_cast<std::int64_t>(valueColumns.size())) {
        throw failure(native::userDefined, "tmk_OPTIONEN_INS: value kind " + std::to_string(number) +
                                               " is not 1 (text), 2 (number), 3 (double) or 4 (date).");
    }
    return valueColumns[static_cast<std::size_t>(number - 1)];
}

/// A date text is the regional text of the session's machine, which is this one: the platform of the thread knows its
/// order of day, month and year and its names of months. What it cannot read, such as "20240305", is left to the
/// database's conversion.
Variant dateFor(std::string_view text)
{
    const Variant given{text};
    return convert::isDate(given) ? Variant{convert::toDate(given)} : given;
}

/// The value as the column takes it: a text of blanks counts as empty except in the text column.
Variant valueFor(const ValueColumn& column, const Variant& value)
{
    if (value.isNull() || value.isEmpty()) {
        return Null{};
    }
    if (!value.isString()) {
        return value;
    }
    const bool text = &column == &valueColumns.front();
    const std::string_view content = text ? std::string_view{value.asString()} : text::trim(value.asString());
    if (content.empty()) {
        return Null{};
    }
    return &column == &valueColumns.back() ? dateFor(content) : Variant{content};
}

/// A condition that is true for exactly this name, whatever the collation of the column makes equal: the number of
/// characters with trailing blanks, and each character by its number.
std::string hasExactly(const std::string& name)
{
    std::string condition = "PROPERTY_ID=? AND LEN(PROPERTY_ID+'.')=" + std::to_string(text::length(name) + 1);
    std::size_t position = 0;
    for (std::size_t offset = 0; offset < name.size();) {
        const auto letter = static_cast<std::uint32_t>(text::decode(name, offset));
        condition +=
            " AND UNICODE(SUBSTRING(PROPERTY_ID," + std::to_string(++position) + ",1))=" + std::to_string(letter);
    }
    return condition;
}

/// Updates the row of the property, or inserts one if there is none. Names are compared exactly, so that a call for
/// "date_to" never touches the row DATE_TO.
void writeProperty(ProcedureScope& scope, std::span<const Variant> arguments)
{
    const Variant& property = arguments[0];
    const ValueColumn& column = columnOf(arguments[1]);
    const std::array sent{valueFor(column, arguments[2]), property};
    const std::string name{column.name};
    const std::string value{column.value};
    const std::string condition = property.isNull() ? "PROPERTY_ID=?" : hasExactly(convert::toText(property));
    const std::int64_t found = scope.execute("UPDATE OPTIONEN SET " + name + "=" + value + " WHERE " + condition, sent);
    if (found == 0) {
        scope.execute("INSERT INTO OPTIONEN(" + name + ",PROPERTY_ID) VALUES(" + value + ",?)", sent);
    }
}

} // namespace

Procedure optionenIns()
{
    return {"tmk_OPTIONEN_INS", {{"PROPERTY"}, {"KIND"}, {"VALUE"}}, &writeProperty};
}

} // namespace tamarok::embedded
