#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "master_tables.h"
#include "records_database.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"

#include "tamarok/convert.h"
#include "tamarok/date.h"

// Users, partners, machine logs, wages and services of a reference database.

namespace tamarok::database {
namespace {

using test::databaseOf;

std::vector<std::vector<Variant>> rowsOf(const ado::ConnectionRef& connection, const std::string& statement)
{
    std::vector<std::vector<Variant>> result;
    ado::Recordset rows;
    for (rows.Open(statement, connection); !rows.AtEOF(); rows.MoveNext()) {
        auto& row = result.emplace_back();
        for (std::int32_t i = 0; i < rows.Fields().Count(); ++i)
            row.push_back(rows.Fields().Item(i).Value());
    }
    return result;
}

std::int64_t number(const ado::ConnectionRef& connection, const std::string& statement)
{
    return convert::toLongLong(rowsOf(connection, statement).at(0).at(0));
}

std::string textOf(const Variant& value)
{
    return value.isNull() ? "-" : convert::toText(value, Regional::named("en-US"));
}

std::string content(const ado::ConnectionRef& connection, const std::string& statement)
{
    std::string text;
    for (const auto& row : rowsOf(connection, statement)) {
        for (const Variant& value : row)
            text += textOf(value) + "|";
        text += '\n';
    }
    return text;
}

constexpr const char* heads[]{"LOHNERFASSUNG_KOPF", "BB_LEISTUNGS_KOPF", "BB_WALDARBEITERLOHN_KOPF"};
constexpr const char* keyTables[]{"USERS", "SCH_MASCHINENBUCH", "PA_GRUPPE", "ACCESS_LEVELS"};

class PeopleRecords : public testing::Test {
protected:
    static void SetUpTestSuite() { connection_ = databaseOf(200); }
    static void TearDownTestSuite() { connection_.reset(); }
    static ado::ConnectionRef connection_;
};
ado::ConnectionRef PeopleRecords::connection_;

TEST(PeopleRecordsBySize, HeadsCountFromOne)
{
    for (const std::int32_t records : {0, 1, 7, 250}) {
        const ado::ConnectionRef connection = databaseOf(records);
        for (const std::string table : heads) {
            EXPECT_EQ(number(connection, "SELECT COUNT(*) FROM " + table), records) << table;
            EXPECT_EQ(number(connection, "SELECT ISNULL(MAX(ID),0) FROM " + table), records) << table;
        }
        for (const std::string table : keyTables)
            EXPECT_GE(number(connection, "SELECT COUNT(*) FROM " + table), records) << table;
        if (records == 0) {
            EXPECT_EQ(number(connection, "SELECT COUNT(*) FROM BB_LEISTUNGS"), 0);
        }
    }
}

TEST(PeopleRecordsBySize, SeedFixesTheRows)
{
    const auto all = [](std::uint64_t seed) {
        const ado::ConnectionRef connection = databaseOf(40, seed);
        std::string text;
        for (const std::string table : {"PERSONAL", "USERS", "SCH_MASCHINENBUCH", "LOHNERFASSUNG_ZEIT_SONST",
                                        "BB_LEISTUNGS", "BB_LEISTUNGS_SONST_STD", "BB_WALDARBEITERLOHN_BUCHUNG"})
            text += content(connection, "SELECT * FROM " + table + " ORDER BY 1");
        return text;
    };
    const std::string first = all(1);
    EXPECT_EQ(all(1), first);
    EXPECT_NE(all(2), first);
}

/// Each statement returns the rows whose total is not that of their positions.
TEST_F(PeopleRecords, TotalsAreThoseOfThePositions)
{
    const std::string wrong[]{
        "SELECT K.ID FROM LOHNERFASSUNG_KOPF K LEFT JOIN (SELECT ID_LOHNERFASSUNG_KOPF, SUM(MENGE) AS S, SUM(BETRAG) "
        "AS B "
        "FROM LOHNERFASSUNG_ZEIT_SONST GROUP BY ID_LOHNERFASSUNG_KOPF) P ON P.ID_LOHNERFASSUNG_KOPF = K.ID WHERE "
        "ABS(K.SUMME_STUNDEN-ISNULL(P.S,0)) > 0.001 OR ABS(K.SUMME_BETRAG-ISNULL(P.B,0)) > 0.001",
        "SELECT ID FROM LOHNERFASSUNG_ZEIT_SONST WHERE ID_LOHNERFASSUNG_KOPF IS NOT NULL AND "
        "ABS(BETRAG-MENGE*SATZ) > 0.0051",
        "SELECT ID FROM BB_LEISTUNGS WHERE ABS(BETRAG-STUNDEN*SATZ) > 0.0051",
        "SELECT ID FROM BB_LEISTUNGS_WERT WHERE ABS(BETRAG-MENGE*SATZ) > 0.0051",
        "SELECT L.ID FROM BB_LEISTUNGS L LEFT JOIN (SELECT ID_BB_LEISTUNGS, SUM(STUNDEN) AS S FROM BB_LEISTUNGS_STD "
        "GROUP "
        "BY ID_BB_LEISTUNGS) P ON P.ID_BB_LEISTUNGS = L.ID WHERE ABS(L.STUNDEN-ISNULL(P.S,0)) > 0.001",
        "SELECT K.ID FROM BB_LEISTUNGS_KOPF K LEFT JOIN (SELECT ID_BB_LEISTUNGS_KOPF, SUM(STUNDEN) AS S, SUM(BETRAG) "
        "AS B "
        "FROM BB_LEISTUNGS GROUP BY ID_BB_LEISTUNGS_KOPF) P ON P.ID_BB_LEISTUNGS_KOPF = K.ID WHERE "
        "ABS(K.SUMME_STUNDEN-ISNULL(P.S,0)) > 0.001 OR ABS(K.SUMME_BETRAG-ISNULL(P.B,0)) > 0.001",
        "SELECT K.ID FROM BB_LEISTUNGS_KOPF K LEFT JOIN (SELECT ID_BB_LEISTUNGS_KOPF, SUM(BETRAG) AS B FROM "
        "BB_LEISTUNGS_SONST GROUP BY ID_BB_LEISTUNGS_KOPF) P ON P.ID_BB_LEISTUNGS_KOPF = K.ID WHERE "
        "ABS(K.SUMME_SONST-ISNULL(P.B,0)) > 0.001",
        "SELECT K.ID FROM BB_WALDARBEITERLOHN_KOPF K LEFT JOIN (SELECT ID_BB_WALDARBEITERLOHN_KOPF, SUM(STUNDEN) AS S, "
        "SUM(GESAMT) AS G FROM BB_WALDARBEITERLOHN_BUCHUNG GROUP BY ID_BB_WALDARBEITERLOHN_KOPF) P ON "
        "P.ID_BB_WALDARBEITERLOHN_KOPF = K.ID WHERE ABS(K.SUMME_STUNDEN-ISNULL(P.S,0)) > 0.001 OR "
        "ABS(K.SUMME_GESAMT-ISNULL(P.G,0)) > 0.001",
        "SELECT K.ID FROM BB_LEISTUNGS_KOPF K LEFT JOIN (SELECT ID_BB_LEISTUNGS_KOPF, SUM(BETRAG) AS B FROM "
        "BB_WALDARBEITERLOHN_BUCHUNG GROUP BY ID_BB_LEISTUNGS_KOPF) P ON P.ID_BB_LEISTUNGS_KOPF = K.ID WHERE "
        "ABS(K.SUMME_GESAMT-ISNULL(P.B,0)) > 0.001",
        "SELECT T.ID FROM BB_SCHNITTSTELLE_KOPF T LEFT JOIN (SELECT ID_BB_SCHNITTSTELLE_KOPF, SUM(SUMME_LOHN) AS B "
        "FROM "
        "BB_WALDARBEITERLOHN_KOPF GROUP BY ID_BB_SCHNITTSTELLE_KOPF) P ON P.ID_BB_SCHNITTSTELLE_KOPF = T.ID WHERE "
        "ABS(T.BETRAG-ISNULL(P.B,0)) > 0.001",
        "SELECT P.ID_PERSONAL FROM PERSONAL P INNER JOIN (SELECT ID_PERSONAL, SUM(FLAECHE) AS F FROM WB_WALDORT_ZUORD "
        "GROUP BY ID_PERSONAL) W ON W.ID_PERSONAL = P.ID_PERSONAL WHERE W.F > P.HEKTAR + 0.001",
    };
    for (const std::string& statement : wrong)
        EXPECT_EQ(content(connection_, statement), "") << statement;
}

/// The partners and users of the master data keep every value that is given there.
TEST_F(PeopleRecords, GivenRowsStayAsTheyAre)
{
    for (const std::string table : {"PERSONAL", "USERS", "USERS_PROPERTY", "ACCESS_LEVELS"}) {
        const TsvTable given = masterTable(table);
        std::string names;
        for (const TsvTable::Column& column : given.columns())
            names.append(names.empty() ? "" : ",").append(column.name);
        const auto rows = rowsOf(connection_, "SELECT " + names + " FROM " + table + " ORDER BY 1");
        ASSERT_GE(rows.size(), given.rows());
        for (std::size_t row = 0; row < given.rows(); ++row)
            for (std::size_t column = 0; column < given.columns().size(); ++column)
                EXPECT_EQ(textOf(rows[row][column]), textOf(given.value(row, column)))
                    << table << " " << row << " " << given.columns()[column].name;
    }
}

TEST_F(PeopleRecords, AddedUsersHaveNoRightsAndCannotSignIn)
{
    const std::string added = " IN (SELECT ID FROM USERS WHERE ID > 12)";
    EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM USERS WHERE ID > 12"), 188);
    EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM USERS WHERE ID > 12 AND ISNULL(DISABLE,0) = 0"), 0);
    EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM USERS WHERE ID_USERS_VERTRETER" + added), 0);
    EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM USERS_TREEVIEW WHERE ID_USERS" + added), 0);
    EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM ONETOMANY WHERE RELATION LIKE 'USERS.%' AND ID_MASTER" + added),
              0);
    for (int property = 1; property <= 60; ++property) {
        const std::string column = (property < 10 ? "B00" : "B0") + std::to_string(property);
        EXPECT_EQ(
            number(connection_, "SELECT COUNT(*) FROM USERS_PROPERTY WHERE " + column + " = 1 AND ID_USERS" + added),
            0);
    }
}

/// Column, its table, and the column that it names.
struct Reference {
    std::string table;
    std::string column;
    std::string target;
    std::string key = "ID";
};

TEST_F(PeopleRecords, KeysAreFound)
{
    const Reference references[]{
        {"PERSONAL", "ID_T_BEZIRK", "T_BEZIRK"},
        {"PERSONAL", "ID_T_GEMEINDE", "T_GEMEINDE"},
        {"PERSONAL", "ID_USERS", "USERS"},
        {"PERSONAL_FREE", "ID_PERSONAL", "PERSONAL", "ID_PERSONAL"},
        {"PERSONAL_VERKAUFSZIEL", "ID_BB_T_VERKAUFSZIEL", "BB_T_VERKAUFSZIEL"},
        {"WALDB_VERWALTUNG", "ID_ACCESS_LEVELS", "ACCESS_LEVELS"},
        {"WB_WALDORT_ZUORD", "ID_WALDORT", "WALDORT", "ID_WALDORT"},
        {"SCH_MASCHINENBUCH", "ID_BBF_GRUPPE", "BBF_GRUPPE"},
        {"PA_GRUPPE", "ID_PERSONAL", "PERSONAL", "ID_PERSONAL"},
        {"LOHNARTEN", "EINHEIT", "EINHEIT"},
        {"LOHNERFASSUNG_ZEIT_SONST", "ID_LOHNARTEN", "LOHNARTEN"},
        {"LOHNERFASSUNG_ZEIT_SONST", "ID_SCH_MASCHINENBUCH", "SCH_MASCHINENBUCH"},
        {"LOHNERFASSUNG_ZEIT_SONST", "ID_T_STUNDENFAKTOR", "T_STUNDENFAKTOR"},
        {"BB_LEISTUNGS_KOPF", "ID_PERSONAL", "PERSONAL", "ID_PERSONAL"},
        {"BB_LEISTUNGS_KOPF", "MONAT", "BB_T_MONAT"},
        {"BB_LEISTUNGS", "ID_BB_LEISTUNGS_KOPF", "BB_LEISTUNGS_KOPF"},
        {"BB_LEISTUNGS", "ID_LEISTUNGSART", "BB_TSP_LA_LARTG", "ID_LEISTUNGSART"},
        {"BB_LEISTUNGS", "ID_KOSTENSTELLE", "KOSTENSTELLE"},
        {"BB_LEISTUNGS_WERT", "ID_WARENEINHEIT", "WARENEINHEIT", "EINHEIT_ID"},
        {"BB_LEISTUNGS_SONST", "ID_LOHNARTEN", "LOHNARTEN"},
        {"BB_LEISTUNGS_SONST_STD", "ID_BB_LEISTUNGS_SONST", "BB_LEISTUNGS_SONST"},
        {"BB_WALDARBEITERLOHN_KOPF", "ID_BB_SCHNITTSTELLE_KOPF", "BB_SCHNITTSTELLE_KOPF"},
        {"BB_WALDARBEITERLOHN_BUCHUNG", "ID_BB_LEISTUNGS_KOPF", "BB_LEISTUNGS_KOPF"},
    };
    for (const Reference& row : references) {
        const std::string about = row.table + "." + row.column;
        EXPECT_GT(number(connection_, "SELECT COUNT(*) FROM " + row.table + " WHERE " + row.column + " IS NOT NULL"), 0)
            << about;
        EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM " + row.table + " WHERE " + row.column +
                                          " IS NOT NULL AND " + row.column + " NOT IN (SELECT " + row.key + " FROM " +
                                          row.target + ")"),
                  0)
            << about;
    }
}

/// Each level but the root has the level above it, and each district refers to the three offices above it.
TEST_F(PeopleRecords, LevelsFormATree)
{
    EXPECT_EQ(content(connection_,
                      "SELECT A.ACCESS_LEVELS FROM ACCESS_LEVELS A WHERE A.ID > 1 AND NOT EXISTS(SELECT B.ID "
                      "FROM ACCESS_LEVELS B WHERE B.ACCESS_LEVELS = CASE WHEN RIGHT(A.ACCESS_LEVELS,6) = "
                      "'000000' THEN '00000000' WHEN RIGHT(A.ACCESS_LEVELS,4) = '0000' THEN "
                      "LEFT(A.ACCESS_LEVELS,2)+'000000' WHEN RIGHT(A.ACCESS_LEVELS,2) = '00' THEN "
                      "LEFT(A.ACCESS_LEVELS,4)+'0000' ELSE LEFT(A.ACCESS_LEVELS,6)+'00' END)"),
              "");
    EXPECT_EQ(content(connection_,
                      "SELECT A.ID FROM ACCESS_LEVELS A LEFT JOIN ACCESS_LEVELS B ON B.ID = A.ID_ACL_1 LEFT "
                      "JOIN ACCESS_LEVELS C ON C.ID = A.ID_ACL_2 WHERE RIGHT(A.ACCESS_LEVELS,2) <> '00' AND "
                      "(A.ID_ACL_0 <> A.ID OR ISNULL(B.ACCESS_LEVELS,'') <> LEFT(A.ACCESS_LEVELS,6)+'00' OR "
                      "ISNULL(C.ACCESS_LEVELS,'') <> LEFT(A.ACCESS_LEVELS,4)+'0000')"),
              "");
}

/// Moves the first four characters to the end, takes letters as numbers from 10, and divides by 97.
std::int32_t remainderOfAccount(const std::string& account)
{
    std::int32_t remainder = 0;
    for (const char character : account.substr(4) + account.substr(0, 4)) {
        const bool isDigit = character >= '0' && character <= '9';
        remainder = isDigit ? remainder * 10 + (character - '0') : remainder * 100 + (character - 'A' + 10);
        remainder %= 97;
    }
    return remainder;
}

TEST_F(PeopleRecords, AccountNumbersHaveValidCheckDigits)
{
    const auto rows = rowsOf(connection_, "SELECT IBAN, NATION FROM PERSONAL WHERE IBAN IS NOT NULL");
    EXPECT_GT(rows.size(), 200U);
    for (const auto& row : rows) {
        const std::string& account = row.at(0).asString();
        EXPECT_EQ(remainderOfAccount(account), 1) << account;
        EXPECT_EQ(account.substr(0, 2), row.at(1).asString());
        EXPECT_EQ(account.size(), account.starts_with("AT") ? 20U : 22U) << account;
    }
}

TEST_F(PeopleRecords, DatesLieInTheThreeYearsOfTheData)
{
    const std::vector<std::vector<std::string>> dates{
        {"LOHNERFASSUNG_ZEIT_SONST", "DATUM"},
        {"LOHNERFASSUNG_KOPF", "ABSCHLUSSDATUM"},
        {"BB_LEISTUNGS_STD", "DATUM"},
        {"BB_LEISTUNGS_KOPF", "STORNODATUM"},
        {"BB_WALDARBEITERLOHN_BUCHUNG", "BUCHUNGSDATUM"},
        {"BB_SCHNITTSTELLE_KOPF", "DATUM"},
        {"SCH_MASCHINENBUCH", "ANSCHAFFUNGSDATUM"},
        {"SCH_MASCHINENBUCH", "PRUEFDATUM"},
        {"WALDB_VERWALTUNG", "VERTRAGSENDE"},
        {"PERSONAL", "ERINNERUNGDATUM"},
    };
    const ReferenceOptions options;
    for (const auto& date : dates) {
        const auto range =
            rowsOf(connection_, "SELECT MIN(" + date[1] + "), MAX(" + date[1] + ") FROM " + date[0]).at(0);
        EXPECT_GT(convert::toDate(range[0]).days, options.baseDate.days - 3 * 366) << date[0] << "." << date[1];
        EXPECT_LE(convert::toDate(range[1]), options.baseDate) << date[0] << "." << date[1];
    }
    EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM BB_LEISTUNGS_KOPF WHERE STORNODATUM < ERSTELLUNGSDATUM"), 0);
    EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM BB_LEISTUNGS_STD WHERE DATEPART(dw, DATUM) IN (1,7)"), 0)
        << "work on weekends";
}

} // namespace
} // namespace tamarok::database
