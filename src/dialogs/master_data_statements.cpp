#include "master_data_statements.h"

#include <algorithm>
#include <array>

#include "ado/first_row.h"

#include "tamarok/comm_conv.h"
#include "tamarok/comm_lock.h"
#include "tamarok/convert.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

namespace tamarok::dialogs {

namespace {

constexpr std::string_view from = " FROM ";
constexpr std::string_view orderBy = " ORDER BY ";
constexpr std::string_view listNumber = "RELTABLE_ID = ";
constexpr std::string_view level = "ID_ACCESS_LEVELS = ";

struct Pattern {
    std::string_view text;
    MasterTable table;
};

// The order counts: the first pattern that the SELECT contains decides.
constexpr std::array patterns{
    Pattern{"FROM RELTABLE", MasterTable::FreeList},
    Pattern{"FROM T_STEH_RELTABLE", MasterTable::StandingFreeList},
    Pattern{" FROM BB_T_AUFTRAGS_PLANUNG ", MasterTable::Order},
    Pattern{"FROM BB_T_VERTRAG", MasterTable::Contract},
    Pattern{" FROM OBJEKT ", MasterTable::Object},
    Pattern{" FROM BB_T_PROJEKT_PLANUNG ", MasterTable::Project},
};

/// Characters that a table's columns take; 0 for a column that is not cut.
struct Widths {
    MasterTable table;
    std::size_t first, second, third;
};
constexpr std::array allWidths{
    Widths{MasterTable::FreeList, 8, 50, 0}, Widths{MasterTable::StandingFreeList, 8, 50, 0},
    Widths{MasterTable::Order, 15, 50, 0},   Widths{MasterTable::Project, 15, 50, 50},
    Widths{MasterTable::Object, 10, 50, 0},
};

bool contains(std::string_view text, std::string_view wanted)
{
    return text.find(wanted) != std::string_view::npos;
}

template <class... Parts>
std::string join(const Parts&... parts)
{
    std::string all;
    (all.append(parts), ...);
    return all;
}

std::string quoted(std::string_view value)
{
    return join("'", value, "'");
}

std::string quotedOrNull(std::string_view value)
{
    return value.empty() ? "NULL" : quoted(value);
}

/// Returns the text after the first `mark`, up to the next ")"; nothing without one of the two.
std::optional<std::string_view> upToBracket(std::string_view select, std::string_view mark)
{
    const std::size_t at = select.find(mark);
    if (at == std::string_view::npos) return std::nullopt;
    const std::string_view rest = select.substr(at + mark.size());
    const std::size_t end = rest.find(')');
    return end == std::string_view::npos ? std::nullopt : std::optional{rest.substr(0, end)};
}

/// Required by the contract: exactly two characters, so that a number of three digits is cut. Do not correct.
std::string_view listNumberOf(std::string_view select)
{
    const std::size_t at = select.find(listNumber);
    return at == std::string_view::npos ? std::string_view{} : select.substr(at + listNumber.size(), 2);
}

std::string levelOf(std::string_view select)
{
    const auto id = upToBracket(select, level);
    return id && convert::isNumeric(Variant{*id}) ? std::string{*id} : "NULL";
}

/// The number that STAMMDATEN_EXPORT takes.
std::string_view exportFlag(std::string_view third)
{
    return third == "1" ? "1" : "NULL";
}

std::string hours(std::string_view third)
{
    return third.empty() ? "NULL" : convert::toSqlNumber(third);
}

std::string equals(const std::optional<std::string>& former)
{
    return former ? join(" = '", *former, "'") : " IS NULL";
}

/// Returns the SELECT of the id of a changed row: that of the lookup, narrowed by the row's former number and text.
/// Required by the contract: the conditions go behind the lookup's own ones by " AND ", whether it has any or not. Do
/// not correct.
std::string changedRow(std::string_view table, std::string_view select, const FormerRow& former)
{
    const std::size_t at = select.find(from);
    const std::string_view tail = at == std::string_view::npos ? select : select.substr(at + from.size());
    const std::size_t order = tail.rfind(orderBy);
    std::string statement = join("SELECT TOP 1 ", table, ".ID ", from, tail.substr(0, order), " AND NUMMER",
                                 equals(former.first), " AND LONG", equals(former.second));
    if (order != std::string_view::npos) statement += tail.substr(order);
    return statement;
}

} // namespace

MasterTable masterTableOf(std::string_view select)
{
    const auto* const found =
        std::ranges::find_if(patterns, [select](const Pattern& pattern) { return contains(select, pattern.text); });
    return found == patterns.end() ? MasterTable::Other : found->table;
}

bool hasUniqueFirstField(std::string_view select)
{
    return contains(select, " FROM BB_T_AUFTRAGS_PLANUNG ") || contains(select, " FROM BB_T_PROJEKT_PLANUNG ") ||
           contains(select, " FROM OBJEKT ");
}

bool namesFreeList(std::string_view select)
{
    return contains(select, listNumber);
}

std::string newFreeListRow(std::string_view select, const MasterRow& row)
{
    return join("INSERT INTO RELTABLE (ID,RELTABLE_ID,KURZNAME,LANGNAME,ID_ACCESS_LEVELS) SELECT ISNULL(MAX(ID),0)+1,",
                listNumberOf(select), ",", quoted(row.first), ",", quoted(row.second), ",", levelOf(select),
                " FROM RELTABLE");
}

std::string changedFreeListRow(std::string_view select, const MasterRow& row, const FormerRow& former,
                               std::int32_t ownLevel)
{
    return join("UPDATE RELTABLE SET KURZNAME = ", quoted(row.first), ",LANGNAME = ", quoted(row.second), " WHERE ",
                listNumber, listNumberOf(select), " AND KURZNAME = ", quoted(former.first.value_or("")),
                " AND LANGNAME  = ", quoted(former.second.value_or("")), " AND ID_ACCESS_LEVELS ",
                ownLevel == 0 ? " IS NULL " : " = " + std::to_string(ownLevel));
}

std::string newStandingFreeListRow(std::string_view select, const MasterRow& row)
{
    return join("INSERT INTO T_STEH_RELTABLE (RELTABLE_ID,SHORT,LONG,STAMMDATEN_EXPORT,ID_ACCESS_LEVELS) VALUES (",
                listNumberOf(select), ",", quoted(row.first), ",", quoted(row.second), ",", exportFlag(row.third), ",",
                levelOf(select), ")");
}

std::string changedStandingFreeListRow(std::string_view select, const MasterRow& row, const FormerRow& former)
{
    // Required by the contract: without a level the condition reads "= NULL", which no row meets. Do not correct.
    return join("UPDATE T_STEH_RELTABLE SET SHORT = ", quoted(row.first), ",LONG = ", quoted(row.second),
                ",STAMMDATEN_EXPORT = ", exportFlag(row.third), " WHERE ", listNumber, listNumberOf(select),
                " AND SHORT = ", quoted(former.first.value_or("")), " AND LONG  = ", quoted(former.second.value_or("")),
                " AND ID_ACCESS_LEVELS = ", levelOf(select));
}

std::string newOrder(const MasterRow& row, const TmkVar& session)
{
    const Variant today = Comm_Conv{}.TransDate(Variant{Platform::today()}, session.strDateFormat);
    return join("INSERT INTO BB_T_AUFTRAGS_PLANUNG (NUMMER,LONG,IST_STUNDEN_ZV,ERSTELLERDATUM,ID_ACCESS_LEVELS,ID_USER)"
                " VALUES (",
                quoted(row.first), ",", quotedOrNull(row.second), ",", hours(row.third), ",",
                quoted(ado::fieldText(today)), ",", std::to_string(session.ID_Access_Levels), ",",
                std::to_string(session.ID_User), ")");
}

std::string changedOrder(std::string_view select, const MasterRow& row, const FormerRow& former)
{
    return join("UPDATE BB_T_AUFTRAGS_PLANUNG SET NUMMER = ", quoted(row.first), ",LONG = ", quotedOrNull(row.second),
                ",IST_STUNDEN_ZV = ", hours(row.third), " WHERE ID IN (",
                changedRow("BB_T_AUFTRAGS_PLANUNG", select, former), ")");
}

std::string newProject(const MasterRow& row, std::int32_t ownLevel)
{
    return join("INSERT INTO BB_T_PROJEKT_PLANUNG (NUMMER,LONG,SHORT,ID_ACCESS_LEVELS)  VALUES (", quoted(row.first),
                ",", quoted(row.second), ",", quoted(row.third), ",", std::to_string(ownLevel), ")");
}

std::string changedProject(std::string_view select, const MasterRow& row, const FormerRow& former)
{
    return join("UPDATE BB_T_PROJEKT_PLANUNG SET NUMMER = ", quoted(row.first), ",LONG = ", quotedOrNull(row.second),
                ",SHORT = ", quotedOrNull(row.third), " WHERE ID IN (",
                changedRow("BB_T_PROJEKT_PLANUNG", select, former), ")");
}

std::string newObject(std::string_view select, const MasterRow& row)
{
    const std::string_view kind = upToBracket(select, "TABLE_NAME").value_or("");
    const std::size_t at = kind.find(from);
    return join(
        "INSERT INTO OBJEKT (ID,TABLE_NAME,NUMBER,NAME) SELECT (SELECT ISNULL(MAX(ID),0)+1 FROM OBJEKT),OBJEKT,",
        quoted(row.first), ",", quoted(row.second),
        at == std::string_view::npos ? std::string_view{} : kind.substr(at));
}

std::string contractsOfNumber(std::string_view number, const TmkVar& session)
{
    std::string levels;
    Comm_Lock{}.Access_Levels("BB_T_VERTRAG", levels, session, session.ID_Access_Levels);
    return join("SELECT ID FROM BB_T_VERTRAG WHERE NUMMER = ", quoted(number), " AND ISNULL(DISABLE,0) = 0 AND ",
                levels);
}

MasterRow cutToWidths(MasterTable table, const MasterRow& row)
{
    const auto* const widths = std::ranges::find(allWidths, table, &Widths::table);
    if (widths == allWidths.end()) return row;
    const auto cut = [](const std::string& value, std::size_t width) {
        return width == 0 ? value : std::string{text::left(value, width)};
    };
    return {cut(row.first, widths->first), cut(row.second, widths->second), cut(row.third, widths->third)};
}

} // namespace tamarok::dialogs
