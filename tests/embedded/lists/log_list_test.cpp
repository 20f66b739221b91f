#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/table_file.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_loc/loc_service.h"

#include "tamarok/comm_csel.h"
#include "tamarok/convert.h"
#include "tamarok/platform.h"

/// The log list with all its columns reads out of more tables than SQLite joins in one FROM clause.
namespace tamarok::embedded {
namespace {

using Columns = std::vector<std::int16_t>;
/// The values by row, then by column.
using Values = std::vector<std::vector<Variant>>;

constexpr std::int32_t logs = 150;
/// The expression of the first lacks an operand; the second is an aggregate, which a list of logs cannot have.
constexpr std::int16_t omitted[] = {980, 975};
constexpr std::string_view version = "R";

class LogList : public ::testing::Test {
protected:
    LogList() : scope_{platform()}
    {
        session_.db_ADO = connectInMemory();
        session_.strLanguage = "GERMAN";
        database::ReferenceOptions small;
        small.logs = logs;
        database::createReferenceDatabase(*session_.db_ADO, small);
        for (const auto& row : test::readTable("log_columns_expected.tsv")) {
            const auto id = static_cast<std::int16_t>(std::stoi(row.at(0)));
            if (std::ranges::find(omitted, id) == std::end(omitted)) ids_.push_back(id);
        }
    }

    static Platform platform()
    {
        Platform result;
        result.regional = Regional::named("de-AT");
        result.makeLocService = loc::makeLocService;
        return result;
    }

    std::string from(const Columns& ids) const
    {
        std::string text;
        for (const std::int16_t id : ids)
            text = clauses_.GetFrom("LOG", id, text, version, session_);
        return text;
    }

    /// @param from  of these columns or of more
    std::string select(const Columns& ids, const std::string& from, bool grouped) const
    {
        std::string tabs;
        return clauses_.CorrectStrSelect("LOG", ids, tabs, "NULL", version, session_, "", from, grouped);
    }

    std::string list(const Columns& ids, const std::string& from) const
    {
        return std::string{"SELECT "}.append(select(ids, from, false)).append(" FROM ").append(from);
    }

    Values read(const std::string& text) const
    {
        ado::Recordset rows;
        rows.Open(text, session_.db_ADO);
        Values values;
        for (; !rows.AtEOF(); rows.MoveNext()) {
            std::vector<Variant>& row = values.emplace_back();
            for (std::int32_t i = 0; i < static_cast<std::int32_t>(rows.Fields().Count()); ++i)
                row.push_back(rows.Fields().Item(i).Value());
        }
        return values;
    }

    Columns ids_;
    Comm_CSel clauses_;
    TmkVar session_;

private:
    PlatformScope scope_;
};

TEST_F(LogList, AllColumnsInAnyOrder)
{
    ASSERT_EQ(ids_.size(), 578U);
    std::vector<Columns> orders(2, ids_);
    std::ranges::reverse(orders[1]);
    for (const unsigned seed : {1U, 2U, 3U, 4U}) {
        Columns& order = orders.emplace_back(ids_);
        std::ranges::shuffle(order, std::mt19937{seed});
    }
    for (const Columns& order : orders) {
        const Values values = read(list(order, from(order)));
        ASSERT_EQ(values.size(), static_cast<std::size_t>(logs)) << order[0];
        EXPECT_EQ(values[0].size(), order.size()) << order[0];
    }
}

/// Each column has the values that a list of this column alone has, with its few joins.
TEST_F(LogList, EachValueIsThatOfAShortList)
{
    constexpr std::string_view byLog = " ORDER BY LOGS.ID_LOG";
    Columns shuffled = ids_;
    std::ranges::shuffle(shuffled, std::mt19937{5U});
    const Values all = read(list(shuffled, from(shuffled)).append(byLog));
    for (std::size_t column = 0; column < shuffled.size(); ++column) {
        const Columns one{shuffled[column]};
        // Column 203 compares a log with the list whose FROM clause it is given.
        const Values alone = read(list(one, from(one)).append(byLog));
        ASSERT_EQ(alone.size(), all.size());
        for (std::size_t row = 0; row < all.size(); ++row)
            ASSERT_EQ(all[row][column], alone[row][0]) << "column " << one[0] << ", row " << row;
    }
}

TEST_F(LogList, AConditionOnAnyTable)
{
    const std::string all = list(ids_, from(ids_));
    EXPECT_EQ(read(std::string{all}.append(" WHERE LOGS.ID_LOG = 7")).size(), 1U);
    EXPECT_EQ(read(std::string{all}.append(" WHERE ACCESS_LEVELS.ID IS NULL OR LOGS.ID_LOG < 500")).size(),
              static_cast<std::size_t>(logs));
}

TEST_F(LogList, AllColumnsInAnAggregateList)
{
    const std::string body = from(ids_);
    std::string groups;
    for (const std::int16_t id : ids_)
        groups = clauses_.InsertToStr2(groups, clauses_.GetGroupByClause2(id, version, session_), version);
    const std::string text =
        std::string{"SELECT "}.append(select(ids_, body, true)).append(" FROM ").append(body).append(" GROUP BY ");
    EXPECT_EQ(read(text + groups).size(), static_cast<std::size_t>(logs));
}

} // namespace
} // namespace tamarok::embedded
