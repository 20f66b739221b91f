#include "find_criterion.h"

#include <optional>

#include "ado_failure.h"

#include "tamarok/convert.h"
#include "tamarok/date.h"
#include "tamarok/text.h"

// The criterion is parsed from left to right: column, operator, value. Texts are compared in upper case.

namespace tamarok::ado {

struct FindCriterion::Spelling {
    std::string_view text;
    Operator meaning;
};

// A longer operator precedes the shorter one that it begins with.
const FindCriterion::Spelling FindCriterion::spellings[]{
    {"<>", Operator::NotEqual}, {"<=", Operator::LessOrEqual}, {">=", Operator::GreaterOrEqual},
    {"=", Operator::Equal},     {"<", Operator::Less},         {">", Operator::Greater},
    {"LIKE ", Operator::Like},  {"LIKE'", Operator::Like},
};

namespace {

template <class T>
int order(const T& a, const T& b)
{
    return a < b ? -1 : (b < a ? 1 : 0);
}

/// Returns the number of a numeric value, nothing for any other kind.
std::optional<double> numberOf(const Variant& value)
{
    switch (value.kind()) {
    case Variant::Kind::Boolean:
    case Variant::Kind::Integer:
    case Variant::Kind::Long:
    case Variant::Kind::LongLong:
    case Variant::Kind::Double: return convert::toDouble(value);
    default: return std::nullopt;
    }
}

/// Reads a date of the criterion, in ISO or regional form.
std::optional<Date> readDate(std::string_view text)
{
    return convert::parseDate(text, Platform::current().regional);
}

} // namespace

FindCriterion::FindCriterion(std::string_view criterion) : criterion_{criterion}
{
    readValue(text::trim(readOperator(text::trimLeft(readColumn(text::trim(criterion))))));
}

void FindCriterion::refuse(std::string_view why) const
{
    fail(errors::invalidArgument, recordsetSource, "Find: \"" + criterion_ + "\" " + std::string{why} + ".");
}

// Each reader returns the rest of the criterion after what it has read.

std::string_view FindCriterion::readColumn(std::string_view rest)
{
    const bool bracketed = rest.starts_with('[');
    // A name with blanks or operators in it stands in brackets; any other ends at a blank or an operator.
    const std::size_t end = bracketed ? rest.find(']') : rest.find_first_of(" <>=");
    if (end == std::string_view::npos || end == 0) refuse("has no column name and operator");
    column_ = bracketed ? rest.substr(1, end - 1) : rest.substr(0, end);
    return rest.substr(bracketed ? end + 1 : end);
}

std::string_view FindCriterion::readOperator(std::string_view rest)
{
    for (const Spelling& spelling : spellings) {
        if (!text::startsWithNoCase(rest, spelling.text)) continue;
        operator_ = spelling.meaning;
        // The quote that follows LIKE without a blank belongs to the value.
        return rest.substr(spelling.text.ends_with('\'') ? spelling.text.size() - 1 : spelling.text.size());
    }
    refuse("has no operator out of =, <>, <, <=, >, >=, LIKE behind the column name");
}

void FindCriterion::readValue(std::string_view rest)
{
    // The first character tells the kind of the value: # a date, a quote a text, anything else a number.
    if (rest.empty()) refuse("has no value");
    if (rest.size() >= 2 && rest.front() == '#' && rest.back() == '#' && operator_ != Operator::Like) {
        const auto date = readDate(rest.substr(1, rest.size() - 2));
        if (!date) refuse("has no date between the # marks");
        value_ = *date;
        return;
    }
    if (rest.front() != '\'') {
        const auto number = convert::parsePlainNumber(rest);
        if (!number || operator_ == Operator::Like) refuse("has a value that is neither a text in quotes nor a number");
        value_ = *number;
        return;
    }
    // A text: two single quotes stand for one, a lone one ends it.
    std::string inner;
    std::size_t at = 1;
    for (; at < rest.size(); ++at) {
        if (rest[at] == '\'') {
            if (at + 1 >= rest.size() || rest[at + 1] != '\'') break;
            ++at;
        }
        inner += rest[at];
    }
    if (at + 1 != rest.size()) refuse("has a text whose closing quote is missing or not at the end");
    if (operator_ == Operator::Like)
        readPattern(inner);
    else
        value_ = text::toUpper(inner);
}

void FindCriterion::readPattern(std::string_view pattern)
{
    openStart_ = pattern.starts_with('*');
    if (openStart_) pattern.remove_prefix(1);
    openEnd_ = pattern.ends_with('*');
    if (openEnd_) pattern.remove_suffix(1);
    if (pattern.find('*') != std::string_view::npos) refuse("has a * within the pattern; it may lead or trail");
    value_ = text::toUpper(pattern);
}

bool FindCriterion::holds(const Variant& value) const
{
    // A missing value fulfils no criterion, not even <>.
    if (value.isNull() || value.isEmpty()) return false;
    if (operator_ == Operator::Like)
        return matchesPattern(text::toUpper(value.isString() ? value.asString() : convert::toText(value)));
    return accepts(compare(value));
}

bool FindCriterion::matchesPattern(std::string_view folded) const
{
    const std::string& wanted = value_.asString();
    if (openStart_ && openEnd_) return folded.find(wanted) != std::string_view::npos;
    if (openStart_) return folded.ends_with(wanted);
    if (openEnd_) return folded.starts_with(wanted);
    return folded == wanted;
}

/// Compares by the kind of the column's value; a text of the criterion is converted to it.
int FindCriterion::compare(const Variant& value) const
{
    if (value.isString() && value_.isString()) return order(text::toUpper(value.asString()), value_.asString());
    if (value.kind() == Variant::Kind::Date) {
        if (value_.kind() == Variant::Kind::Date) return order(value.asDate(), value_.asDate());
        if (const auto date = value_.isString() ? readDate(value_.asString()) : std::nullopt)
            return order(value.asDate(), *date);
    } else if (const auto number = numberOf(value)) {
        if (value_.kind() == Variant::Kind::Double) return order(*number, value_.asDouble());
        if (const auto wanted = value_.isString() ? convert::parsePlainNumber(value_.asString()) : std::nullopt)
            return order(*number, *wanted);
    }
    fail(errors::typeMismatch, recordsetSource,
         "Find: the value in \"" + criterion_ + "\" cannot be compared with a " + std::string{name(value.kind())} +
             ".");
}

bool FindCriterion::accepts(int order) const noexcept
{
    switch (operator_) {
    case Operator::Equal: return order == 0;
    case Operator::NotEqual: return order != 0;
    case Operator::Less: return order < 0;
    case Operator::LessOrEqual: return order <= 0;
    case Operator::Greater: return order > 0;
    case Operator::GreaterOrEqual: return order >= 0;
    // Patterns are tested by matchesPattern.
    case Operator::Like: break;
    }
    return false;
}

} // namespace tamarok::ado
