#include "selection_values.h"

#include "dialect/dialect.h"
#include "key_parts.h"

#include "tamarok/comm_set.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

namespace tamarok::selections {
namespace {

constexpr char separator = '\t';

struct MeasurementKind {
    std::string_view code;
    std::string_view filter;
};

/// Which assortments a kind of measurement offers; an empty code offers all of them.
constexpr MeasurementKind measurementKinds[] = {
    {"", ""},
    {"1", " AND RUND = 1"},
    {"2", " AND SCHICHT = 1"},
    {"3", " AND STANG = 1"},
    {"4", " AND GEWICHT = 1"},
    {"5", " AND WERK = 1"},
    {"6", " AND MANTEL = 1"},
};
constexpr std::string_view otherKindFilter = " AND HS IS NOT NULL";

[[noreturn]] void failOnField(std::size_t index)
{
    throw Error{errors::subscriptOutOfRange,
                "The selection reads field " + std::to_string(index) + " (counted from 0), which the vector lacks."};
}

/// The index in {P1}; {MEASURE} without one reads field 0. One digit suffices for the book.
std::size_t indexOf(std::string_view argument)
{
    if (argument.empty()) return 0;
    if (argument.size() > 1 || argument[0] < '0' || argument[0] > '9') {
        throw Error{errors::invalidArgument, "\"" + std::string{argument} + "\" is not the index of a field."};
    }
    return static_cast<std::size_t>(argument[0] - '0');
}

} // namespace

bool FieldVector::has(std::size_t index) const noexcept
{
    return static_cast<std::size_t>(std::ranges::count(text_, separator)) >= index;
}

std::string_view FieldVector::operator[](std::size_t index) const
{
    std::string_view rest = text_;
    for (std::size_t i = 0; i < index; ++i) {
        const std::size_t tab = rest.find(separator);
        if (tab == std::string_view::npos) failOnField(index);
        rest.remove_prefix(tab + 1);
    }
    return rest.substr(0, rest.find(separator));
}

bool SelectionValues::appendValue(std::string& out, const dialect::Placeholder& placeholder)
{
    const auto* const known = std::ranges::find(selectionValueNames, placeholder.name, &SelectionValueName::name);
    if (known == std::end(selectionValueNames)) return false;
    const std::size_t index = indexOf(placeholder.argument);
    switch (known->value) {
    case SelectionValue::field: out += fields_[index]; break;
    case SelectionValue::fieldIfGiven: out += fields_.has(index) ? fields_[index] : std::string_view{}; break;
    case SelectionValue::number: out += numberText(index); break;
    case SelectionValue::capitals: out += text::toUpper(fields_[index]); break;
    case SelectionValue::accessLevels: out += accessLevels(static_cast<std::uint8_t>(index)); break;
    case SelectionValue::assortmentFilter: out += assortmentFilter(index); break;
    case SelectionValue::locationFilter: out += locationFilter(index); break;
    case SelectionValue::key: out += key_; break;
    case SelectionValue::labelGroup: out += groupOf(key_); break;
    case SelectionValue::keyPart: out += partOf(key_); break;
    }
    return true;
}

std::string_view SelectionValues::numberText(std::size_t index) const
{
    const std::string_view field = fields_[index];
    return convert::parseNumber(field, Platform::current().regional) ? field : "0";
}

/// The condition on the access levels of the user in field 0.
/// @param groups  number of two-digit groups to go up from each level
std::string SelectionValues::accessLevels(std::uint8_t groups) const
{
    std::string levelsOfUser{"SELECT ID_SLAVE FROM ONETOMANY WHERE RELATION = 'USERS.ACCESS_LEVELS' AND ID_MASTER = "};
    levelsOfUser.append(fields_[0]);
    return Comm_Set{}.CreateSQL_ACCESS_LEVELS(tmkVar_, levelsOfUser, groups, "True");
}

/// WHERE of the assortments that the kind of measurement in a field offers.
std::string SelectionValues::assortmentFilter(std::size_t index) const
{
    const auto* const kind = std::ranges::find(measurementKinds, fields_[index], &MeasurementKind::code);
    return dialect::fill(" WHERE {ISNULL}(DISABLE,0)=0", dialect::of(tmkVar_))
        .append(kind != std::end(measurementKinds) ? kind->filter : otherKindFilter);
}

/// Comparisons with the levels that a forest location path such as "01/ a" gives. The sixth level takes
/// the rest of the path, slashes included; an empty level is not compared.
std::string SelectionValues::locationFilter(std::size_t index) const
{
    constexpr std::size_t levels = 6;
    std::string filter;
    std::string_view path = fields_[index];
    for (std::size_t level = 1; level <= levels && !path.empty(); ++level) {
        const std::size_t slash = level < levels ? path.find('/') : std::string_view::npos;
        const std::string_view name = text::trim(path.substr(0, slash));
        if (!name.empty()) {
            filter += " AND UPPER(WALDORT.WO" + std::to_string(level) + ") = '" + text::toUpper(name) + "'";
        }
        path = slash == std::string_view::npos ? std::string_view{} : path.substr(slash + 1);
    }
    return filter;
}

std::string fillStatement(const TmkVar& tmkVar, std::string_view key, std::string_view fields,
                          std::string_view statement)
{
    constexpr std::size_t roomForWords = 64;
    std::string text;
    text.reserve(statement.size() + 2 * fields.size() + roomForWords);
    SelectionValues values{tmkVar, key, fields};
    dialect::appendFilled(text, statement, dialect::of(tmkVar), values);
    return text;
}

} // namespace tamarok::selections
