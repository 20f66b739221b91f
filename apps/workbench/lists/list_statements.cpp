#include "lists/list_statements.h"

#include <algorithm>
#include <utility>

#include "tamarok/comm_csel.h"
#include "tamarok/comm_lock.h"
#include "tamarok/list_catalogue.h"
#include "tamarok/text.h"

namespace tamarok::workbench {

namespace {

constexpr std::string_view orderBy = " ORDER BY ";
constexpr std::string_view timberLists = "LISTENKOPF";

/// Returns the condition of a filter, such as "LOGS.HA = 'FI'".
std::string conditionOf(const ValueFilter& filter, const ListSetup& setup, const TmkVar& session)
{
    return cli::columnExpression(setup.type, filter.column, setup.version, session) +
           Comm_CSel{}.IsStr(setup.type, filter.column, filter.value, session);
}

/// Returns what the user may see by the access level: "" for everything. A log is seen by the level of its timber list.
std::string visibleRecords(const ListSetup& setup, const TmkVar& session)
{
    const std::string levels{recordKeyOf(setup.type).levels};
    if (session.ID_Access_Levels == 0 || levels.empty()) return {};
    std::string condition;
    Comm_Lock{}.Access_Levels(levels, condition, session, session.ID_Access_Levels);
    if (levels != timberLists || condition.empty()) return condition;
    return "EXISTS (SELECT 1 FROM LISTENKOPF WHERE LISTENKOPF.LISTE = LOGS.LISTE AND " + condition + ")";
}

/// Returns what the user may see, and what the filters leave of it.
std::string conditionOf(const ListSetup& setup, const TmkVar& session)
{
    std::string condition = visibleRecords(setup, session);
    for (const ValueFilter& filter : setup.filters)
        condition = Comm_CSel{}.InsertToWhere(condition, conditionOf(filter, setup, session));
    return condition;
}

cli::ListRequest requestOf(const ListSetup& setup, const TmkVar& session)
{
    cli::ListRequest request;
    request.type = setup.type;
    request.ids = setup.columns;
    request.version = setup.version;
    request.group = setup.grouped;
    request.where = conditionOf(setup, session);
    for (const ValueFilter& filter : setup.filters)
        request.whereIds.push_back(filter.column);
    request.orderIds = setup.order;
    request.descending = setup.descending;
    return request;
}

/// Returns whether an ORDER BY text has an element; a statement must not name one twice.
bool ordersBy(std::string_view order, std::string_view element)
{
    const std::size_t at = order.find(element);
    if (at == std::string_view::npos) return false;
    const std::string_view rest = order.substr(at + element.size());
    const char before = at == 0 ? ' ' : order[at - 1];
    return (before == ' ' || before == ',') && (rest.empty() || rest.front() == ',' || rest.front() == ' ');
}

std::string statement(std::string_view select, const cli::ListQuery& query, std::string_view condition,
                      std::string_view order)
{
    std::string text = "SELECT ";
    text.append(select).append(" FROM ").append(query.from);
    if (!condition.empty()) text.append(" WHERE ").append(condition);
    if (!query.groupBy.empty()) text.append(" GROUP BY ").append(query.groupBy);
    return text.append(order);
}

} // namespace

ListStatements::ListStatements(ListSetup setup, const TmkVar& session) :
    setup_{std::move(setup)}, key_{recordKeyOf(setup_.type)}, request_{requestOf(setup_, session)},
    query_{cli::composeList(request_, session)}, keyOrder_{query_.orderBy}
{
    if (!ordersBy(keyOrder_, key_.column)) keyOrder_.append(keyOrder_.empty() ? orderBy : ",").append(key_.column);
}

bool ListStatements::hasKeys() const
{
    return !setup_.grouped && query_.select.find("OVER(") == std::string::npos &&
           query_.select.find("OVER (") == std::string::npos;
}

std::string ListStatements::rows() const
{
    return statement(query_.select, query_, query_.where, hasKeys() ? keyOrder_ : query_.orderBy);
}

std::string ListStatements::keys() const
{
    return statement(key_.column, query_, query_.where, keyOrder_);
}

std::string ListStatements::firstRows(std::size_t most) const
{
    const std::string select = "TOP " + std::to_string(most) + " " + query_.select + "," + std::string{key_.column};
    return statement(select, query_, query_.where, keyOrder_);
}

std::string ListStatements::records(std::span<const std::string> keyTexts) const
{
    std::string wanted;
    for (const std::string& key : keyTexts) {
        wanted += wanted.empty() ? "" : ",";
        wanted += key_.isText ? "'" + text::replaceAll(key, "'", "''") + "'" : key;
    }
    const std::string select = query_.select + "," + std::string{key_.column};
    return statement(select, query_, conditionWith(std::string{key_.column} + " IN (" + wanted + ")"), keyOrder_);
}

std::string ListStatements::totals(const TmkVar& session) const
{
    ListSetup sums = setup_;
    sums.grouped = true;
    sums.order.clear();
    const std::vector<catalogue::ColumnInfo> all = catalogue::columnsOf(setup_.type);
    std::erase_if(sums.columns, [&](std::int16_t id) {
        const auto column = std::ranges::find(all, id, &catalogue::ColumnInfo::id);
        return column == all.end() || column->measure.empty();
    });
    if (sums.columns.empty()) return {};
    return cli::composeList(requestOf(sums, session), session).statement(session, {});
}

std::string ListStatements::values(std::int16_t column, std::int32_t most, const TmkVar& session) const
{
    ListSetup values = setup_;
    values.grouped = true;
    values.columns = {column};
    values.order = {column};
    values.descending = false;
    return cli::composeList(requestOf(values, session), session).statement(session, most);
}

std::string ListStatements::conditionWith(const std::string& further) const
{
    return query_.where.empty() ? further : "(" + query_.where + ") AND " + further;
}

bool canFilter(const std::string& type, std::int16_t column, const TmkVar& session)
{
    const std::vector<catalogue::ColumnInfo> all = catalogue::columnsOf(type);
    const auto found = std::ranges::find(all, column, &catalogue::ColumnInfo::id);
    if (found == all.end() || !found->measure.empty()) return false;
    // Null has a condition in types without filter too.
    return !Comm_CSel{}.IsStr(type, column, Variant{1}, session).empty();
}

} // namespace tamarok::workbench
