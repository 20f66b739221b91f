#include "column_text.h"

#include "column_values.h"

#include "tamarok/text.h"

namespace tamarok::catalogue {

std::string detailText(const ListType& type, std::int16_t id, std::string_view versionKey, const TmkVar& session)
{
    // A text without placeholders is copied, which takes half the time of filling it
    // (bench: getColumnOfPlainRow, getColumnTypOfPlainRow).
    if (const std::string_view plain = type.plainText(id); !plain.empty()) return std::string{plain};
    const Column* column = type.column(id);
    return column == nullptr ? std::string{} : ColumnValues{session, versionKey, type}.fill(column->text);
}

std::string aggregateText(const ListType& type, std::int16_t id, std::string_view versionKey, const TmkVar& session)
{
    const Column* column = type.column(id);
    std::string expression = detailText(type, id, text::toUpper(versionKey), session);
    if (column == nullptr || !isMeasure(column->aggregate)) return expression;
    return (column->aggregate == Aggregate::sum ? "SUM(" : "MAX(") + expression + ")";
}

std::string groupText(const ListType& type, std::int16_t id, std::string_view versionKey, const TmkVar& session)
{
    const Column* column = type.column(id);
    if (column == nullptr || column->aggregate != Aggregate::none) return {};
    return detailText(type, id, text::toUpper(versionKey), session);
}

} // namespace tamarok::catalogue
