#include "dialect/dialect.h"
#include "list_types.h"
#include "select_values.h"

#include "tamarok/comm_csel.h"
#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok {

namespace {

using catalogue::Applies;
using catalogue::SelectContext;

/// " WHERE (...)" whether or not the text begins with WHERE, "" for an empty condition.
std::string whereClause(std::string_view where)
{
    std::string_view condition = text::trim(where);
    if (condition.starts_with("WHERE ")) {
        condition = text::trim(condition.substr(5));
    }
    return condition.empty() ? std::string{} : std::string{" WHERE ("}.append(condition).append(")");
}

/// " FROM ..." whether or not the text begins with FROM.
std::string fromClause(std::string_view from)
{
    const std::string_view body = text::trim(from);
    return std::string{body.starts_with("FROM ") ? " " : " FROM "}.append(body);
}

/// The type whose columns CorrectStrSelect composes, or nullptr.
/// Required by the contract: unlike elsewhere the case of the key counts. Do not correct.
const catalogue::ListType* findComposedType(std::string_view key)
{
    const catalogue::ListType* type = catalogue::findListType(key);
    return type != nullptr && type->description().composesSelect && key == type->description().key ? type : nullptr;
}

/// The column as it is selected, or the expression that takes its place.
std::string selectedText(const SelectContext& context, std::int16_t id)
{
    const catalogue::SelectExpression* replacement = context.type.selectExpression(id);
    if (replacement == nullptr || (replacement->applies == Applies::grouped && !context.grouped)) {
        return context.columnText(id);
    }
    catalogue::SelectValues values{context, id};
    std::string expression;
    dialect::appendFilled(expression, replacement->text, dialect::of(context.session), values);
    return expression;
}

/// Comm_CSel::InsertToStr in place.
void appendItem(std::string& list, std::string_view item)
{
    list.append(list.empty() || item.empty() ? "" : ", ").append(item);
}

std::string fillerList(std::string_view filler, std::size_t count)
{
    std::string list;
    for (std::size_t position = 0; position < count; ++position) {
        appendItem(list, filler);
    }
    return list;
}

} // namespace

std::string Comm_CSel::CorrectStrSelect(std::string_view Typ, std::span<const std::int16_t> ID,
                                        std::string& strSelect_vbtab, std::string_view Colum_Id_Is_0,
                                        std::string_view strVer_type, const TmkVar& tmkVar, std::string_view strWhere,
                                        std::string_view strFrom, bool GroupBy) const
{
    if (ID.size() > INT16_MAX) {
        throw Error{errors::overflow, "More than 32767 column ids.", "Comm_CSel.CorrectStrSelect"};
    }
    const catalogue::ListType* type = findComposedType(Typ);
    if (type == nullptr) {
        return fillerList(Colum_Id_Is_0, ID.size());
    }
    const std::string_view versionKey = type->description().dependsOnVersion ? strVer_type : std::string_view{};
    const SelectContext context{*type, tmkVar, versionKey, fromClause(strFrom), whereClause(strWhere), GroupBy};
    std::string result;
    for (const std::int16_t id : ID) {
        const std::string expression = selectedText(context, id);
        if (!expression.empty() && expression != Colum_Id_Is_0) {
            strSelect_vbtab.append(strSelect_vbtab.empty() ? "" : "\t").append(expression);
        }
        appendItem(result, expression.empty() ? Colum_Id_Is_0 : std::string_view{expression});
    }
    return result;
}

} // namespace tamarok
