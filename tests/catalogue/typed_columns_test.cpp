#include <gtest/gtest.h>

#include "support/surroundings.h"

#include "tamarok/comm_csel.h"

namespace tamarok {
namespace {

using test::Surroundings;

/// Where the expression of a column stands.
enum class Clause { detail, detailGroup, aggregate, aggregateGroup };
using enum Clause;

class TypedColumns : public ::testing::Test {
protected:
    std::string column(std::string_view type, int id, Clause clause = detail) const
    {
        const bool aggregated = clause == aggregate || clause == aggregateGroup;
        const bool inGroupBy = clause == detailGroup || clause == aggregateGroup;
        return csel.GetColumnTyp(type, static_cast<std::int16_t>(id), aggregated, inGroupBy, with.session);
    }

    Surroundings with;
    Comm_CSel csel;
};

constexpr const char* netValue = "NN_POSITIONEN.EINHPREIS*NN_POSITIONEN.MENGE*(1-ISNULL(NN_POSITIONEN.RABATT,0)/100)";

TEST_F(TypedColumns, MeasureIsSummedAndLeavesTheGrouping)
{
    EXPECT_EQ(column("ARTIKEL", 470, aggregate), "SUM(" + std::string{netValue} + ")");
    EXPECT_EQ(column("ARTIKEL", 470, aggregateGroup), "");
    EXPECT_EQ(column("ARTIKEL", 470, detailGroup), netValue);
    EXPECT_EQ(column("ARTIKEL", 470, detail), netValue);
    EXPECT_EQ(column("ARTIKEL", 465, aggregate), "SUM(NN_POSITIONEN.MENGE)");
    EXPECT_EQ(column("ARTIKEL", 471, aggregate), "SUM(NN_POSITIONEN.MWST*" + std::string{netValue} + "/100)");
}

TEST_F(TypedColumns, KeyIsTheSameInEveryClause)
{
    for (const Clause clause : {detail, detailGroup, aggregate, aggregateGroup}) {
        EXPECT_EQ(column("ARTIKEL", 460, clause), "NN_POSITIONEN.NUMMER");
        EXPECT_EQ(column("artikel", 460, clause), "NN_POSITIONEN.NUMMER");
    }
}

TEST_F(TypedColumns, RowsThatDifferUnderGroupBy)
{
    EXPECT_EQ(column("ARTIKEL", 459), "ROW_NUMBER() OVER(ORDER BY NN_POSITIONEN.NN_ID ASC)");
    EXPECT_EQ(column("ARTIKEL", 459, detailGroup), "NN_POSITIONEN.NN_ID");
    EXPECT_EQ(column("ARTIKEL", 459, aggregateGroup), "NN_POSITIONEN.NN_ID");
    EXPECT_EQ(column("ARTIKEL", 769, aggregate),
              "ISNULL((SELECT SUM(NN.EINHPREIS*NN.MENGE*(1-ISNULL(NN.RABATT,0)/100)) from NN_POSITIONEN NN WHERE "
              "ISNULL(NN.WILDURS,'') = ISNULL(NN_POSITIONEN.NN_NAME,'')),0) + SUM(" +
                  std::string{netValue} + ")");
    EXPECT_EQ(column("ARTIKEL", 769, aggregateGroup), "NN_POSITIONEN.NN_NAME");
}

TEST_F(TypedColumns, FlagCarriesTheLocalesWords)
{
    EXPECT_EQ(column("ARTIKEL", 1017), "(CASE WHEN HEADERRECH.GESPERRT = 1 THEN 'Wahr' ELSE 'Falsch' END)");
}

TEST_F(TypedColumns, ContractsInFull)
{
    const std::vector<std::string> rows{"",
                                        "VERTRAEGE.INVDATE",
                                        "VERTRAEGE.VERTRAG_NAME",
                                        "PERSONAL.KURZBEZEICHNUNG",
                                        "(CASE VERTRAEGE.ABGESCHLOSSEN WHEN 1 THEN 'Ja' ELSE 'Nein' END)",
                                        "CAST(VERTRAEGE.ZUSATZTEXT_2 AS NVARCHAR(40))",
                                        "USERS.NAME",
                                        "VERTRAEGE.KOPF10",
                                        "VERTRAEGE.LIEFERVON",
                                        "VERTRAEGE.LIEFERBIS",
                                        "WVO_VERTRAG.ORIGINAL",
                                        "(CASE WHEN WVO_VERTRAG.ANGEMELDETEMENGE = 1 THEN 'Ja' ELSE 'Nein' END)",
                                        "WVO_VERTRAG.ANGEMELDETE",
                                        "WVO_VERTRAG.MENGENMELDUNG",
                                        "WVO_VERTRAG.BEREITSELLUNGS",
                                        ""};
    for (std::size_t id = 0; id < rows.size(); ++id) {
        EXPECT_EQ(column("VERTRAG", static_cast<int>(id), aggregate), rows[id]) << id;
    }
}

TEST_F(TypedColumns, UsersAndAccessLevelsInFull)
{
    EXPECT_EQ(column("USERS", 1), "(CASE WHEN B001 = 1 THEN 1 ELSE 0 END)");
    EXPECT_EQ(column("USERS", 60), "(CASE WHEN B060 = 1 THEN 1 ELSE 0 END)");
    for (int id = 10; id <= 59; ++id) {
        EXPECT_EQ(column("USERS", id), "(CASE WHEN B0" + std::to_string(id) + " = 1 THEN 1 ELSE 0 END)");
    }
    EXPECT_EQ(column("USERS", 61), "");
    EXPECT_EQ(column("USERS", 1000), "USERS.NAME");
    EXPECT_EQ(column("USERS", 1001), "USERS.LONGNAME");
    EXPECT_EQ(column("ACL", 1), "ACCESS_LEVELS.ACCESS_LEVELS");
    EXPECT_EQ(column("ACL", 2), "ACCESS_LEVELS.NAME");
    EXPECT_EQ(column("ACL", 3), "ACCESS_LEVELS.NAME_LANG");
    EXPECT_EQ(column("ACL", 4), "ACCESS_LEVELS.FUNKTIONSBEREICH");
    EXPECT_EQ(column("ACL", 5), "");
}

TEST_F(TypedColumns, UnknownTypesAndIdsAreEmpty)
{
    EXPECT_EQ(column("LOG", 1), "");
    EXPECT_EQ(column("NONE", 1), "");
    EXPECT_EQ(column("", 1), "");
    for (const int id : {-32768, -1, 0, 1018, 32767}) {
        EXPECT_EQ(column("ARTIKEL", id), "") << id;
    }
}

TEST_F(TypedColumns, DeductionsInFull)
{
    const auto abs = [this](int id) { return csel.GetColumnAbs(static_cast<std::int16_t>(id)); };
    EXPECT_EQ(abs(1), "ABSCHLAG_TEMP.STATISTIK");
    EXPECT_EQ(abs(2), "ABSCHLAG_TEMP.BEZEICH");
    EXPECT_EQ(abs(3), "ABSCHLAG_TEMP.WERT_TEXT");
    EXPECT_EQ(abs(4), "ABSCHLAG_TEMP.R_NAME");
    EXPECT_EQ(abs(5), "ABSCHLAG_TEMP.PREIS");
    EXPECT_EQ(abs(31), "ABSCHLAG_TEMP.R_KUNDE");
    for (int n = 1; n <= 8; ++n) {
        EXPECT_EQ(abs(100 + n), "ABSCHLAG_TEMP.A" + std::to_string(n) + "_NAME");
        EXPECT_EQ(abs(108 + n), "ABSCHLAG_TEMP.A" + std::to_string(n) + "_KUNDE");
    }
    for (const int id : {-1, 0, 6, 30, 32, 100, 117}) {
        EXPECT_EQ(abs(id), "") << id;
    }
}

TEST_F(TypedColumns, DeductionClauses)
{
    EXPECT_EQ(csel.GetGroupByClauseAbs(5), "ABSCHLAG_TEMP.PREIS");
    EXPECT_EQ(csel.GetGroupByClause2Abs(3), "");
    EXPECT_EQ(csel.GetGroupByClause2Abs(5), "");
    EXPECT_EQ(csel.GetGroupByClause2Abs(4), "ABSCHLAG_TEMP.R_NAME");
    EXPECT_EQ(csel.GetGroupByClause2Abs(117), "");
    EXPECT_EQ(csel.GetSelectClause2Abs(3), "SUM(ABSCHLAG_TEMP.WERT_TEXT)");
    EXPECT_EQ(csel.GetSelectClause2Abs(5), "SUM(ABSCHLAG_TEMP.PREIS)");
    EXPECT_EQ(csel.GetSelectClause2Abs(31), "ABSCHLAG_TEMP.R_KUNDE");
    EXPECT_EQ(csel.GetSelectClause2Abs(0), "");
}

} // namespace
} // namespace tamarok
