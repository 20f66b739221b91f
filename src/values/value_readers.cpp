#include <array>
#include <string_view>
#include <utility>

#include "given_value.h"

#include "tamarok/comm_get.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

// Readers of one value. They differ in their result for Null only.

namespace tamarok {
namespace {

constexpr std::string_view singleBlank = " ";

/// Returns the number of a text that is written as SQL and files have it, with ".".
double plainNumber(const Variant& value)
{
    if (!value.isString()) return convert::toDouble(value);
    const std::optional<double> number = convert::parsePlainNumber(text::trim(value.asString()));
    if (!number)
        throw Error{errors::typeMismatch, "Type mismatch: \"" + value.asString() + "\" is no plain number.",
                    "Comm_Get.Get_Number"};
    return *number;
}

/// Removes the blanks at both ends. Does nothing to a text without such blanks.
void trimInPlace(std::string& content)
{
    const std::string_view wanted = text::trim(content);
    if (wanted.size() == content.size()) return;
    const auto leading = static_cast<std::size_t>(wanted.data() - content.data());
    content.resize(leading + wanted.size());
    content.erase(0, leading);
}

/// Returns a value that is no longer needed as text, a text without a copy.
std::string textOf(Variant&& value)
{
    if (!value.isString()) return convert::toText(value);
    return std::move(value).asString();
}

// With one result the text is moved once; a second move makes it 1.04 times as long (bench:
// getStringOfField/long_text).
std::string trimmedTextOf(Variant&& value)
{
    std::string content = textOf(std::move(value));
    trimInPlace(content);
    return content;
}

std::string takeText(Variant&& value, bool blankForNull, bool trimmed)
{
    if (value.isNull()) return std::string{blankForNull ? singleBlank : ""};
    return trimmed ? trimmedTextOf(std::move(value)) : textOf(std::move(value));
}

} // namespace

std::string Comm_Get::Get_String(Variant value, bool NoSpaces, bool NoTrim) const
{
    if (value.isObject()) return takeText(defaultValueOf(value.asObject()), !NoSpaces, !NoTrim);
    return takeText(std::move(value), !NoSpaces, !NoTrim);
}

std::string Comm_Get::Get_Number(const Variant& value) const
{
    const GivenValue given{value};
    if (given->isNull()) return std::string{singleBlank};
    // A 64-bit number may have more than the 15 digits that a double keeps.
    if (given->kind() == Variant::Kind::LongLong) return std::to_string(given->asLongLong());
    return convert::toPlainText(plainNumber(*given));
}

double Comm_Get::Get_Number_N(const Variant& value) const
{
    const GivenValue given{value};
    return given->isNull() ? 0.0 : convert::toDouble(*given);
}

Date Comm_Get::Get_Date_N(const Variant& value) const
{
    return convert::toDate(*GivenValue{value});
}

Date Comm_Get::Get_Datum(const Variant& value) const
{
    const GivenValue given{value};
    return given->isNull() ? Platform::today() : convert::toDate(*given);
}

std::string Comm_Get::Get_Val(const Variant& value) const
{
    const GivenValue given{value};
    return given->isNull() ? std::string{} : convert::toText(*given);
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
    // The words for true collapse to one; the words for false stay as they are. Required by the contract.
    static constexpr std::array<std::string_view, 3> wordsForTrue = {"TRUE", "WAHR", "VRAI"};
    const std::string upper = text::toUpper(text);
    for (const std::string_view word : wordsForTrue)
        if (upper == word) return std::string{wordsForTrue.front()};
    return text;
}

} // namespace tamarok
