#include "dialect/sql_template.h"

namespace tamarok::dialect {

namespace {

/// Appends the value of a placeholder: the caller's values first, then the words of the dialect. Error 5 for an
/// unknown name.
void appendPlaceholder(std::string& out, const Placeholder& placeholder, const Dialect& dialect,
                       PlaceholderValues& values)
{
    if (values.appendValue(out, placeholder)) return;
    const auto* const word = std::ranges::find(words, placeholder.name, &Word::name);
    if (word == std::end(words)) {
        throw Error{errors::invalidArgument, "No placeholder has the name \"" + std::string{placeholder.name} + "\"."};
    }
    out += dialect.*(word->text);
}

/// Evaluates the condition of a choice: the dialect, a comparison with a text, or "is not empty".
bool holds(const Piece& piece, const Dialect& dialect, PlaceholderValues& values)
{
    if (piece.placeholder->name == oracleCondition) return dialect.isOracle;
    std::string value;
    appendPlaceholder(value, *piece.placeholder, dialect, values);
    return piece.choice->comparedTo ? value == *piece.choice->comparedTo : !value.empty();
}

/// The values of a list, by name; none of them takes an argument.
class ListedValues final : public PlaceholderValues {
public:
    explicit ListedValues(std::initializer_list<NamedValue> values) noexcept : values_{values.begin(), values.size()} {}

    bool appendValue(std::string& out, const Placeholder& placeholder) override
    {
        const auto value = std::ranges::find(values_, placeholder.name, &NamedValue::name);
        if (value == values_.end()) return false;
        out += value->text;
        return true;
    }

private:
    std::span<const NamedValue> values_;
};

} // namespace

void appendFilled(std::string& out, std::string_view sqlTemplate, const Dialect& dialect, PlaceholderValues& values)
{
    while (!sqlTemplate.empty()) {
        // Only the template that a choice takes is filled, so that the other one may name values without a meaning
        // here.
        const Piece piece = takePiece(sqlTemplate);
        out += piece.text;
        if (piece.choice) {
            const bool taken = holds(piece, dialect, values);
            appendFilled(out, taken ? piece.choice->whenTrue : piece.choice->whenFalse, dialect, values);
        } else if (piece.placeholder) {
            appendPlaceholder(out, *piece.placeholder, dialect, values);
        }
    }
}

std::string fill(std::string_view sqlTemplate, const Dialect& dialect, std::initializer_list<NamedValue> values)
{
    ListedValues listed{values};
    std::string out;
    appendFilled(out, sqlTemplate, dialect, listed);
    return out;
}

} // namespace tamarok::dialect
