#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"

namespace tamarok::database {
namespace {

std::int64_t number(const ado::ConnectionRef& connection, std::string_view statement)
{
    ado::Recordset rows;
    rows.Open(statement, connection);
    return rows.AtEOF() ? -1 : convert::toLongLong(rows.Fields().Item(0).Value());
}

/// All rows of a statement as one text.
std::string content(const ado::ConnectionRef& connection, std::string_view statement)
{
    std::string text;
    ado::Recordset rows;
    for (rows.Open(statement, connection); !rows.AtEOF(); rows.MoveNext()) {
        for (std::int32_t i = 0; i < rows.Fields().Count(); ++i) {
            const Variant value = rows.Fields().Item(i).Value();
            text += value.isNull() ? "-" : convert::toText(value, Regional::named("en-US"));
            text += '|';
        }
        text += '\n';
    }
    return text;
}

constexpr std::string_view tables[]{
    "LOGS",          "LOGS_RECH",         "LOGS_RECH_PRICE",     "LISTENKOPF",         "HEADERRECH",
    "NN_POSITIONEN", "TRANSPORTLOGISTIK", "BEREITSTELLUNG_KOPF", "BEREITSTELLUNG_LOGS"};

std::string contentOfAll(const ado::ConnectionRef& connection)
{
    std::string text;
    for (const std::string_view table : tables)
        text += content(connection, "SELECT * FROM " + std::string{table} + " ORDER BY 1,2");
    return text;
}

/// A database of 3000 logs, made once for the cases that only read it.
class ReferenceDatabase : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        connection_ = embedded::connectInMemory();
        createReferenceDatabase(*connection_, {.logs = 3000, .records = 0});
    }
    static void TearDownTestSuite() { connection_.reset(); }

    static ado::ConnectionRef connection_;
};
ado::ConnectionRef ReferenceDatabase::connection_;

TEST_F(ReferenceDatabase, HoldsTheWantedLogsWithOneSettlementRowEach)
{
    EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM LOGS"), 3000);
    EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM LOGS INNER JOIN LOGS_RECH ON LOGS.ID_LOG = LOGS_RECH.ID_LOG"),
              3000);
    EXPECT_EQ(number(connection_, "SELECT MIN(ID_LOG) FROM LOGS"), 1);
    EXPECT_EQ(number(connection_, "SELECT MAX(ID_LOG) FROM LOGS"), 3000);
}

TEST_F(ReferenceDatabase, EveryKeyOfALogFindsItsRow)
{
    struct Reference {
        std::string_view table, column, toTable, toColumn;
    };
    constexpr Reference references[]{
        {"LOGS", "LISTE", "LISTENKOPF", "LISTE"},
        {"LOGS", "HA", "HOLZART", "HA"},
        {"LOGS", "HS", "HOLZSORTE", "HS"},
        {"LOGS", "GKL", "GUETEKLASSE", "GKL"},
        {"LOGS", "STKL", "STKL", "STKL"},
        {"LOGS", "KKLASSE", "KUBATURKLASSE", "KKLASSE"},
        {"LOGS", "KLST", "KLST", "ID"},
        {"LOGS", "DSART", "DSART", "ID"},
        {"LOGS", "LISTENART", "LISTENART", "LISTENART"},
        {"LOGS", "ID_RINDENKENNZ", "RINDENKENNZ", "ID_RINDENKENNZ"},
        {"LOGS", "ID_MASSEINHEIT", "WARENEINHEIT", "EINHEIT_ID"},
        {"LOGS", "ID_WALDORT", "WALDORT", "ID_WALDORT"},
        {"LOGS", "NA", "NUTZUNGSART", "NA"},
        {"LOGS", "KA", "KALAMITAET", "KA"},
        {"LOGS", "MANDANTEN_ID", "PERSONAL", "ID_PERSONAL"},
        {"LOGS", "RELTABLE1", "RELTABLE", "ID"},
        {"LOGS", "RELTABLE10", "RELTABLE", "ID"},
        {"LOGS", "ARBEITSAUFTRAG_KOPF_ID", "ARBEITSAUFTRAG_KOPF", "ID"},
        {"LOGS", "AA_ID", "ARBEITSAUFTRAG", "ID"},
        {"LOGS", "PLAN_ID", "ARBEITSAUFTRAG_KOPF_PLANN", "ID"},
        {"LOGS", "ID_PRODUKT_KLR", "PRODUKT", "ID"},
        {"LOGS", "ID_OBJEKT_KLR", "OBJEKT", "ID"},
        {"LOGS", "ID_VERFAHREN_KLR", "VERFAHREN", "ID"},
        {"LOGS", "ID_BB_T_PROJEKT_PLANUNG_KLR", "BB_T_PROJEKT_PLANUNG", "ID"},
        {"LOGS", "ID_BB_T_AUFTRAGS_PLANUNG_KLR", "BB_T_AUFTRAGS_PLANUNG", "ID"},
        {"LOGS", "ID_VERKAUFSART", "VERKAUFSART", "ID"},
        {"LOGS", "ID_TRANSPORTLOGISTIK", "TRANSPORTLOGISTIK", "ID"},
        {"LOGS_RECH", "R_NAME", "HEADERRECH", "R_NAME"},
        {"LOGS_RECH", "R_KUNDE", "PERSONAL", "ID_PERSONAL"},
        {"LOGS_RECH", "R_ID_WARENEINHEIT", "WARENEINHEIT", "EINHEIT_ID"},
        {"LOGS_RECH", "R_VERTRAG", "VERTRAEGE", "VERTRAG_NAME"},
        {"LOGS_RECH", "A1_NAME", "HEADERRECH", "R_NAME"},
        {"LOGS_RECH", "A1_KUNDE", "PERSONAL", "ID_PERSONAL"},
        {"LOGS_RECH", "A1_VERTRAG", "VERTRAEGE", "VERTRAG_NAME"},
        {"LOGS_RECH", "A2_NAME", "HEADERRECH", "R_NAME"},
        {"LOGS_RECH_PRICE", "ID_LOG", "LOGS", "ID_LOG"},
        {"BEREITSTELLUNG_LOGS", "ID_LOGS", "LOGS", "ID_LOG"},
        {"BEREITSTELLUNG_LOGS", "ID_BEREITSTELLUNG_KOPF", "BEREITSTELLUNG_KOPF", "ID"},
        {"LISTENKOPF", "ID_USER", "USERS", "ID"},
        {"LISTENKOPF", "ID_ACCESS_LEVELS", "ACCESS_LEVELS", "ID"},
        {"HEADERRECH", "RART_ID", "RECHNUNGSART", "RART_ID"},
        {"HEADERRECH", "BUCHNR_ID", "BUCHNR", "BUCHNR_ID"},
        {"HEADERRECH", "KAPITEL_ID", "HH_KAPITEL", "ID"},
        {"HEADERRECH", "TITEL_ID", "HH_TITEL", "ID"},
        {"HEADERRECH", "MANDANTEN_ID", "PERSONAL", "ID_PERSONAL"},
        {"HEADERRECH", "ID_ANLASSART", "ANLASSART", "ID"},
        {"NN_POSITIONEN", "NN_NAME", "HEADERRECH", "R_NAME"},
    };
    for (const Reference& r : references) {
        const std::string table{r.table};
        const std::string column{r.column};
        EXPECT_GT(number(connection_, "SELECT COUNT(*) FROM " + table + " WHERE " + column + " IS NOT NULL"), 0)
            << table << '.' << column;
        EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM " + table + " WHERE " + column + " IS NOT NULL AND " +
                                          column + " NOT IN (SELECT " + std::string{r.toColumn} + " FROM " +
                                          std::string{r.toTable} + ")"),
                  0)
            << table << '.' << column;
    }
}

TEST_F(ReferenceDatabase, StrengthClassFollowsFromTheDiameterWithoutBark)
{
    EXPECT_EQ(number(connection_,
                     "SELECT COUNT(*) FROM LOGS INNER JOIN STKL ON STKL.STKL = LOGS.STKL WHERE LOGS.RINDEPROZENT = 2 "
                     "AND (LOGS.DURCH < STKL.DM_VON OR LOGS.DURCH > STKL.DM_BIS)"),
              0);
    EXPECT_EQ(number(connection_,
                     "SELECT COUNT(*) FROM LOGS INNER JOIN STKL ON STKL.STKL = LOGS.STKL WHERE LOGS.RINDEPROZENT = 0 "
                     "AND (ROUND(LOGS.DURCH - LOGS.RINDE_WERT,2) < STKL.DM_VON OR "
                     "ROUND(LOGS.DURCH - LOGS.RINDE_WERT,2) > STKL.DM_BIS)"),
              0);
}

TEST_F(ReferenceDatabase, SomeListsHaveNoLengthAndSomeLogsNoInvoice)
{
    EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM LOGS WHERE ISNULL(LAENGE,0) = 0"), 250);
    EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM LOGS WHERE UFAKT_RM IS NULL"), 294);
    EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM LOGS_RECH WHERE R_NAME IS NULL"), 114);
    EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM LOGS_RECH WHERE R_EURO = 0"), 182);
}

TEST_F(ReferenceDatabase, SeedFixesTheRowsOfEveryTable)
{
    EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM LISTENKOPF"), 71);
    EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM HEADERRECH"), 90);
    EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM NN_POSITIONEN"), 1);
    EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM TRANSPORTLOGISTIK"), 8);
    EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM BEREITSTELLUNG_KOPF"), 3);
    EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM BEREITSTELLUNG_LOGS"), 280);
    EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM LOGS_RECH_PRICE"), 136);
    EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM STRINGS"), 3913);
    EXPECT_EQ(content(connection_, "SELECT ROUND(SUM(KUBATUR),3) FROM LOGS"), "21292.562|\n");
}

TEST_F(ReferenceDatabase, TextsCarryEveryLanguageAndTheColumnLabels)
{
    EXPECT_EQ(number(connection_,
                     "SELECT COUNT(*) FROM STRINGS WHERE ISNULL(GERMAN,'') = '' OR ISNULL(ENGLISH,'') = '' OR "
                     "ISNULL(FRENCH,'') = ''"),
              0);
    EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM STRINGS WHERE ID_STRING > 20000"), 3604);
    EXPECT_EQ(content(connection_,
                      "SELECT GERMAN,SHORT_GERMAN,CUSTOM_GERMAN,LONG_GERMAN FROM STRINGS WHERE ID_STRING = 1127"),
              "Rindenkennzeichen|Rindenkz.|-|Rindenkennzeichen|\n");
}

TEST_F(ReferenceDatabase, MasterDataKeepsItsLetters)
{
    EXPECT_EQ(content(connection_, "SELECT HA_LANG FROM HOLZART WHERE HA = 'LA'"), "Europäische Lärche|\n");
    EXPECT_EQ(content(connection_, "SELECT DOUBLE_VALUE FROM OPTIONEN WHERE PROPERTY_ID = 'UFAKTNAT_EURO'"),
              "13.7603|\n");
    EXPECT_EQ(number(connection_, "SELECT COUNT(*) FROM PERSONAL"), 360);
}

TEST(CreateReferenceDatabase, SameSeedGivesTheSameRowsAndAnotherSeedOthers)
{
    const auto make = [](std::uint64_t seed) {
        const ado::ConnectionRef connection = embedded::connectInMemory();
        createReferenceDatabase(*connection, {.logs = 400, .seed = seed, .records = 0});
        return contentOfAll(connection);
    };
    const std::string first = make(11);
    EXPECT_GT(first.size(), 10000U);
    EXPECT_EQ(first, make(11));
    EXPECT_NE(first, make(12));
}

TEST(CreateReferenceDatabase, InterruptedRunLeavesNothing)
{
    const ado::ConnectionRef connection = embedded::connectInMemory();
    const ProgressListener interrupt = [](const Progress& progress) {
        if (progress.phase == "Timber lists" && progress.done > 0) throw std::runtime_error{"interrupted"};
    };
    EXPECT_THROW(createReferenceDatabase(*connection, {.logs = 500, .records = 0}, interrupt), std::runtime_error);
    ado::Recordset rows;
    EXPECT_THROW(rows.Open("SELECT * FROM LOGS", connection), Error);
    EXPECT_THROW(rows.Open("SELECT * FROM STRINGS", connection), Error);
    // The connection is free for another run.
    createReferenceDatabase(*connection, {.logs = 10, .records = 0});
    EXPECT_EQ(number(connection, "SELECT COUNT(*) FROM LOGS"), 10);
}

TEST(CreateReferenceDatabase, ExistingDatabaseIsRefusedAndStaysAsItWas)
{
    const ado::ConnectionRef connection = embedded::connectInMemory();
    createReferenceDatabase(*connection, {.logs = 60, .records = 0});
    const std::string before = contentOfAll(connection);
    EXPECT_THROW(createReferenceDatabase(*connection, {.logs = 60, .seed = 2, .records = 0}), Error);
    EXPECT_EQ(contentOfAll(connection), before);
}

TEST(CreateReferenceDatabase, OptionsOutOfRangeAreRefusedAndLeaveNothing)
{
    const ado::ConnectionRef connection = embedded::connectInMemory();
    EXPECT_THROW(createReferenceDatabase(*connection, {.logs = -5}), Error);
    EXPECT_THROW(createReferenceDatabase(*connection, {.logs = 0, .records = -1}), Error);
    EXPECT_THROW(createReferenceDatabase(*connection, {.logs = 0, .records = 100'001}), Error);
    ado::Recordset rows;
    EXPECT_THROW(rows.Open("SELECT * FROM LOGS", connection), Error);
}

TEST(CreateReferenceDatabase, DatabaseWithoutLogsHasTheRest)
{
    const ado::ConnectionRef connection = embedded::connectInMemory();
    createReferenceDatabase(*connection, {.logs = 0, .records = 0});
    EXPECT_EQ(number(connection, "SELECT COUNT(*) FROM LOGS"), 0);
    EXPECT_EQ(number(connection, "SELECT COUNT(*) FROM PERSONAL"), 360);
}

TEST(CreateReferenceDatabase, ProgressTellsEveryPhaseToItsEnd)
{
    const ado::ConnectionRef connection = embedded::connectInMemory();
    std::vector<std::string> ended;
    createReferenceDatabase(*connection, {200, 1}, [&](const Progress& progress) {
        EXPECT_LE(progress.done, progress.total);
        if (progress.done == progress.total) ended.emplace_back(progress.phase);
    });
    EXPECT_EQ(ended, (std::vector<std::string>{"Tables", "Texts", "Master data", "Timber lists", "Business records",
                                               "Indexes"}));
}

} // namespace
} // namespace tamarok::database
