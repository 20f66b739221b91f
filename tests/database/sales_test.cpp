#include <array>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <string_view>

#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"

#include "tamarok/convert.h"

// The rows of contracts, goods, transport orders, invoices of articles and billing: amounts add up, dates follow each
// other, keys find their rows.

namespace tamarok::database {
namespace {

class Sales : public testing::TestWithParam<std::int32_t> {
protected:
    static void TearDownTestSuite() { databases().clear(); }

    /// Each database is made once and read by every case.
    static const ado::ConnectionRef& database()
    {
        ado::ConnectionRef& connection = databases()[GetParam()];
        if (connection) return connection;
        ReferenceOptions options;
        options.logs = 0;
        options.records = GetParam();
        connection = embedded::connectInMemory();
        createReferenceDatabase(*connection, options);
        return connection;
    }

    /// Counts the rows of FROM and WHERE.
    static std::int64_t countOf(const std::string& from)
    {
        ado::Recordset rows;
        rows.Open("SELECT COUNT(*) FROM " + from, database());
        return convert::toLongLong(rows.Fields().Item(0).Value());
    }

private:
    static std::map<std::int32_t, ado::ConnectionRef>& databases()
    {
        static std::map<std::int32_t, ado::ConnectionRef> all;
        return all;
    }
};

/// What must not occur.
struct Fault {
    std::string_view name;
    std::string_view rows; ///< FROM and WHERE of a count that is 0
};

constexpr Fault faults[]{
    {"an announcement before its contract",
     "WVO_VERTRAG W INNER JOIN VERTRAEGE V ON V.ID_VERTRAG = W.ID_VERTRAG WHERE W.ANGEMELDETE < V.INVDATE OR "
     "W.MENGENMELDUNG < W.ANGEMELDETE OR W.BEREITSELLUNGS < W.MENGENMELDUNG"},
    {"a generated contract without quantity",
     "VERTRAEGE V WHERE V.KOPF2 IS NOT NULL AND NOT EXISTS (SELECT M.ID FROM VERTRAG_MENGEN M WHERE M.ID_VERTRAG = "
     "V.ID_VERTRAG)"},
    {"more stock reserved than there is", "LAGER_ARTIKEL_MENGE WHERE RESERVIERT > MENGE"},
    {"stock issued before it came", "LAGER_ARTIKEL_MENGE WHERE LETZTER_ABGANG < LETZTER_ZUGANG"},
    {"a transport whose totals are not those of its trips",
     "TRANSPORTLOGISTIK_KOPF K INNER JOIN (SELECT ID_TRANSPORTLOGISTIK_KOPF AS HEAD, SUM(MENGE) AS VOLUME, "
     "SUM(GEWICHT_NETTO) AS WEIGHT, SUM(FRACHT) AS FREIGHT FROM TRANSPORTLOGISTIK GROUP BY "
     "ID_TRANSPORTLOGISTIK_KOPF) T ON T.HEAD = K.ID WHERE ABS(K.MENGE-T.VOLUME) > 0.0001 OR "
     "ABS(K.GEWICHT-T.WEIGHT) > 0.001 OR ABS(K.FRACHT-T.FREIGHT) > 0.001"},
    {"a transport without trip", "TRANSPORTLOGISTIK_KOPF K WHERE NOT EXISTS (SELECT T.ID FROM TRANSPORTLOGISTIK T "
                                 "WHERE T.ID_TRANSPORTLOGISTIK_KOPF = K.ID)"},
    {"a freight that is not rate times volume", "TRANSPORTLOGISTIK WHERE ABS(FRACHT-FRACHTSATZ*MENGE) > 0.0051 OR "
                                                "ABS(GEWICHT_BRUTTO-GEWICHT_TARA-GEWICHT_NETTO) > 0.001"},
    {"an invoice of articles that a log names",
     "HEADERRECH WHERE R_NAME LIKE 'N-%' AND R_NAME IN (SELECT R_NAME FROM LOGS_RECH)"},
    {"an invoice whose total is not that of its articles",
     "HEADERRECH K INNER JOIN (SELECT NN_NAME, VER_TYPE, SUM(EINHPREIS*MENGE*(1-RABATT/100)) AS NET FROM "
     "NN_POSITIONEN GROUP BY NN_NAME, VER_TYPE) P ON P.NN_NAME = K.R_NAME AND P.VER_TYPE = K.VER_TYPE WHERE "
     "K.R_NAME LIKE 'N-%' AND (ABS(K.NUMM1-P.NET) > 0.0051 OR ABS(K.NUMM1+K.NUMM3-K.NUMM4) > 0.0101)"},
    {"a position without its invoice",
     "NN_POSITIONEN P WHERE NOT EXISTS (SELECT K.R_NAME FROM HEADERRECH K WHERE K.R_NAME = P.NN_NAME AND K.VER_TYPE = "
     "P.VER_TYPE)"},
    {"a partial invoice without the final one of the same partner",
     "NN_POSITIONEN P INNER JOIN HEADERRECH K ON K.R_NAME = P.NN_NAME AND K.VER_TYPE = P.VER_TYPE WHERE K.RART_ID = 3 "
     "AND NOT EXISTS (SELECT F.R_NAME FROM HEADERRECH F WHERE F.R_NAME = P.WILDURS AND F.VER_TYPE = P.VER_TYPE AND "
     "F.KUNDEN_ID = K.KUNDEN_ID AND F.INVDATE >= K.INVDATE AND F.RART_ID = 4)"},
    {"a position whose amounts do not follow from quantity, price and rates",
     "BB_FAKTURA_ARTIKEL WHERE ABS(NETTO-MENGE*EINZELPREIS*(1-RABATT/100)) > 0.0051 OR ABS(MWST-NETTO*MWST_SATZ/100) "
     "> 0.0051 OR ABS(BRUTTO-NETTO-MWST) > 0.001"},
    {"a billing record whose totals are not those of its positions and further receipts",
     "BB_FAKTURA_KOPF K INNER JOIN (SELECT HEAD, SUM(NET) AS NET, SUM(TAX) AS TAX, SUM(GROSS) AS GROSS FROM (SELECT "
     "ID_BB_FAKTURA_KOPF AS HEAD, NETTO AS NET, MWST AS TAX, BRUTTO AS GROSS FROM BB_FAKTURA_ARTIKEL UNION ALL SELECT "
     "ID_BB_FAKTURA_KOPF, NETTO, MWST, BRUTTO FROM BB_FAKTURA_ZARP) A GROUP BY HEAD) P ON P.HEAD = K.ID WHERE "
     "K.NETTO IS NULL OR ABS(K.NETTO-P.NET) > 0.001 OR ABS(K.MWST-P.TAX) > 0.001 OR ABS(K.BRUTTO-P.GROSS) > 0.001"},
    {"an invoice that precedes its offer or goes to another customer",
     "BB_FAKTURA_KOPF R INNER JOIN BB_FAKTURA_KOPF O ON O.ID = R.ID_ANGEBOT WHERE R.FA_DATUM < O.FA_DATUM OR "
     "R.ID_PERSONAL <> O.ID_PERSONAL OR O.ID_BB_T_ANGEBOTSTYP IS NULL OR R.ID_BB_T_RECHNUNGSTYP IS NULL"},
    {"a record cancelled before its date", "BB_FAKTURA_KOPF WHERE STORNODATUM <= FA_DATUM"},
    {"a cancelled record that was paid", "BB_FAKTURA_KOPF WHERE STORNODATUM IS NOT NULL AND BEZAHLT_AM IS NOT NULL"},
    {"a record of another chapter than its budget item's",
     "BB_FAKTURA_KOPF K INNER JOIN BB_HAUSHALT B ON B.ID = K.ID_BB_HAUSHALT WHERE K.ID_HH_TITEL <> B.ID_HH_TITEL OR "
     "K.ID_HH_KAPITEL <> B.ID_HH_KAPITEL"},
};

TEST_P(Sales, AddUp)
{
    for (const Fault& fault : faults)
        EXPECT_EQ(countOf(std::string{fault.rows}), 0) << fault.name;
}

/// A column that names a row of another table.
struct Reference {
    std::string_view table, column, target, key;
};

constexpr Reference references[]{
    {"WVO_VERTRAG", "ID_VERTRAG", "VERTRAEGE", "ID_VERTRAG"},
    {"VERTRAG_MENGEN", "ID_VERTRAG", "VERTRAEGE", "ID_VERTRAG"},
    {"WARENKATALOG", "GRUPPE_ID", "WARENGRUPPE", "GRUPPE_ID"},
    {"WARENKATALOG", "ID_WARENEINHEIT", "WARENEINHEIT", "EINHEIT_ID"},
    {"WARENKATALOG", "ID_KOSTENART", "KOSTENART", "ID"},
    {"WARENKATALOG", "ID_LEISTUNGSART", "LEISTUNGSART", "ID"},
    {"WARENKATALOG", "ID_PRODUKT", "PRODUKT", "ID"},
    {"WARENKATALOG", "ID_BB_T_MEHRWERTSTEUER1", "BB_T_MEHRWERTSTEUER", "ID"},
    {"LAGER_ARTIKEL_MENGE", "ID_WARENKATALOG", "WARENKATALOG", "ART_ID"},
    {"TRANSPORTLOGISTIK_KOPF", "ID_PERSONAL", "PERSONAL", "ID_PERSONAL"},
    {"TRANSPORTLOGISTIK_KOPF", "A8_KUNDE", "PERSONAL", "ID_PERSONAL"},
    {"TRANSPORTLOGISTIK_KOPF", "R_VERTRAG", "VERTRAEGE", "VERTRAG_NAME"},
    {"TRANSPORTLOGISTIK_KOPF", "RELTABLE10", "RELTABLE", "ID"},
    {"TRANSPORTLOGISTIK", "ID_TRANSPORTLOGISTIK_KOPF", "TRANSPORTLOGISTIK_KOPF", "ID"},
    {"TRANSPORTLOGISTIK", "ID_TRANSPORTLOGISTIK_WAGGON", "TRANSPORTLOGISTIK_WAGGON", "ID"},
    {"NN_POSITIONEN", "ID_WARENKATALOG", "WARENKATALOG", "ART_ID"},
    {"NN_POSITIONEN", "ID_WARENEINHEIT_VE", "WARENEINHEIT", "EINHEIT_ID"},
    {"NN_POSITIONEN", "ARBEITSAUFTRAG_KOPF_ID", "ARBEITSAUFTRAG_KOPF", "ID"},
    {"NN_POSITIONEN", "ID_T_ERLEGER", "T_ERLEGER", "ID"},
    {"HEADERRECH", "RART_ID", "RECHNUNGSART", "RART_ID"},
    {"HEADERRECH", "BUCHNR_ID", "BUCHNR", "BUCHNR_ID"},
    {"HEADERRECH", "TITEL_ID", "HH_TITEL", "ID"},
    {"HEADERRECH", "ID_ANLASSART", "ANLASSART", "ID"},
    {"BB_FAKTURA_KOPF", "ID_PERSONAL", "PERSONAL", "ID_PERSONAL"},
    {"BB_FAKTURA_KOPF", "ID_BB_T_KASSE", "BB_T_KASSE", "ID"},
    {"BB_FAKTURA_KOPF", "ID_BB_T_UNTERKONTO", "BB_T_UNTERKONTO", "ID"},
    {"BB_FAKTURA_KOPF", "ID_BB_HAB_RECHNUNG", "BB_HAB", "ID"},
    {"BB_FAKTURA_ARTIKEL", "ID_BB_FAKTURA_KOPF", "BB_FAKTURA_KOPF", "ID"},
    {"BB_FAKTURA_ARTIKEL", "ID_BB_AUFTRAG_KOPF", "BB_AUFTRAG_KOPF", "ID"},
    {"BB_FAKTURA_ARTIKEL", "ID_BB_T_TARIFSTELLE", "BB_T_TARIFSTELLE", "ID"},
    {"BB_FAKTURA_ARTIKEL", "ID_BB_T_ENTGELTART", "BB_T_ENTGELTART", "ID"},
    {"BB_FAKTURA_ARTIKEL", "ID_BB_TSP_MWSCHL", "BB_TSP_MWSCHL", "ID"},
    {"BB_FAKTURA_ZARP", "ID_BB_FAKTURA_KOPF", "BB_FAKTURA_KOPF", "ID"},
    {"BB_FAKTURA_ZARP", "ID_BB_T_ZU_U_ABSCHLAGE_Z_ROH", "BB_T_ZU_U_ABSCHLAGE_Z_ROH", "ID"},
    {"BB_TSP_MWSCHL", "ID_BB_TSM_MWSTSCHLUSSEL", "BB_TSM_MWSTSCHLUSSEL", "ID"},
};

TEST_P(Sales, KeysFindTheirRows)
{
    for (const Reference& row : references) {
        const std::string column{row.column};
        EXPECT_EQ(countOf(std::string{row.table} + " WHERE " + column + " IS NOT NULL AND " + column +
                          " NOT IN (SELECT " + std::string{row.key} + " FROM " + std::string{row.target} + ")"),
                  0)
            << row.table << '.' << column;
    }
}

TEST_P(Sales, HaveTheNumberOfRecords)
{
    EXPECT_EQ(countOf("TRANSPORTLOGISTIK_KOPF"), GetParam());
    EXPECT_EQ(countOf("HEADERRECH WHERE R_NAME LIKE 'N-%'"), GetParam());
    EXPECT_EQ(countOf("LAGER_ARTIKEL_MENGE"), GetParam());
    EXPECT_EQ(countOf("WVO_VERTRAG"), GetParam());
    EXPECT_GE(countOf("VERTRAEGE"), GetParam());
    EXPECT_GE(countOf("WARENKATALOG"), GetParam());
    EXPECT_GE(countOf("BB_FAKTURA_KOPF"), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Records, Sales, testing::Values(0, 1, 5, 200, 600));

} // namespace
} // namespace tamarok::database
