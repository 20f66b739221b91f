#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "list_views.h"
#include "row_names.h"
#include "support/errors.h"
#include "support/platforms.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_loc/loc_service.h"

#include "tamarok/comm_csel.h"
#include "tamarok/comm_get.h"
#include "tamarok/comm_lock.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/format.h"
#include "tamarok/list_catalogue.h"

// A list view of every list type on the reference database: the statement, composed here by the operations one by one,
// and every cell, key and tag of every row, read here by the bare statement.

namespace tamarok {
namespace {

/// The statement of a list as the operations give it one by one.
struct Composed {
    std::string select;
    std::string from;
    std::string where;
    std::string group;
    std::string order;

    std::string text() const
    {
        std::string statement = "SELECT " + select + " FROM " + from;
        if (!where.empty()) statement += " WHERE " + where;
        if (!group.empty()) statement += " GROUP BY " + group;
        if (!order.empty()) statement += " ORDER BY " + order;
        return statement;
    }
};

class EveryList : public ::testing::TestWithParam<std::string> {
protected:
    static void SetUpTestSuite()
    {
        connection() = embedded::connectInMemory();
        database::ReferenceOptions small;
        small.logs = 300;
        database::createReferenceDatabase(*connection(), small);
        // The form of the services fills a temporary table with the visible ones.
        connection()->Execute("CREATE TABLE #BB_LEISTUNGS_KOPF (ID INT NOT NULL PRIMARY KEY)");
        connection()->Execute("INSERT INTO #BB_LEISTUNGS_KOPF (ID) SELECT ID FROM BB_LEISTUNGS_KOPF");
    }
    static void TearDownTestSuite() { connection() = nullptr; }

    EveryList() : scope_{makePlatform()}
    {
        session.db_ADO = connection();
        session.strLanguage = "GERMAN";
        session.strDateFormat = "DD.MM.YYYY";
        session.strEmptyText = "(leer)";
        connection()->listen([this](std::string_view statement) { statements.emplace_back(statement); });
    }
    ~EveryList() override { connection()->listen({}); }

    static Platform makePlatform()
    {
        Platform platform = test::platformOf("de-AT");
        platform.makeLocService = loc::makeLocService;
        return platform;
    }
    static ado::ConnectionRef& connection()
    {
        static ado::ConnectionRef shared;
        return shared;
    }

    /// The name of the list, and its type.
    const std::string& list() const { return GetParam(); }
    std::string type() const { return list() == "BRUTTOSCH" ? "BBFS" : list(); }

    const test::RowNames* names() const
    {
        const auto found = std::ranges::find(test::rowNames(), list(), &test::RowNames::type);
        return found == test::rowNames().end() ? nullptr : &*found;
    }

    std::vector<std::int16_t> allColumns() const
    {
        std::vector<std::int16_t> ids;
        for (const catalogue::ColumnInfo& column : catalogue::columnsOf(type()))
            ids.push_back(column.id);
        return ids;
    }

    /// The first column whose joins bring the alias that the key or the conditions of the list read.
    std::int16_t someColumn() const
    {
        const std::string alias = list() == "BRUTTOSCH" ? " ARB " : list() == "ARTIKEL" ? " HEADERRECH " : "";
        for (const std::int16_t id : allColumns())
            if (csel.GetFrom(type(), id, "", "R", session).find(alias) != std::string::npos) return id;
        return 0;
    }

    Composed compose(const std::vector<std::int16_t>& ids, const std::string& from, std::string where) const
    {
        Composed composed;
        composed.from = from;
        for (const std::int16_t id : ids) {
            composed.select = csel.InsertToStr(composed.select, csel.GetColumnTyp(type(), id, true, false, session));
            composed.from = csel.GetFrom(type(), id, composed.from, "R", session);
            composed.group = csel.InsertToStr2(composed.group, csel.GetColumnTyp(type(), id, true, true, session), "R");
        }
        composed.order = composed.group;
        if (const test::RowNames* const row = names()) {
            composed.select = csel.InsertToStr(csel.InsertToStr(composed.select, row->tag), row->key);
            for (const std::int16_t id : row->joins)
                composed.from = csel.GetFrom(type(), id, composed.from, "R", session);
            for (const std::string_view part : row->groups)
                composed.group = csel.InsertToStr2(composed.group, part, "R");
        }
        if (list() == "ARTIKEL") {
            Comm_Lock{}.Access_Levels("HEADERRECH", where, session, session.ID_Access_Levels);
            where = csel.InsertToWhere(where, " NN_POSITIONEN.VER_TYPE = 'R'");
            where = csel.InsertToWhere(where, "HEADERRECH.R_NAME NOT IN (SELECT LOGS_RECH.R_NAME FROM LOGS_RECH WHERE "
                                              "LOGS_RECH.R_NAME = HEADERRECH.R_NAME)");
        }
        composed.where = std::move(where);
        return composed;
    }

    void fill(test::ListOnForm& view, const std::string& selection)
    {
        statements.clear();
        csel.FillListview(session, "R", list(), *view.view, selection);
    }

    std::string cell(const Variant& value, std::int16_t id, bool first) const
    {
        const std::string text = value.isNull() ? (first ? session.strEmptyText : "") : convert::toText(value);
        const std::string pattern = csel.GetFormat(type(), id, session);
        const std::string shown =
            pattern.empty() || text == session.strEmptyText ? text : format::value(Variant{text}, pattern);
        return shown.empty() && !first ? " " : shown;
    }

    /// Compares each cell, key and tag with the rows of the statement.
    void checkRows(const test::ListOnForm& view, const std::vector<std::int16_t>& ids,
                   const std::string& statement) const
    {
        ado::Recordset rows;
        rows.Open(statement, session.db_ADO);
        const std::int32_t last = rows.Fields().Count() - 1;
        const bool hasTag = names() != nullptr && !names()->tag.empty();
        const std::int32_t shown = last - (hasTag ? 1 : 0);
        std::int32_t row = 0;
        // The only column of a list without fields of its own names the record, and nothing is shown.
        for (; shown > 0 && !rows.AtEOF(); rows.MoveNext()) {
            ++row;
            ASSERT_LE(row, view.view->items()->Count());
            const controls::ListItem& item = *view.view->items()->all()[static_cast<std::size_t>(row - 1)];
            for (std::int32_t column = 0; column < shown; ++column) {
                const std::int16_t id = ids[static_cast<std::size_t>(column)];
                ASSERT_EQ(view.view->text(row, column), cell(rows.Fields().Item(column).Value(), id, column == 0))
                    << "row " << row << ", column " << id;
            }
            const Variant record = rows.Fields().Item(last).Value();
            const std::string key = record.isNull() ? "" : convert::toText(record);
            const std::string begin = list() == "VERTRAG" ? "P" : std::to_string(row) + (list() == "WAREN" ? "W" : "R");
            ASSERT_EQ(item.Key(), begin + key);
            if (list() != "VERTRAG" && list() != "WAREN") {
                ASSERT_EQ(Comm_Get{}.Get_Key(item.Key()), key);
            }
            if (hasTag) {
                ASSERT_EQ(item.Tag(), rows.Fields().Item(last - 1).Value());
            }
        }
        EXPECT_EQ(view.view->items()->Count(), row);
    }

    void checkList(const std::vector<std::int16_t>& ids, const std::string& from, const std::string& where)
    {
        test::ListOnForm view{ids};
        const std::string selection = from.empty() ? "" : "FROM " + from + (where.empty() ? "" : " WHERE " + where);
        fill(view, selection);
        const std::string expected = compose(ids, from, where).text();
        EXPECT_EQ(std::ranges::count(statements, expected), 1) << expected << "\n" << statements.back();
        EXPECT_EQ(view.form->MousePointer, 0);
        checkRows(view, ids, expected);
    }

    TmkVar session;
    Comm_CSel csel;
    std::vector<std::string> statements;

private:
    PlatformScope scope_;
};

TEST_P(EveryList, WithAllColumns)
{
    checkList(allColumns(), "", "");
}

TEST_P(EveryList, WithOneColumn)
{
    checkList({someColumn()}, "", "");
}

TEST_P(EveryList, WithACondition)
{
    const std::string base{catalogue::listTypeInfo(type()).base};
    checkList({someColumn()}, base, "1 = 0");
}

TEST_P(EveryList, WithoutColumns)
{
    test::ListOnForm view;
    fill(view, "");
    EXPECT_TRUE(statements.empty());
    EXPECT_EQ(view.view->items()->Count(), 0);
}

std::vector<std::string> lists()
{
    std::vector<std::string> names{"BRUTTOSCH"};
    for (const std::string_view key : catalogue::listTypeKeys())
        if (key != "LOG") names.emplace_back(key);
    return names;
}

INSTANTIATE_TEST_SUITE_P(Lists, EveryList, ::testing::ValuesIn(lists()), [](const auto& each) { return each.param; });

using OtherLists = EveryList;

/// The log list has operations of its own, so that a view of it selects nothing.
TEST_P(OtherLists, AreRefusedByTheDatabase)
{
    test::ListOnForm view{{1, 2}};
    EXPECT_EQ(test::errorNumber([&] { fill(view, ""); }), errors::statementRefused);
    EXPECT_EQ(view.form->MousePointer, 11);
}

INSTANTIATE_TEST_SUITE_P(Lists, OtherLists, ::testing::Values("LOG", "NOTHING"),
                         [](const auto& each) { return each.param; });

} // namespace
} // namespace tamarok
