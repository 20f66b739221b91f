#include <gtest/gtest.h>
#include <string>

#include "records_database.h"

// The rows of standing timber surveys, sales by bid, exchanged timber data and cost accounting: amounts add up, dates
// follow each other, keys find their rows.

namespace tamarok::database {
namespace {

using test::countOf;
using test::databaseOf;
using test::Fault;
using test::Reference;

class InventoryRecords : public testing::TestWithParam<std::int32_t> {
protected:
    static void TearDownTestSuite() { databases().clear(); }
    static ado::ConnectionRef database() { return databases().of(GetParam()); }

private:
    static test::DatabasesByRecords& databases()
    {
        static test::DatabasesByRecords all;
        return all;
    }
};

TEST_P(InventoryRecords, HaveHeadsNumberedFromOne)
{
    for (const std::string table :
         {"STEH_AUFNAHMEPROTOKOLL_KOPF", "BB_MV_VERKAUFSZIEL", "FHP_IMPORT", "BB_TAKL01_KLR", "KLR"}) {
        EXPECT_EQ(countOf(database(), "SELECT COUNT(*) FROM " + table), GetParam()) << table;
        EXPECT_EQ(countOf(database(), "SELECT ISNULL(MAX(ID),0) FROM " + table), GetParam()) << table;
    }
}

constexpr Fault faults[]{
    {"shares of assortments that do not make up the whole",
     "(SELECT SUM(ANTEIL) AS SUMME FROM TSP_STEH_HS_VERT_GR1 GROUP BY ID_HOLZART, ID_T_STEH_BHD_STUFEN) S WHERE "
     "S.SUMME <> 100"},
    {"a survey that is not the sum of its rows",
     "STEH_AUFNAHMEPROTOKOLL_KOPF K INNER JOIN (SELECT ID_STEH_AUFNAHMEPROTOKOLL_KOPF, SUM(STAMMZAHL) AS STAMMZAHL, "
     "SUM(VOLUMEN) AS VOLUMEN, SUM(ERNTEVOLUMEN) AS ERNTEVOLUMEN, SUM(ERLOS) AS ERLOS, SUM(KOSTEN) AS KOSTEN FROM "
     "STEH_AUFNAHMEPROTOKOLL GROUP BY ID_STEH_AUFNAHMEPROTOKOLL_KOPF) P ON P.ID_STEH_AUFNAHMEPROTOKOLL_KOPF = K.ID "
     "WHERE K.STAMMZAHL <> P.STAMMZAHL OR ABS(K.VOLUMEN-P.VOLUMEN) > 0.00001 OR "
     "ABS(K.ERNTEVOLUMEN-P.ERNTEVOLUMEN) > 0.00001 OR ABS(K.ERLOS-P.ERLOS) > 0.0001 OR ABS(K.KOSTEN-P.KOSTEN) > "
     "0.0001"},
    {"a survey without rows", "STEH_AUFNAHMEPROTOKOLL_KOPF WHERE ID NOT IN (SELECT ID_STEH_AUFNAHMEPROTOKOLL_KOPF FROM "
                              "STEH_AUFNAHMEPROTOKOLL)"},
    {"a margin that is not revenue less costs", "STEH_AUFNAHMEPROTOKOLL WHERE ABS(ERLOS-KOSTEN-DECKUNGSBEITRAG) > "
                                                "0.0001 OR ABS(ERNTEVOLUMEN*PREIS-ERLOS) > 0.0051 "
                                                "OR ABS(ERNTEVOLUMEN*KOSTENSATZ-KOSTEN) > 0.0051"},
    {"more harvested than stands", "STEH_AUFNAHMEPROTOKOLL WHERE ERNTEVOLUMEN >= VOLUMEN OR STAMMZAHL < 1"},
    {"a price that is not that of the assortments",
     "STEH_AUFNAHMEPROTOKOLL P INNER JOIN (SELECT ID_HOLZART, ID_T_STEH_BHD_STUFEN, SUM(ANTEIL*PREIS/100) AS PREIS "
     "FROM "
     "TSP_STEH_HS_VERT_GR1 GROUP BY ID_HOLZART, ID_T_STEH_BHD_STUFEN) T ON T.ID_HOLZART = P.ID_HOLZART AND "
     "T.ID_T_STEH_BHD_STUFEN = P.ID_T_STEH_BHD_STUFEN WHERE ABS(P.PREIS-T.PREIS) > 0.0051"},
    {"a calamity of a felling in order", "STEH_AUFNAHMEPROTOKOLL_KOPF K INNER JOIN NUTZUNGSART N ON N.ID = "
                                         "K.ID_NUTZUNGSART WHERE K.ID_KALAMITAET IS NOT NULL AND N.NA <> 'ZN'"},
    {"a sale that is not the sum of its lots",
     "BB_MV_VERKAUFSZIEL K INNER JOIN (SELECT ID_BB_MV_VERKAUFSZIEL, SUM(MENGE) AS MENGE, SUM(ANSCHLAG) AS ANSCHLAG, "
     "SUM(ISNULL(ZUSCHLAGSPREIS,0)) AS ERLOS FROM BB_MV_LOSE GROUP BY ID_BB_MV_VERKAUFSZIEL) P ON "
     "P.ID_BB_MV_VERKAUFSZIEL = K.ID WHERE ABS(K.MENGE-P.MENGE) > 0.00001 OR ABS(K.ANSCHLAG-P.ANSCHLAG) > 0.0001 OR "
     "ABS(K.ERLOS-P.ERLOS) > 0.0001"},
    {"a lot that is not the sum of its lines",
     "BB_MV_LOSE K INNER JOIN (SELECT ID_BB_MV_LOSE, SUM(STUCK) AS STUCK, SUM(MENGE) AS MENGE, SUM(ANSCHLAG) AS "
     "ANSCHLAG "
     "FROM BB_MV_HOLZDATEN GROUP BY ID_BB_MV_LOSE) P ON P.ID_BB_MV_LOSE = K.ID WHERE K.STUCK <> P.STUCK OR "
     "ABS(K.MENGE-P.MENGE) > 0.00001 OR ABS(K.ANSCHLAG-P.ANSCHLAG) > 0.0001"},
    {"a bid whose amount is not price times volume",
     "BB_MV_GEBOTE G INNER JOIN BB_MV_LOSE L ON L.ID = G.ID_BB_MV_LOSE WHERE ABS(G.GEBOT*L.MENGE-G.BETRAG) > 0.0051"},
    {"a rank that does not follow the prices",
     "BB_MV_GEBOTE G INNER JOIN BB_MV_GEBOTE H ON H.ID_BB_MV_LOSE = G.ID_BB_MV_LOSE WHERE H.RANG > G.RANG AND "
     "H.GEBOT > G.GEBOT"},
    {"two bids of a bidder for a lot",
     "BB_MV_GEBOTE G INNER JOIN BB_MV_GEBOTE H ON H.ID_BB_MV_LOSE = G.ID_BB_MV_LOSE AND H.ID_BB_MV_BIETER = "
     "G.ID_BB_MV_BIETER WHERE H.ID <> G.ID"},
    {"an award that is not the highest bid's",
     "BB_MV_LOSE L LEFT JOIN BB_MV_GEBOTE G ON G.ID_BB_MV_LOSE = L.ID AND G.ID_BB_T_KZ_ZUSCHLAG = 1 WHERE "
     "ISNULL(L.ZUSCHLAGSPREIS,0) <> ISNULL(G.BETRAG,0) OR ISNULL(L.ID_BB_MV_BIETER,0) <> ISNULL(G.ID_BB_MV_BIETER,0) "
     "OR "
     "ISNULL(G.RANG,1) <> 1"},
    {"a bid for timber without a lot",
     "BB_MV_GEBOTE G INNER JOIN BB_MV_LOSE L ON L.ID = G.ID_BB_MV_LOSE WHERE L.LOS_NUMMER = '0'"},
    {"a bid after the closing date",
     "BB_MV_GEBOTE G INNER JOIN BB_MV_LOSE L ON L.ID = G.ID_BB_MV_LOSE INNER JOIN BB_MV_VERKAUFSZIEL V ON V.ID = "
     "L.ID_BB_MV_VERKAUFSZIEL WHERE G.EINGANGSDATUM > V.ABGABESCHLUSS OR V.ABGABESCHLUSS >= V.VERKAUFSDATUM"},
    {"a cancelled sale with revenue",
     "BB_MV_VERKAUFSZIEL WHERE STORNODATUM IS NOT NULL AND (ERLOS > 0 OR STORNODATUM <= "
     "VERKAUFSDATUM)"},
    {"a record that is not the sum of its lines",
     "FHP_IMPORT K INNER JOIN (SELECT ID_FHP_IMPORT, COUNT(*) AS ZEILEN, SUM(STUCK) AS STUCK, SUM(MENGE) AS MENGE, "
     "SUM(BETRAG) AS BETRAG FROM FHP_SUPRO GROUP BY ID_FHP_IMPORT) P ON P.ID_FHP_IMPORT = K.ID WHERE K.ANZAHL_SATZE <> "
     "P.ZEILEN OR K.STUCK <> P.STUCK OR ABS(K.MENGE-P.MENGE) > 0.00001 OR ABS(K.BETRAG-P.BETRAG) > 0.0001"},
    {"a line that is not the sum of its stems",
     "FHP_SUPRO K INNER JOIN (SELECT ID_FHP_SUPRO, COUNT(*) AS STUCK, SUM(MENGE) AS MENGE FROM FHP_ESTPRO GROUP BY "
     "ID_FHP_SUPRO) P ON P.ID_FHP_SUPRO = K.ID WHERE K.STUCK <> P.STUCK OR ABS(K.MENGE-P.MENGE) > 0.00001"},
    {"a line whose amounts do not fit", "FHP_SUPRO WHERE ABS(MENGE*PREIS-BETRAG) > 0.0051 OR "
                                        "ABS(MENGE_BRUTTO-RINDENABZUG-MENGE) > 0.00001 OR RINDENABZUG < 0"},
    {"a record imported before it was measured",
     "FHP_IMPORT WHERE IMPORTDATUM < MESSDATUM OR MESSDATUM < LIEFERDATUM OR UBERNAHMEDATUM < IMPORTDATUM"},
    {"a record taken over with an error", "FHP_IMPORT WHERE UBERNOMMEN = 1 AND FEHLERTEXT IS NOT NULL"},
    {"a transfer that is not the sum of its records",
     "BB_TAKL01_KLR K INNER JOIN (SELECT B.ID_BB_TAKL01_KLR, COUNT(*) AS SATZE, COUNT(F.ID) AS FEHLER, SUM(B.KOSTEN) "
     "AS "
     "KOSTEN, SUM(B.ERLOSE) AS ERLOSE FROM BB_TAKL02_KLR_BETRIEB B LEFT JOIN BB_TAKL22_KLR_FEHLER F ON "
     "F.ID_BB_TAKL02_KLR_BETRIEB = B.ID GROUP BY B.ID_BB_TAKL01_KLR) P ON P.ID_BB_TAKL01_KLR = K.ID WHERE "
     "K.ANZAHL_SATZE <> P.SATZE OR K.ANZAHL_FEHLER <> P.FEHLER OR ABS(K.KOSTEN-P.KOSTEN) > 0.0001 OR "
     "ABS(K.ERLOSE-P.ERLOSE) > 0.0001"},
    {"a record whose amount is not quantity times price",
     "BB_TAKL02_KLR_BETRIEB WHERE ABS(MENGE*PREIS-KOSTEN-ERLOSE) > 0.0051 OR (KOSTEN > 0 AND ERLOSE > 0)"},
    {"an account that does not fit the amount",
     "BB_TAKL02_KLR_BETRIEB WHERE (KOSTEN > 0 AND ID_KOSTENART IS NULL) OR (ERLOSE > 0 AND ID_ERLOSART IS NULL)"},
    {"a place of another district than the sender's",
     "BB_TAKL02_KLR_BETRIEB B INNER JOIN BB_TAKL01_KLR K ON K.ID = B.ID_BB_TAKL01_KLR INNER JOIN WALDORT W ON "
     "W.ID_WALDORT = B.ID_WALDORT WHERE W.ID_ACCESS_LEVELS <> K.ID_ACCESS_LEVELS_ERSTELLER"},
    {"a transfer cancelled before its date", "BB_TAKL01_KLR WHERE STORNODATUM <= UBERNAHMEDATUM"},
    {"a transfer before its records", "BB_TAKL02_KLR_BETRIEB B INNER JOIN BB_TAKL01_KLR K ON K.ID = B.ID_BB_TAKL01_KLR "
                                      "WHERE B.BELEGDATUM >= K.UBERNAHMEDATUM OR MONTH(B.BELEGDATUM) <> K.MONAT"},
    {"a key figure whose amounts do not fit",
     "KLR WHERE ABS(MENGE*PREIS-KOSTEN-ERLOSE) > 0.0051 OR ABS(ERLOSE-KOSTEN-DECKUNGSBEITRAG) > 0.0001"},
    {"a key figure of an unknown level", "KLR WHERE ACCESSLEVEL NOT IN (SELECT ACCESS_LEVELS FROM ACCESS_LEVELS)"},
    {"a key figure with the cost centre of another district",
     "KLR WHERE KOSTENSTELLE_NUMMER IS NOT NULL AND KOSTENSTELLE_NAME <> REVIER_NAME"},
};

TEST_P(InventoryRecords, AddUp)
{
    for (const Fault& fault : faults)
        test::expectNone(database(), fault);
}

constexpr Reference references[]{
    {"STEH_AUFNAHMEPROTOKOLL_KOPF", "ID_ACCESS_LEVELS", "ACCESS_LEVELS", "ID"},
    {"STEH_AUFNAHMEPROTOKOLL_KOPF", "ID_T_STEH_WUCHSREGION", "T_STEH_WUCHSREGION", "ID"},
    {"STEH_AUFNAHMEPROTOKOLL_KOPF", "RELTABLE1", "T_STEH_RELTABLE WHERE RELTABLE_ID = 1", "ID"},
    {"STEH_AUFNAHMEPROTOKOLL_KOPF", "RELTABLE9", "T_STEH_RELTABLE WHERE RELTABLE_ID = 9", "ID"},
    {"STEH_AUFNAHMEPROTOKOLL_KOPF", "RELTABLE16", "T_STEH_RELTABLE WHERE RELTABLE_ID = 16", "ID"},
    {"STEH_AUFNAHMEPROTOKOLL_KOPF", "ID_PERSONAL", "PERSONAL WHERE WALDBESITZER = 1", "ID_PERSONAL"},
    {"STEH_AUFNAHMEPROTOKOLL_KOPF", "ID_BB_T_AUFTRAGS_PLANUNG", "BB_T_AUFTRAGS_PLANUNG", "ID"},
    {"STEH_AUFNAHMEPROTOKOLL", "ID_STEH_AUFNAHMEPROTOKOLL_KOPF", "STEH_AUFNAHMEPROTOKOLL_KOPF", "ID"},
    {"STEH_AUFNAHMEPROTOKOLL", "ID_HOLZART", "HOLZART", "ID"},
    {"STEH_AUFNAHMEPROTOKOLL", "ID_T_STEH_BHD_STUFEN", "T_STEH_BHD_STUFEN", "ID"},
    {"TSP_STEH_HS_VERT_GR1", "ID_T_HS_GR1", "T_HS_GR1", "ID"},
    {"BB_MV_LOSE", "ID_BB_MV_VERKAUFSZIEL", "BB_MV_VERKAUFSZIEL", "ID"},
    {"BB_MV_LOSE", "ID_ACCESS_LEVELS", "ACCESS_LEVELS", "ID"},
    {"BB_MV_LOSE", "ID_BB_MV_BIETER", "BB_MV_BIETER", "ID"},
    {"BB_MV_HOLZDATEN", "ID_BB_MV_LOSE", "BB_MV_LOSE", "ID"},
    {"BB_MV_GEBOTE", "ID_BB_MV_LOSE", "BB_MV_LOSE", "ID"},
    {"BB_MV_GEBOTE", "ID_BB_MV_BIETER", "BB_MV_BIETER", "ID"},
    {"BB_MV_GEBOTE", "ID_BB_T_KZ_ZUSCHLAG", "BB_T_KZ_ZUSCHLAG", "ID"},
    {"BB_MV_BIETER", "ID_PERSONAL", "PERSONAL", "ID_PERSONAL"},
    {"FHP_IMPORT", "ID_FHP_KA", "FHP_KA", "ID"},
    {"FHP_IMPORT", "ID_FHP_KFR", "FHP_KFR", "ID"},
    {"FHP_IMPORT", "ID_FHP_KKU", "FHP_KKU", "ID"},
    {"FHP_IMPORT", "ID_FHP_KLI", "FHP_KLI", "ID"},
    {"FHP_KFR", "ID_PERSONAL", "PERSONAL", "ID_PERSONAL"},
    {"FHP_KKU", "ID_PERSONAL", "PERSONAL", "ID_PERSONAL"},
    {"FHP_KLI", "ID_PERSONAL", "PERSONAL", "ID_PERSONAL"},
    {"FHP_SUPRO", "ID_FHP_IMPORT", "FHP_IMPORT", "ID"},
    {"FHP_SUPRO", "HA", "HOLZART", "HA"},
    {"FHP_SUPRO", "STKL", "STKL", "STKL"},
    {"FHP_ESTPRO", "ID_FHP_SUPRO", "FHP_SUPRO", "ID"},
    {"BB_TAKL02_KLR_BETRIEB", "ID_BB_TAKL01_KLR", "BB_TAKL01_KLR", "ID"},
    {"BB_TAKL02_KLR_BETRIEB", "ID_BB_AUFTRAG_KOPF", "BB_AUFTRAG_KOPF", "ID"},
    {"BB_TAKL02_KLR_BETRIEB", "ID_BB_T_OBJEKTE", "BB_T_OBJEKTE", "ID"},
    {"BB_TAKL02_KLR_BETRIEB", "ID_WARENKATALOG", "WARENKATALOG", "ART_ID"},
    {"BB_TAKL22_KLR_FEHLER", "ID_BB_TAKL02_KLR_BETRIEB", "BB_TAKL02_KLR_BETRIEB", "ID"},
};

TEST_P(InventoryRecords, KeysFindTheirRows)
{
    for (const Reference& reference : references)
        test::expectFound(database(), reference);
}

/// The last day is 31 December 2024.
TEST_P(InventoryRecords, LieInTheThreeYearsOfTheData)
{
    for (const std::string column : {"STEH_AUFNAHMEPROTOKOLL_KOPF.AUFNAHMEDATUM", "BB_MV_VERKAUFSZIEL.VERKAUFSDATUM",
                                     "FHP_IMPORT.MESSDATUM", "BB_TAKL02_KLR_BETRIEB.BELEGDATUM", "KLR.BELEG_DATUM"}) {
        EXPECT_EQ(countOf(database(), "SELECT COUNT(*) FROM " + column.substr(0, column.find('.')) + " WHERE " +
                                          column + " < '20220101' OR " + column + " > '20241231'"),
                  0)
            << column;
    }
}

INSTANTIATE_TEST_SUITE_P(Records, InventoryRecords, testing::Values(0, 1, 200, 1000));

TEST(InventoryRecordsOfASeed, AreTheSameAgainAndDifferFromAnotherSeed)
{
    const auto totals = [](const ado::ConnectionRef& connection) {
        std::string text;
        for (const std::string sum :
             {"ERLOS*100) AS BIGINT) FROM STEH_AUFNAHMEPROTOKOLL_KOPF",
              "ANSCHLAG*100) AS BIGINT) FROM BB_MV_VERKAUFSZIEL", "BETRAG*100) AS BIGINT) FROM FHP_IMPORT",
              "KOSTEN*100) AS BIGINT) FROM BB_TAKL01_KLR", "KOSTEN*100) AS BIGINT) FROM KLR"})
            text += std::to_string(countOf(connection, "SELECT CAST(SUM(" + sum)) + " ";
        return text;
    };
    EXPECT_EQ(totals(databaseOf(30)), totals(databaseOf(30)));
    EXPECT_NE(totals(databaseOf(30)), totals(databaseOf(30, 2)));
}

} // namespace
} // namespace tamarok::database
