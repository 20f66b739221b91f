#include "list/list_query.h"

#include <algorithm>

#include "tamarok/comm_csel.h"
#include "tamarok/error.h"
#include "tamarok/list_catalogue.h"
#include "tamarok/text.h"

namespace tamarok::cli {

namespace {

/// Whether the columns of the type take a version, and operations of their own compose them.
bool isLogList(const std::string& type)
{
    return catalogue::listTypeInfo(type).hasVersions;
}

std::string columnName(const std::string& type, std::int16_t id, const std::string& version)
{
    std::string name = text::toUpper(type) + " column " + std::to_string(id);
    if (isLogList(type) && version != "R") name += " for version " + version;
    return name;
}

std::string composeSelect(const ListRequest& request, const ListQuery& query, const TmkVar& session)
{
    const Comm_CSel columns;
    std::string tabbed;
    if (catalogue::listTypeInfo(request.type).correctsSelect) {
        return columns.CorrectStrSelect(text::toUpper(request.type), request.ids, tabbed, "", request.version, session,
                                        query.where, query.from, request.group);
    }
    std::string select;
    for (const std::int16_t id : request.ids) {
        select = columns.InsertToStr(select, columns.GetColumnTyp(request.type, id, request.group, false, session));
    }
    return select;
}

std::string groupExpression(const ListRequest& request, std::int16_t id, const TmkVar& session)
{
    const Comm_CSel columns;
    if (isLogList(request.type)) return columns.GetGroupByClause2(id, request.version, session);
    return columns.GetColumnTyp(request.type, id, true, true, session);
}

std::string orderExpression(const ListRequest& request, std::int16_t id, const TmkVar& session)
{
    const Comm_CSel columns;
    if (!isLogList(request.type)) return columns.GetColumnTyp(request.type, id, request.group, request.group, session);
    return request.group ? columns.GetOrderByClause2(id, request.version, session)
                         : columns.GetOrderByClause(id, request.version, session);
}

std::string composeGroupBy(const ListRequest& request, const TmkVar& session)
{
    const Comm_CSel columns;
    std::string groups;
    for (const std::int16_t id : request.ids) {
        groups = columns.InsertToStr2(groups, groupExpression(request, id, session), request.version);
    }
    return groups;
}

/// The order expression of one column, or UnknownColumn where the list cannot be ordered by it.
std::string requireOrder(const ListRequest& request, std::int16_t id, const TmkVar& session)
{
    const std::string name = columnName(request.type, id, request.version);
    if (request.group && std::ranges::find(request.ids, id) == request.ids.end()) {
        throw UnknownColumn{"a grouped list is ordered by one of its own columns, not by " + name};
    }
    std::string order = orderExpression(request, id, session);
    if (order.empty()) throw UnknownColumn{"a grouped list cannot be ordered by the measure " + name};
    return order;
}

std::string composeOrderBy(const ListRequest& request, const TmkVar& session)
{
    const Comm_CSel columns;
    std::string order;
    for (const std::int16_t id : request.orderIds) {
        order = columns.InsertToStr2(order, requireOrder(request, id, session), request.version);
    }
    return columns.OrderBy(request.descending ? "1" : "0", order);
}

void requireColumn(const ListRequest& request, std::int16_t id, const TmkVar& session)
{
    if (columnExpression(request.type, id, request.version, session).empty()) {
        throw UnknownColumn{"there is no " + columnName(request.type, id, request.version)};
    }
}

} // namespace

std::string columnExpression(const std::string& type, std::int16_t id, const std::string& version,
                             const TmkVar& session)
{
    const Comm_CSel columns;
    if (isLogList(type)) return columns.GetColumn(id, version, session);
    return columns.GetColumnTyp(type, id, false, false, session);
}

void requireListType(const std::string& type)
{
    try {
        catalogue::listTypeInfo(type);
    } catch (const Error& error) {
        throw UnknownColumn{error.description};
    }
}

/// Clause by clause: FROM with the joins of all columns, WHERE, SELECT, GROUP BY, ORDER BY. SELECT comes
/// late because a share divides by the total over the same FROM and WHERE.
ListQuery composeList(const ListRequest& request, const TmkVar& session)
{
    requireListType(request.type);
    const Comm_CSel columns;
    ListQuery query;
    for (const auto* ids : {&request.ids, &request.orderIds, &request.whereIds}) {
        for (const std::int16_t id : *ids) {
            requireColumn(request, id, session);
            query.from = columns.GetFrom(request.type, id, query.from, request.version, session);
        }
    }
    query.where = columns.InsertToWhere("", request.where);
    query.select = composeSelect(request, query, session);
    if (request.group) query.groupBy = composeGroupBy(request, session);
    query.orderBy = composeOrderBy(request, session);
    return query;
}

std::string ListQuery::statement(const TmkVar& session, std::optional<std::int64_t> limit) const
{
    const bool oracle{session.bolOracle};
    std::string text = "SELECT ";
    if (limit && !oracle) text += "TOP " + std::to_string(*limit) + " ";
    text += select + " FROM " + from;
    if (!where.empty()) text += " WHERE " + where;
    if (!groupBy.empty()) text += " GROUP BY " + groupBy;
    return text + orderBy;
}

} // namespace tamarok::cli
