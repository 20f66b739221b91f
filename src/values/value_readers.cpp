#include <array>
#include <string_view>
#include <utility>

#include "field_value.h"

#include "tamarok/comm_get.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

namespace tamarok {
namespace {

constexpr std::string_view singleBlank = " ";

/// Number of a text that is written as SQL and files have it; the regional settings do not count.
double plainNumber(const Variant& value)
{
    if (!value.isString()) return convert::toDouble(value);
    const std::optional<double> number = convert::parsePlainNumber(text::trim(value.asString()));
    if (!number)
        throw Error{errors::typeMismatch, "Type mismatch: \"" + value.asString() + "\" is no plain number.",
                    "Comm_Get.Get_Number"};
    return *number;
}

/// Takes the blanks off both ends, in place.
void takeBlanksOff(std::string& content)
{
    const std::string_view wanted = text::trim(content);
    if (wanted.size() != content.size()) content.assign(wanted);
}

/// The text of a value that is given up; every list reads its texts here. A long text is taken over, a
/// short one copied, since it is nothing but its characters.
std::string textOf(Variant&& value, bool untrimmed)
{
    constexpr std::size_t shortText = 15;
    if (value.isString()) [[likely]]
        if (const std::string_view text = value.asString(); text.size() <= shortText)
            return std::string{untrimmed ? text : text::trim(text)};
    std::string content = value.isString() ? std::move(value).asString() : convert::toText(value);
    if (!untrimmed) takeBlanksOff(content);
    return content;
}

std::string textOrBlank(Variant&& value, bool withoutBlank, bool untrimmed)
{
    if (value.isNull()) return withoutBlank ? std::string{} : std::string{singleBlank};
    return textOf(std::move(value), untrimmed);
}

} // namespace

std::string Comm_Get::Get_String(Variant value, bool NoSpaces, bool NoTrim) const
{
    if (value.isObject()) return textOrBlank(valueOfField(value.asObject()), NoSpaces, NoTrim);
    return textOrBlank(std::move(value), NoSpaces, NoTrim);
}

std::string Comm_Get::Get_Number(const Variant& value) const
{
    const FieldValue field{value};
    const Variant& content = field.content();
    if (content.isNull()) return std::string{singleBlank};
    switch (content.kind()) {
    case Variant::Kind::LongLong: return std::to_string(content.asLongLong()); // may have more than 15 digits
    default: return convert::toPlainText(plainNumber(content));
    }
}

double Comm_Get::Get_Number_N(const Variant& value) const
{
    const FieldValue field{value};
    return field.content().isNull() ? 0.0 : convert::toDouble(field.content());
}

Date Comm_Get::Get_Date_N(const Variant& value) const
{
    return convert::toDate(FieldValue{value}.content());
}

Date Comm_Get::Get_Datum(const Variant& value) const
{
    const FieldValue field{value};
    return field.content().isNull() ? Platform::today() : convert::toDate(field.content());
}

std::string Comm_Get::Get_Val(const Variant& value) const
{
    const FieldValue field{value};
    return field.content().isNull() ? std::string{} : convert::toText(field.content());
}

std::string Comm_Get::Get_Key(std::string_view strValue) const
{
    if (text::length(strValue) <= 1) return {};
    const std::size_t prefixEnd = text::find(strValue, "R");
    return std::string{text::mid(strValue, prefixEnd + 1)};
}

std::string Comm_Get::Get_Text(std::string_view column, ado::Recordset& tmpRecordSet) const
{
    const Variant value = tmpRecordSet.Fields().Item(column).Value();
    if (value.isNull()) return {};
    std::string text = convert::toText(value);
    if (text::trim(text).empty()) return {};
    static constexpr std::array<std::string_view, 3> spellingsOfTrue = {"TRUE", "WAHR", "VRAI"};
    const std::string upper = text::toUpper(text);
    for (const std::string_view spelling : spellingsOfTrue)
        if (upper == spelling) return std::string{spellingsOfTrue.front()};
    return text;
}

} // namespace tamarok
