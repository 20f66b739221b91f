#include <algorithm>
#include <gmock/gmock.h>
#include <string>
#include <string_view>
#include <vector>

#include "test_database.h"

#include "tamarok/convert.h"

/// FROM clauses of more tables than SQLite joins. Each statement is run as it is written and with further joins that
/// change no row, in different places; the answers must be equal.
namespace tamarok::embedded::test {
namespace {

using testing::HasSubstr;

using Rows = std::vector<std::string>;

/// All rows, each value with its kind, and the descriptions of the columns before them.
Rows rowsOf(const ado::ConnectionRef& connection, const std::string& text, bool ordered = false)
{
    const auto cursor = open(connection, text);
    Rows rows;
    std::string described;
    for (const ado::ColumnInfo& column : cursor->columns()) {
        described.append(column.name).append("/").append(column.baseTable).append("/").append(column.baseColumn);
        described.append("/").append(std::to_string(static_cast<int>(column.type)));
        described.append("/").append(std::to_string(column.definedSize)).append("|");
    }
    while (cursor->next()) {
        std::string row;
        for (std::size_t i = 0; i < cursor->columns().size(); ++i) {
            const Variant value = cursor->value(i);
            row.append(std::to_string(static_cast<int>(value.kind()))).append(":");
            row.append(value.isNull() ? std::string{} : convert::toText(value)).append("|");
        }
        rows.push_back(row);
    }
    if (!ordered) std::ranges::sort(rows);
    rows.insert(rows.begin(), described);
    return rows;
}

constexpr std::string_view schema =
    "CREATE TABLE A (ID INT PRIMARY KEY, NAME NVARCHAR(20), CODE VARCHAR(10), AMOUNT MONEY, QTY DECIMAL(10,2), "
    " MOMENT DATETIME, DAY DATE, SIZE FLOAT, FLAG BIT, GROUPID INT, EXACT VARCHAR(10) COLLATE Latin1_General_BIN);"
    "CREATE TABLE B (ID INT PRIMARY KEY, AID INT, NAME NVARCHAR(20), [A.B] INT, [LONG] NVARCHAR(5), QTY DECIMAL(10,2));"
    "CREATE TABLE C (ID INT PRIMARY KEY, BID INT, NAME NVARCHAR(20));"
    "CREATE TABLE PAD (ID INT PRIMARY KEY, NAME NVARCHAR(20));"
    "CREATE TABLE #TEMP (ID INT, NAME NVARCHAR(10));"
    "INSERT INTO PAD VALUES (1, 'p1'); INSERT INTO PAD VALUES (2, 'p2'); INSERT INTO PAD VALUES (3, 'P3 ');"
    "INSERT INTO A VALUES (1,'Fichte ','a',1.5,2.25,'20240305 10:15','20240305',0.5,1,10,'Xy');"
    "INSERT INTO A VALUES (2,'FICHTE','A ',2,3,'20240306','20240306',2,0,10,'xY');"
    "INSERT INTO A VALUES (3,'Tanne',NULL,-1.25,0.5,NULL,NULL,NULL,NULL,20,NULL);"
    "INSERT INTO A VALUES (4,NULL,'b',NULL,NULL,'20240307','20240307',3,1,NULL,'zz');"
    "INSERT INTO B VALUES (1,1,'fichte',5,'l',1.1); INSERT INTO B VALUES (2,1,'tanne ',6,'m',2.2);"
    "INSERT INTO B VALUES (3,3,'Ulme',7,NULL,3.3); INSERT INTO B VALUES (4,9,'keine',8,'o',4.4);"
    "INSERT INTO C VALUES (1,1,'c1'); INSERT INTO C VALUES (2,3,'c2'); INSERT INTO C VALUES (3,7,'c3');"
    "INSERT INTO #TEMP VALUES (1,'t1'); INSERT INTO #TEMP VALUES (3,'t3');";

/// How the places {1}, {2}, {3} of a statement are filled.
struct Padding {
    int counts[3];
};

constexpr Padding paddings[] = {{{63, 0, 0}}, {{0, 63, 0}},   {{0, 0, 63}},  {{62, 2, 1}},   {{1, 61, 30}},
                                {{80, 0, 0}}, {{10, 70, 10}}, {{0, 0, 130}}, {{70, 70, 70}}, {{0, 126, 70}},
                                {{61, 0, 0}}, {{0, 60, 1}},   {{60, 0, 1}},  {{59, 0, 1}}};

std::string replaced(std::string_view text, std::string_view mark, std::string_view by)
{
    std::string result;
    for (std::size_t at = text.find(mark); at != text.npos; at = text.find(mark)) {
        result.append(text.substr(0, at)).append(by);
        text.remove_prefix(at + mark.size());
    }
    return result.append(text);
}

/// @param joined  what a join is: {n} stands for its number
std::string padded(std::string_view text, const Padding& padding, std::string_view joined)
{
    constexpr std::string_view marks[] = {"{1}", "{2}", "{3}"};
    std::string result{text};
    int number = 0;
    for (std::size_t place = 0; place < std::size(marks); ++place) {
        std::string joins;
        for (int i = 0; i < padding.counts[place]; ++i)
            joins.append(replaced(joined, "{n}", std::to_string(++number)));
        result = replaced(result, marks[place], joins);
    }
    return result;
}

/// Joins that give each row exactly once. The ON clauses look at the first table, at another join, or at nothing.
constexpr std::string_view neutralJoins[] = {
    " LEFT JOIN PAD P{n} ON P{n}.ID = A.ID",
    " LEFT JOIN PAD P{n} ON P{n}.ID = A.ID + 100",
    " INNER JOIN PAD P{n} ON P{n}.ID = 2",
    " CROSS JOIN (SELECT MAX(NAME) AS NAME FROM PAD) P{n}",
};

class LongJoins : public testing::Test {
protected:
    LongJoins() { run(connection_, schema); }

    ado::ConnectionRef connection_ = connectInMemory();
};

/// Statements on A with a place for joins behind A, behind B and at the end.
constexpr std::string_view queries[] = {
    "SELECT A.*, B.* FROM A {1} LEFT JOIN B ON B.AID = A.ID {2} LEFT JOIN C ON C.BID = B.ID {3}",
    "SELECT A.ID, B.ID, C.ID FROM A {1} INNER JOIN B ON B.AID = A.ID {2} INNER JOIN C ON C.BID = B.ID {3}",
    "SELECT A.ID, B.NAME, C.NAME FROM A {1} LEFT JOIN B ON B.NAME = A.NAME {2} LEFT JOIN C ON C.NAME = 'C1' {3}",
    "SELECT A.NAME, B.NAME AS N2, A.QTY + B.QTY, A.AMOUNT * 2, A.MOMENT + 1, A.SIZE / 3, A.FLAG FROM A {1} "
    "LEFT JOIN B ON B.AID = A.ID {2} {3}",
    // conditions
    "SELECT A.ID FROM A {1} LEFT JOIN B ON B.AID = A.ID {2} {3} WHERE A.NAME = 'fichte'",
    "SELECT A.ID FROM A {1} LEFT JOIN B ON B.AID = A.ID {2} {3} WHERE A.CODE = 'a'",
    "SELECT A.ID FROM A {1} LEFT JOIN B ON B.AID = A.ID {2} {3} WHERE 'FICHTE  ' = A.NAME AND B.ID IS NOT NULL",
    "SELECT A.ID FROM A {1} LEFT JOIN B ON B.AID = A.ID {2} {3} WHERE A.NAME = B.NAME",
    "SELECT A.ID FROM A {1} LEFT JOIN B ON B.AID = A.ID {2} {3} WHERE A.NAME IN ('FICHTE', 'x') OR B.NAME LIKE 'u%'",
    "SELECT A.ID FROM A {1} {2} {3} WHERE A.EXACT = 'xY'",
    "SELECT A.ID FROM A {1} {2} {3} WHERE A.EXACT IN ('XY', 'zz')",
    "SELECT A.ID FROM A {1} {2} {3} WHERE A.EXACT > 'a'",
    "SELECT A.ID FROM A {1} LEFT JOIN B ON B.AID = A.ID {2} {3} WHERE B.ID IS NULL",
    "SELECT A.ID FROM A {1} LEFT JOIN B ON B.AID = A.ID {2} {3} WHERE (A.ID > 1 AND B.ID > 1) AND A.GROUPID = '20'",
    "SELECT A.ID FROM A {1} LEFT JOIN B ON B.AID = A.ID {2} {3} WHERE A.QTY > 2.2 AND A.MOMENT < '20240306'",
    "SELECT A.ID FROM A {1} LEFT JOIN B ON B.AID = A.ID {2} {3} WHERE A.NAME BETWEEN 'f' AND 'g' AND 1 = 1",
    "SELECT A.ID FROM A {1} {2} {3} WHERE 1 = 0",
    // groups
    "SELECT A.NAME, COUNT(*), SUM(A.QTY), MAX(B.NAME), AVG(A.AMOUNT) FROM A {1} LEFT JOIN B ON B.AID = A.ID {2} {3} "
    "GROUP BY A.NAME",
    "SELECT A.EXACT, COUNT(*) FROM A {1} {2} {3} GROUP BY A.EXACT",
    "SELECT A.GROUPID, SUM(B.QTY) AS S FROM A {1} LEFT JOIN B ON B.AID = A.ID {2} {3} GROUP BY A.GROUPID "
    "HAVING MIN(A.NAME) < 'u' AND COUNT(B.ID) > 0",
    "SELECT COUNT(*) FROM A {1} LEFT JOIN B ON B.AID = A.ID {2} {3}",
    "SELECT COUNT(DISTINCT A.NAME), MIN(A.EXACT) FROM A {1} {2} {3}",
    "SELECT DISTINCT A.GROUPID, A.FLAG FROM A {1} {2} {3}",
    // windows
    "SELECT A.ID, ROW_NUMBER() OVER (PARTITION BY A.GROUPID ORDER BY A.ID DESC, B.ID) FROM A {1} "
    "LEFT JOIN B ON B.AID = A.ID {2} {3}",
    "SELECT A.ID, SUM(A.QTY) OVER (PARTITION BY A.NAME) FROM A {1} LEFT JOIN B ON B.AID = A.ID {2} {3}",
    // subqueries that refer to the joined tables
    "SELECT A.ID, (SELECT MAX(C.NAME) FROM C WHERE C.BID = B.ID) FROM A {1} LEFT JOIN B ON B.AID = A.ID {2} {3}",
    "SELECT A.ID, (SELECT X.NAME FROM A X WHERE X.ID = A.ID) FROM A {1} {2} {3}",
    "SELECT A.ID FROM A {1} LEFT JOIN B ON B.AID = A.ID {2} {3} WHERE EXISTS (SELECT * FROM C WHERE C.BID = B.ID)",
    "SELECT A.ID FROM A {1} {2} {3} WHERE A.ID IN (SELECT B.AID FROM B WHERE B.NAME <> A.NAME)",
    "SELECT A.ID FROM A {1} LEFT JOIN B ON B.AID = A.ID AND EXISTS (SELECT 1 FROM C WHERE C.BID = B.ID) {2} {3}",
    "SELECT A.ID FROM A {1} {2} {3} WHERE A.QTY = (SELECT MAX(X.QTY) FROM A X WHERE X.GROUPID = A.GROUPID)",
    "SELECT A.ID, (SELECT MAX(X.ID) FROM A X {2} WHERE X.GROUPID = A.GROUPID) FROM A {1} {3}",
    "SELECT A.ID, (SELECT X.NAME FROM A X {2} WHERE X.ID = A.ID) FROM A {1} {3}",
    "SELECT A.ID FROM A {1} {3} WHERE A.ID IN (SELECT X.ID FROM A X {2} WHERE X.QTY <= A.QTY AND X.NAME = A.NAME)",
    // derived and temporary tables, columns with odd names
    "SELECT A.ID, D.N, D.S FROM A {1} LEFT JOIN (SELECT AID AS N, SUM(QTY) AS S FROM B GROUP BY AID) D ON D.N = A.ID "
    "{2} {3} WHERE D.S > 1",
    "SELECT A.ID, D.X FROM A {1} LEFT JOIN (SELECT B.AID, B.NAME FROM B) D (X, Y) ON D.X = A.ID {2} {3} "
    "WHERE D.Y = 'FICHTE'",
    "SELECT A.ID, T.NAME FROM A {1} LEFT JOIN #TEMP T ON T.ID = A.ID {2} {3} WHERE T.NAME = 'T1 '",
    "SELECT [A B].ID, [A.B].[A.B], [A.B].LONG_ FROM A {1} LEFT JOIN A [A B] ON [A B].ID = A.ID "
    "LEFT JOIN B [A.B] ON [A.B].AID = A.ID {2} {3}",
    "SELECT ID2 = A.ID, AMOUNT FROM A {1} {2} {3}",
    "SELECT * FROM (SELECT A.ID, A.NAME, B.NAME AS BN FROM A {1} LEFT JOIN B ON B.AID = A.ID {2} {3}) Q "
    "WHERE Q.BN = 'TANNE' ",
    "SELECT A.ID FROM A {1} {2} {3} UNION SELECT B.ID FROM B",
    "SELECT A.NAME FROM A {1} {2} {3} UNION SELECT B.NAME FROM B",
    // Oracle's row limit
    "SELECT COUNT(*) FROM A {1} {2} {3} WHERE ROWNUM <= 2 AND A.ID > 1",
    "SELECT A.GROUPID, COUNT(*) FROM A {1} {2} {3} WHERE ROWNUM <= 3 GROUP BY A.GROUPID",
    // joins that keep the rows of their right side
    "SELECT A.ID, B.ID FROM A {1} RIGHT JOIN B ON B.AID = A.ID {3}",
    "SELECT A.ID, B.ID FROM A {1} FULL JOIN B ON B.AID = A.ID {3}",
    "SELECT A.ID, B.ID FROM A {1} FULL JOIN B ON B.AID = A.ID {3} WHERE A.ID IS NULL OR A.ID > 2",
    "SELECT A.ID, B.ID FROM A {1} RIGHT JOIN B ON B.AID = A.ID {3} WHERE A.ID IS NULL",
};

TEST_F(LongJoins, TheRowsAreThoseOfTheFewJoins)
{
    for (const std::string_view query : queries) {
        const Rows expected = rowsOf(connection_, padded(query, {}, ""));
        for (std::size_t i = 0; i < std::size(paddings); ++i) {
            // Two of the joins for each padding, in turns.
            for (const std::size_t join : {i, i + 1}) {
                const std::string text = padded(query, paddings[i], neutralJoins[join % std::size(neutralJoins)]);
                ASSERT_EQ(rowsOf(connection_, text), expected) << text;
            }
        }
    }
}

/// A comma binds less tightly than the joins behind it.
TEST_F(LongJoins, TablesBehindCommas)
{
    constexpr std::string_view listed[] = {
        "SELECT A.ID, B.ID FROM A, B {3} WHERE A.ID = B.AID",
        "SELECT A.ID, B.ID, C.ID FROM A, B LEFT JOIN C ON C.BID = B.ID {3} WHERE A.ID = B.AID AND A.NAME = 'FICHTE'",
        "SELECT A.ID, C.ID FROM A, B RIGHT JOIN C ON C.BID = B.ID {3} WHERE B.ID IS NULL",
    };
    constexpr std::string_view row = ", (SELECT MAX(NAME) AS NAME FROM PAD) P{n}";
    constexpr std::string_view rows = ", PAD P{n} LEFT JOIN PAD Q{n} ON Q{n}.ID = P{n}.ID + 5";
    for (const std::string_view query : listed) {
        const Rows expected = rowsOf(connection_, padded(query, {}, ""));
        for (const int count : {60, 61, 62, 63, 70, 130})
            EXPECT_EQ(rowsOf(connection_, padded(query, {{0, 0, count}}, row)), expected) << query << count;
        // Each pair of tables has three rows, of which WHERE keeps one.
        std::string one = padded(query, {{0, 0, 34}}, rows);
        for (int i = 1; i <= 34; ++i)
            one.append(" AND P").append(std::to_string(i)).append(".ID = 2");
        EXPECT_EQ(rowsOf(connection_, one), expected) << one;
    }
}

/// Each ON clause refers to the join before it, the last one to the first.
TEST_F(LongJoins, AChainOfJoins)
{
    std::string text = "SELECT A.ID, P1.NAME, P100.ID, Z.NAME FROM A LEFT JOIN PAD P1 ON P1.ID = A.ID";
    for (int i = 2; i <= 200; ++i) {
        const std::string number = std::to_string(i);
        text.append(" LEFT JOIN PAD P").append(number).append(" ON P").append(number).append(".NAME = P");
        text.append(std::to_string(i - 1)).append(".NAME");
    }
    const Rows rows = rowsOf(connection_, text + " LEFT JOIN PAD Z ON Z.ID = P200.ID AND Z.NAME = P1.NAME");
    const Rows expected = rowsOf(connection_, "SELECT A.ID, P1.NAME, P100.ID, Z.NAME FROM A LEFT JOIN PAD P1 ON "
                                              "P1.ID = A.ID LEFT JOIN PAD P100 ON P100.ID = P1.ID "
                                              "LEFT JOIN PAD Z ON Z.ID = P1.ID");
    EXPECT_EQ(rows, expected);
}

/// The order is that of the statement, with ties broken by it.
TEST_F(LongJoins, TheOrderIsThatOfTheStatement)
{
    constexpr std::string_view ordered[] = {
        "SELECT A.ID, A.NAME FROM A {1} LEFT JOIN B ON B.AID = A.ID {2} {3} ORDER BY A.NAME DESC, A.ID, B.ID",
        "SELECT TOP 2 A.ID FROM A {1} LEFT JOIN B ON B.AID = A.ID {2} {3} ORDER BY B.NAME DESC",
        "SELECT A.ID, A.NAME AS N FROM A {1} {2} {3} ORDER BY N, 1 DESC",
        "SELECT A.EXACT FROM A {1} {2} {3} ORDER BY A.EXACT",
        "SELECT A.ID FROM A {1} {2} {3} ORDER BY A.QTY OFFSET 1 ROWS FETCH NEXT 2 ROWS ONLY",
        "SELECT A.ID FROM A {1} {2} {3} WHERE ROWNUM <= 2 ORDER BY A.ID DESC",
        "SELECT A.NAME, COUNT(*) FROM A {1} {2} {3} GROUP BY A.NAME ORDER BY MAX(A.ID)",
    };
    for (const std::string_view query : ordered) {
        const Rows expected = rowsOf(connection_, padded(query, {}, ""), true);
        for (const Padding& padding : paddings) {
            const std::string text = padded(query, padding, neutralJoins[0]);
            EXPECT_EQ(rowsOf(connection_, text, true), expected) << text;
        }
    }
}

TEST_F(LongJoins, AStarHasTheColumnsOfAllTablesInOrder)
{
    const auto cursor = open(
        connection_, padded("SELECT * FROM A {1} LEFT JOIN B ON B.AID = A.ID {2}", {{70, 70, 0}}, neutralJoins[0]));
    std::string names = "A.ID A.NAME A.CODE A.AMOUNT A.QTY A.MOMENT A.DAY A.SIZE A.FLAG A.GROUPID A.EXACT ";
    for (int i = 0; i < 70; ++i)
        names += "PAD.ID PAD.NAME ";
    names += "B.ID B.AID B.NAME B.A.B B.LONG B.QTY ";
    for (int i = 0; i < 70; ++i)
        names += "PAD.ID PAD.NAME ";
    std::string found;
    for (const ado::ColumnInfo& column : cursor->columns())
        found.append(column.baseTable).append(".").append(column.name).append(" ");
    EXPECT_EQ(found, names);
}

/// Statements that change A; the joins may name a row of it several times.
constexpr std::string_view changes[] = {
    "UPDATE A SET NAME = B.NAME, QTY = A.QTY + B.QTY FROM A {1} INNER JOIN B ON B.AID = A.ID {2} {3} WHERE B.ID > 1",
    "UPDATE X SET NAME = 'x' FROM A {1} INNER JOIN A X ON X.ID = A.ID {2} {3} WHERE X.NAME = 'FICHTE'",
    "UPDATE A SET GROUPID = B.ID FROM B {2} {3} WHERE B.AID = A.ID AND B.ID <> 2",
    "UPDATE A SET ID = A.ID + 1 FROM A {1} {2} {3} WHERE A.ID < 9",
    "UPDATE A SET ID = A.ID + B.QTY + 20 FROM B {2} {3} WHERE B.AID = A.ID AND B.ID <> 2",
    "UPDATE A SET QTY = (SELECT SUM(B.QTY) FROM B {2} WHERE B.AID = A.ID)",
    "DELETE A FROM A {1} LEFT JOIN B ON B.AID = A.ID {2} {3} WHERE B.ID IS NULL",
    "DELETE FROM A FROM B {2} {3} WHERE B.AID = A.ID AND B.NAME = 'ULME'",
    "DELETE FROM A FROM B {2} RIGHT JOIN C ON C.BID = B.ID {3} WHERE A.ID = C.ID",
    "UPDATE A SET ID = C.ID + 40 FROM B {2} FULL JOIN C ON C.BID = B.ID {3} WHERE A.ID = C.ID",
    "DELETE FROM A WHERE A.ID IN (SELECT B.AID FROM B {1} {2} {3})",
    "INSERT INTO A (ID, NAME, QTY) SELECT A.ID + 50, B.NAME, B.QTY FROM A {1} INNER JOIN B ON B.AID = A.ID {2} {3} "
    "WHERE B.ID <> 2",
    "SELECT A.ID, B.NAME, A.QTY, A.MOMENT INTO #N FROM A {1} LEFT JOIN B ON B.AID = A.ID {2} {3}",
};

TEST_F(LongJoins, ChangesAreThoseOfTheFewJoins)
{
    // A join whose ON looks at no table of the statement, so that it fits beside any.
    constexpr std::string_view joins[] = {" LEFT JOIN PAD P{n} ON P{n}.ID = 2",
                                          " INNER JOIN PAD P{n} ON P{n}.NAME = 'P2'"};
    const auto changed = [&](const std::string& text) {
        const bool makesTable = text.find("INTO #N") != text.npos;
        connection_->session().begin();
        const std::int64_t count = run(connection_, text);
        Rows rows = rowsOf(connection_, makesTable ? "SELECT * FROM #N" : "SELECT * FROM A");
        rows.push_back(std::to_string(count));
        connection_->session().rollback();
        return rows;
    };
    for (const std::string_view change : changes) {
        const Rows expected = changed(padded(change, {}, ""));
        for (const std::string_view join : joins) {
            for (const Padding& padding : paddings) {
                const std::string text = padded(change, padding, join);
                EXPECT_EQ(changed(text), expected) << text;
            }
        }
    }
}

/// The values are given to the parameters in the order of the statement, wherever its parts are written.
TEST_F(LongJoins, ParametersKeepTheirPlaces)
{
    constexpr std::string_view query =
        "SELECT ? AS P, A.ID, B.ID FROM A {1} LEFT JOIN B ON B.AID = A.ID AND B.QTY < ? {2} LEFT JOIN C ON C.ID = ? "
        "{3} WHERE C.NAME = ? AND A.ID < ? AND (B.ID IS NULL OR B.ID <> ?) AND ? = 'x' ORDER BY A.ID + ?, B.ID";
    const auto parameter = [](Variant value) {
        ado::Parameter result;
        result.value = std::move(value);
        return result;
    };
    const std::vector<ado::Parameter> parameters = {parameter("first"), parameter(3.0), parameter(2),   parameter("C2"),
                                                    parameter(4),       parameter(2),   parameter("X"), parameter(1)};
    const auto read = [&](const std::string& text) {
        ado::Statement given = statement(text);
        given.parameters = parameters;
        std::string rows;
        for (const auto cursor = connection_->session().open(given); cursor->next();) {
            for (std::size_t i = 0; i < 3; ++i)
                rows.append(cursor->value(i).isNull() ? "-" : convert::toText(cursor->value(i))).append(" ");
        }
        return rows;
    };
    EXPECT_EQ(read(padded(query, {}, "")), "first 1 1 first 2 - first 3 - ");
    for (const Padding& padding : paddings)
        EXPECT_EQ(read(padded(query, padding, neutralJoins[0])), "first 1 1 first 2 - first 3 - ");
}

/// A recordset that edits rows needs a query on one table, with many joins as with few.
TEST_F(LongJoins, RowsOfJoinsHaveNoKey)
{
    constexpr std::string_view query = "SELECT A.ID FROM A {1} LEFT JOIN B ON B.AID = A.ID";
    for (const Padding& padding : {Padding{}, Padding{{80, 0, 0}}}) {
        const auto cursor = openEditable(connection_, padded(query, padding, neutralJoins[0]));
        EXPECT_FALSE(cursor->updatable());
    }
}

/// A view keeps the translated text.
TEST_F(LongJoins, AViewOfManyJoins)
{
    const std::string query =
        padded("SELECT A.ID, A.NAME, B.QTY FROM A {1} LEFT JOIN B ON B.AID = A.ID {2}", {{70, 70, 0}}, neutralJoins[0]);
    run(connection_, "CREATE VIEW V AS " + query);
    EXPECT_EQ(columnOf(connection_, "SELECT V.QTY FROM V WHERE V.NAME = 'TANNE'"), std::vector<Variant>{3.3});
}

/// SQLite dissolves derived tables into the query around them and joins all their tables.
TEST_F(LongJoins, DerivedTablesOfManyTables)
{
    const auto derived = [](int joins, std::string_view alias, std::string_view end = "") {
        const std::string text = padded("(SELECT A.ID, A.NAME, A.QTY FROM A {1}", {{joins, 0, 0}}, neutralJoins[0]);
        return text + std::string{end} + ") " + std::string{alias};
    };
    const auto joined = [&](int joins, std::string_view kind, std::string_view end = "") {
        return "SELECT X.NAME, Y.NAME FROM " + derived(joins, "X", end) + std::string{kind} + derived(joins, "Y", end) +
               " ON Y.ID = X.ID + 1 INNER JOIN " + derived(joins, "Z", end) + " ON Z.QTY >= X.QTY AND Z.NAME = Y.NAME";
    };
    for (const std::string_view kind : {" INNER JOIN ", " LEFT JOIN ", " RIGHT JOIN ", " FULL JOIN "}) {
        for (const std::string_view end : {"", " GROUP BY A.ID, A.NAME, A.QTY", " UNION SELECT ID, NAME, QTY FROM B",
                                           " ORDER BY A.ID OFFSET 0 ROWS"}) {
            const Rows expected = rowsOf(connection_, joined(0, kind, end));
            for (const int joins : {20, 21, 31, 32, 62, 63, 64, 70, 130})
                EXPECT_EQ(rowsOf(connection_, joined(joins, kind, end)), expected) << joins << kind << end;
        }
    }
}

std::string refusal(const ado::ConnectionRef& connection, const std::string& text)
{
    const Error error = failureOf([&] { open(connection, text); });
    return std::to_string(error.nativeError) + " " + error.description;
}

TEST_F(LongJoins, TheMostTablesAndOneMore)
{
    const auto text = [](int joins) { return padded("SELECT A.ID FROM A {1}", {{joins, 0, 0}}, neutralJoins[0]); };
    EXPECT_EQ(columnOf(connection_, text(255)).size(), 4U);
    EXPECT_THAT(refusal(connection_, text(256)),
                testing::StartsWith("106 Too many table names in the query. The maximum allowable is 256. (line 1"));
}

/// SQLite joins the tables of a view with those beside it; the front end does not know how many they are.
TEST_F(LongJoins, ViewsOfManyTables)
{
    run(connection_, "CREATE VIEW V AS " + padded("SELECT A.ID FROM A {1}", {{40, 0, 0}}, neutralJoins[0]));
    EXPECT_EQ(columnOf(connection_, "SELECT V.ID FROM V LEFT JOIN B ON B.ID = V.ID").size(), 4U);
    EXPECT_EQ(refusal(connection_, "SELECT V.ID FROM V INNER JOIN V W ON W.ID = V.ID"),
              "106 Too many table names in the query. The maximum allowable is 64 with those of its views.");
}

/// Joins in parentheses that other joins follow are one table of the FROM clause, which cannot be divided.
TEST_F(LongJoins, JoinsInParentheses)
{
    const auto text = [](int joins) {
        return padded("SELECT A.ID, B.ID FROM A {2} LEFT JOIN (B {1}) ON B.AID = A.ID", {{joins, 10, 0}},
                      " LEFT JOIN PAD P{n} ON P{n}.ID = 2");
    };
    EXPECT_EQ(rowsOf(connection_, text(62)), rowsOf(connection_, text(0)));
    EXPECT_THAT(
        refusal(connection_, text(63)),
        testing::StartsWith("106 Too many table names in the query. The maximum allowable is 63 in parentheses."));
}

} // namespace
} // namespace tamarok::embedded::test
