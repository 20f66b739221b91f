#include <gtest/gtest.h>
#include <map>
#include <string>

#include "records_database.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"

#include "tamarok/convert.h"

// The rows of cost vouchers and timber harvest records: amounts add up, dates follow each other, keys find their rows.

namespace tamarok::database {
namespace {

using test::countOf;
using test::databaseOf;

/// Each database is made once and read by every case.
class Receipts : public testing::TestWithParam<std::int32_t> {
protected:
    static void TearDownTestSuite() { databases().clear(); }

    static ado::ConnectionRef database(std::int32_t records)
    {
        ado::ConnectionRef& connection = databases()[records];
        if (!connection) connection = databaseOf(records);
        return connection;
    }

private:
    static std::map<std::int32_t, ado::ConnectionRef>& databases()
    {
        static std::map<std::int32_t, ado::ConnectionRef> all;
        return all;
    }
};

constexpr std::string_view headTables[]{"BB_BELEGE_KOPF", "BB_HAB_KOPF"};

TEST_P(Receipts, HaveHeadsNumberedFromOne)
{
    const ado::ConnectionRef connection = database(GetParam());
    for (const std::string_view table : headTables) {
        const std::string from = " FROM " + std::string{table};
        EXPECT_EQ(countOf(connection, "SELECT COUNT(*)" + from), GetParam()) << table;
        EXPECT_EQ(countOf(connection, "SELECT ISNULL(MAX(ID),0)" + from), GetParam()) << table;
    }
}

/// What must not occur: FROM and WHERE of a count that is 0.
struct Fault {
    std::string_view name;
    std::string_view rows;
};

constexpr Fault faults[]{
    {"a net amount that is not quantity times price",
     "BB_BELEGE WHERE ABS(ISNULL(KOSTEN,0)+ISNULL(ERLOSE,0)-MENGE*EINZELPREIS) > 0.0051"},
    {"a position without net amount, or with costs and revenues",
     "BB_BELEGE WHERE (KOSTEN IS NULL AND ERLOSE IS NULL) OR (KOSTEN IS NOT NULL AND ERLOSE IS NOT NULL)"},
    {"an account that does not fit the amount",
     "BB_BELEGE WHERE (ID_KOSTENART IS NULL AND KOSTEN IS NOT NULL) OR (ID_ERLOSART IS NULL AND ERLOSE IS NOT NULL)"},
    {"a tax that is not the rate's part of the net amount",
     "BB_BELEGE WHERE ABS(MWST-(ISNULL(KOSTEN,0)+ISNULL(ERLOSE,0))*MWST_SATZ/100) > 0.0051"},
    {"a gross amount that is not net and tax",
     "BB_BELEGE WHERE ABS(BRUTTO-ISNULL(KOSTEN,0)-ISNULL(ERLOSE,0)-MWST) > 0.0001"},
    {"a voucher whose net amount is not the sum of its positions",
     "BB_BELEGE_KOPF K WHERE ABS(K.NETTO-ISNULL((SELECT SUM(ISNULL(P.KOSTEN,0)-ISNULL(P.ERLOSE,0)) FROM BB_BELEGE P "
     "WHERE P.ID_BB_BELEGE_KOPF = K.ID),0)) > 0.0001"},
    {"a voucher whose gross amount is not net and tax", "BB_BELEGE_KOPF WHERE ABS(BRUTTO-NETTO-MWST) > 0.0001"},
    {"an invoice of another amount than its voucher",
     "BB_BELEGE_KOPF K INNER JOIN BB_RECHNUNGSNUMMER_BELEG R ON R.ID = K.ID_BB_RECHNUNGSNUMMER_BELEG WHERE "
     "R.BETRAG <> K.BRUTTO OR R.RECHNUNGSDATUM > K.BELEGDATUM"},
    {"a voucher cancelled before its date", "BB_BELEGE_KOPF WHERE STORNODATUM <= BELEGDATUM"},
    {"a cancelled voucher that was paid", "BB_BELEGE_KOPF WHERE STORNODATUM IS NOT NULL AND ZAHLDATUM IS NOT NULL"},
    {"a position that begins before its order",
     "BB_BELEGE P INNER JOIN BB_AUFTRAG_KOPF A ON A.ID = P.ID_BB_AUFTRAG_KOPF WHERE P.LEISTUNG_VON < A.DATUM"},
    {"a felling that begins before its order",
     "BB_HAB_KOPF K INNER JOIN BB_AUFTRAG_KOPF A ON A.ID = K.ID_BB_AUFTRAG_KOPF WHERE K.EINSCHLAG_VON < A.DATUM"},
    {"a voucher posted before its receipt", "BB_BELEGE_KOPF WHERE BUCHUNGSDATUM < EINGANGSDATUM"},
    {"a harvest record whose volume is not the sum of its lines",
     "BB_HAB_KOPF K WHERE ABS(K.MENGE-ISNULL((SELECT SUM(P.KUBATUR) FROM BB_HAB P WHERE P.ID_BB_HAB_KOPF = K.ID),0)) > "
     "0.0001"},
    {"a harvest record whose volume is not that of its nature records",
     "BB_HAB_KOPF K WHERE ABS(K.MENGE-ISNULL((SELECT SUM(N.MENGE) FROM BB_HAB_NATURALVOLLZUG N WHERE "
     "N.ID_BB_HAB_KOPF = K.ID),0)) > 0.0001"},
    {"a harvest record cancelled before its date", "BB_HAB_KOPF WHERE STORNODATUM <= HAB_DATUM"},
    {"a felling that ends before it begins or after its measurement",
     "BB_HAB_KOPF WHERE EINSCHLAG_BIS < EINSCHLAG_VON OR AUFNAHMEDATUM < EINSCHLAG_BIS"},
    {"a sale of a cancelled harvest record",
     "BB_HAB P INNER JOIN BB_HAB_KOPF K ON K.ID = P.ID_BB_HAB_KOPF WHERE K.STORNODATUM IS NOT NULL AND "
     "P.ID_BB_HAB_FAKTURA IS NOT NULL"},
    {"more timber issued than measured", "BB_HAB WHERE ABGANGSMENGE > MENGE OR ABFUHRDATUM < ABGANGSDATUM"},
    {"a sale of another quantity than issued",
     "BB_HAB P INNER JOIN BB_HAB_FAKTURA F ON F.ID = P.ID_BB_HAB_FAKTURA WHERE F.MENGE <> P.ABGANGSMENGE OR "
     "F.ID_BB_HAB <> P.ID OR F.ANGEBOT = 1"},
    {"an offer that follows the sale",
     "BB_HAB P INNER JOIN BB_HAB_FAKTURA F ON F.ID = P.ID_BB_HAB_FAKTURA INNER JOIN BB_HAB_FAKTURA A ON A.ID = "
     "P.ID_BB_HAB_FAKTURA_ANGEBOT WHERE A.DATUM > F.DATUM OR A.ANGEBOT = 0 OR A.ID_BB_HAB <> P.ID"},
    {"a sale whose net amount is not quantity times price and surcharges",
     "BB_HAB_FAKTURA WHERE ABS(NETTO-MENGE*(PREIS+ISNULL(ZARP1,0)+ISNULL(ZARP2,0)+ISNULL(ZARP3,0))) > 0.0051"},
    {"a sale on an offer's document, or an offer on an invoice's",
     "BB_HAB_FAKTURA F INNER JOIN BB_FAKTURA_KOPF K ON K.ID = F.ID_BB_FAKTURA_KOPF WHERE (F.ANGEBOT = 1 AND "
     "K.ID_BB_T_ANGEBOTSTYP IS NULL) OR (F.ANGEBOT = 0 AND K.ID_BB_T_RECHNUNGSTYP IS NULL)"},
    {"a deduction that raises the price", "BB_HAB_FAKTURA F INNER JOIN BB_T_ZU_U_ABSCHLAGE_Z_ROH Z ON Z.ID = "
                                          "F.ID_ZARP3 WHERE Z.ABSCHLAG = 1 AND F.ZARP3 > 0"},
    {"a sale whose gross amount is not net and tax",
     "BB_HAB_FAKTURA WHERE ABS(BRUTTO-NETTO-MWST) > 0.0001 OR ABS(MWST-NETTO*MWST_SATZ/100) > 0.0051"},
};

TEST_P(Receipts, AddUp)
{
    const ado::ConnectionRef connection = database(GetParam());
    for (const Fault& fault : faults)
        EXPECT_EQ(countOf(connection, "SELECT COUNT(*) FROM " + std::string{fault.rows}), 0) << fault.name;
}

/// A key column and the table and column in which each of its values is found.
struct Reference {
    std::string_view table, column, toTable, toColumn;
};

constexpr Reference references[]{
    {"BB_BELEGE_KOPF", "ID_ACCESS_LEVELS", "ACCESS_LEVELS", "ID"},
    {"BB_BELEGE_KOPF", "ID_ACCESS_LEVELS_LAGER", "ACCESS_LEVELS", "ID"},
    {"BB_BELEGE_KOPF", "ID_ACCESS_LEVELS_BW", "ACCESS_LEVELS", "ID"},
    {"BB_BELEGE_KOPF", "ID_PERSONAL", "PERSONAL", "ID_PERSONAL"},
    {"BB_BELEGE_KOPF", "ID_LIEFERANT", "PERSONAL", "ID_PERSONAL"},
    {"BB_BELEGE_KOPF", "ID_WALDBESITZER", "PERSONAL", "ID_PERSONAL"},
    {"BB_BELEGE_KOPF", "ID_BUCHNR", "BUCHNR", "BUCHNR_ID"},
    {"BB_BELEGE_KOPF", "ID_BB_HAUSHALT", "BB_HAUSHALT", "ID"},
    {"BB_BELEGE_KOPF", "ID_BB_RECHNUNGSNUMMER_BELEG", "BB_RECHNUNGSNUMMER_BELEG", "ID"},
    {"BB_BELEGE", "ID_BB_BELEGE_KOPF", "BB_BELEGE_KOPF", "ID"},
    {"BB_BELEGE", "ID_KOSTENSTELLE", "KOSTENSTELLE", "ID"},
    {"BB_BELEGE", "ID_WARENKATALOG", "WARENKATALOG", "ART_ID"},
    {"BB_BELEGE", "ID_WALDORT", "WALDORT", "ID_WALDORT"},
    {"BB_NATURALVOLLZUG", "ID_BB_BELEGE", "BB_BELEGE", "ID"},
    {"BB_NATURALVOLLZUG_DSW", "ID_BB_BELEGE", "BB_BELEGE", "ID"},
    {"BB_HAB_KOPF", "ID_ACCESS_LEVELS", "ACCESS_LEVELS", "ID"},
    {"BB_HAB_KOPF", "ID_WALDBESITZER", "PERSONAL", "ID_PERSONAL"},
    {"BB_HAB_KOPF", "ID_WALDORT", "WALDORT", "ID_WALDORT"},
    {"BB_HAB", "ID_BB_HAB_KOPF", "BB_HAB_KOPF", "ID"},
    {"BB_HAB", "ID_BB_HAB_FAKTURA", "BB_HAB_FAKTURA", "ID"},
    {"BB_HAB", "ID_BB_HAB_FAKTURA_ANGEBOT", "BB_HAB_FAKTURA", "ID"},
    {"BB_HAB_FAKTURA", "ID_BB_HAB", "BB_HAB", "ID"},
    {"BB_BELEGE", "ID_BB_AUFTRAG_KOPF", "BB_AUFTRAG_KOPF", "ID"},
    {"BB_HAB_KOPF", "ID_BB_AUFTRAG_KOPF", "BB_AUFTRAG_KOPF", "ID"},
    {"BB_HAB_FAKTURA", "ID_BB_FAKTURA_KOPF", "BB_FAKTURA_KOPF", "ID"},
    {"BB_HAB_FAKTURA", "ID_KUNDE", "PERSONAL", "ID_PERSONAL"},
    {"BB_HAB_NATURALVOLLZUG", "ID_BB_HAB_KOPF", "BB_HAB_KOPF", "ID"},
    {"BB_HAB_NATURALVOLLZUG", "ID_BB_NATURALVOLLZUG_DSW", "BB_NATURALVOLLZUG_DSW", "ID"},
};

TEST_P(Receipts, KeysFindTheirRows)
{
    const ado::ConnectionRef connection = database(GetParam());
    for (const Reference& reference : references) {
        const std::string column{reference.column};
        const std::string missing = "SELECT COUNT(*) FROM " + std::string{reference.table} + " WHERE " + column +
                                    " IS NOT NULL AND " + column + " NOT IN (SELECT " +
                                    std::string{reference.toColumn} + " FROM " + std::string{reference.toTable} + ")";
        EXPECT_EQ(countOf(connection, missing), 0) << reference.table << "." << column;
    }
}

/// The last day is 31 December 2024.
TEST_P(Receipts, LieInTheThreeYearsOfTheData)
{
    const ado::ConnectionRef connection = database(GetParam());
    for (const char* column : {"BB_BELEGE_KOPF.BELEGDATUM", "BB_BELEGE_KOPF.ZAHLDATUM", "BB_BELEGE.LEISTUNG_VON",
                               "BB_HAB_KOPF.EINSCHLAG_VON", "BB_HAB.ABFUHRDATUM", "BB_HAB_FAKTURA.DATUM",
                               "BB_NATURALVOLLZUG_DSW.UBERNAHMEDATUM", "BB_RECHNUNGSNUMMER_BELEG.RECHNUNGSDATUM"}) {
        const std::string name{column};
        EXPECT_EQ(countOf(connection, "SELECT COUNT(*) FROM " + name.substr(0, name.find('.')) + " WHERE " + name +
                                          " < '20220101' OR " + name + " > '20241231'"),
                  0)
            << column;
    }
}

INSTANTIATE_TEST_SUITE_P(Records, Receipts, testing::Values(0, 1, 200, 1000));

TEST(ReceiptsOfASeed, AreTheSameAgainAndDifferFromAnotherSeed)
{
    const auto totals = [](const ado::ConnectionRef& connection) {
        return std::to_string(countOf(connection, "SELECT CAST(SUM(BRUTTO*100) AS BIGINT) FROM BB_BELEGE")) + " " +
               std::to_string(countOf(connection, "SELECT CAST(SUM(NETTO*100) AS BIGINT) FROM BB_HAB_FAKTURA"));
    };
    EXPECT_EQ(totals(databaseOf(50)), totals(databaseOf(50)));
    EXPECT_NE(totals(databaseOf(50)), totals(databaseOf(50, 2)));
}

} // namespace
} // namespace tamarok::database
