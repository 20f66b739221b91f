#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <string_view>

#include "ado/first_row.h"
#include "fetch_rows.h"

#include "tamarok/comm_conv.h"
#include "tamarok/comm_csel.h"
#include "tamarok/comm_lock.h"
#include "tamarok/comm_sql.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"
#include "tamarok/tmkvar.h"

namespace tamarok {
namespace {

using rights::textOf;

/// What a rule is asked about.
struct Question {
    std::string_view table;
    const TmkVar& session;
    std::int32_t level;

    const std::string& visible() const { return session.strID_Access_Levels; }
    std::string column() const { return std::string{table} + ".ID_ACCESS_LEVELS"; }
    std::string withoutLevel() const { return "ISNULL(" + column() + ",0)=0"; }
};

std::string rootLevel(const Question& asked)
{
    return asked.column() + " IN (SELECT ID FROM ACCESS_LEVELS WHERE ACCESS_LEVELS IN"
                            " (SELECT TOP 1 REPLICATE(0,LEN(ACCESS_LEVELS)) FROM ACCESS_LEVELS))";
}

std::string rootLevelOracle(const Question& asked)
{
    return asked.column() + " IN (SELECT ID FROM ACCESS_LEVELS WHERE ACCESS_LEVELS IN"
                            " (SELECT LPAD(0,LEN(ACCESS_LEVELS),0) FROM ACCESS_LEVELS WHERE rownum = 1))";
}

/// The statement that reads the code of the level of interest; its id is a 16-bit number there.
std::string codeStatement(const Question& asked)
{
    return Comm_SQL{}.ACL_str(asked.session, 2, convert::checkedInteger(asked.level, "access level id"));
}

/// Staff is seen through the level's explicit references.
std::string ruleAlf(const Question& asked)
{
    std::string levels;
    ado::readFirst(asked.session.db_ADO,
                   "SELECT ID_ACL_0,ID_ACL_1,ID_ACL_2,ID_ACL_3,ID_ACL_4 FROM ACCESS_LEVELS WHERE ID = " +
                       std::to_string(asked.level),
                   [&](const ado::FieldCollection& fields) {
                       for (std::int32_t index = 0; index < 5; ++index) {
                           const Variant reference = fields.Item(index).Value();
                           if (reference.isNull()) continue;
                           if (!levels.empty()) levels += ",";
                           levels += textOf(reference);
                       }
                   });
    return levels.empty() ? "1=1" : asked.column() + " IN (" + levels + ")";
}

/// Rows whose code agrees with the level's code in all but the last two groups.
std::string ruleBb(const Question& asked)
{
    const std::string root = asked.session.bolOracle ? rootLevelOracle(asked) : rootLevel(asked);
    return asked.withoutLevel() + " OR " + root + " OR " + asked.column() +
           " IN (SELECT ID FROM ACCESS_LEVELS WHERE LEFT(ACCESS_LEVELS,LEN(ACCESS_LEVELS) - 4) IN"
           " (SELECT LEFT(ACCESS_LEVELS,LEN(ACCESS_LEVELS) - 4) FROM ACCESS_LEVELS WHERE ID = " +
           std::to_string(asked.level) + "))";
}

/// The longest run of zero groups decides: a grouping node sees everything under it, the root all.
std::string subtreeOf(std::string_view code)
{
    std::string subquery = std::string{"SELECT ID FROM ACCESS_LEVELS WHERE ACCESS_LEVELS = '"}.append(code).append("'");
    const std::size_t length = text::length(code);
    for (std::size_t zeros = 2; zeros <= length; zeros += 2) {
        if (text::right(code, zeros).find_first_not_of('0') != std::string_view::npos) continue;
        subquery = "SELECT ID FROM ACCESS_LEVELS WHERE LEFT(ACCESS_LEVELS," + std::to_string(length - zeros) + ") = '" +
                   std::string{text::left(code, length - zeros)} + "'";
    }
    return subquery;
}

std::string ruleSubtree(const Question& asked)
{
    std::string subquery;
    if (asked.level >= 1) {
        ado::Recordset level;
        level.Open(codeStatement(asked), asked.session.db_ADO);
        subquery = subtreeOf(textOf(level.Fields().Item(0).Value())); // a level that is missing fails the call
        level.Close();
    }
    // The root is asked for in SQL Server's words on both dialects.
    std::string clause = asked.withoutLevel() + " OR " + rootLevel(asked);
    if (!subquery.empty()) clause += " OR " + asked.column() + " IN (" + subquery + ")";
    return clause;
}

constexpr std::string_view modelsCode = "(SELECT ACCESS_LEVELS FROM ACCESS_LEVELS WHERE ID = MODELS.ID_ACCESS_LEVELS)";

/// Whether a model's level covers the level with this code, from the root down to the level itself.
std::string modelIsCovered(std::string_view code)
{
    const std::size_t length = text::length(code);
    const std::size_t groups = length / 2;
    std::string test{"1=(CASE "};
    for (std::size_t group = groups + 1; group-- > 0;) {
        const std::string width = std::to_string(2 * group);
        const std::string zeros(2 * group, '0');
        if (group == groups) {
            test.append(" WHEN RIGHT(").append(modelsCode).append("," + width + ") = '" + zeros + "' THEN 1");
        } else if (group > 0) {
            test.append(" WHEN RIGHT(")
                .append(modelsCode)
                .append("," + width + ")  = '" + zeros + "' THEN  (CASE WHEN '")
                .append(code)
                .append("' LIKE LEFT(")
                .append(modelsCode)
                .append("," + std::to_string(length - 2 * group) + ")+'" + std::string(2 * group, '_') +
                        "'  THEN 1 ELSE 0 END)");
        } else {
            test.append(" WHEN 1=1 THEN (CASE WHEN '")
                .append(code)
                .append("' = ")
                .append(modelsCode)
                .append(" THEN 1 ELSE 0 END)");
        }
    }
    return test + " END)";
}

/// A model without a level belongs to its owner, or to all where it is marked as not changeable.
std::string ruleModels(const Question& asked)
{
    std::string covered;
    ado::readFirst(asked.session.db_ADO, codeStatement(asked), [&](const ado::FieldCollection& fields) {
        const std::string code = textOf(fields.Item(0).Value());
        if (!code.empty()) covered = modelIsCovered(code);
    });
    std::string clause = "(MODELS.ID_ACCESS_LEVELS IS NULL AND (MODELS.NICHT_ANDERBAR = 1 OR MODELS.ID_USER = " +
                         std::to_string(asked.session.ID_User) + "))";
    if (!covered.empty()) clause += " OR (MODELS.ID_ACCESS_LEVELS IS NOT NULL AND " + covered + ")";
    return clause;
}

/// Rows of the visible levels and of the three parent nodes of the level.
std::string ruleParents(const Question& asked)
{
    const std::string level = std::to_string(asked.level);
    return asked.withoutLevel() + " OR " + asked.column() + " IN (" + asked.visible() + ") OR " + asked.column() +
           " IN (SELECT ID FROM ACCESS_LEVELS WHERE ACCESS_LEVELS IN ("
           "(SELECT LEFT(ACCESS_LEVELS,LEN(ACCESS_LEVELS)-2)+'00'     FROM ACCESS_LEVELS WHERE ID = " +
           level +
           "),(SELECT LEFT(ACCESS_LEVELS,LEN(ACCESS_LEVELS)-4)+'0000'   FROM ACCESS_LEVELS WHERE ID = " + level +
           "),(SELECT LEFT(ACCESS_LEVELS,LEN(ACCESS_LEVELS)-6)+'000000' FROM ACCESS_LEVELS WHERE ID = " + level + ")))";
}

std::string ruleWithoutLevel(const Question& asked)
{
    return asked.withoutLevel();
}

std::string ruleOwnLevel(const Question& asked)
{
    std::string clause = asked.withoutLevel();
    if (asked.level != 0) clause += " OR " + asked.column() + " = " + std::to_string(asked.level);
    return clause;
}

/// Table KLR holds the code itself, in a column without the underscore.
std::string ruleCodeColumn(const Question& asked)
{
    if (asked.visible().empty()) return "KLR.ACCESSLEVEL IS NULL";
    return "KLR.ACCESSLEVEL IS NULL OR KLR.ACCESSLEVEL IN (SELECT ACCESS_LEVELS FROM ACCESS_LEVELS WHERE ID IN (" +
           asked.visible() + "))";
}

std::string ruleVisibleOracle(const Question& asked)
{
    return "NVL(" + asked.column() + ",0) IN (" +
           (asked.visible().empty() ? "0" : asked.visible() + " UNION ALL SELECT 0 AS ID FROM DUAL") + ")";
}

std::string ruleVisible(const Question& asked)
{
    return asked.withoutLevel() + " OR " + asked.column() + " IN (" + asked.visible() + ")";
}

// The decision table. The first row that fits gives the clause.

constexpr std::array<std::string_view, 1> staff = {"PERSONAL"};
constexpr std::array<std::string_view, 10> partnersAndPlanning = {
    "PERSONAL",     "BB_T_AUFTRAGS_PLANUNG", "BB_T_PROJEKT_PLANUNG", "VERKAUFSART",
    "BB_T_OBJEKTE", "BB_T_VERTRAG",          "WARENKATALOG",         "BB_T_FSC",
    "T_ERLEGER",    "T_JAGDBEZIRK",
};
constexpr std::array<std::string_view, 1> models = {"MODELS"};
constexpr std::array<std::string_view, 1> services = {"BB_LEISTUNGS_KOPF"};
constexpr std::array<std::string_view, 2> relationTables = {"RELTABLE", "T_STEH_RELTABLE"};
constexpr std::array<std::string_view, 1> costing = {"KLR"};
constexpr std::array<std::string_view, 0> anyKey = {};

bool always(const TmkVar& /*session*/)
{
    return true;
}
bool isAlf(const TmkVar& session)
{
    return session.strCustomer == "ALF";
}
bool isBb(const TmkVar& session)
{
    return session.strCustomer == "BB";
}
bool seesLevels(const TmkVar& session)
{
    return !session.strID_Access_Levels.empty();
}
bool isOracle(const TmkVar& session)
{
    return static_cast<bool>(session.bolOracle);
}

struct Decision {
    std::span<const std::string_view> tables; ///< empty for any key
    bool (*condition)(const TmkVar&);
    std::string (*clause)(const Question&);
};

constexpr std::array<Decision, 11> decisions = {{
    {staff, isAlf, ruleAlf},
    {partnersAndPlanning, isBb, ruleBb},
    {partnersAndPlanning, always, ruleSubtree},
    {models, always, ruleModels},
    {services, seesLevels, ruleParents},
    {services, always, ruleWithoutLevel},
    {relationTables, always, ruleOwnLevel},
    {costing, always, ruleCodeColumn},
    {anyKey, isOracle, ruleVisibleOracle},
    {anyKey, seesLevels, ruleVisible},
    {anyKey, always, ruleWithoutLevel},
}};

bool fits(const Decision& decision, const Question& asked)
{
    const bool isForTable = decision.tables.empty() || std::find(decision.tables.begin(), decision.tables.end(),
                                                                 asked.table) != decision.tables.end();
    return isForTable && decision.condition(asked.session);
}

std::string levelClause(const Question& asked)
{
    for (const Decision& decision : decisions)
        if (fits(decision, asked)) return decision.clause(asked);
    return {};
}

/// The working period. Of the three tables only the lists treat the default period as no limit.
void addPeriod(std::string_view table, std::string& where, const TmkVar& session)
{
    const Comm_CSel clauses;
    const auto add = [&](std::string_view comparison, Date date) {
        const Variant text = Comm_Conv{}.TransDate(Variant{date}, session.strDateFormat);
        where = clauses.InsertToWhere(where, std::string{comparison} + " '" + textOf(text) + "'");
    };
    if (table == "HEADERRECH") {
        add(" HEADERRECH.INVDATE >=", session.DateFrom);
        add(" HEADERRECH.INVDATE <=", session.DateTo);
    } else if (table == "RECHNUNGSJOURNAL") {
        add(" RECHNUNGSJOURNAL.INVDATE >=", session.DateFrom);
        add(" RECHNUNGSJOURNAL.INVDATE <=", session.DateTo);
    } else if (table == "LISTENKOPF") {
        if (session.DateFrom != session.DateFromDefault) add("LOGS.LISTDATUM >=", session.DateFrom);
        if (session.DateTo != Date{Platform::today().days + session.intDateToDays})
            add("LOGS.LISTDATUM <=", session.DateTo);
    }
}

} // namespace

std::string Comm_Lock::Access_Levels(std::string_view table, std::string& strWhere, const TmkVar& tmkVar,
                                     std::int32_t ID_Access_Levels) const
{
    std::string where = strWhere;
    addPeriod(table, where, tmkVar);
    const std::string clause = levelClause({table, tmkVar, ID_Access_Levels});
    if (!clause.empty()) where = Comm_CSel{}.InsertToWhere(where, "(" + clause + ")");
    strWhere = where;
    return where;
}

} // namespace tamarok
