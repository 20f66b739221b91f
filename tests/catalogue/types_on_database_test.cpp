#include <algorithm>
#include <array>
#include <cctype>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/list_composer.h"
#include "catalogue/table_file.h"
#include "column_kind.h"
#include "list_types.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_loc/loc_service.h"

#include "tamarok/comm_csel.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

// Every column of every list type on the reference database (LOG has more tests of its own): alone, together,
// aggregated, labelled, and found again by its value.

namespace tamarok {
namespace {

using catalogue::Aggregate;
using catalogue::Choice;
using catalogue::Column;
using catalogue::Kind;
using catalogue::ListType;

/// What a column is not asked for.
enum class Check { detail, aggregate, together, findingItsValue };

/// The columns that a check leaves out, and why.
struct Exception {
    std::string_view type;
    int id; ///< 0 for every column of the type
    Check check;
    std::string_view reason;
};

constexpr Exception exceptions[]{
    {"ARTIKEL", 459, Check::findingItsValue, "a window function cannot stand in a condition"},
    {"ARTIKEL", 769, Check::detail, "the expression holds a sum, and so stands in aggregated lists alone"},
    {"ARTIKEL", 769, Check::together, "the expression holds a sum, and so stands in aggregated lists alone"},
    {"ARTIKEL", 769, Check::findingItsValue, "a sum cannot stand in a condition"},
    {"VERTRAG", 0, Check::findingItsValue, "the list is not filtered by value"},
    {"WAREN", 0, Check::findingItsValue, "the list is not filtered by value"},
    {"RJ", 0, Check::findingItsValue, "the list is not filtered by value"},
};

/// Aliases that bring several rows for one of the base: the positions of a head.
const std::map<std::string, std::set<std::string>>& multiplyingAliases()
{
    static const std::map<std::string, std::set<std::string>> all{
        {"BBF", {"ARBEITSAUFTRAG", "BELEGE"}},
        {"BBF_PLANN", {"ARBEITSAUFTRAG_PLANN", "BELEGE"}},
        {"BBFAHR", {"BB_FAHRTENBUCH"}},
        {"BBFAK", {"BB_FAKTURA_ARTIKEL"}},
        {"BBFB", {"SCH_BELEGE"}},
        {"BBFS", {"ARB", "LOHNERFASSUNG_ZEIT_SONST"}},
        {"BBHAB", {"BB_HAB", "BB_HAB_NATURALVOLLZUG"}},
        {"BBJAGD", {"BB_ABSCHLUSSPLAN"}},
        {"BBKLR", {"BB_BELEGE", "BB_NATURALVOLLZUG"}},
        {"BBLTN", {"BB_LEISTUNGS", "BB_LEISTUNGS_SONST", "BB_LEISTUNGS_SONST_STD", "BB_LEISTUNGS_STD"}},
        {"BBMAP", {"BB_MAP"}},
        {"BBPLAN", {"BB_PLAN", "BB_PLAN_MATERIAL"}},
        {"BBTALK", {"BB_TAKL02_KLR_BETRIEB"}},
        {"BBUN", {"BB_TAKL02_KLR_BETRIEB"}},
        {"BBVS", {"BB_VERTEILSCHLUSSEL"}},
        {"BBWAL", {"BB_LEISTUNGS_SONST", "BB_LEISTUNGS_SONST_STD", "BB_WALDARBEITERLOHN_BUCHUNG"}},
        {"BBZV", {"BB_AUFTRAG", "BB_MAP"}},
        {"BERM", {"BEREITSTELLUNG_LOGS"}},
        {"FHPEXP", {"FHP_ESTPRO", "FHP_SUPRO"}},
        {"MVLOSE", {"BB_MV_GEBOTE", "BB_MV_HOLZDATEN", "BB_MV_LOSE"}},
        {"PERSONAL", {"PERSONAL_VERKAUFSZIEL", "WB_WALDORT_ZUORD"}},
        {"STEH", {"STEH_AUFNAHMEPROTOKOLL", "TSP_STEH_HS_VERT_GR1"}},
        {"TRANSPORT", {"TRANSPORTLOGISTIK"}},
    };
    return all;
}

bool isException(std::string_view type, int id, Check check)
{
    return std::ranges::any_of(exceptions, [&](const Exception& row) {
        return row.type == type && (row.id == id || row.id == 0) && row.check == check;
    });
}

/// The names before a point in an expression, outside of quotes: the aliases that it reads.
std::set<std::string> aliasesIn(std::string_view expression)
{
    std::set<std::string> aliases;
    std::string word;
    bool quoted = false;
    for (const char character : expression) {
        if (character == '\'') quoted = !quoted;
        const bool isPart =
            std::isalnum(static_cast<unsigned char>(character)) != 0 || character == '_' || character == '#';
        if (!quoted && character == '.' && !word.empty() && std::isdigit(static_cast<unsigned char>(word.front())) == 0)
            aliases.insert(word);
        word = !quoted && isPart ? word + character : std::string{};
    }
    return aliases;
}

/// The alias of the last join.
std::string lastAlias(const std::string& body)
{
    const std::size_t on = body.rfind(" ON ");
    const std::size_t begin = body.rfind(' ', on - 1) + 1;
    return body.substr(begin, on - begin);
}

class ListTypeOnDatabase : public ::testing::TestWithParam<std::string> {
protected:
    static void SetUpTestSuite()
    {
        connection() = embedded::connectInMemory();
        database::ReferenceOptions small;
        small.logs = 300;
        database::createReferenceDatabase(*connection(), small);
    }
    static void TearDownTestSuite() { connection() = nullptr; }

    ListTypeOnDatabase() : scope_{makePlatform()}
    {
        session.db_ADO = connection();
        session.strLanguage = "GERMAN";
        session.strDateFormat = "DD.MM.YYYY";
        for (const Column& column : type().description().columns)
            ids.push_back(column.id);
    }

    /// The list of services reads the visible ones from a temporary table, which its form fills.
    void SetUp() override
    {
        static bool filled = false;
        if (key() != "BBLTN" || std::exchange(filled, true)) return;
        connection()->Execute("CREATE TABLE #BB_LEISTUNGS_KOPF (ID INT NOT NULL PRIMARY KEY)");
        connection()->Execute("INSERT INTO #BB_LEISTUNGS_KOPF (ID) SELECT ID FROM BB_LEISTUNGS_KOPF");
    }

    static Platform makePlatform()
    {
        Platform platform;
        platform.regional = Regional::named("de-AT");
        platform.makeLocService = loc::makeLocService;
        return platform;
    }
    static ado::ConnectionRef& connection()
    {
        static ado::ConnectionRef shared;
        return shared;
    }

    const std::string& key() const { return GetParam(); }
    const ListType& type() const { return *catalogue::findListType(key()); }

    std::string from(std::int16_t id, std::string body = {}) const
    {
        return csel.GetFrom(key(), id, body, "R", session);
    }

    std::string fromOf(const std::vector<std::int16_t>& columns) const
    {
        std::string body;
        for (const std::int16_t id : columns)
            body = from(id, body);
        return body.empty() ? std::string{type().description().base} : body;
    }

    std::string column(std::int16_t id, bool aggregated, bool inGroupBy) const
    {
        return csel.GetColumnTyp(key(), id, aggregated, inGroupBy, session);
    }

    /// Reads every row, so that expressions are not only compiled. Returns the number of rows, -1 for a failure.
    std::int64_t run(const std::string& statement, const std::string& about) const
    {
        try {
            ado::Recordset rows;
            rows.Open(statement, session.db_ADO);
            std::int64_t count = 0;
            for (; !rows.AtEOF(); rows.MoveNext()) {
                static_cast<void>(rows.Fields().Item(0).Value());
                ++count;
            }
            rows.Close();
            return count;
        } catch (const Error& error) {
            ADD_FAILURE() << key() << " " << about << ": " << error.what() << "\n" << statement.substr(0, 3000);
            return -1;
        }
    }

    std::int64_t countOf(const std::string& body, const std::string& about, const std::string& condition = {}) const
    {
        const std::string statement =
            "SELECT COUNT(*) FROM " + body + (condition.empty() ? std::string{} : " WHERE " + condition);
        try {
            ado::Recordset rows;
            rows.Open(statement, session.db_ADO);
            return convert::toLongLong(rows.Fields().Item(0).Value());
        } catch (const Error& error) {
            ADD_FAILURE() << key() << " " << about << ": " << error.what() << "\n" << statement.substr(0, 3000);
            return -1;
        }
    }

    void runAlone(std::int16_t id) const
    {
        const std::string about = std::to_string(id);
        const std::string select = column(id, false, false);
        EXPECT_NE(select, "") << key() << " " << id;
        if (!isException(key(), id, Check::detail)) run("SELECT " + select + " FROM " + from(id), about + " alone");
        if (isException(key(), id, Check::aggregate)) return;
        const std::string group = csel.InsertToStr2("", column(id, true, true), "");
        run("SELECT " + column(id, true, false) + " FROM " + from(id) +
                (group.empty() ? std::string{} : " GROUP BY " + group + " ORDER BY " + group),
            about + " aggregated");
    }

    std::int64_t baseRows() const { return countOf(type().description().base, "base"); }

    TmkVar session;
    Comm_CSel csel;
    std::vector<std::int16_t> ids;

private:
    PlatformScope scope_;
};

TEST_P(ListTypeOnDatabase, HasRows)
{
    EXPECT_GE(baseRows(), 200);
}

TEST_P(ListTypeOnDatabase, HasAtLeastTwelveColumns)
{
    EXPECT_GE(ids.size(), key() == "ACL" ? 4U : 12U);
}

TEST_P(ListTypeOnDatabase, EachColumnRunsAlone)
{
    for (const std::int16_t id : ids)
        runAlone(id);
}

/// Only texts that differ between the dialects.
TEST_P(ListTypeOnDatabase, EachColumnRunsAloneInOracleMode)
{
    for (const std::int16_t id : ids) {
        session.bolOracle = false;
        const std::string text = column(id, false, false) + from(id);
        session.bolOracle = true;
        if (column(id, false, false) + from(id) != text) runAlone(id);
    }
}

TEST_P(ListTypeOnDatabase, ColumnsTogetherInAnyOrder)
{
    std::vector<std::int16_t> order = ids;
    const std::int64_t ascending = countOf(fromOf(order), "ascending");
    std::ranges::reverse(order);
    EXPECT_EQ(countOf(fromOf(order), "descending"), ascending) << key();
    std::mt19937 shuffled{20240517};
    std::ranges::shuffle(order, shuffled);
    EXPECT_EQ(countOf(fromOf(order), "shuffled"), ascending) << key();
    std::string select;
    std::vector<std::int16_t> together;
    for (const std::int16_t id : ids)
        if (!isException(key(), id, Check::together)) together.push_back(id);
    for (const std::int16_t id : together)
        select = csel.InsertToStr(select, column(id, false, false));
    if (!select.empty()) {
        EXPECT_EQ(run("SELECT " + select + " FROM " + fromOf(together), "all columns"), ascending) << key();
    }
}

TEST_P(ListTypeOnDatabase, AllColumnsAggregated)
{
    std::string select;
    std::string group;
    std::vector<std::int16_t> together;
    for (const std::int16_t id : ids) {
        if (isException(key(), id, Check::aggregate)) continue;
        together.push_back(id);
        select = csel.InsertToStr(select, column(id, true, false));
        group = csel.InsertToStr2(group, column(id, true, true), "");
    }
    if (!select.empty())
        run("SELECT " + select + " FROM " + fromOf(together) + (group.empty() ? std::string{} : " GROUP BY " + group),
            "all columns aggregated");
}

/// Each join by itself: the rows of what it rests on, without it and with it.
TEST_P(ListTypeOnDatabase, OnlyPositionsMultiplyRows)
{
    std::set<std::string> found;
    for (const catalogue::Join& join : type().description().joins) {
        std::vector<std::int16_t> prerequisites;
        catalogue::forEachId(join.prerequisites, [&](std::int16_t id) { prerequisites.push_back(id); });
        std::int16_t id = 0;
        catalogue::forEachId(join.ids, [&](std::int16_t column) { id = column; });
        const std::string before = fromOf(prerequisites);
        const std::string with = from(id);
        const std::string alias = lastAlias(with);
        if (countOf(with, alias) != countOf(before, alias)) found.insert(alias);
    }
    const auto named = multiplyingAliases().find(key());
    EXPECT_EQ(found, named == multiplyingAliases().end() ? std::set<std::string>{} : named->second) << key();
}

/// The aliases of each type, with at least one column each; those of the base have no join.
TEST_P(ListTypeOnDatabase, EachAliasHasItsJoinAndItsColumns)
{
    std::set<std::string> read;
    for (const std::int16_t id : ids) {
        const std::string body = from(id);
        const std::set<std::string> brought = aliasesIn(body + " " + type().description().base + ".");
        for (const std::string& alias : aliasesIn(column(id, false, false))) {
            read.insert(alias);
            const bool isBrought = body == alias || body.starts_with(alias + " ") ||
                                   body.find(" " + alias + " ON ") != std::string::npos || brought.contains(alias);
            EXPECT_TRUE(isBrought || alias == "NN") << key() << " " << id << " reads " << alias << ": " << body;
        }
    }
    for (const auto& row : test::readTable("list_type_aliases.tsv")) {
        if (row.at(0) != key()) continue;
        EXPECT_EQ(row.at(1), type().description().base);
        const std::string all = fromOf(ids);
        std::istringstream aliases{row.at(2)};
        for (std::string alias; aliases >> alias;) {
            if (key() == "BBLTN" && (alias == "ON" || alias == "BB_LEISTUNGS_KOPF" || alias == "#BB_LEISTUNGS_KOPF"))
                continue;
            EXPECT_NE(all.find(" " + alias + " ON "), std::string::npos) << key() << " joins no " << alias;
            // The flags of users are bare column names, as the contract has them.
            EXPECT_TRUE(read.contains(alias) || alias == "USERS_PROPERTY") << key() << " has no column of " << alias;
        }
    }
}

bool isText(ado::DataType type)
{
    using enum ado::DataType;
    return type == VarWChar || type == LongVarWChar || type == WChar || type == VarChar || type == Char ||
           type == LongVarChar;
}

bool isDate(ado::DataType type)
{
    using enum ado::DataType;
    return type == Date || type == DBDate || type == DBTimeStamp;
}

TEST_P(ListTypeOnDatabase, KindsFitTheTypesOfTheColumns)
{
    for (const std::int16_t id : ids) {
        if (isException(key(), id, Check::detail)) continue;
        const Kind kind = type().column(id)->kind;
        try {
            ado::Recordset rows;
            rows.Open("SELECT TOP 1 " + column(id, false, false) + " FROM " + from(id), session.db_ADO);
            const ado::DataType found = rows.Fields().Item(0).Type();
            const bool expectsText = kind == Kind::text || kind == Kind::textShownAsNumber;
            const bool expectsDate =
                kind == Kind::date || kind == Kind::weekday || kind == Kind::time || kind == Kind::timeWithSeconds;
            EXPECT_EQ(isText(found), expectsText) << key() << " " << id << " has type " << static_cast<int>(found);
            EXPECT_EQ(isDate(found), expectsDate) << key() << " " << id << " has type " << static_cast<int>(found);
        } catch (const Error& error) {
            ADD_FAILURE() << key() << " " << id << ": " << error.what();
        }
    }
}

/// A value that the list shows finds its row, by the condition that the list would put on the column.
TEST_P(ListTypeOnDatabase, AValueOfTheListFindsItsRow)
{
    for (const std::int16_t id : ids) {
        const Kind kind = type().column(id)->kind;
        // The contract compares these as numbers, which no date is.
        if (kind == Kind::time || kind == Kind::timeWithSeconds || kind == Kind::weekday) continue;
        if (isException(key(), id, Check::findingItsValue)) continue;
        const std::string expression = column(id, false, false);
        try {
            ado::Recordset rows;
            rows.Open("SELECT TOP 1 " + expression + " FROM " + from(id) + " WHERE " + expression + " IS NOT NULL",
                      session.db_ADO);
            EXPECT_FALSE(rows.AtEOF()) << key() << " " << id << " is Null in every row: " << expression;
            if (rows.AtEOF()) continue;
            const Variant value = rows.Fields().Item(0).Value();
            rows.Close();
            EXPECT_GT(countOf(from(id), std::to_string(id), expression + csel.IsStr(key(), id, value, session)), 0)
                << key() << " " << id << csel.IsStr(key(), id, value, session);
        } catch (const Error& error) {
            ADD_FAILURE() << key() << " " << id << ": " << error.what();
        }
    }
}

constexpr std::array languages{"GERMAN", "ENGLISH", "FRENCH"};

/// Labels of a type: its own and those of its columns.
TEST_P(ListTypeOnDatabase, LabelsHaveTextsInEveryLanguage)
{
    constexpr std::size_t longestWithoutShortForm = 15;
    std::set<std::int16_t> labels{type().description().label};
    for (const Column& row : type().description().columns)
        EXPECT_TRUE(labels.insert(row.label).second) << key() << " uses label " << row.label << " twice";
    for (const std::int16_t label : labels) {
        ado::Recordset rows;
        rows.Open("SELECT GERMAN, ENGLISH, FRENCH, SHORT_GERMAN, SHORT_ENGLISH, SHORT_FRENCH FROM STRINGS WHERE "
                  "ID_STRING = " +
                      std::to_string(label),
                  session.db_ADO);
        if (rows.AtEOF()) {
            ADD_FAILURE() << key() << ": label " << label << " has no texts";
            continue;
        }
        bool isLong = false;
        for (std::size_t language = 0; language < languages.size(); ++language) {
            const Variant text = rows.Fields().Item(static_cast<std::int32_t>(language)).Value();
            EXPECT_TRUE(text.isString() && !text.asString().empty()) << key() << ": label " << label;
            isLong = isLong || (text.isString() && text::length(text.asString()) > longestWithoutShortForm);
        }
        for (std::size_t language = 0; isLong && language < languages.size(); ++language) {
            const Variant text = rows.Fields().Item(static_cast<std::int32_t>(language + languages.size())).Value();
            EXPECT_TRUE(text.isString() && !text.asString().empty() &&
                        text::length(text.asString()) <= longestWithoutShortForm)
                << key() << ": label " << label << " has no short form in " << languages.at(language);
        }
    }
}

/// No two entries of a box read alike.
TEST_P(ListTypeOnDatabase, ChoicesAreDistinct)
{
    std::map<std::string, std::set<int>> columns;
    for (const Choice& choice : type().description().choices) {
        std::istringstream keys{choice.keys};
        for (std::string box; keys >> box;) {
            catalogue::forEachId(choice.columns, [&](std::int16_t id) {
                const std::string place = box + " " + choice.edition + " " + choice.option;
                EXPECT_TRUE(columns[place].insert(id).second) << box << " offers column " << id << " twice";
            });
        }
    }
}

/// The composer adds to its texts what the operations return with the whole text.
TEST_P(ListTypeOnDatabase, ComposerGivesTheTextsOfTheOperations)
{
    for (const std::string_view begun : {"", "BEGUN AS T"}) {
        std::string select;
        std::string from{begun};
        std::string group;
        catalogue::ListComposer list{key(), "R", session, from};
        for (const std::int16_t id : ids) {
            select = csel.InsertToStr(select, csel.GetColumnTyp(key(), id, true, false, session));
            from = csel.GetFrom(key(), id, from, "R", session);
            group = csel.InsertToStr2(group, csel.GetColumnTyp(key(), id, true, true, session), "R");
            list.addColumn(id);
            ASSERT_EQ(list.group(), group) << "after column " << id;
        }
        EXPECT_EQ(list.select(), select);
        EXPECT_EQ(list.from(), from);
    }
}

/// Columns of the log list whose shown value does not find its row, and why.
struct LogException {
    std::string_view ids;
    std::string_view reason;
};

constexpr LogException logExceptions[]{
    {"568, 569", "the row is empty"},
    {"975", "an aggregate cannot stand in a condition"},
    {"980", "the contract's text lacks an operand, which the database refuses"},
    {"40, 41, 131, 202, 205, 220-224, 250-258, 261-268, 270-278, 280-288, 293-302, 318-320, 500-508, 570-579, 610-619",
     "a computed number has more digits than the fifteen of its text"},
    {"204", "a flag, whose text the contract compares as a number"},
    {"238, 397, 1016, 1017", "a text that the contract compares as a number"},
};

bool isLogException(std::int16_t id)
{
    bool found = false;
    for (const LogException& row : logExceptions)
        catalogue::forEachId(row.ids, [&](std::int16_t excepted) { found = found || excepted == id; });
    return found;
}

/// The log list, whose columns have operations of their own.
class LogListOnDatabase : public ListTypeOnDatabase {
protected:
    std::string logColumn(std::int16_t id) const { return csel.GetColumn(id, "R", session); }
};

TEST_P(LogListOnDatabase, LabelsHaveTexts)
{
    for (const Column& row : type().description().columns) {
        ado::Recordset texts;
        texts.Open("SELECT GERMAN FROM STRINGS WHERE ISNULL(GERMAN,'') <> '' AND ISNULL(ENGLISH,'') <> '' AND "
                   "ISNULL(FRENCH,'') <> '' AND ID_STRING = " +
                       std::to_string(row.label),
                   session.db_ADO);
        EXPECT_FALSE(texts.AtEOF()) << "label " << row.label << " of column " << row.id;
    }
}

/// As for the other types. A comparison with an aggregate, with the invalid column 980 or the two empty ones has no
/// sense.
TEST_P(LogListOnDatabase, AValueOfTheListFindsItsRow)
{
    std::set<std::int16_t> nullInEveryRow;
    for (const std::int16_t id : ids) {
        const std::string expression = logColumn(id);
        if (isLogException(id)) continue;
        try {
            ado::Recordset rows;
            rows.Open("SELECT TOP 1 " + expression + " FROM " + from(id) + " WHERE " + expression + " IS NOT NULL",
                      session.db_ADO);
            if (rows.AtEOF()) {
                nullInEveryRow.insert(id);
                continue;
            }
            const Variant value = rows.Fields().Item(0).Value();
            rows.Close();
            EXPECT_GT(countOf(from(id), std::to_string(id), expression + csel.IsStr("LOG", id, value, session)), 0)
                << id << ": " << expression << csel.IsStr("LOG", id, value, session);
        } catch (const Error& error) {
            ADD_FAILURE() << id << ": " << error.what();
        }
    }
    // Most of them belong to the settlements A4 to A8, which few logs have.
    EXPECT_LT(nullInEveryRow.size(), ids.size() / 2) << "too many columns are Null in every row";
}

INSTANTIATE_TEST_SUITE_P(Log, LogListOnDatabase, ::testing::Values("LOG"));

std::vector<std::string> typesBesidesLog()
{
    std::vector<std::string> keys;
    for (const ListType* type : catalogue::listTypes())
        if (type != &catalogue::logList()) keys.emplace_back(type->description().key);
    return keys;
}

INSTANTIATE_TEST_SUITE_P(Types, ListTypeOnDatabase, ::testing::ValuesIn(typesBesidesLog()),
                         [](const auto& instance) { return instance.param; });

} // namespace
} // namespace tamarok
