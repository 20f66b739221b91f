#include "level_rules.h"

#include <algorithm>
#include <array>
#include <span>

#include "ado/first_row.h"
#include "dialect/sql_template.h"

#include "tamarok/comm_sql.h"
#include "tamarok/convert.h"
#include "tamarok/text.h"
#include "tamarok/tmkvar.h"

// The code of a level (ACCESS_LEVELS.ACCESS_LEVELS) is a text of two-digit groups from coarse to fine. The
// group "00" ends the level, so a code that ends in "00" is a node over all codes with the same prefix, and
// a code of zeros alone is the root. The statements take codes of any length.

namespace tamarok::rights {
namespace {

using ado::fieldText;

const std::string& visibleLevels(const LevelFilter& filter)
{
    return filter.session.strID_Access_Levels;
}

std::string levelColumn(const LevelFilter& filter)
{
    return std::string{filter.table} + ".ID_ACCESS_LEVELS";
}

std::string hasNoLevel(const LevelFilter& filter)
{
    return "ISNULL(" + levelColumn(filter) + ",0)=0";
}

/// Returns the condition that a row has the root level.
std::string hasRootLevel(const LevelFilter& filter)
{
    return levelColumn(filter) + " IN (SELECT ID FROM ACCESS_LEVELS WHERE ACCESS_LEVELS IN"
                                 " (SELECT TOP 1 REPLICATE(0,LEN(ACCESS_LEVELS)) FROM ACCESS_LEVELS))";
}

/// Returns the same for rule BB, which has an Oracle form.
std::string hasRootLevelByDialect(const LevelFilter& filter)
{
    return dialect::fill("{COLUMN} IN (SELECT ID FROM ACCESS_LEVELS WHERE ACCESS_LEVELS IN (SELECT {ORACLE?"
                         "LPAD(0,LEN(ACCESS_LEVELS),0):TOP 1 REPLICATE(0,LEN(ACCESS_LEVELS))} FROM ACCESS_LEVELS"
                         "{ORACLE? WHERE rownum = 1:}))",
                         dialect::of(filter.session), {{"COLUMN", levelColumn(filter)}});
}

/// Returns the query of the level's code. ACL_str takes a 16-bit id, so a greater one is Error 6.
std::string codeStatement(const LevelFilter& filter)
{
    return Comm_SQL{}.ACL_str(filter.session, 2, convert::checkedInteger(filter.level, "access level id"));
}

/// Customer ALF: staff is seen through the level's references ID_ACL_0 to ID_ACL_4; without any, all of it.
std::string ruleAlf(const LevelFilter& filter)
{
    std::string levels;
    ado::readFirst(filter.session.db_ADO,
                   "SELECT ID_ACL_0,ID_ACL_1,ID_ACL_2,ID_ACL_3,ID_ACL_4 FROM ACCESS_LEVELS WHERE ID = " +
                       std::to_string(filter.level),
                   [&](const ado::FieldCollection& fields) {
                       for (std::int32_t index = 0; index < 5; ++index) {
                           const Variant reference = fields.Item(index).Value();
                           if (reference.isNull()) continue;
                           if (!levels.empty()) levels += ",";
                           levels += fieldText(reference);
                       }
                   });
    return levels.empty() ? "1=1" : levelColumn(filter) + " IN (" + levels + ")";
}

/// Customer BB: rows whose code agrees with the level's code in all but the last two groups.
std::string ruleBb(const LevelFilter& filter)
{
    // Required by the contract: on Oracle only the root test differs; ISNULL, LEFT and LEN stay although
    // that server does not know them. Do not correct.
    return hasNoLevel(filter) + " OR " + hasRootLevelByDialect(filter) + " OR " + levelColumn(filter) +
           " IN (SELECT ID FROM ACCESS_LEVELS WHERE LEFT(ACCESS_LEVELS,LEN(ACCESS_LEVELS) - 4) IN"
           " (SELECT LEFT(ACCESS_LEVELS,LEN(ACCESS_LEVELS) - 4) FROM ACCESS_LEVELS WHERE ID = " +
           std::to_string(filter.level) + "))";
}

/// Returns the query of the levels under the level with this code. The longest run of closing "00"
/// groups decides how much of the code is the common prefix: a leaf has itself alone, the root all levels.
std::string subtreeOf(std::string_view code)
{
    std::string levels = std::string{"SELECT ID FROM ACCESS_LEVELS WHERE ACCESS_LEVELS = '"}.append(code).append("'");
    const std::size_t length = text::length(code);
    for (std::size_t zeros = 2; zeros <= length; zeros += 2) {
        if (text::right(code, zeros).find_first_not_of('0') != std::string_view::npos) continue;
        levels = "SELECT ID FROM ACCESS_LEVELS WHERE LEFT(ACCESS_LEVELS," + std::to_string(length - zeros) + ") = '" +
                 std::string{text::left(code, length - zeros)} + "'";
    }
    return levels;
}

/// Partners and planning: rows without a level, of the root level, and of the levels under the level.
std::string ruleSubtree(const LevelFilter& filter)
{
    // Required by the contract: the root test is SQL Server text on Oracle too. Do not correct.
    std::string condition = hasNoLevel(filter) + " OR " + hasRootLevel(filter);
    if (filter.level >= 1) {
        std::string levels;
        // Required by the contract: a level that is missing fails the call. Do not correct.
        ado::readExisting(filter.session.db_ADO, codeStatement(filter), [&](const ado::FieldCollection& fields) {
            levels = subtreeOf(fieldText(fields.Item(0).Value()));
        });
        condition += " OR " + levelColumn(filter) + " IN (" + levels + ")";
    }
    return condition;
}

constexpr std::string_view codeOfModel = "(SELECT ACCESS_LEVELS FROM ACCESS_LEVELS WHERE ID = MODELS.ID_ACCESS_LEVELS)";

/// Returns the condition that a model's level is the level with this code or a node above it. One WHEN a
/// depth, from the root down: the model's code ends in so many zeros, and what stands before them is the
/// beginning of `code`.
std::string modelIsCovered(std::string_view code)
{
    // Required by the contract: the blanks before "=" and behind "THEN" differ between the branches.
    // Do not correct.
    const std::size_t length = text::length(code);
    const std::size_t groups = length / 2;
    std::string test{"1=(CASE "};
    for (std::size_t group = groups + 1; group-- > 0;) {
        const std::string width = std::to_string(2 * group);
        const std::string zeros(2 * group, '0');
        if (group == groups) {
            test.append(" WHEN RIGHT(")
                .append(codeOfModel)
                .append(",")
                .append(width)
                .append(") = '")
                .append(zeros)
                .append("' THEN 1");
        } else if (group > 0) {
            test.append(" WHEN RIGHT(")
                .append(codeOfModel)
                .append(",")
                .append(width)
                .append(")  = '")
                .append(zeros)
                .append("' THEN  (CASE WHEN '")
                .append(code)
                .append("' LIKE LEFT(")
                .append(codeOfModel)
                .append("," + std::to_string(length - 2 * group) + ")+'" + std::string(2 * group, '_') +
                        "'  THEN 1 ELSE 0 END)");
        } else {
            test.append(" WHEN 1=1 THEN (CASE WHEN '")
                .append(code)
                .append("' = ")
                .append(codeOfModel)
                .append(" THEN 1 ELSE 0 END)");
        }
    }
    return test + " END)";
}

/// Saved list selections: a model without a level is seen by its owner, or by all if it is marked as not
/// changeable; one with a level, by the level and all levels under it. SQL Server text alone.
std::string ruleModels(const LevelFilter& filter)
{
    const std::string code = ado::readFirstText(filter.session.db_ADO, codeStatement(filter));
    std::string condition = "(MODELS.ID_ACCESS_LEVELS IS NULL AND (MODELS.NICHT_ANDERBAR = 1 OR MODELS.ID_USER = " +
                            std::to_string(filter.session.ID_User) + "))";
    if (!code.empty()) condition += " OR (MODELS.ID_ACCESS_LEVELS IS NOT NULL AND " + modelIsCovered(code) + ")";
    return condition;
}

/// Services: rows without a level, of the visible levels, and of the three nodes above the level.
std::string ruleParents(const LevelFilter& filter)
{
    const std::string level = std::to_string(filter.level);
    return hasNoLevel(filter) + " OR " + levelColumn(filter) + " IN (" + visibleLevels(filter) + ") OR " +
           levelColumn(filter) +
           " IN (SELECT ID FROM ACCESS_LEVELS WHERE ACCESS_LEVELS IN ("
           "(SELECT LEFT(ACCESS_LEVELS,LEN(ACCESS_LEVELS)-2)+'00'     FROM ACCESS_LEVELS WHERE ID = " +
           level +
           "),(SELECT LEFT(ACCESS_LEVELS,LEN(ACCESS_LEVELS)-4)+'0000'   FROM ACCESS_LEVELS WHERE ID = " + level +
           "),(SELECT LEFT(ACCESS_LEVELS,LEN(ACCESS_LEVELS)-6)+'000000' FROM ACCESS_LEVELS WHERE ID = " + level + ")))";
}

/// Relation tables: rows without a level and rows of exactly the level.
std::string ruleSameLevel(const LevelFilter& filter)
{
    std::string condition = hasNoLevel(filter);
    if (filter.level != 0) condition += " OR " + levelColumn(filter) + " = " + std::to_string(filter.level);
    return condition;
}

/// Costing: table KLR holds the code itself, in a column without the underscore.
std::string ruleCodeColumn(const LevelFilter& filter)
{
    if (visibleLevels(filter).empty()) return "KLR.ACCESSLEVEL IS NULL";
    return "KLR.ACCESSLEVEL IS NULL OR KLR.ACCESSLEVEL IN (SELECT ACCESS_LEVELS FROM ACCESS_LEVELS WHERE ID IN (" +
           visibleLevels(filter) + "))";
}

/// Any other table on Oracle. The visible levels are a query there, which takes a UNION.
std::string ruleVisibleOracle(const LevelFilter& filter)
{
    return "NVL(" + levelColumn(filter) + ",0) IN (" +
           (visibleLevels(filter).empty() ? "0" : visibleLevels(filter) + " UNION ALL SELECT 0 AS ID FROM DUAL") + ")";
}

/// Any other table: rows without a level and rows of the visible levels.
std::string ruleVisible(const LevelFilter& filter)
{
    return hasNoLevel(filter) + " OR " + levelColumn(filter) + " IN (" + visibleLevels(filter) + ")";
}

// The decision table. The first row that fits gives the rule. The keys compare exactly.

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
bool hasVisibleLevels(const TmkVar& session)
{
    return !session.strID_Access_Levels.empty();
}
bool isOracle(const TmkVar& session)
{
    return dialect::of(session).isOracle;
}

struct Decision {
    std::span<const std::string_view> tables; ///< empty for any key
    bool (*holds)(const TmkVar&);
    std::string (*rule)(const LevelFilter&);
};

constexpr std::array<Decision, 11> decisions = {{
    {staff, isAlf, ruleAlf},
    {partnersAndPlanning, isBb, ruleBb},
    {partnersAndPlanning, always, ruleSubtree},
    {models, always, ruleModels},
    {services, hasVisibleLevels, ruleParents},
    {services, always, hasNoLevel},
    {relationTables, always, ruleSameLevel},
    {costing, always, ruleCodeColumn},
    {anyKey, isOracle, ruleVisibleOracle},
    {anyKey, hasVisibleLevels, ruleVisible},
    {anyKey, always, hasNoLevel},
}};

bool fits(const Decision& decision, const LevelFilter& filter)
{
    const bool isForTable =
        decision.tables.empty() || std::ranges::find(decision.tables, filter.table) != decision.tables.end();
    return isForTable && decision.holds(filter.session);
}

} // namespace

std::string levelCondition(const LevelFilter& filter)
{
    // The last row fits everything.
    const auto* const decision =
        std::ranges::find_if(decisions, [&](const Decision& candidate) { return fits(candidate, filter); });
    return decision->rule(filter);
}

} // namespace tamarok::rights
