#include <gtest/gtest.h>
#include <vector>

#include "catalogue/price_options.h"
#include "support/errors.h"

#include "tamarok/comm_csel.h"

namespace tamarok {
namespace {

using test::Surroundings;

class SelectList : public ::testing::Test {
protected:
    SelectList() { test::setPriceOptions(with.database, 2.0, 0); }

    std::string select(std::string_view type, std::vector<std::int16_t> ids, bool grouped,
                       std::string_view filler = "0")
    {
        return csel.CorrectStrSelect(type, ids, selected, filler, version, with.session, where, from, grouped);
    }

    Surroundings with;
    Comm_CSel csel;
    std::string selected;
    std::string version = "R";
    std::string where;
    std::string from = "LOGS";
};

constexpr const char* priceR = "(CASE LOGS_RECH.R_EURO WHEN 1 THEN 2 ELSE 1 END)*LOGS_RECH.R_PREIS*LOGS_RECH.R_MENGE";

TEST_F(SelectList, DetailListIsTheColumnsInTheirOrder)
{
    EXPECT_EQ(select("LOG", {36, 1, 22}, false), "LOGS.KUBATUR, LOGS.LISTE, LOGS.HA");
    EXPECT_EQ(selected, "LOGS.KUBATUR\tLOGS.LISTE\tLOGS.HA");
    EXPECT_EQ(select("LOG", {}, false), "");
    EXPECT_EQ(select("LOG", {35}, false), "LOGS.STK");
    EXPECT_EQ(selected, "LOGS.KUBATUR\tLOGS.LISTE\tLOGS.HA\tLOGS.STK");
}

TEST_F(SelectList, AggregatedListSumsMeasures)
{
    EXPECT_EQ(select("LOG", {22, 36, 975}, true),
              "LOGS.HA, SUM(LOGS.KUBATUR), " + csel.GetColumn(975, "R", with.session));
}

TEST_F(SelectList, FillersStandInTheListOnly)
{
    EXPECT_EQ(select("LOG", {0, 1, 485, 568, 1042, -1}, false), "0, LOGS.LISTE, 0, 0, 0, 0");
    EXPECT_EQ(selected, "LOGS.LISTE");
    selected.clear();
    EXPECT_EQ(select("LOG", {0, 1, 0}, false, ""), "LOGS.LISTE");
    EXPECT_EQ(selected, "LOGS.LISTE");
    selected.clear();
    EXPECT_EQ(select("LOG", {1, 22}, false, "LOGS.LISTE"), "LOGS.LISTE, LOGS.HA");
    EXPECT_EQ(selected, "LOGS.HA");
}

TEST_F(SelectList, OtherTypesGiveFillers)
{
    EXPECT_EQ(select("VERTRAG", {1, 2, 3}, true), "0, 0, 0");
    EXPECT_EQ(select("NONE", {1}, false), "0");
    EXPECT_EQ(select("log", {1}, false), "0");
    EXPECT_EQ(select("VERTRAG", {1, 2}, false, ""), "");
    EXPECT_EQ(selected, "");
}

TEST_F(SelectList, VolumeShareComparesWithTheWholeList)
{
    const std::string total =
        "/.01/(SELECT (CASE WHEN ISNULL(SUM(LOGS.KUBATUR),0) = 0 THEN 1 ELSE SUM(LOGS.KUBATUR) END) FROM LOGS";
    EXPECT_EQ(select("LOG", {203}, false), "LOGS.KUBATUR" + total + ")");
    EXPECT_EQ(select("LOG", {203}, true), "SUM(LOGS.KUBATUR)" + total + ")");
    where = "WHERE A=1";
    EXPECT_EQ(select("LOG", {203}, true), "SUM(LOGS.KUBATUR)" + total + " WHERE (A=1))");
}

struct ClauseCase {
    const char* where;
    const char* from;
    const char* tail;
};

TEST_F(SelectList, ClausesAreMadeSelfContained)
{
    for (const ClauseCase& c : {
             ClauseCase{"", "LOGS", " FROM LOGS)"},
             ClauseCase{"   ", "  LOGS ", " FROM LOGS)"},
             ClauseCase{"A=1", "FROM LOGS", " FROM LOGS WHERE (A=1))"},
             ClauseCase{"  WHERE   A=1 ", "from LOGS", " FROM from LOGS WHERE (A=1))"},
             ClauseCase{"where A=1", "FROMAGE", " FROM FROMAGE WHERE (where A=1))"},
             ClauseCase{"WHERE ", "FROM", " FROM FROM WHERE (WHERE))"},
         }) {
        where = c.where;
        from = c.from;
        const std::string share = select("LOG", {203}, false);
        EXPECT_TRUE(share.ends_with(std::string{"END)"} + c.tail)) << share;
    }
}

TEST_F(SelectList, AveragesAreWeightedInAnAggregatedList)
{
    EXPECT_EQ(select("LOG", {205}, true), "SUM(LOGS.KUBATUR*D_MSZ.MSZ_EURO)/SUM(LOGS.KUBATUR*(CASE WHEN "
                                          "D_MSZ.MSZ_EURO IS NULL THEN 0 Else 1 End))");
    EXPECT_EQ(select("LOG", {318}, true),
              "(CASE WHEN ISNULL(SUM(LOGS.STK),0) = 0 THEN 0 ELSE ISNULL(SUM(LOGS.KUBATUR),0)/SUM(LOGS.STK) END)");
    EXPECT_EQ(select("LOG", {319}, true),
              "(CASE WHEN ISNULL(SUM(LOGS.LAENGE*(CASE WHEN LOGS.DSART = 6 THEN NULL WHEN LOGS.KLST = 3 THEN 1 ELSE "
              "LOGS.STK END)),0) = 0 THEN SUM(LOGS.DURCH)/COUNT(*) ELSE (CASE WHEN ISNULL(SUM(LOGS.LAENGE*(CASE WHEN "
              "LOGS.KLST = 3 THEN 1 ELSE LOGS.STK END)),0) = 0 THEN 0 ELSE 200*SQRT(ISNULL(SUM(LOGS.KUBATUR),0)/ "
              "3.1416 /SUM(LOGS.LAENGE*(CASE WHEN LOGS.KLST = 3 THEN 1 ELSE LOGS.STK END))) END)END)");
    EXPECT_EQ(select("LOG", {320}, true), "(CASE WHEN ISNULL(SUM(LOGS.STK),0) = 0 THEN 0 ELSE "
                                          "ISNULL(SUM(LOGS.LAENGE*LOGS.STK),0)/SUM(LOGS.STK) END)");
}

TEST_F(SelectList, PricesPerVolumeAreWeightedInAnAggregatedList)
{
    for (std::int16_t id = 280; id <= 288; ++id) {
        const auto price = static_cast<std::int16_t>(id == 280 ? 202 : id - 20);
        EXPECT_EQ(select("LOG", {id}, true), "(CASE WHEN ISNULL(SUM(LOGS.KUBATUR),0)=0 THEN 0 ELSE SUM(" +
                                                 csel.GetColumn(price, "R", with.session) + ")/SUM(LOGS.KUBATUR) END)");
    }
    EXPECT_EQ(select("LOG", {980}, true),
              "(CASE WHEN ISNULL(SUM(LOGS.KUBATUR),0)=0 THEN 0 ELSE SUM()/SUM(LOGS.KUBATUR) END)");
}

TEST_F(SelectList, ReplacedColumnIsComposedOnlyWhereItsExpressionNamesIt)
{
    csel.GetColumn(202, "R", with.session);
    const std::vector<std::string> ofPrice = with.database.takeLog();
    EXPECT_FALSE(ofPrice.empty()) << "the options of the price";
    select("LOG", {280}, true);
    EXPECT_EQ(with.database.takeLog(), ofPrice);
}

TEST_F(SelectList, WeightedPriceTakesTheVersionAsGiven)
{
    version = "a2";
    EXPECT_EQ(select("LOG", {280}, true),
              "(CASE WHEN ISNULL(SUM(LOGS.KUBATUR),0)=0 THEN 0 ELSE SUM((CASE LOGS_RECH.a2_EURO WHEN 1 THEN 2 ELSE 1 "
              "END)*LOGS_RECH.a2_PREIS*LOGS_RECH.A2_MENGE)/SUM(LOGS.KUBATUR) END)");
}

TEST_F(SelectList, AveragesKeepTheirPlainFormInADetailList)
{
    for (const std::int16_t id : std::vector<std::int16_t>{205, 280, 288, 318, 319, 320, 980}) {
        EXPECT_EQ(select("LOG", {id}, false), csel.GetColumn(id, "R", with.session)) << id;
    }
    EXPECT_EQ(select("LOG", {280}, false),
              "(CASE WHEN ISNULL(LOGS.KUBATUR,0)=0 THEN 0 ELSE " + std::string{priceR} + "/LOGS.KUBATUR END)");
}

TEST_F(SelectList, NumberOfIdsIsBoundBy16Bits)
{
    const std::vector<std::int16_t> most(32767, 0);
    EXPECT_EQ(select("LOG", most, false, ""), "");
    const std::vector<std::int16_t> tooMany(32768, 0);
    EXPECT_EQ(test::errorNumber([&] { select("LOG", tooMany, false, ""); }), errors::overflow);
}

class ArtikelSelectList : public SelectList {
protected:
    ArtikelSelectList() { from = "FROM NN_POSITIONEN"; }

    static constexpr const char* net =
        "NN_POSITIONEN.EINHPREIS*NN_POSITIONEN.MENGE*(1-ISNULL(NN_POSITIONEN.RABATT,0)/100)";
    const std::string readTotal = "SELECT SUM(" + std::string{net} + ") FROM NN_POSITIONEN";
};

TEST_F(ArtikelSelectList, ColumnsOfTheType)
{
    EXPECT_EQ(select("ARTIKEL", {460, 465, 459, 3}, true),
              "NN_POSITIONEN.NUMMER, SUM(NN_POSITIONEN.MENGE), ROW_NUMBER() OVER(ORDER BY NN_POSITIONEN.NN_ID ASC), 0");
    EXPECT_EQ(select("ARTIKEL", {465}, false), "NN_POSITIONEN.MENGE");
    EXPECT_TRUE(with.database.opened.empty());
}

TEST_F(ArtikelSelectList, ValueShareDividesByTheListsTotal)
{
    with.database.answer(readTotal, 800.0);
    EXPECT_EQ(select("ARTIKEL", {156}, true), "SUM(" + std::string{net} + ")*0.125");
    EXPECT_EQ(select("ARTIKEL", {156}, false), std::string{net} + "*0.125");
    ASSERT_EQ(with.database.opened.size(), 2U);
    EXPECT_EQ(with.database.opened[0].cursorType, ado::CursorType::OpenForwardOnly);
    EXPECT_EQ(with.database.opened[0].lockType, ado::LockType::ReadOnly);
    EXPECT_EQ(with.database.openCursors, 0);
    where = "NN_ID > 5";
    with.database.answer(readTotal + " WHERE (NN_ID > 5)", std::int32_t{50});
    EXPECT_EQ(select("ARTIKEL", {156}, false), std::string{net} + "*2");
}

TEST_F(ArtikelSelectList, ValueShareWithoutTotalIsNull)
{
    with.database.answerNoRow(readTotal);
    EXPECT_EQ(select("ARTIKEL", {156}, true), "NULL");
    with.database.answer(readTotal, Null{});
    EXPECT_EQ(select("ARTIKEL", {156}, true), "NULL");
    with.database.answer(readTotal, 0.0);
    EXPECT_EQ(test::errorNumber([&] { select("ARTIKEL", {156}, true); }), errors::divisionByZero);
}

TEST_F(ArtikelSelectList, NetValuePerSalesUnit)
{
    const std::string quantity = "NN_POSITIONEN.MENGE_VE";
    EXPECT_EQ(select("ARTIKEL", {155}, false),
              "(CASE WHEN ISNULL(" + quantity + ",0) = 0 THEN NULL ELSE " + net + "/" + quantity + " END)");
    const std::string sum = "SUM(" + quantity + ")";
    EXPECT_EQ(select("ARTIKEL", {155}, true),
              "(CASE WHEN ISNULL(" + sum + ",0) = 0 THEN NULL ELSE SUM(" + net + ")/" + sum + " END)");
    EXPECT_TRUE(with.database.opened.empty());
}

TEST_F(ArtikelSelectList, FailureOfTheTotalReachesTheCaller)
{
    EXPECT_EQ(test::errorNumber([&] { select("ARTIKEL", {156}, true); }), errors::statementRefused);
}

} // namespace
} // namespace tamarok
