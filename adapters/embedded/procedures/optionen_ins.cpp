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
        throw failure(50000, "tmk_OPTIONEN_INS: value kind " + std::to_string(number) +
                                 " is not 1 (text), 2 (number), 3 (double) or 4 (date).");
    }
    return valueColumns[static_cast<std::size_t>(number - 1)];
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
    return content.empty() ? Variant{Null{}} : Variant{content};
}

/// Updates the row of the property, or inserts one if there is none. The name is compared in upper case, since callers
/// spell it in any case; a new row has it as given.
void writeProperty(ProcedureScope& scope, std::span<const Variant> arguments)
{
    const Variant& property = arguments[0];
    const ValueColumn& column = columnOf(arguments[1]);
    const std::array sent{valueFor(column, arguments[2]), property};
    const std::string name{column.name};
    const std::string value{column.value};
    const std::int64_t found =
        scope.execute("UPDATE OPTIONEN SET " + name + "=" + value + " WHERE UPPER(PROPERTY_ID)=UPPER(?)", sent);
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
