#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <numbers>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "apps/program.h"

#include "tamarok/text.h"

/// The working day that `tamarok day` shows. What each step prints is compared with figures that the test
/// computes from plain queries on the same database, without the library's own operations.
namespace tamarok::test {
namespace {

using Json = nlohmann::json;
using Row = std::vector<std::string>;

/// Runs the day once on one database.
class Day : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        folder_ = std::make_unique<ScratchFolder>();
        database_ = makeDatabase(*folder_, 300);
        before_ = everything();
        outcome_ = run({"day", "--db", database_, "--locale", "de-AT"});
        host_ = std::make_unique<Program>(std::vector<std::string>{"call", "--db", database_});
    }
    static void TearDownTestSuite()
    {
        host_.reset();
        folder_.reset();
    }

    /// The part of the day with that number, from its heading to the next one.
    static std::string step(int number)
    {
        const std::size_t begin = outcome_.output.find(std::to_string(number) + ". ");
        if (begin == std::string::npos) return {};
        const std::size_t end = outcome_.output.find("\n\n" + std::to_string(number + 1) + ". ", begin);
        return outcome_.output.substr(begin, end - begin);
    }

    /// The rows of a query.
    static Json rows(const std::string& query)
    {
        const Json answer = Json::parse(host_->ask(Json{{"query", query}}.dump()));
        if (answer.contains("error")) throw std::runtime_error{query + ": " + answer["error"].dump()};
        return answer["result"]["rows"];
    }

    /// All rows of the tables that the day writes to.
    static std::string everything()
    {
        std::string queries;
        for (const char* query : {"SELECT * FROM LOGS ORDER BY ID_LOG", "SELECT * FROM LOGS_RECH ORDER BY ID_LOG",
                                  "SELECT COUNT(*) AS N FROM LOGS_HISTORY", "SELECT COUNT(*) AS N FROM LOCK",
                                  "SELECT RELATION, NAME, MODEL FROM MODELS ORDER BY ID"})
            queries.append(Json{{"query", query}}.dump()).append("\n");
        return run({"call", "--db", database_}, queries).output;
    }

    static inline std::unique_ptr<ScratchFolder> folder_;
    static inline std::string database_;
    static inline std::string before_;
    static inline Outcome outcome_;
    static inline std::unique_ptr<Program> host_;
};

std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    for (std::size_t at = 0; at <= text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        lines.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return lines;
}

/// Cuts a line where the rule "---  -----" of its table has its columns, which count characters.
Row cellsOf(const std::string& line, const std::string& rule)
{
    Row cells;
    for (std::size_t at = 0; at < rule.size();) {
        const std::size_t end = std::min(rule.find(' ', at), rule.size());
        cells.emplace_back(text::trim(text::mid(line, at + 1, end - at)));
        at = std::min(rule.find('-', end), rule.size());
    }
    return cells;
}

/// The rows of the table below the first line that begins with `header`.
std::vector<Row> tableBelow(const std::string& text, const std::string& header)
{
    const std::vector<std::string> lines = linesOf(text);
    const auto head = std::ranges::find_if(lines, [&](const std::string& line) { return line.starts_with(header); });
    std::vector<Row> table;
    if (lines.end() - head < 2) return table;
    for (auto line = head + 2; line != lines.end() && !line->empty(); ++line)
        table.push_back(cellsOf(*line, *(head + 1)));
    return table;
}

/// A printed number: "1.234,50" is 1234.5.
double numberOf(const std::string& cell)
{
    return std::stod(text::replaceAll(text::replaceAll(cell, ".", ""), ",", "."));
}

std::string textOf(const Json& value)
{
    return value.is_null() ? std::string{} : value.get<std::string>();
}

constexpr double halfCent = 0.005 + 1e-9; ///< what two printed decimals may differ from the exact figure

TEST_F(Day, RunsAllStepsAndLeavesTheDatabaseAsItWas)
{
    EXPECT_EQ(outcome_.status, 0);
    EXPECT_EQ(outcome_.errors, "");
    for (int number = 1; number <= 13; ++number)
        EXPECT_NE(step(number), "") << number;
    EXPECT_EQ(step(14), "");
    EXPECT_EQ(before_.find("\"error\""), std::string::npos) << "every table was read";
    EXPECT_EQ(everything(), before_);
    EXPECT_EQ(run({"day", "--db", database_, "--locale", "de-AT"}).output, outcome_.output) << "it can be shown again";
}

// ---- 1. login and navigation -------------------------------------------------------------------

/// A person's rights as the tables state them.
class Rights {
public:
    using Query = Json (*)(const std::string&);

    /// @param level  id of the access level in which the person works
    Rights(Query query, int person, int level) : persons_{person}
    {
        // Who has appointed this person as deputy and lends the rights adds their own.
        for (const Json& row : query("SELECT USERS.ID FROM USERS, USERS_PROPERTY WHERE USERS_PROPERTY.ID_USERS = "
                                     "USERS.ID AND USERS_PROPERTY.B055 = 1 AND USERS.ID_USERS_VERTRETER = " +
                                     std::to_string(person)))
            persons_.insert(row[0].get<int>());
        for (const Json& row : query("SELECT ID_USERS, TREEVIEW, LESEN, SCHREIBEN FROM USERS_TREEVIEW")) {
            if (!persons_.contains(row[0].get<int>())) continue;
            Grant& grant = personal_[row[1].get<std::string>()];
            grant.read = grant.read || row[2] == 1;
            grant.write = grant.write || row[3] == 1;
        }
        code = query("SELECT ACCESS_LEVELS FROM ACCESS_LEVELS WHERE ID = " + std::to_string(level))[0][0];
        const std::string depth = code.ends_with("000000") ? "3"
                                  : code.ends_with("0000") ? "2"
                                  : code.ends_with("00")   ? "1"
                                                           : "0";
        for (const Json& row : query("SELECT ANWENDUNGSOBJEKTE, LESEN_" + depth + ", SCHREIBEN_" + depth +
                                     " FROM BB_ORGANISATIONS_RECHTE"))
            level_[row[0].get<std::string>()] = {row[1] == 1, row[2] == 1};
    }

    bool reads(const std::string& key) const
    {
        const bool deniedToPersons = personal_.contains(key) && !personal_.at(key).read;
        const bool deniedToLevel = level_.contains(key) && !level_.at(key).read;
        return !deniedToPersons && !deniedToLevel;
    }
    bool writes(const std::string& key) const
    {
        // Keys of actions are granted to persons alone; these two are among the nodes that the day shows.
        const bool isAction = key == "HV_FREIGABE" || key == "KW_MONATSABSCHLUSS";
        const bool grantedToLevel = isAction || (level_.contains(key) && level_.at(key).write);
        return personal_.contains(key) && personal_.at(key).write && grantedToLevel;
    }
    const std::set<int>& persons() const noexcept { return persons_; }

    std::string code;

private:
    struct Grant {
        bool read = false;
        bool write = false;
    };
    std::set<int> persons_;
    std::map<std::string, Grant> personal_;
    std::map<std::string, Grant> level_;
};

TEST_F(Day, LoginShowsWhatTheRightsTablesGrant)
{
    struct Login {
        std::string name;
        int person;
        int level;
    };
    const std::string shown = step(1);
    for (const Login& login : {Login{"EDER", 9, 18}, Login{"STEINER", 3, 3}}) {
        SCOPED_TRACE(login.name);
        const Rights rights{rows, login.person, login.level};
        EXPECT_EQ(rows("SELECT NAME FROM USERS WHERE ID = " + std::to_string(login.person)), Json({{login.name}}));
        std::size_t grants = 0;
        for (const Json& row : rows("SELECT ID_MASTER FROM ONETOMANY WHERE RELATION = 'USERS.ACCESS_LEVELS'"))
            grants += rights.persons().contains(row[0].get<int>()) ? 1U : 0U;
        const std::size_t begin = shown.find(login.name + " logs in");
        ASSERT_NE(begin, std::string::npos) << shown;
        const std::string part = shown.substr(begin);
        EXPECT_EQ(linesOf(part)[0],
                  login.name + " logs in at level " + rights.code + "; grants of levels: " + std::to_string(grants));
        const std::vector<Row> nodes = tableBelow(part, "Node");
        ASSERT_EQ(nodes.size(), 8U);
        for (const Row& node : nodes) {
            EXPECT_EQ(node[2], rights.reads(node[1]) ? "yes" : "no") << node[0];
            EXPECT_EQ(node[3], rights.writes(node[1]) ? "yes" : "no") << node[0];
        }
    }
}

// ---- 2. a record that is open elsewhere --------------------------------------------------------

TEST_F(Day, AnOpenRecordIsRefusedAndGrantedWhenItsHolderHasDied)
{
    const std::string list = rows("SELECT MAX(LISTE) AS L FROM LOGS")[0][0];
    const std::string shown = step(2);
    const std::size_t opened = shown.find("HUBER has opened list " + list + " in a second process.\n");
    const std::size_t refused =
        shown.find("    Der Datensatz '" + list + "' wird gerade vom Benutzer HUBER bearbeitet und ist gesperrt.\n");
    const std::size_t granted =
        shown.find("The second process has crashed. EDER opens the list again: granted at once.");
    EXPECT_NE(granted, std::string::npos) << shown;
    EXPECT_LT(opened, refused) << shown;
    EXPECT_LT(refused, granted) << shown;
    EXPECT_EQ(rows("SELECT COUNT(*) AS N FROM LOCK"), Json::parse("[[0]]")) << "nobody is logged in any more";
}

// ---- 3. the list in detail ---------------------------------------------------------------------

TEST_F(Day, TheDetailListShowsTheLinesOfGreatestVolume)
{
    const std::vector<Row> shown = tableBelow(step(3), "Liste");
    const Json expected = rows(
        "SELECT LISTE, HS, GKL, STKL, LAENGE, DURCH, STK, KUBATUR FROM LOGS WHERE STKL <> '' ORDER BY KUBATUR DESC");
    ASSERT_EQ(shown.size(), 15U);
    for (std::size_t line = 0; line < shown.size(); ++line) {
        SCOPED_TRACE(line);
        const Row& row = shown[line];
        EXPECT_EQ((Row{row[0], row[4], row[5], row[6]}), (Row{textOf(expected[line][0]), textOf(expected[line][1]),
                                                              textOf(expected[line][2]), textOf(expected[line][3])}));
        for (std::size_t column = 7; column <= 10; ++column)
            EXPECT_NEAR(numberOf(row[column]), expected[line][column - 3].get<double>(), halfCent) << column;
    }
}

TEST_F(Day, TheDetailListJoinsBuyerSpeciesAndPrice)
{
    std::map<std::string, std::string> buyers; // buyer of each list, for all lines of one have the same
    for (const Json& row : rows("SELECT LOGS.LISTE, PERSONAL.NAME FROM LOGS, LOGS_RECH, PERSONAL WHERE "
                                "LOGS.ID_LOG = LOGS_RECH.ID_LOG AND PERSONAL.ID_PERSONAL = LOGS_RECH.R_KUNDE"))
        buyers[row[0]] = row[1];
    const Json lines =
        rows("SELECT LOGS.KUBATUR, HOLZART.HA_LANG, LOGS_RECH.R_PREIS, LOGS_RECH.R_MENGE, LOGS_RECH.R_EURO "
             "FROM LOGS, LOGS_RECH, HOLZART WHERE LOGS.ID_LOG = LOGS_RECH.ID_LOG AND HOLZART.HA = LOGS.HA "
             "AND LOGS.STKL <> '' ORDER BY LOGS.KUBATUR DESC");
    const std::vector<Row> shown = tableBelow(step(3), "Liste");
    ASSERT_EQ(shown.size(), 15U);
    for (std::size_t line = 0; line < shown.size(); ++line) {
        SCOPED_TRACE(line);
        EXPECT_EQ(shown[line][2], buyers[shown[line][0]]);
        EXPECT_EQ(shown[line][3], lines[line][1]);
        // 13.7603 schillings were one euro; a price in schillings is shown in euros.
        const double rate = lines[line][4] == 0 || lines[line][4] == false ? 1.0 / 13.7603 : 1.0;
        const double price =
            rate * lines[line][2].get<double>() * lines[line][3].get<double>() / lines[line][0].get<double>();
        EXPECT_NEAR(numberOf(shown[line][11]), price, halfCent);
    }
}

// ---- 4. the list by species --------------------------------------------------------------------

/// The sums of one species over single lines.
struct Sums {
    double pieces = 0;
    double volume = 0;
    double value = 0;      ///< price times quantity, in euros
    double metres = 0;     ///< length of all pieces
    double bulkMetres = 0; ///< the same, a line of bulk measure counted as one piece
};

std::map<std::string, Sums> sumsBySpecies(const Json& lines)
{
    std::map<std::string, Sums> sums;
    for (const Json& line : lines) {
        const auto number = [&](std::size_t column) {
            return line[column].is_null() ? 0.0 : line[column].get<double>();
        };
        Sums& species = sums[line[0].get<std::string>()];
        species.pieces += number(1);
        species.volume += number(2);
        species.metres += number(3) * number(1);
        species.bulkMetres += number(3) * (line[4] == 3 ? 1.0 : number(1));
        const bool schillings = line[7] == 0 || line[7] == false;
        species.value += (schillings ? 1.0 / 13.7603 : 1.0) * number(5) * number(6);
    }
    return sums;
}

TEST_F(Day, TheAggregatedListSumsAndWeights)
{
    const std::map<std::string, Sums> sums =
        sumsBySpecies(rows("SELECT HOLZART.HA_LANG, LOGS.STK, LOGS.KUBATUR, LOGS.LAENGE, LOGS.KLST, LOGS_RECH.R_PREIS, "
                           "LOGS_RECH.R_MENGE, LOGS_RECH.R_EURO FROM LOGS, LOGS_RECH, HOLZART WHERE "
                           "LOGS.ID_LOG = LOGS_RECH.ID_LOG AND HOLZART.HA = LOGS.HA AND LOGS.STKL <> ''"));
    double total = 0;
    for (const auto& [name, species] : sums)
        total += species.volume;
    const std::vector<Row> shown = tableBelow(step(4), "Holzart");
    ASSERT_EQ(shown.size(), sums.size());
    for (const Row& row : shown) {
        SCOPED_TRACE(row[0]);
        ASSERT_TRUE(sums.contains(row[0]));
        const Sums& species = sums.at(row[0]);
        EXPECT_DOUBLE_EQ(numberOf(row[1]), species.pieces);
        EXPECT_NEAR(numberOf(row[2]), species.volume, halfCent);
        EXPECT_NEAR(numberOf(row[3]), 100.0 * species.volume / total, halfCent);
        EXPECT_NEAR(numberOf(row[4]), species.value / species.volume, halfCent);
        // The mean diameter is that of a cylinder of the mean volume; the formula takes 3.1416 for pi.
        EXPECT_NEAR(numberOf(row[5]), 200.0 * std::sqrt(species.volume / 3.1416 / species.bulkMetres), halfCent);
        EXPECT_NEAR(numberOf(row[6]), species.metres / species.pieces, halfCent);
    }
    const std::string line = linesOf(step(4)).back();
    ASSERT_TRUE(line.starts_with("Total volume ")) << line;
    EXPECT_NEAR(numberOf(line.substr(13, line.find(", shares") - 13)), total, halfCent);
    EXPECT_TRUE(line.ends_with(", shares 100,00 %")) << line;
}

// ---- 5. code fields ----------------------------------------------------------------------------

/// The ids in a comma list such as "1,2,7".
std::set<int> idsOf(const std::string& list)
{
    std::set<int> ids;
    for (std::size_t at = 0; at < list.size();) {
        const std::size_t end = std::min(list.find(',', at), list.size());
        ids.insert(std::stoi(list.substr(at, end - at)));
        at = end + 1;
    }
    return ids;
}

TEST_F(Day, CodeFieldsOfferWhatTheMasterDataAllow)
{
    const std::string shown = step(5);
    std::vector<Row> assortments;
    for (const Json& row : rows("SELECT HS, HS_LANG, DISABLE FROM HOLZSORTE WHERE RUND = 1 ORDER BY LDNR"))
        if (row[2] != true) assortments.push_back({row[0], row[1]});
    EXPECT_EQ(assortments.size(), 7U);
    EXPECT_EQ(tableBelow(shown, "SO "), assortments);

    const std::set<int> allowed = idsOf(rows("SELECT GKL FROM HOLZSORTE WHERE HS = 'BL'")[0][0]);
    std::vector<Row> qualities;
    for (const Json& row : rows("SELECT ID, GKL, GKL_LANG FROM GUETEKLASSE ORDER BY SHOW_ORDER"))
        if (allowed.contains(row[0].get<int>())) qualities.push_back({row[1], row[2]});
    EXPECT_EQ(qualities.size(), 5U);
    EXPECT_EQ(tableBelow(shown, "SHORT "), qualities);
}

TEST_F(Day, CodeFieldsAcceptACodeThatTheAssortmentAllows)
{
    /// Whether an assortment's list of ids contains a code; without a list it allows all codes.
    const auto allows = [](const std::string& assortment, const std::string& listColumn, const std::string& table,
                           const std::string& column, const std::string& code) {
        const Json list = rows("SELECT " + listColumn + " FROM HOLZSORTE WHERE HS = '" + assortment + "'")[0][0];
        const int id = rows("SELECT ID FROM " + table + " WHERE " + column + " = '" + code + "'")[0][0];
        return list.is_null() || list == "" || idsOf(list).contains(id);
    };
    const auto line = [](bool accepted, const std::string& code, const std::string& assortment) {
        return code + (accepted ? " is accepted\n" : " is not allowed for " + assortment + "\n");
    };
    const std::string shown = step(5) + "\n";
    for (const auto& [assortment, code] : {std::pair{"BL", "c"}, std::pair{"BL", "F"}}) {
        const std::string expected = "GUETEKLASSE_HS_LOGS_VALID: " +
                                     line(allows(assortment, "GKL", "GUETEKLASSE", "GKL", code), code, assortment);
        EXPECT_NE(shown.find(expected), std::string::npos) << expected << shown;
    }
    for (const auto& [assortment, code] : {std::pair{"BL", "fi"}, std::pair{"FU", "fi"}}) {
        const std::string expected =
            "HOLZART_HS_LOGS_VALID: " + line(allows(assortment, "HOLZART", "HOLZART", "HA", code), code, assortment);
        EXPECT_NE(shown.find(expected), std::string::npos) << expected << shown;
    }
}

// ---- 6. a line typed key by key ----------------------------------------------------------------

/// The rest of the first line that begins with `start`, without blanks around it.
std::string lineAfter(const std::string& text, const std::string& start)
{
    for (const std::string& line : linesOf(text)) {
        if (text::trim(line).starts_with(start)) return std::string{text::trim(line).substr(start.size())};
    }
    return "(no line " + start + ")";
}

std::string quoted(const std::string& text)
{
    return std::string{"'"}.append(text).append("'");
}

TEST_F(Day, AMeasuredLineIsTypedSavedReadAndPutBack)
{
    const std::string shown = step(6);
    for (const char* wanted :
         {"4 -> 4   , -> 4,   x refused   5 -> 4,5   leaving -> 04,50\n",
          "3 -> 3   2 -> 32   - refused   leaving -> 032\n",
          "5 -> 5   . -> 5.   3 -> 5.3   . -> 5.3.   / refused   2 -> 5.3.2", "  Length in m     4,5\n",
          "  Diameter in cm  32\n", "  Date            05.03.2024\n", "  Remark          Weg d'Or\n"})
        EXPECT_NE(shown.find(wanted), std::string::npos) << wanted << "\n" << shown;

    const Json line = rows("SELECT TOP 1 ID_LOG, LAENGE, DURCH, LISTDATUM, FREI1 FROM LOGS WHERE STK = 1 AND "
                           "LAENGE IS NOT NULL AND DURCH IS NOT NULL ORDER BY ID_LOG")[0];
    const std::string where = " WHERE ID_LOG = " + std::to_string(line[0].get<int>());
    const std::size_t putBack = shown.find("Putting the old line back sends\n");
    ASSERT_NE(putBack, std::string::npos);
    const std::string typed = shown.substr(0, putBack);
    EXPECT_EQ(lineAfter(typed, "UPDATE LOGS SET LAENGE = "), "04.50" + where);
    EXPECT_EQ(lineAfter(typed, "UPDATE LOGS SET DURCH = "), "032" + where);
    EXPECT_EQ(lineAfter(typed, "UPDATE LOGS SET LISTDATUM = "), "'5.3.2024'" + where);
    EXPECT_EQ(lineAfter(typed, "UPDATE LOGS SET FREI1 = "), "'Weg d''Or'" + where);
    EXPECT_EQ(lineAfter(typed, "SELECT TOP 1 LAENGE "), "FROM LOGS" + where);

    const std::string restored = shown.substr(putBack);
    const auto column = [&](const char* name) {
        const std::string rest = lineAfter(restored, std::string{"UPDATE LOGS SET "} + name + " = ");
        return rest.substr(0, rest.find(where));
    };
    EXPECT_DOUBLE_EQ(std::stod(column("LAENGE")), line[1].get<double>());
    EXPECT_DOUBLE_EQ(std::stod(column("DURCH")), line[2].get<double>());
    const std::string date = line[3]["$date"]; // such as 2024-03-05
    const std::string dayOfMonth = std::to_string(std::stoi(date.substr(8, 2)));
    const std::string month = std::to_string(std::stoi(date.substr(5, 2)));
    EXPECT_EQ(column("LISTDATUM"), quoted(dayOfMonth + "." + month + "." + date.substr(0, 4)));
    EXPECT_EQ(column("FREI1"), line[4].is_null() ? "NULL" : quoted(textOf(line[4])));
}

// ---- 7. ten logs measured ----------------------------------------------------------------------

TEST_F(Day, TenLogsHaveTheVolumeAndClassOfTheirMeasures)
{
    const std::vector<Row> shown = tableBelow(step(7), "Species");
    ASSERT_EQ(shown.size(), 10U);
    const Json classes = rows("SELECT STKL, DM_VON, DM_BIS FROM STKL WHERE DISABLE = 0");
    for (const Row& log : shown) {
        SCOPED_TRACE(log[0] + " " + log[1] + " " + log[3]);
        const double underBark = numberOf(log[3]) - numberOf(log[6]);
        const double volume = std::numbers::pi / 4.0 * std::pow(underBark / 100.0, 2.0) * numberOf(log[5]);
        EXPECT_NEAR(numberOf(log[8]), volume, 0.0005 + 1e-9);
        if (log[7].empty()) continue; // an assortment of stacked timber has no classes
        const auto row = std::ranges::find_if(classes, [&](const Json& known) { return known[0] == log[7]; });
        ASSERT_NE(row, classes.end()) << log[7];
        // A class reaches to the centimetre below the next one, and diameters are rounded down for it.
        EXPECT_GE(underBark, (*row)[1].get<double>());
        EXPECT_LT(underBark, std::floor((*row)[2].get<double>()) + 1.0);
    }
    const auto unclassed = std::ranges::count_if(shown, [](const Row& log) { return log[7].empty(); });
    EXPECT_EQ(unclassed, 1);
    EXPECT_EQ(shown.back()[1], "IF");
}

TEST_F(Day, TenLogsAreConvertedClassedAndArchived)
{
    const std::vector<Row> measured = tableBelow(step(7), "Species");
    const std::string second = step(7).substr(step(7).find("The same lines in other units"));
    const std::vector<Row> converted = tableBelow(second, "Species");
    ASSERT_EQ(measured.size(), 10U);
    ASSERT_EQ(converted.size(), 10U);
    const Json classes = rows("SELECT KKLASSE, VOLUME_FROM, VOLUME_TO FROM KUBATURKLASSE");
    for (std::size_t line = 0; line < converted.size(); ++line) {
        SCOPED_TRACE(line);
        const Row& log = converted[line];
        EXPECT_EQ((Row{log[0], log[1]}), (Row{measured[line][0], measured[line][1]}));
        const double volume = numberOf(measured[line][8]);
        EXPECT_NEAR(numberOf(log[2]), volume, halfCent);
        // The printed factors are rounded to two decimals, so the quotients are near, not equal.
        EXPECT_NEAR(numberOf(log[3]), volume / numberOf(measured[line][9]), 0.02);
        EXPECT_NEAR(numberOf(log[4]), volume / numberOf(measured[line][10]), 0.02);
        EXPECT_DOUBLE_EQ(numberOf(log[5]), 1.0);
        const auto row = std::ranges::find_if(classes, [&](const Json& known) {
            return volume >= known[1].get<double>() && volume < known[2].get<double>();
        });
        ASSERT_NE(row, classes.end());
        EXPECT_EQ(log[6], (*row)[0]) << volume;
    }
    EXPECT_EQ(lineAfter(step(7), "Archived: "), "10 lines");
}

// ---- 8. and 9. two other list types ------------------------------------------------------------

TEST_F(Day, GameBySpeciesAddsUp)
{
    const Json expected = rows("SELECT W.LONG AS L, SUM(G.STUCK) AS N, SUM(G.GEWICHT) AS KG, SUM(G.NETTOBETRAG) AS E "
                               "FROM BB_WILDURSPRUNGS G, BB_T_WILDART W WHERE W.ID = G.ID_BB_T_WILDART AND "
                               "G.STORNODATUM IS NULL GROUP BY W.LONG ORDER BY W.LONG");
    const std::vector<Row> shown = tableBelow(step(8), "Wildart");
    ASSERT_EQ(shown.size(), expected.size());
    ASSERT_GT(shown.size(), 3U);
    for (std::size_t row = 0; row < shown.size(); ++row) {
        EXPECT_EQ(shown[row][0], textOf(expected[row][0]));
        for (std::size_t column = 1; column < 4; ++column)
            EXPECT_NEAR(numberOf(shown[row][column]), expected[row][column].get<double>(), halfCent) << shown[row][0];
    }
}

TEST_F(Day, HarvestRecordsShowTheirGreatestLines)
{
    const Json expected = rows("SELECT TOP 10 KUBATUR FROM BB_HAB ORDER BY KUBATUR DESC");
    const std::string shown = step(9);
    std::string head;
    for (const std::string& line : linesOf(shown))
        if (line.starts_with("---"))
            break;
        else
            head = line;
    const std::vector<Row> table = tableBelow(shown, head);
    ASSERT_EQ(table.size(), 10U);
    for (std::size_t row = 0; row < table.size(); ++row)
        EXPECT_NEAR(numberOf(table[row].back()), expected[row][0].get<double>(), halfCent) << row;
}

// ---- 10. lists on the screen -------------------------------------------------------------------

/// The rows below the `which`-th line that holds `header`, cut at two blanks or more.
std::vector<Row> listBelow(const std::string& text, const std::string& header, int which = 1)
{
    const std::vector<std::string> lines = linesOf(text);
    auto line = lines.begin();
    for (; line != lines.end() && which > 0; ++line)
        if (line->find(header) != std::string::npos && !line->starts_with("SELECT")) --which;
    std::vector<Row> list;
    for (; line != lines.end() && line->find("...") == std::string::npos; ++line) {
        Row cells;
        for (std::size_t at = line->find_first_not_of(' '); at != std::string::npos;) {
            const std::size_t end = std::min(line->find("  ", at), line->size());
            cells.push_back(line->substr(at, end - at));
            at = line->find_first_not_of(' ', end);
        }
        list.push_back(cells);
    }
    return list;
}

TEST_F(Day, DogsAreSortedByTheirDateOfBirthAndByTheirWeight)
{
    const Json youngest = rows("SELECT TOP 4 CONVERT(VARCHAR(10), WURFDATUM, 104) AS D FROM BB_JAGDHUNDE WHERE "
                               "STORNODATUM IS NULL ORDER BY WURFDATUM DESC");
    const std::vector<Row> byDate = listBelow(step(10), ">>Wurfdatum");
    ASSERT_EQ(byDate.size(), 4U);
    for (std::size_t row = 0; row < byDate.size(); ++row)
        EXPECT_EQ(byDate[row].at(2), textOf(youngest[row][0]));
    const Json lightest = rows("SELECT TOP 4 GEWICHT FROM BB_JAGDHUNDE WHERE STORNODATUM IS NULL ORDER BY GEWICHT");
    const std::vector<Row> byWeight = listBelow(step(10), "<<Gewicht");
    ASSERT_EQ(byWeight.size(), 4U);
    for (std::size_t row = 0; row < byWeight.size(); ++row)
        EXPECT_NEAR(numberOf(byWeight[row].at(3)), lightest[row][0].get<double>(), 0.05 + 1e-9);
}

TEST_F(Day, ArticlesFollowTheSortingOfTheView)
{
    const Json dearest = rows("SELECT TOP 4 EINHPREIS FROM WARENKATALOG ORDER BY EINHPREIS DESC");
    const std::vector<Row> shown = listBelow(step(10), "Artikelnr.");
    ASSERT_EQ(shown.size(), 4U);
    for (std::size_t row = 0; row < shown.size(); ++row)
        EXPECT_NEAR(numberOf(shown[row].at(2)), dearest[row][0].get<double>(), halfCent);
}

TEST_F(Day, ItemsNameTheirRecord)
{
    const Json record = rows("SELECT TOP 1 K.ID, K.HAB_NUMMER, RIGHT(A.ACCESS_LEVELS,6) AS L FROM BB_HAB_KOPF K, "
                             "ACCESS_LEVELS A WHERE A.ID = K.ID_ACCESS_LEVELS ORDER BY K.HAB_NUMMER");
    const std::string key = "key 1R" + std::to_string(record[0][0].get<int>()) + ";";
    EXPECT_NE(step(10).find(key), std::string::npos) << key;
    const std::string tag = "record " + textOf(record[0][1]) + " and level " + textOf(record[0][2]) + ".";
    EXPECT_NE(step(10).find(tag), std::string::npos) << tag;
}

TEST_F(Day, WidthsAreRestored)
{
    EXPECT_NE(step(10).find("restored: 1440 2600 1440 900 1440"), std::string::npos);
}

// ---- 11. and 12. code fields and paper work ----------------------------------------------------

TEST_F(Day, CodeFieldsShowTheRowOfTheCode)
{
    const Json spruce = rows("SELECT ID, HA_LANG FROM HOLZART WHERE HA = 'FI'");
    EXPECT_NE(step(11).find("\"fi\" is valid. Field \"fi\", key \"" + std::to_string(spruce[0][0].get<int>()) +
                            "\", label \"" + textOf(spruce[0][1]) + "\"\n"),
              std::string::npos)
        << step(11);
    const Json message = rows("SELECT GERMAN FROM STRINGS WHERE ID_STRING = 223");
    EXPECT_NE(step(11).find("\"xx\" is wrong. Field \"xx\", key \"\", label \"\"; message: " + textOf(message[0][0])),
              std::string::npos)
        << step(11);
}

TEST_F(Day, NumbersFollowTheLastOnes)
{
    const Json last = rows("SELECT MAX(R_NAME) AS R FROM HEADERRECH");
    const std::string number = lineAfter(step(12), "Next invoice: ");
    EXPECT_EQ(number.substr(0, number.find(' ')).size(), textOf(last[0][0]).size());
    EXPECT_GT(number.substr(0, number.find(' ')), textOf(last[0][0]));
    EXPECT_NE(step(12).find("gedruckt; 30.12.2024; 17:00:00; EDER"), std::string::npos) << step(12);
    EXPECT_NE(step(12).find("    copies = 2\n"), std::string::npos) << step(12);
}

// ---- 13. lookups -------------------------------------------------------------------------------

TEST_F(Day, LookupsFindAndAddRows)
{
    const Json fir = rows("SELECT TOP 1 HA, HA_LANG FROM HOLZART WHERE ISNULL(DISABLE,0)=0 AND HA_LANG LIKE 'tan%' "
                          "ORDER BY HA_LANG");
    const Json head = rows("SELECT GERMAN FROM STRINGS WHERE ID_STRING = 5245");
    EXPECT_EQ(lineAfter(step(13), "HOLZART_GRID | "), " \xC2\xBB\xC2\xBB  " + textOf(head[0][0]) + " | tan | " +
                                                          textOf(fir[0][1]) + " | taken: " + textOf(fir[0][0]));
    EXPECT_TRUE(lineAfter(step(13), "RELTABLE3_KURZ_GRID | ").ends_with(" | Arbeitstag | taken: TAG")) << step(13);
    EXPECT_TRUE(lineAfter(step(13), "EBENE1 | ").ends_with(" | taken: |1|1|1|1|1")) << step(13);
}

} // namespace
} // namespace tamarok::test
