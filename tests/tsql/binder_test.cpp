#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tamarok_tsql/binder.h"
#include "tamarok_tsql/names.h"
#include "tamarok_tsql/parsed_batch.h"
#include "tamarok_tsql/type_rules.h"

#include "tamarok/error.h"

namespace tamarok::tsql {
namespace {

/// The tables that a batch of CREATE TABLE describes.
class DescribedSchema final : public Schema {
public:
    explicit DescribedSchema(std::string_view definitions)
    {
        const ParsedBatch batch(definitions);
        for (const ParsedStep& step : batch.steps()) {
            Table& table = tables_.emplace_back();
            table.name = step.createTable->table.text;
            for (const ColumnDefinition& column : step.createTable->columns)
                table.columns.push_back({std::string(column.name.text), column.type, column.identity});
        }
    }

    const Table* table(std::string_view name) const override
    {
        const auto found =
            std::ranges::find_if(tables_, [&](const Table& table) { return sameName(table.name, name); });
        return found == tables_.end() ? nullptr : &*found;
    }

private:
    std::vector<Table> tables_;
};

constexpr std::string_view tables =
    "CREATE TABLE LOGS (ID int IDENTITY, HA nvarchar(5), KURZ char(4), VOLUME float, PRICE decimal(12,3), "
    "PIECES smallint, FELLED smalldatetime, DONE bit, SUM_ money, TOTAL bigint) "
    "CREATE TABLE WOOD (HA nvarchar(5), NAME nvarchar(60), [LONG] nvarchar(200))";

/// Binds a query and shows the types of its columns, separated by blanks; or number and text of the refusal.
std::string typesOf(const std::string& text)
{
    const DescribedSchema schema(tables);
    try {
        const ParsedBatch batch(text);
        Arena arena(1024);
        Query& query = *batch.steps()[0].query;
        Binder(batch.source(), schema, arena).bindQuery(query, nullptr);
        std::string shown;
        for (const OutputColumn& output : query.outputs) {
            const std::string type = isOpen(output.type) ? "OPEN" : declaredText(output.type);
            shown += (shown.empty() ? "" : " ") + type;
        }
        return shown;
    } catch (const Error& error) {
        EXPECT_EQ(error.number, errors::statementRefused);
        return std::to_string(error.nativeError) + " " + error.description;
    }
}

struct Row {
    const char* expression;
    const char* type;
};

TEST(Binder, ExpressionsHaveTheServersTypes)
{
    const Row rows[] = {
        {"1", "INT"},
        {"2147483648", "DECIMAL(10,0)"},
        {"1.50", "DECIMAL(3,2)"},
        {"1e3", "FLOAT"},
        {"'abc'", "VARCHAR(3)"},
        {"N'abc'", "NVARCHAR(3)"},
        {"?", "OPEN"},
        {"NULL", "OPEN"},
        {"HA + KURZ", "NVARCHAR(9)"},
        {"PIECES + 1", "INT"},
        {"PIECES / 2", "INT"},
        {"PRICE * 2", "DECIMAL(14,3)"},
        {"PRICE / 3.0", "DECIMAL(16,6)"},
        {"VOLUME * PRICE", "FLOAT"},
        {"DONE & DONE", "BIT"},
        {"DONE + 1", "INT"},
        {"-CAST(1 AS tinyint)", "SMALLINT"},
        {"SUM_ / 2", "MONEY"},
        {"SUM_ / 2.0", "DECIMAL(23,7)"},
        {"POWER(PRICE, 2)", "DECIMAL(38,3)"},
        {"POWER(PIECES, 2)", "INT"},
        {"POWER(VOLUME, 2)", "FLOAT"},
        {"DEGREES(PRICE)", "DECIMAL(38,18)"},
        {"ROUND(PRICE, 1)", "DECIMAL(12,3)"},
        {"SUM(SUM_)", "MONEY"},
        {"FELLED + 1", "SMALLDATETIME"},
        {"TOTAL + PIECES", "BIGINT"},
        {"ISNULL(HA, 'abcdefgh')", "NVARCHAR(5)"},
        {"COALESCE(PIECES, 1.5)", "DECIMAL(6,1)"},
        {"CASE WHEN DONE = 1 THEN 1 ELSE 2.5 END", "DECIMAL(11,1)"},
        {"CAST(PRICE AS nvarchar(10))", "NVARCHAR(10)"},
        {"LEFT(HA, 2)", "NVARCHAR(2)"},
        {"LEN(HA)", "INT"},
        {"GETDATE()", "DATETIME"},
        {"DATEADD(day, 1, FELLED)", "SMALLDATETIME"},
        {"SUM(PIECES)", "INT"},
        {"AVG(PRICE)", "DECIMAL(38,6)"},
        {"COUNT(*)", "INT"},
        {"COUNT_BIG(*)", "BIGINT"},
        {"MAX(HA)", "NVARCHAR(5)"},
        {"(SELECT MAX(NAME) FROM WOOD)", "NVARCHAR(60)"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(typesOf("SELECT " + std::string(row.expression) + " FROM LOGS"), row.type) << row.expression;
    }
}

TEST(Binder, ColumnsAreFoundThroughDerivedTablesUnionsAndStars)
{
    EXPECT_EQ(typesOf("SELECT A.* FROM (SELECT HA, PIECES FROM LOGS) A"), "NVARCHAR(5) SMALLINT");
    EXPECT_EQ(typesOf("SELECT A.X FROM (SELECT PRICE FROM LOGS) A (X)"), "DECIMAL(12,3)");
    EXPECT_EQ(typesOf("SELECT PIECES FROM LOGS UNION ALL SELECT 1.5"), "DECIMAL(6,1)");
    EXPECT_EQ(typesOf("SELECT HA FROM LOGS L WHERE EXISTS (SELECT 1 FROM WOOD WHERE WOOD.HA = L.HA)"), "NVARCHAR(5)");
    EXPECT_EQ(typesOf("SELECT LONG_ FROM WOOD"), "NVARCHAR(200)");
    EXPECT_EQ(typesOf("SELECT SYSDATE FROM DUAL"), "DATETIME");
}

TEST(Binder, ErrorsHaveTheServersNumberAndThePlace)
{
    const Row rows[] = {
        {"SELECT X FROM LOGS", "207 Invalid column name 'X'. (line 1, column 8)"},
        {"SELECT 1\nFROM NOTHING", "208 Invalid object name 'NOTHING'. (line 2, column 6)"},
        {"SELECT HA FROM LOGS, WOOD", "209 Ambiguous column name 'HA'. (line 1, column 8)"},
        {"SELECT Q.HA FROM LOGS", "4104 The multi-part identifier \"Q.HA\" could not be bound. (line 1, column 8)"},
        {"SELECT NOSUCH(1)", "195 'NOSUCH' is not a recognized built-in function name. (line 1, column 8)"},
        {"SELECT LEN()", "174 The LEN function requires 1 argument(s). (line 1, column 8)"},
        {"SELECT HA * KURZ FROM LOGS", "8117 Operand data type nvarchar is invalid for multiply operator. "
                                       "(line 1, column 11)"},
        {"SELECT HA, COUNT(*) FROM LOGS",
         "8120 Column 'LOGS.HA' is invalid in the select list because it is not contained in either an aggregate "
         "function or the GROUP BY clause. (line 1, column 8)"},
        {"SELECT 1 FROM LOGS WHERE COUNT(*) > 1",
         "147 An aggregate may not appear in the WHERE clause unless it is in a subquery contained in a HAVING clause "
         "or a select list, and the column being aggregated is an outer reference. (line 1, column 26)"},
        {"SELECT DONE + DONE FROM LOGS",
         "402 The data types bit and bit are incompatible in the add operator. (line 1, column 13)"},
        {"SELECT MAX(DONE) FROM LOGS", "8117 Operand data type bit is invalid for max operator. (line 1, column 12)"},
        {"SELECT SUBSTRING(PIECES, 1, 1) FROM LOGS",
         "8116 Argument data type smallint is invalid for argument 1 of substring function. (line 1, column 18)"},
        {"SELECT SUM((SELECT 1)) FROM LOGS",
         "130 Cannot perform an aggregate function on an expression containing an aggregate or a subquery. "
         "(line 1, column 12)"},
        {"SELECT HA FROM LOGS ORDER BY HA, 1",
         "169 A column has been specified more than once in the order by list. Columns in the order by list must be "
         "unique. (line 1, column 30)"},
        {"SELECT COALESCE(NULL, NULL)",
         "4127 At least one of the arguments to COALESCE must be an expression that is not the NULL constant. "
         "(line 1, column 8)"},
        {"SELECT HA FROM LOGS ORDER BY 2", "108 The ORDER BY position number 2 is out of range of the number of items "
                                           "in the select list. (line 1, column 30)"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(typesOf(row.expression), row.type) << row.expression;
}

} // namespace
} // namespace tamarok::tsql
