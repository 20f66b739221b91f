#include <gtest/gtest.h>
#include <string>

#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"

#include "tamarok/convert.h"

// Work orders, plans, monthly work plans, the order catalogue and the provision of timber of a reference database.

namespace tamarok::database {
namespace {

ado::ConnectionRef databaseOf(std::int32_t records, std::uint64_t seed = 1)
{
    ado::ConnectionRef connection = embedded::connectInMemory();
    ReferenceOptions options;
    options.logs = 2000;
    options.seed = seed;
    options.records = records;
    createReferenceDatabase(*connection, options);
    return connection;
}

std::int64_t number(const ado::ConnectionRef& connection, const std::string& statement)
{
    ado::Recordset rows;
    rows.Open(statement, connection);
    return convert::toLongLong(rows.Fields().Item(0).Value());
}

/// All rows of a statement as one text.
std::string content(const ado::ConnectionRef& connection, const std::string& statement)
{
    std::string text;
    ado::Recordset rows;
    for (rows.Open(statement, connection); !rows.AtEOF(); rows.MoveNext()) {
        for (std::int32_t i = 0; i < rows.Fields().Count(); ++i) {
            const Variant value = rows.Fields().Item(i).Value();
            text += value.isNull() ? "-|" : convert::toText(value, Regional::named("en-US")) + "|";
        }
        text += '\n';
    }
    return text;
}

class PlanningRecords : public testing::Test {
protected:
    static void SetUpTestSuite() { connection_ = databaseOf(200); }
    static void TearDownTestSuite() { connection_.reset(); }
    static ado::ConnectionRef connection_;
};
ado::ConnectionRef PlanningRecords::connection_;

/// A total with the rows that it adds up.
struct Total {
    std::string_view table, column;    ///< the total; rows without it are not asked
    std::string_view parts, sum, link; ///< table of the parts, what is added, and the column that names the total
};
constexpr Total totals[]{
    {"ARBEITSAUFTRAG_KOPF_PLANN", "SOLL_STUNDEN", "ARBEITSAUFTRAG_PLANN", "STUNDEN", "ARBEITSAUFTRAG_KOPF_PLANN_ID"},
    {"ARBEITSAUFTRAG_KOPF_PLANN", "SOLL_KOSTEN", "ARBEITSAUFTRAG_PLANN", "KOSTEN", "ARBEITSAUFTRAG_KOPF_PLANN_ID"},
    {"BB_PLAN_KOPF", "SUMME_STUNDEN", "BB_PLAN", "STUNDEN", "ID_BB_PLAN_KOPF"},
    {"BB_PLAN_KOPF", "SUMME_KOSTEN", "BB_PLAN", "KOSTEN", "ID_BB_PLAN_KOPF"},
    {"BB_PLAN_KOPF", "SUMME_ERLOESE", "BB_PLAN", "ERLOES", "ID_BB_PLAN_KOPF"},
    {"BB_AUFTRAG_KOPF", "SUMME_STUNDEN", "BB_AUFTRAG", "STUNDEN_PLAN", "ID_BB_AUFTRAG_KOPF"},
    {"BB_AUFTRAG_KOPF", "SUMME_KOSTEN", "BB_AUFTRAG", "KOSTEN_PLAN", "ID_BB_AUFTRAG_KOPF"},
    {"BB_MAP_KOPF", "SUMME_STUNDEN", "BB_MAP", "STUNDEN_PLAN", "ID_BB_MAP_KOPF"},
};

/// Half of the plans sell timber, so that 50 rows are the least of any total.
TEST_F(PlanningRecords, TotalsAreTheSumsOfTheirParts)
{
    for (const Total& total : totals) {
        const std::string table{total.table};
        const std::string column = table + "." + std::string{total.column};
        const std::string from = " FROM " + table + " LEFT JOIN (SELECT " + std::string{total.link} +
                                 " AS LINK, ROUND(SUM(" + std::string{total.sum} + "),2) AS TOTAL FROM " +
                                 std::string{total.parts} + " GROUP BY " + std::string{total.link} +
                                 ") PARTS ON PARTS.LINK = " + table + ".ID WHERE " + column;
        EXPECT_GT(number(connection_, "SELECT COUNT(*)" + from + " > 0"), 50) << column;
        EXPECT_EQ(number(connection_, "SELECT COUNT(*)" + from + " IS NOT NULL AND ABS(" + column +
                                          "-ISNULL(PARTS.TOTAL,0)) > 0.005"),
                  0)
            << column;
    }
}

/// Rows that break a rule of their table: a table and the condition under which a row is wrong.
struct Rule {
    std::string_view table, broken;
};
constexpr Rule rules[]{
    {"ARBEITSAUFTRAG", "ABS(KOSTEN-ROUND(MENGE*PREIS,2)) > 0.005"},
    {"ARBEITSAUFTRAG_PLANN", "ABS(KOSTEN-ROUND(MENGE*PREIS,2)) > 0.005"},
    {"ARBEITSAUFTRAG_KOPF", "DATUM_BIS < DATUM_VON OR ERSTELLDATUM > DATUM_VON"},
    {"BELEGE", "ABS(BRUTTO-BETRAG-MWST_BETRAG) > 0.005 OR ABS(MWST_BETRAG-ROUND(BETRAG*MWST/100,2)) > 0.0051"},
    {"BELEGE", "BUCHUNGSDATUM < DATUM OR JAHR <> YEAR(BUCHUNGSDATUM)"},
    {"PLAN_KOPF", "ABS(DECKUNGSBEITRAG-(ERLOESE-KOSTEN)) > 0.005"},
    {"BB_PLAN", "ABS(LOHNKOSTEN-ROUND(STUNDEN*STUNDENSATZ,2)) > 0.005"},
    {"BB_PLAN_MATERIAL", "ABS(BETRAG-ROUND(MENGE*PREIS,2)) > 0.005"},
    {"BB_AUFTRAG", "ABS(KOSTEN_PLAN-ROUND(STUNDEN_PLAN*STUNDENSATZ,2)) > 0.005 OR ENDE < BEGINN"},
    {"BB_AUFTRAG_ABRECHNUNG", "ABS(BETRAG-ROUND(STUNDEN*STUNDENSATZ,2)) > 0.005"},
    {"BB_AUFTRAG_KOPF", "STORNODATUM < DATUM OR FREIGABEDATUM < DATUM OR ENDE < BEGINN"},
    {"BB_PLAN_KOPF", "STORNODATUM < DATUM OR GENEHMIGUNGSDATUM < DATUM"},
    {"BB_MAP", "ENDE < BEGINN"},
    {"BEREITSTELLUNG_KOPF", "ABFUHR_BIS < ERSTELLUNGSDATUM"},
};

TEST_F(PlanningRecords, AmountsAndDatesAgreeWithinARow)
{
    for (const Rule& rule : rules) {
        const std::string table{rule.table};
        EXPECT_GT(number(connection_, "SELECT COUNT(*) FROM " + table), 100) << table;
        EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM " + table + " WHERE " + std::string{rule.broken}), 0)
            << table << ": " << rule.broken;
    }
}

/// The vouchers of a position bill it to the cent.
TEST_F(PlanningRecords, VouchersAddUpToTheirPosition)
{
    EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM ARBEITSAUFTRAG INNER JOIN (SELECT ARBEITSAUFTRAG_ID, "
                                  "SUM(BETRAG) AS BETRAG FROM BELEGE GROUP BY ARBEITSAUFTRAG_ID) BILLED ON "
                                  "BILLED.ARBEITSAUFTRAG_ID = ARBEITSAUFTRAG.ID WHERE "
                                  "ABS(ARBEITSAUFTRAG.KOSTEN-BILLED.BETRAG) > 0.005"),
              0);
}

/// A position and its counterpart name each other and belong to heads of one number.
TEST_F(PlanningRecords, CounterpartsNameEachOther)
{
    const std::string pairs = " FROM ARBEITSAUFTRAG INNER JOIN ARBEITSAUFTRAG_PLANN ON ARBEITSAUFTRAG_PLANN.ID = "
                              "ARBEITSAUFTRAG.ID_ARBEITSAUFTRAG_PLANN";
    EXPECT_GT(number(connection_, "SELECT COUNT(*)" + pairs), 300);
    EXPECT_EQ(number(connection_, "SELECT COUNT(*)" + pairs +
                                      " WHERE ISNULL(ARBEITSAUFTRAG_PLANN.ID_ARBEITSAUFTRAG,0) <> ARBEITSAUFTRAG.ID "
                                      "OR ARBEITSAUFTRAG_PLANN.ARBEITSAUFTRAG_KOPF_PLANN_ID <> "
                                      "ARBEITSAUFTRAG.ARBEITSAUFTRAG_KOPF_ID"),
              0);
}

/// A lot that was made out for the portal holds logs of one timber list alone; those of deliveries may hold several.
TEST_F(PlanningRecords, LotsHoldLogsOfOneList)
{
    EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM (SELECT BEREITSTELLUNG_LOGS.ID_BEREITSTELLUNG_KOPF FROM "
                                  "BEREITSTELLUNG_LOGS INNER JOIN LOGS ON LOGS.ID_LOG = BEREITSTELLUNG_LOGS.ID_LOGS "
                                  "INNER JOIN NETLOGISTIK_TRANSPORT ON NETLOGISTIK_TRANSPORT.ID_BEREITSTELLUNG_KOPF = "
                                  "BEREITSTELLUNG_LOGS.ID_BEREITSTELLUNG_KOPF GROUP BY "
                                  "BEREITSTELLUNG_LOGS.ID_BEREITSTELLUNG_KOPF HAVING COUNT(DISTINCT LOGS.LISTE) > 1) "
                                  "MIXED"),
              0);
}

/// A column that names a row of another table.
struct Reference {
    std::string_view table, column, target, key;
};
constexpr Reference references[]{
    {"ARBEITSAUFTRAG_KOPF", "ID_WALDORT", "WALDORT", "ID_WALDORT"},
    {"ARBEITSAUFTRAG_KOPF", "ID_KOSTENSTELLE", "KOSTENSTELLE", "ID"},
    {"ARBEITSAUFTRAG_KOPF", "ID_UNTERNEHMER", "PERSONAL", "ID_PERSONAL"},
    {"ARBEITSAUFTRAG", "LEISTUNGSART_ID", "LEISTUNGSART", "ID"},
    {"BELEGE", "ARBEITSAUFTRAG_ID", "ARBEITSAUFTRAG", "ID"},
    {"NATURALVOLLZUG_KLR", "ID_BELEGE", "BELEGE", "ID"},
    {"PLAN_KOPF", "ID_PRODUKT", "PRODUKT", "ID"},
    {"PLAN_KOPF", "ID_BB_T_AUFTRAGS_PLANUNG", "BB_T_AUFTRAGS_PLANUNG", "ID"},
    {"BB_PLAN", "ID_LEISTUNGSART", "LEISTUNGSART", "ID"},
    {"BB_PLAN", "ID_BB_PLAN_KOPF", "BB_PLAN_KOPF", "ID"},
    {"BB_PLAN_MATERIAL", "ID_BB_PLAN", "BB_PLAN", "ID"},
    {"BB_PLAN_MATERIAL", "ID_WARENKATALOG", "WARENKATALOG", "ART_ID"},
    {"BB_AUFTRAG", "ID_BB_AUFTRAG_KOPF", "BB_AUFTRAG_KOPF", "ID"},
    {"BB_AUFTRAG", "ID_KOSTENSTELLE", "KOSTENSTELLE", "ID"},
    {"BB_AUFTRAG_KOPF", "ID_BB_PLAN_KOPF", "BB_PLAN_KOPF", "ID"},
    {"BB_MAP", "ID_BB_MAP_KOPF", "BB_MAP_KOPF", "ID"},
    {"BB_MAP", "ID_BB_AUFTRAG", "BB_AUFTRAG", "ID"},
    {"BB_AUFTRAG_ABRECHNUNG", "ID_BB_MAP", "BB_MAP", "ID"},
    {"BB_T_AUFTRAGS_LOGS_RECH", "R_KUNDE", "PERSONAL", "ID_PERSONAL"},
    {"BB_T_AUFTRAGS_LOGS", "ID_BB_T_AUFTRAGS_PLANUNG", "BB_T_AUFTRAGS_PLANUNG", "ID"},
    {"BEREITSTELLUNG_KOPF", "ID_PERSONAL_LIEFERADRESSE", "PERSONAL", "ID_PERSONAL"},
    {"BEREITSTELLUNG_LOGS", "ID_BEREITSTELLUNG_KOPF", "BEREITSTELLUNG_KOPF", "ID"},
    {"POLTER_TRANSPORT", "ID_LOGS", "BEREITSTELLUNG_LOGS", "ID_LOGS"},
    {"POLTER_TRANSPORT", "ID_POLTER_TRANSPORT_KOPF", "POLTER_TRANSPORT_KOPF", "ID"},
};

TEST_F(PlanningRecords, ReferencesAreSetAndFound)
{
    for (const Reference& reference : references) {
        const std::string table{reference.table};
        const std::string column{reference.column};
        const std::int64_t rows = number(connection_, "SELECT COUNT(*) FROM " + table);
        EXPECT_GT(number(connection_, "SELECT COUNT(" + column + ") FROM " + table), rows * 7 / 10)
            << table << "." << column;
        EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM " + table + " WHERE " + column + " IS NOT NULL AND " +
                                          column + " NOT IN (SELECT " + std::string{reference.key} + " FROM " +
                                          std::string{reference.target} + ")"),
                  0)
            << table << "." << column;
    }
}

constexpr const char* heads[]{"PLAN_KOPF", "BB_PLAN_KOPF", "BB_MAP_KOPF"};
constexpr const char* headsBegun[]{"ARBEITSAUFTRAG_KOPF", "ARBEITSAUFTRAG_KOPF_PLANN", "BB_AUFTRAG_KOPF",
                                   "BB_T_AUFTRAGS_PLANUNG", "BEREITSTELLUNG_KOPF"};

TEST(PlanningRecordsBySize, HeadsCountFromOne)
{
    for (const std::int32_t records : {0, 1, 60}) {
        const ado::ConnectionRef connection = databaseOf(records);
        for (const std::string table : heads) {
            EXPECT_EQ(number(connection, "SELECT COUNT(*) FROM " + table), records) << table;
            EXPECT_EQ(number(connection, "SELECT ISNULL(MAX(ID),0) FROM " + table), records) << table;
        }
        // Master data and timber lists bring rows of these; the further ones count on from them.
        for (const std::string table : headsBegun) {
            const std::int64_t rows = number(connection, "SELECT COUNT(*) FROM " + table);
            EXPECT_GE(rows, records) << table;
            EXPECT_EQ(number(connection, "SELECT MAX(ID) FROM " + table), rows) << table;
        }
    }
}

/// The rows of master data and timber lists are the same with and without business records.
TEST(PlanningRecordsBySize, RowsThatWereThereStay)
{
    const ado::ConnectionRef without = databaseOf(0);
    const ado::ConnectionRef with = databaseOf(60);
    for (const std::string table : headsBegun) {
        const std::string rows = "SELECT * FROM " + table;
        const std::int64_t count = number(without, "SELECT COUNT(*) FROM " + table);
        EXPECT_GT(count, 0) << table;
        EXPECT_EQ(content(with, rows + " WHERE ID <= " + std::to_string(count) + " ORDER BY ID"),
                  content(without, rows + " ORDER BY ID"))
            << table;
    }
}

TEST(PlanningRecordsBySize, SeedFixesTheRows)
{
    const auto all = [](std::uint64_t seed) {
        const ado::ConnectionRef connection = databaseOf(40, seed);
        std::string text;
        for (const std::string table : {"ARBEITSAUFTRAG", "BELEGE", "PLAN_KOPF", "BB_PLAN_MATERIAL", "BB_AUFTRAG",
                                        "BB_AUFTRAG_ABRECHNUNG", "BB_T_AUFTRAGS_LOGS_RECH", "POLTER_TRANSPORT"})
            text += content(connection, "SELECT * FROM " + table + " ORDER BY ID");
        return text;
    };
    const std::string first = all(7);
    EXPECT_EQ(all(7), first);
    EXPECT_NE(all(8), first);
}

} // namespace
} // namespace tamarok::database
