#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"

#include "tamarok/convert.h"

// Records of hunting, objects, the document book, distribution keys and stock: they contradict neither themselves nor
// the rows to which they refer.

namespace tamarok::database {
namespace {

std::int64_t count(const ado::ConnectionRef& connection, const std::string& rest)
{
    ado::Recordset rows;
    rows.Open("SELECT COUNT(*) AS N FROM " + rest, connection);
    return convert::toLongLong(rows.Fields().Item(0).Value());
}

ado::ConnectionRef databaseOf(std::int32_t records)
{
    ado::ConnectionRef connection = embedded::connectInMemory();
    ReferenceOptions options;
    options.logs = 100;
    options.records = records;
    createReferenceDatabase(*connection, options);
    return connection;
}

/// Rows that must not be there: what follows FROM.
struct Contradiction {
    std::string_view about;
    std::string_view rows;
};

constexpr Contradiction contradictions[]{
    {"sums of a hunting plan",
     "BB_ABSCHUSSPLAN_KOPF K INNER JOIN (SELECT ID_BB_ABSCHUSSPLAN_KOPF AS ID_KOPF, SUM(SOLL) AS SOLL, SUM(IST) AS "
     "IST, "
     "SUM(FALLWILD) AS FALLWILD FROM BB_ABSCHLUSSPLAN GROUP BY ID_BB_ABSCHUSSPLAN_KOPF) P ON P.ID_KOPF = K.ID "
     "WHERE K.SUMME_SOLL <> P.SOLL OR K.SUMME_IST <> P.IST OR K.SUMME_FALLWILD <> P.FALLWILD"},
    {"a hunting plan without positions",
     "BB_ABSCHUSSPLAN_KOPF WHERE ID NOT IN (SELECT ID_BB_ABSCHUSSPLAN_KOPF FROM BB_ABSCHLUSSPLAN)"},
    {"areas and rent of a hunting district",
     "BB_JAGDBEZIRKE WHERE ABS(GESAMTFLACHE-WALDFLACHE-FELDFLACHE-WASSERFLACHE-BEFRIEDETE_FLACHE) > 0.001 OR "
     "ABS(PACHTSUMME-GESAMTFLACHE*PACHTPREIS) > 0.00501"},
    {"amounts of a piece of game",
     "BB_WILDURSPRUNGS WHERE ABS(NETTOBETRAG-GEWICHT*PREIS) > 0.00501 OR "
     "ABS(NETTOBETRAG*MWST/100-MWST_BETRAG) > 0.00501 OR ABS(NETTOBETRAG+MWST_BETRAG-BRUTTOBETRAG) > 0.001"},
    {"game that nobody brought down has a hunter",
     "BB_WILDURSPRUNGS WHERE ID_BB_T_TODESURSACHE <> 1 AND ID_PERSONAL_ERLEGER IS NOT NULL"},
    {"a small-game bag", "BB_STRECKE_NIEDER WHERE STUCK < MANNLICH+WEIBLICH OR ABS(ERLOS-STUCK*PREIS) > 0.001"},
    {"successful searches of a dog", "BB_JAGDHUNDE WHERE NACHSUCHEN_ERFOLG > NACHSUCHEN OR NACHSUCHEN > EINSATZTAGE"},
    {"depreciation of an object", "BB_T_OBJEKTE WHERE ABS(ANSCHAFFUNGSWERT/NUTZUNGSDAUER-ABSCHREIBUNG) > 0.00501 OR "
                                  "RESTWERT < 0 OR RESTWERT > ANSCHAFFUNGSWERT"},
    {"sums of a log book",
     "BB_FAHRTENBUCH_KOPF K INNER JOIN (SELECT ID_BB_FAHRTENBUCH_KOPF AS ID_KOPF, SUM(KM) AS KM, MIN(KM_VON) AS "
     "KM_VON, "
     "MAX(KM_BIS) AS KM_BIS, SUM(BETRIEBSSTUNDEN) AS STUNDEN, SUM(KRAFTSTOFF) AS LITER, SUM(KRAFTSTOFFKOSTEN) AS "
     "KOSTEN "
     "FROM BB_FAHRTENBUCH GROUP BY ID_BB_FAHRTENBUCH_KOPF) P ON P.ID_KOPF = K.ID WHERE K.KM_GESAMT <> P.KM OR "
     "K.KM_BEGINN <> P.KM_VON OR K.KM_ENDE <> P.KM_BIS OR ABS(K.BETRIEBSSTUNDEN-P.STUNDEN) > 0.001 OR "
     "ABS(K.KRAFTSTOFF-P.LITER) > 0.001 OR ABS(K.KRAFTSTOFFKOSTEN-P.KOSTEN) > 0.001 OR "
     "ABS(K.KRAFTSTOFFKOSTEN+K.REPARATURKOSTEN+K.SONSTIGE_KOSTEN-K.GESAMTKOSTEN) > 0.001"},
    {"log books of an object that overlap",
     "BB_FAHRTENBUCH_KOPF A INNER JOIN BB_FAHRTENBUCH_KOPF B ON B.ID_BB_T_OBJEKTE = A.ID_BB_T_OBJEKTE AND "
     "B.DATUM_VON > A.DATUM_BIS WHERE B.KM_BEGINN < A.KM_ENDE"},
    {"amounts of a document",
     "SCH_BELEGE_KOPF K INNER JOIN (SELECT ID_SCH_BELEGE_KOPF AS ID_KOPF, SUM(BETRAG) AS BETRAG, "
     "SUM(ISNULL(KOSTEN,0)) AS KOSTEN, SUM(ISNULL(ERLOSE,0)) AS ERLOSE FROM SCH_BELEGE GROUP BY ID_SCH_BELEGE_KOPF) P "
     "ON P.ID_KOPF = K.ID WHERE ABS(K.NETTOBETRAG-P.BETRAG) > 0.001 OR "
     "ABS(K.NETTOBETRAG-(CASE WHEN K.EINNAHME = 1 THEN P.ERLOSE ELSE P.KOSTEN END)) > 0.001 OR "
     "ABS(K.NETTOBETRAG*K.MWST/100-K.MWST_BETRAG) > 0.00501 OR ABS(K.NETTOBETRAG+K.MWST_BETRAG-K.BRUTTOBETRAG) > "
     "0.001"},
    {"lines of a document", "SCH_BELEGE WHERE ABS(MENGE*EINZELPREIS-BETRAG) > 0.00501"},
    {"shares of a distribution key",
     "BB_VERTEILSCHLUSSEL_KOPF K INNER JOIN (SELECT ID_BB_VERTEILSCHLUSSEL_KOPF AS ID_KOPF, SUM(ANTEIL) AS ANTEIL, "
     "SUM(BETRAG) AS BETRAG, MIN(BETRAG) AS LEAST FROM BB_VERTEILSCHLUSSEL GROUP BY ID_BB_VERTEILSCHLUSSEL_KOPF) P "
     "ON P.ID_KOPF = K.ID WHERE ABS(P.ANTEIL-100) > 0.001 OR ABS(P.BETRAG-K.VERTEILBETRAG) > 0.001 OR P.LEAST <= 0 OR "
     "K.UMGELEGT <> K.VERTEILBETRAG"},
    {"movements of the stock",
     "BB_BELEGE_LAGER WHERE ABS(ZUGANG-ABGANG-MENGE) > 0.001 OR MENGE = 0 OR ABS(MENGE*PREIS-WERT) > 0.00501"},
    {"a stock below zero",
     "(SELECT SUM(MENGE) AS MENGE FROM BB_BELEGE_LAGER GROUP BY ID_WARENKATALOG, ID_KOSTENSTELLE) "
     "BESTAND WHERE BESTAND.MENGE < 0"},
    {"documents cancelled before they were made",
     "SCH_BELEGE_KOPF WHERE STORNODATUM < BUCHUNGSDATUM OR BUCHUNGSDATUM < BELEGDATUM"},
    {"game recorded outside the three years of the data",
     "BB_WILDURSPRUNGS WHERE DATUM < '20220101' OR DATUM > '20241231' OR STORNODATUM < DATUM"},
};

/// A column that holds keys of another table.
struct Reference {
    std::string_view table, column, target, key;
};

constexpr Reference references[]{
    {"BB_JAGDBEZIRKE", "ID_BB_T_JAGDBEZIRKSART", "BB_T_JAGDBEZIRKSART", "ID"},
    {"BB_JAGDBEZIRKE", "ID_PERSONAL", "PERSONAL", "ID_PERSONAL"},
    {"BB_ABSCHUSSPLAN_KOPF", "ID_BB_JAGDBEZIRKE", "BB_JAGDBEZIRKE", "ID"},
    {"BB_WILDURSPRUNGS", "ID_BB_JAGDBEZIRKE", "BB_JAGDBEZIRKE", "ID"},
    {"BB_WILDURSPRUNGS", "ID_BB_T_WILDART", "BB_T_WILDART", "ID"},
    {"BB_WILDURSPRUNGS", "ID_BB_T_ALTERSKLASSE", "BB_T_ALTERSKLASSE", "ID"},
    {"BB_WILDURSPRUNGS", "ID_BB_T_TODESURSACHE", "BB_T_TODESURSACHE", "ID"},
    {"BB_WILDURSPRUNGS", "ID_BB_T_JAGDART", "BB_T_JAGDART", "ID"},
    {"BB_WILDURSPRUNGS", "ID_WARENKATALOG", "WARENKATALOG", "ART_ID"},
    {"BB_WILDURSPRUNGS", "ID_WALDORT", "WALDORT", "ID_WALDORT"},
    {"BB_STRECKE_NIEDER", "ID_BB_T_WILDART", "BB_T_WILDART", "ID"},
    {"BB_STRECKE_NIEDER", "ID_BB_T_JAGDART", "BB_T_JAGDART", "ID"},
    {"BB_STRECKE_NIEDER", "ID_BB_T_LANDKREIS", "BB_T_LANDKREIS", "ID"},
    {"BB_STRECKE_NIEDER", "ID_BB_T_JAGERSTATUS", "BB_T_JAGERSTATUS", "ID"},
    {"BB_JAGDHUNDE", "ID_BB_T_HUNDERASSE", "BB_T_HUNDERASSE", "ID"},
    {"BB_T_OBJEKTE", "ID_BB_T_OBJEKTGRUPPE", "BB_T_OBJEKTGRUPPE", "ID"},
    {"BB_T_OBJEKTE", "ID_BB_T_EINSATZART", "BB_T_EINSATZART", "ID"},
    {"BB_FAHRTENBUCH_KOPF", "ID_BB_T_OBJEKTE", "BB_T_OBJEKTE", "ID"},
    {"BB_FAHRTENBUCH", "ID_BB_FAHRTENBUCH_KOPF", "BB_FAHRTENBUCH_KOPF", "ID"},
    {"SCH_BELEGE_KOPF", "ID_BB_T_ZAHLART", "BB_T_ZAHLART", "ID"},
    {"SCH_BELEGE", "ID_SCH_BELEGE_KOPF", "SCH_BELEGE_KOPF", "ID"},
    {"BB_VERTEILSCHLUSSEL_KOPF", "ID_KOSTENSTELLE", "KOSTENSTELLE", "ID"},
    {"BB_BELEGE_LAGER", "ID_WARENKATALOG", "WARENKATALOG", "ART_ID"},
    {"BB_BELEGE_LAGER", "ID_WARENEINHEIT", "WARENEINHEIT", "EINHEIT_ID"},
};

constexpr std::string_view heads[]{"BB_ABSCHUSSPLAN_KOPF", "BB_WILDURSPRUNGS",        "BB_STRECKE_NIEDER",
                                   "BB_JAGDHUNDE",         "BB_FAHRTENBUCH_KOPF",     "SCH_BELEGE_KOPF",
                                   "BB_BELEGE_LAGER",      "BB_VERTEILSCHLUSSEL_KOPF"};

void expectConsistent(const ado::ConnectionRef& connection)
{
    for (const Contradiction& row : contradictions)
        EXPECT_EQ(count(connection, std::string{row.rows}), 0) << row.about;
    for (const Reference& row : references) {
        const std::string table{row.table};
        const std::string reference = table + "." + std::string{row.column};
        EXPECT_EQ(count(connection, table + " WHERE " + reference + " IS NOT NULL AND " + reference +
                                        " NOT IN (SELECT " + std::string{row.key} + " FROM " + std::string{row.target} +
                                        ")"),
                  0)
            << reference;
    }
}

TEST(HuntingAndStores, RecordsAgreeWithEachOther)
{
    const ado::ConnectionRef connection = databaseOf(300);
    expectConsistent(connection);
    for (const std::string_view head : heads)
        EXPECT_EQ(count(connection, std::string{head}), 300) << head;
    for (const Reference& row : references)
        EXPECT_GT(count(connection, std::string{row.table} + " WHERE " + std::string{row.column} + " IS NOT NULL"), 0)
            << row.table << "." << row.column;
    EXPECT_EQ(count(connection, "BB_T_OBJEKTE"), 300);
    EXPECT_EQ(count(connection, "BB_JAGDBEZIRKE"), 300);
}

TEST(HuntingAndStores, AnyNumberOfRecordsIsPossible)
{
    for (const std::int32_t records : {0, 1, 6}) {
        const ado::ConnectionRef connection = databaseOf(records);
        expectConsistent(connection);
        for (const std::string_view head : heads)
            EXPECT_EQ(count(connection, std::string{head}), records) << head;
    }
}

} // namespace
} // namespace tamarok::database
