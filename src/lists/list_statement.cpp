#include "list_statement.h"

#include <utility>

#include "catalogue/list_composer.h"
#include "runtime/late_bound.h"

#include "tamarok/comm_csel.h"
#include "tamarok/comm_get.h"
#include "tamarok/comm_lock.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok::lists {

namespace {

using catalogue::ListComposer;

constexpr std::int32_t alignLeft = 0;
constexpr std::int32_t alignRight = 1;
constexpr std::int32_t descending = 1;

/// The wages with the worker in the key are a list of the type BBFS.
std::string_view catalogueType(std::string_view type)
{
    return type == "BRUTTOSCH" ? "BBFS" : type;
}

/// The columns of a view, from the first header on.
struct Columns {
    std::vector<std::int16_t> ids;
    std::vector<std::string> formats;
};

/// Adds the column of each header to the list and aligns the header: a column with a format to the right, but never the
/// first one, which is the text of the item.
Columns addColumns(ListComposer& list, const ListRequest& request, const Object& headers)
{
    Columns columns;
    const std::int32_t count = late_bound::numberOf(headers, "Count");
    for (std::int32_t position = 1; position <= count; ++position) {
        const ObjectRef header = late_bound::elementOf(headers, position);
        const std::string key = convert::toText(header->get("Key", {}));
        const std::int16_t id = convert::toInteger(std::string{text::mid(key, 5)});
        columns.ids.push_back(id);
        list.addColumn(id);
        columns.formats.push_back(Comm_CSel{}.GetFormat(catalogueType(request.type), id, request.session));
        const bool isRight = position > 1 && !columns.formats.back().empty();
        header->put("Alignment", isRight ? alignRight : alignLeft);
    }
    return columns;
}

std::string withReturn(std::string_view tag, const TmkVar& session)
{
    return text::replaceAll(tag, joinedReturn, session.bolOracle ? " || CHR(13) || " : " + CHAR(13) + ");
}

/// Adds the fields that name the record of a row: first the tag, last the key.
void addRowFields(ListComposer& list, const RowFields& fields, const ListRequest& request)
{
    const Comm_CSel columns;
    const std::string_view type = catalogueType(request.type);
    for (const std::int16_t id : fields.joins)
        if (id != noColumn) list.addJoins(id);
    // On Oracle the joins may stand in WHERE.
    if (fields.type == "BBFAK" && request.session.bolOracle && list.from().find("JOIN") == std::string::npos)
        list.addJoins(12);
    const auto addColumn = [&](std::int16_t id) {
        list.addSelected(columns.GetColumnTyp(type, id, true, false, request.session));
        list.addGroup(columns.GetColumnTyp(type, id, true, true, request.session));
    };
    list.addSelected(withReturn(fields.tag, request.session));
    for (const std::string_view group : fields.tagGroups)
        if (!group.empty()) list.addGroup(group);
    if (fields.tagColumn != noColumn) addColumn(fields.tagColumn);
    list.addSelected(fields.key);
    if (!fields.keyGroup.empty()) list.addGroup(fields.keyGroup);
    if (fields.keyColumn != noColumn) addColumn(fields.keyColumn);
}

/// The conditions of an article list: what the user may see, one settlement, and no invoice of timber lists.
std::string articleCondition(std::string where, const ListRequest& request)
{
    const Comm_CSel columns;
    const TmkVar& session = request.session;
    const std::string version = text::toUpper(request.version);
    Comm_Lock{}.Access_Levels("HEADERRECH", where, session, session.ID_Access_Levels);
    if (session.strCustomer == "MA49") where = columns.InsertToWhere(where, " ISNULL(HEADERRECH.STORNO,0) = 0");
    where = columns.InsertToWhere(where, " NN_POSITIONEN.VER_TYPE = '" + version + "'");
    const std::string name = "LOGS_RECH." + version + "_NAME";
    return columns.InsertToWhere(where, "HEADERRECH.R_NAME NOT IN (SELECT " + name + " FROM LOGS_RECH WHERE " + name +
                                            " = HEADERRECH.R_NAME)");
}

/// The order of an article list, in the direction that the option ORDERBY sets for the version.
std::string articleOrder(const std::string& order, const ListRequest& request)
{
    const std::string option = Comm_Get{}.GetOptionenText(request.session, "ORDERBY");
    const std::size_t position = text::toUpper(request.version) == "R" ? 2 : 3;
    const std::string clause = Comm_CSel{}.OrderBy(text::mid(option, position, 1), order);
    constexpr std::string_view words = " ORDER BY ";
    return clause.empty() ? clause : clause.substr(words.size());
}

/// The order of a list of goods, which follows the sorting of the view: by the position of the column, or by its value
/// where the column shows numbers.
std::string goodsOrder(const Columns& columns, const ListRequest& request, const Object& view)
{
    const std::int32_t key = late_bound::numberOf(view, "SortKey");
    if (key < 0 || static_cast<std::size_t>(key) >= columns.ids.size())
        throw Error{errors::subscriptOutOfRange,
                    "The list is sorted by column " + std::to_string(key) + ", which it does not have.",
                    "Comm_CSel.FillListview"};
    const auto index = static_cast<std::size_t>(key);
    const std::string direction = late_bound::numberOf(view, "SortOrder") == descending ? " DESC" : "";
    if (!columns.formats[index].ends_with('0')) return std::to_string(key + 1) + direction;
    const std::string value = Comm_CSel{}.GetColumnTyp(request.type, columns.ids[index], true, false, request.session);
    return "(CASE WHEN ISNUMERIC(" + value + ")=1 THEN CAST(" + value + " AS FLOAT) ELSE NULL END)" + direction;
}

void append(std::string& statement, std::string_view word, std::string_view clause)
{
    if (!clause.empty()) statement.append(word).append(clause);
}

} // namespace

// The clauses in the order of their composition: FROM and WHERE of the selection; each column in SELECT, FROM and GROUP
// BY; the default order, which is the group list so far; the fields that name the record.
ListStatement composeListStatement(const ListRequest& request, Object& view, Object& headers)
{
    std::string from;
    std::string where;
    Comm_CSel{}.SplitClause(request.selection, from, where);
    ListComposer list{catalogueType(request.type), request.version, request.session, std::move(from)};
    Columns columns = addColumns(list, request, headers);
    std::string order = list.group();

    ListStatement statement;
    statement.fields = findRowFields(request.type);
    if (statement.fields != nullptr) addRowFields(list, *statement.fields, request);
    if (request.type == "ARTIKEL") {
        where = articleCondition(std::move(where), request);
        order = articleOrder(order, request);
    }
    if (request.type == "WAREN" && convert::toBoolean(view.get("Sorted", {})))
        order = goodsOrder(columns, request, view);

    statement.text = "SELECT " + list.select() + " FROM " + list.from();
    append(statement.text, " WHERE ", where);
    append(statement.text, " GROUP BY ", list.group());
    append(statement.text, " ORDER BY ", order);
    statement.formats = std::move(columns.formats);
    return statement;
}

} // namespace tamarok::lists
