#include <gtest/gtest.h>
#include <set>

#include "catalogue/price_options.h"

#include "tamarok/comm_csel.h"

namespace tamarok {
namespace {

using test::Surroundings;

class ColumnClauses : public ::testing::Test {
protected:
    ColumnClauses()
    {
        test::setPriceOptions(with.database, 2.0, 0);
        with.loc.texts[3442] = "Festmeter";
    }

    Surroundings with;
    Comm_CSel csel;
};

std::set<int> measures()
{
    std::set<int> ids{35, 36, 38, 40, 41, 131, 202, 203, 205, 318, 319, 320, 364, 391, 980};
    for (const auto& [first, last] :
         {std::pair{220, 224}, {240, 248}, {250, 258}, {261, 268}, {280, 288}, {570, 579}, {610, 619}}) {
        for (int id = first; id <= last; ++id) {
            ids.insert(id);
        }
    }
    return ids;
}

TEST_F(ColumnClauses, MeasuresAreSummedAndNeverGroupedOrOrdered)
{
    const std::set<int> summed = measures();
    for (int number = -1; number <= 1042; ++number) {
        const auto id = static_cast<std::int16_t>(number);
        const std::string column = csel.GetColumn(id, "A1", with.session);
        const bool measure = summed.contains(number);
        EXPECT_EQ(csel.GetSelectClause2(id, "A1", with.session), measure ? "SUM(" + column + ")" : column) << id;
        const std::string grouped = measure || number == 975 ? "" : column;
        EXPECT_EQ(csel.GetGroupByClause2(id, "A1", with.session), grouped) << id;
        EXPECT_EQ(csel.GetOrderByClause2(id, "A1", with.session), grouped) << id;
        EXPECT_EQ(csel.GetGroupByClause(id, "A1", with.session), column) << id;
        EXPECT_EQ(csel.GetOrderByClause(id, "A1", with.session), column) << id;
    }
}

TEST_F(ColumnClauses, RowWithItsOwnAggregateIsNeitherSummedNorGrouped)
{
    EXPECT_EQ(csel.GetSelectClause2(975, "R", with.session), csel.GetColumn(975, "R", with.session));
    EXPECT_EQ(csel.GetGroupByClause2(975, "R", with.session), "");
    EXPECT_NE(csel.GetGroupByClause(975, "R", with.session), "");
}

TEST_F(ColumnClauses, VersionIsUpperCasedBeforeTheColumnIsFetched)
{
    const std::string upper = "(CASE LOGS_RECH.A2_EURO WHEN 1 THEN 2 ELSE 1 END)*LOGS_RECH.A2_PREIS*LOGS_RECH.A2_MENGE";
    EXPECT_EQ(csel.GetGroupByClause(202, "a2", with.session), upper);
    EXPECT_EQ(csel.GetOrderByClause(202, "a2", with.session), upper);
    EXPECT_EQ(csel.GetSelectClause2(202, "a2", with.session), "SUM(" + upper + ")");
    EXPECT_EQ(csel.GetGroupByClause2(210, "r", with.session), "WARENEINHEIT0.EINHEIT");
    EXPECT_EQ(csel.GetColumn(210, "r", with.session), "");
}

} // namespace
} // namespace tamarok
