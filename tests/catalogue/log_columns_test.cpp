#include <gtest/gtest.h>
#include <set>

#include "catalogue/price_options.h"
#include "catalogue/table_file.h"
#include "support/errors.h"

#include "tamarok/comm_csel.h"

namespace tamarok {
namespace {

using test::Surroundings;

class LogColumns : public ::testing::Test {
protected:
    LogColumns()
    {
        test::setPriceOptions(with.database, 13.7603, 0);
        with.loc.texts[3442] = "Festmeter";
    }

    std::string column(int id, std::string_view version = "R") const
    {
        return csel.GetColumn(static_cast<std::int16_t>(id), version, with.session);
    }

    void expectError(int id, std::int32_t number) const
    {
        EXPECT_EQ(test::errorNumber([&] { static_cast<void>(column(id)); }), number) << id;
    }

    Surroundings with;
    Comm_CSel csel;
};

TEST_F(LogColumns, EveryRowInTwoVersionsAndEveryGap)
{
    const auto rows = test::readTable("log_columns_expected.tsv");
    ASSERT_EQ(rows.size(), 580U);
    std::set<int> ids;
    for (const auto& row : rows) {
        const int id = std::stoi(row.at(0));
        ids.insert(id);
        EXPECT_EQ(column(id, "R"), row.at(1)) << id;
        EXPECT_EQ(column(id, "A3"), row.at(2)) << id;
    }
    ASSERT_EQ(ids.size(), 580U);
    for (int id = 0; id <= 1042; ++id) {
        if (!ids.contains(id)) {
            EXPECT_EQ(column(id), "") << id;
        }
    }
}

TEST_F(LogColumns, IdsOutsideTheCatalogueAreEmpty)
{
    for (const int id : {-32768, -1, 0, 485, 1042, 32767}) {
        EXPECT_EQ(column(id), "") << id;
    }
    EXPECT_EQ(column(568), "");
    EXPECT_EQ(column(569), "");
    EXPECT_EQ(column(1041), "CAST(YEAR(HEADERRECH.INVDATE) as NVARCHAR(4)) + '-' + RIGHT( '0' + "
                            "CAST(MONTH(HEADERRECH.INVDATE) as NVARCHAR(2)),2)");
}

TEST_F(LogColumns, NeighboursOfGapsAreRows)
{
    EXPECT_EQ(column(484), "PERSONAL5.NATION");
    EXPECT_EQ(column(486), "PERSONAL6.NATION");
    EXPECT_EQ(column(225), "LOGS_RECH.A5_EURO");
}

TEST_F(LogColumns, VersionIsUpperCasedInVersionRows)
{
    EXPECT_EQ(column(64, "a3"), "LOGS_RECH.A3_NAME");
    EXPECT_EQ(column(240, "a3"), "LOGS_RECH.A3_MENGE");
    EXPECT_EQ(column(65, "a3"), "(CASE LOGS_RECH.A3_EURO WHEN 0 THEN 'ATS' ELSE 'EUR' END)");
}

TEST_F(LogColumns, EmptyVersionIsBuiltAsItComes)
{
    EXPECT_EQ(column(64, ""), "LOGS_RECH._NAME");
    EXPECT_EQ(column(240, ""), "LOGS_RECH._MENGE");
    EXPECT_EQ(column(65, ""), "(CASE LOGS_RECH._EURO WHEN 0 THEN 'ATS' ELSE 'EUR' END)");
    EXPECT_EQ(column(210, ""), "");
}

TEST_F(LogColumns, InvoiceTypeAndAccountIgnoreTheVersion)
{
    EXPECT_EQ(column(68, "A4"), "RECHNUNGSART.RECHNUNGSART");
    EXPECT_EQ(column(69, "A4"), "BUCHNR.BUCHUNGSTEXT");
}

TEST_F(LogColumns, UnitGoesByTheLastCharacterOfTheVersion)
{
    EXPECT_EQ(column(210, "R"), "WARENEINHEIT0.EINHEIT");
    EXPECT_EQ(column(210, "A1"), "WARENEINHEIT1.EINHEIT");
    EXPECT_EQ(column(210, "a8"), "WARENEINHEIT8.EINHEIT");
    EXPECT_EQ(column(210, "XR"), "WARENEINHEIT0.EINHEIT");
    for (const char* version : {"r", "A0", "A9", "A", "R "}) {
        EXPECT_EQ(column(210, version), "") << version;
    }
}

TEST_F(LogColumns, PriceTakesTheListsVersionAndTheRowsQuantity)
{
    EXPECT_EQ(column(263, "R"),
              "(CASE LOGS_RECH.A3_EURO WHEN 1 THEN 13.7603 ELSE 1 END)*LOGS_RECH.A3_PREIS*LOGS_RECH.A3_MENGE");
    EXPECT_EQ(column(202, "A2"),
              "(CASE LOGS_RECH.A2_EURO WHEN 1 THEN 13.7603 ELSE 1 END)*LOGS_RECH.A2_PREIS*LOGS_RECH.A2_MENGE");
    EXPECT_EQ(column(263, "A2"),
              "(CASE LOGS_RECH.A2_EURO WHEN 1 THEN 13.7603 ELSE 1 END)*LOGS_RECH.A2_PREIS*LOGS_RECH.A3_MENGE");
}

TEST_F(LogColumns, PriceUsesAnotherVersionThanTheMainInvoiceAsGiven)
{
    EXPECT_EQ(column(202, "a2"),
              "(CASE LOGS_RECH.a2_EURO WHEN 1 THEN 13.7603 ELSE 1 END)*LOGS_RECH.a2_PREIS*LOGS_RECH.A2_MENGE");
    EXPECT_EQ(column(261, "r"),
              "(CASE LOGS_RECH.r_EURO WHEN 1 THEN 13.7603 ELSE 1 END)*LOGS_RECH.r_PREIS*LOGS_RECH.A1_MENGE");
    EXPECT_EQ(column(202, ""),
              "(CASE LOGS_RECH._EURO WHEN 1 THEN 13.7603 ELSE 1 END)*LOGS_RECH._PREIS*LOGS_RECH._MENGE");
}

TEST_F(LogColumns, PriceInEuroTurnsFlagAndFactorAround)
{
    test::setPriceOptions(with.database, 8.0, 1);
    EXPECT_EQ(column(202), "(CASE LOGS_RECH.R_EURO WHEN 0 THEN 0.125 ELSE 1 END)*LOGS_RECH.R_PREIS*LOGS_RECH.R_MENGE");
    test::setPriceOptions(with.database, 13.7603, 1);
    EXPECT_EQ(column(202), "(CASE LOGS_RECH.R_EURO WHEN 0 THEN 0.0726728341678597 ELSE 1 END)*LOGS_RECH.R_PREIS*"
                           "LOGS_RECH.R_MENGE");
}

TEST_F(LogColumns, FactorZeroCountsAsOne)
{
    for (const int baseIsEuro : {0, 1}) {
        test::setPriceOptions(with.database, 0.0, baseIsEuro);
        EXPECT_EQ(column(202), "(CASE LOGS_RECH.R_EURO WHEN " + std::string{baseIsEuro == 1 ? "0" : "1"} +
                                   " THEN 1 ELSE 1 END)*LOGS_RECH.R_PREIS*LOGS_RECH.R_MENGE");
    }
}

TEST_F(LogColumns, PricePerVolumeHoldsThePrice)
{
    EXPECT_EQ(column(280), "(CASE WHEN ISNULL(LOGS.KUBATUR,0)=0 THEN 0 ELSE " + column(202) + "/LOGS.KUBATUR END)");
    EXPECT_EQ(column(283), "(CASE WHEN ISNULL(LOGS.KUBATUR,0)=0 THEN 0 ELSE " + column(263) + "/LOGS.KUBATUR END)");
    EXPECT_EQ(column(980), "(CASE WHEN ISNULL(LOGS.KUBATUR,0)=0 THEN 0 ELSE /LOGS.KUBATUR END)");
}

TEST_F(LogColumns, MarginIsTheMainInvoiceLessAllOthers)
{
    std::string others = column(571);
    for (int id = 572; id <= 578; ++id) {
        others += " + " + column(id);
    }
    EXPECT_EQ(column(579), column(570) + " - (" + others + ")");
}

TEST_F(LogColumns, CurrencyIsEmptyWithoutRowOrValue)
{
    with.database.answerNoRow(test::readNationalCurrency);
    EXPECT_EQ(column(65), "(CASE LOGS_RECH.R_EURO WHEN 0 THEN '' ELSE 'EUR' END)");
    with.database.answer(test::readNationalCurrency, Null{});
    EXPECT_EQ(column(65), "(CASE LOGS_RECH.R_EURO WHEN 0 THEN '' ELSE 'EUR' END)");
}

TEST_F(LogColumns, OnlyPricesAndCurrencyTouchTheDatabase)
{
    const auto reads = [this](int id) {
        with.database.opened.clear();
        static_cast<void>(column(id));
        return with.database.openedTexts();
    };
    const std::set<int> priced{202, 261, 262, 263, 264, 265, 266, 267, 268,
                               280, 281, 282, 283, 284, 285, 286, 287, 288};
    for (int id = 0; id <= 1042; ++id) {
        if (priced.contains(id)) {
            EXPECT_EQ(reads(id), (std::vector<std::string>{test::readNationalFactor, test::readBaseIsEuro})) << id;
        } else if (id == 65) {
            EXPECT_EQ(reads(id), std::vector<std::string>{test::readNationalCurrency});
        } else {
            EXPECT_TRUE(reads(id).empty()) << id;
        }
    }
    EXPECT_EQ(with.database.openCursors, 0);
    EXPECT_EQ(with.loc.asked, std::vector<int>{3442});
    EXPECT_EQ(with.loc.services, 1);
}

TEST_F(LogColumns, ReadsAreForwardOnlyAndReadOnly)
{
    static_cast<void>(column(65));
    ASSERT_EQ(with.database.opened.size(), 1U);
    EXPECT_EQ(with.database.opened[0].cursorType, ado::CursorType::OpenForwardOnly);
    EXPECT_EQ(with.database.opened[0].lockType, ado::LockType::ReadOnly);
}

TEST_F(LogColumns, DatabaseFailureReachesTheCaller)
{
    test::RecordingDatabase silent{test::Unanswered::IsRefused};
    with.session.db_ADO = silent.connect();
    for (const int id : {65, 202, 268, 288}) {
        expectError(id, errors::statementRefused);
    }
    with.session.db_ADO = nullptr;
    expectError(202, errors::objectNotSet);
    EXPECT_EQ(column(1), "LOGS.LISTE");
}

TEST(LogColumnsRegional, BooleanTextsAndFactorsFollowTheLocale)
{
    const auto check = [](std::string_view locale, std::string_view yes, std::string_view no) {
        Surroundings with{locale};
        test::setPriceOptions(with.database, 1.5, 0);
        const Comm_CSel csel;
        const auto flag =
            "(CASE WHEN LISTENKOPF.GESPERRT = 1 THEN '" + std::string{yes} + "' ELSE '" + std::string{no} + "' END)";
        EXPECT_EQ(csel.GetColumn(968, "R", with.session), flag);
        EXPECT_EQ(csel.GetColumn(392, "R", with.session),
                  "(CASE WHEN LOGS.MENGEANDERUNG = 1 THEN '" + std::string{yes} + "' ELSE '' END)");
        EXPECT_EQ(csel.GetColumn(202, "R", with.session),
                  "(CASE LOGS_RECH.R_EURO WHEN 1 THEN 1.5 ELSE 1 END)*LOGS_RECH.R_PREIS*LOGS_RECH.R_MENGE");
        EXPECT_NE(csel.GetColumn(319, "R", with.session).find("/ 3.1416 /"), std::string::npos);
    };
    check("de-AT", "Wahr", "Falsch");
    check("en-US", "True", "False");
}

TEST(LogColumnsOracle, PriceReadsTheOptionInOraclesWords)
{
    Surroundings with;
    with.session.bolOracle = true;
    with.database.answer("SELECT NVL(DOUBLE_VALUE,0) FROM OPTIONEN WHERE UPPER(PROPERTY_ID) = 'UFAKTNAT_EURO'", 2.0);
    with.database.answer(test::readBaseIsEuro, std::int32_t{1});
    EXPECT_EQ(Comm_CSel{}.GetColumn(202, "R", with.session),
              "(CASE LOGS_RECH.R_EURO WHEN 0 THEN 0.5 ELSE 1 END)*LOGS_RECH.R_PREIS*LOGS_RECH.R_MENGE");
}

} // namespace
} // namespace tamarok
