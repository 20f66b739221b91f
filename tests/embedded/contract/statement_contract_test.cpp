#include <gtest/gtest.h>

#include "embedded/contract/contract.h"

namespace tamarok::embedded::contract {
namespace {

TEST(StatementContract, ComparingTexts)
{
    constexpr Row rows[] = {
        {"SELECT ID FROM WOOD WHERE NAME='FICHTE' ORDER BY ID", "1 | 2"},
        {"SELECT ID FROM WOOD WHERE NAME='arle' ORDER BY ID", "4"},
        {"SELECT ID FROM WOOD WHERE NAME='ÄRLE  ' ORDER BY ID", "3"},
        {"SELECT ID FROM WOOD WHERE NAME IN ('FICHTE','ärle') ORDER BY ID", "1 | 2 | 3"},
        {"SELECT ID FROM WOOD WHERE NAME<>'fichte' ORDER BY ID", "3 | 4"},
        {"SELECT COUNT(DISTINCT NAME) FROM WOOD", "3"},
        {"SELECT COUNT(*) FROM (SELECT DISTINCT NAME FROM WOOD) AS X", "4"},
        {"SELECT COUNT(*) FROM (SELECT NAME FROM WOOD UNION SELECT 'FICHTE') AS X", "4"},
        {"SELECT COUNT(*) FROM WOOD WHERE NAME IS NOT NULL GROUP BY NAME ORDER BY NAME", "1 | 1 | 2"},
        {"SELECT ID FROM WOOD ORDER BY NAME, ID", "5 | 4 | 3 | 1 | 2"},
        {"SELECT ID FROM WOOD ORDER BY NAME DESC, ID", "1 | 2 | 3 | 4 | 5"},
        {"SELECT MIN(NAME), MAX(CODE) FROM WOOD", "'Arle', 'NN'"},
        {"SELECT A.ID, B.ID FROM WOOD A INNER JOIN WOOD B ON A.NAME=B.NAME AND A.ID<B.ID", "1, 2"},
        {"SELECT ID FROM WOOD WHERE NAME LIKE 'ä%'", "3"},
        {"SELECT ID FROM WOOD WHERE CODE LIKE '[a-f]%' ORDER BY ID", "1 | 2 | 3 | 4"},
    };
    checkStatements(rows);
}

TEST(StatementContract, Nulls)
{
    constexpr Row rows[] = {
        {"SELECT ID FROM WOOD WHERE PIECES NOT IN (10,NULL)", "none"},
        {"SELECT ID FROM WOOD WHERE PIECES NOT IN (10,7) ORDER BY ID", "4 | 5"},
        {"SELECT ID FROM WOOD WHERE ID NOT IN (SELECT PIECES FROM WOOD)", "none"},
        {"SELECT ID FROM WOOD ORDER BY PIECES", "3 | 5 | 4 | 2 | 1"},
        {"SELECT ID FROM WOOD ORDER BY PIECES DESC", "1 | 2 | 4 | 5 | 3"},
        {"SELECT COUNT(*), COUNT(PIECES) FROM WOOD", "5, 4"},
        {"SELECT SUM(PIECES), AVG(PIECES), MIN(PIECES), MAX(PIECES) FROM WOOD", "20, 5, 0, 10"},
        {"SELECT SUM(PIECES) FROM WOOD WHERE ID=3", "NULL"},
        {"SELECT ISNULL(PIECES,-1) FROM WOOD WHERE ID=3", "-1"},
    };
    checkStatements(rows);
}

TEST(StatementContract, Aggregates)
{
    constexpr Row rows[] = {
        {"SELECT AVG(PIECES) FROM WOOD WHERE ID IN (1,2)", "8"},
        {"SELECT AVG(VOLUME) FROM WOOD WHERE ID IN (1,2)", "1.875"},
        {"SELECT SUM(LENGTH_M) FROM WOOD", "14.6"},
        {"SELECT SUM(PIECES*VOLUME) FROM WOOD", "30.0"},
        {"SELECT SUM(PIECES)/SUM(VOLUME) FROM WOOD WHERE ID=1", "8.0"},
        {"SELECT SUM(2147483647) FROM WOOD", "error 8115"},
        {"SELECT UPPER(NAME), SUM(PIECES) FROM WOOD WHERE NAME LIKE 'f%' GROUP BY UPPER(NAME)", "'FICHTE', 17"},
        {"SELECT CHECKED, COUNT(*) FROM WOOD GROUP BY CHECKED ORDER BY CHECKED", "NULL, 1 | false, 2 | true, 2"},
        {"SELECT COUNT(*) FROM WOOD GROUP BY NAME HAVING COUNT(*)>1", "2"},
    };
    checkStatements(rows);
}

TEST(StatementContract, DatesInConditions)
{
    constexpr Row rows[] = {
        {"SELECT ID FROM WOOD WHERE FELLED='06.03.2024'", "2"},
        {"SELECT ID FROM WOOD WHERE FELLED='2024-03-06'", "2"},
        {"SELECT ID FROM WOOD WHERE FELLED='06/03/2024'", "2"},
        {"SELECT ID FROM WOOD WHERE FELLED>='01.01.2024' ORDER BY ID", "1 | 2 | 5"},
        {"SELECT ID FROM WOOD WHERE FELLED BETWEEN '2024-03-05' AND '2024-03-06' ORDER BY ID", "1 | 2"},
        {"SELECT ID FROM WOOD WHERE '20240305'<FELLED ORDER BY ID", "1 | 2"},
        {"SELECT ID FROM WOOD WHERE FELLED='holz'", "error 295"},
        {"SELECT ID FROM WOOD WHERE YEAR(FELLED)=2023", "4"},
        {"SELECT FELLED FROM WOOD WHERE ID=1", "2024-03-05 10:15:00"},
        {"SELECT MAX(FELLED) FROM WOOD", "2024-03-06"},
        {"SELECT CONVERT(nvarchar(10),FELLED,104) FROM WOOD WHERE ID=1", "'05.03.2024'"},
        {"SELECT FELLED+1 FROM WOOD WHERE ID=2", "2024-03-07"},
        {"SELECT ID FROM WOOD WHERE CONVERT(smalldatetime,'05.03.2024',104)<=FELLED ORDER BY ID", "1 | 2"},
    };
    checkStatements(rows);
}

TEST(StatementContract, TopAndOrder)
{
    constexpr Row rows[] = {
        {"SELECT TOP 2 ID FROM WOOD ORDER BY ID DESC", "5 | 4"},
        {"SELECT TOP (1) ID FROM WOOD ORDER BY ID", "1"},
        {"SELECT TOP 1 1 FROM WOOD UNION ALL SELECT TOP 2 2 FROM WOOD", "1 | 2 | 2"},
        {"SELECT ID FROM WOOD WHERE ID IN (SELECT TOP 2 ID FROM WOOD ORDER BY ID DESC) ORDER BY ID", "4 | 5"},
        {"SELECT (SELECT TOP 1 NAME FROM WOOD ORDER BY ID)", "'Fichte'"},
        {"SELECT X.ID FROM (SELECT TOP 2 ID FROM WOOD ORDER BY ID) AS X ORDER BY X.ID DESC", "2 | 1"},
        {"SELECT ID, PIECES FROM WOOD WHERE PIECES>0 ORDER BY 2", "4, 3 | 2, 7 | 1, 10"},
        {"SELECT ID, PIECES AS AMOUNT FROM WOOD WHERE PIECES>0 ORDER BY AMOUNT DESC", "1, 10 | 2, 7 | 4, 3"},
        {"SELECT 2 AS N UNION ALL SELECT 1 ORDER BY N", "1 | 2"},
        {"SELECT ID FROM WOOD WHERE ID=1 UNION SELECT 1", "1"},
        {"SELECT ROW_NUMBER() OVER (ORDER BY ID DESC), ID FROM WOOD WHERE ID<3 ORDER BY ID", "2, 1 | 1, 2"},
    };
    checkStatements(rows);
}

TEST(StatementContract, Changes)
{
    const auto connection = woodDatabase();
    EXPECT_EQ(answer(connection, "UPDATE WOOD SET NAME='12345678901234567890x' WHERE ID=1"), "error 2628");
    EXPECT_EQ(answer(connection, "UPDATE WOOD SET PIECES='abc' WHERE ID=1"), "error 245");
    connection->Execute("UPDATE WOOD SET LENGTH_M=1.005, FELLED='31.12.2024 10:15:45', CHECKED=7, PIECES='12' "
                        "WHERE ID=1");
    EXPECT_EQ(answer(connection, "SELECT LENGTH_M, FELLED, CHECKED, PIECES FROM WOOD WHERE ID=1"),
              "1.01, 2024-12-31 10:16:00, true, 12");
    connection->Execute("INSERT INTO WOOD (ID, NAME) SELECT ID+10, NAME+'x' FROM WOOD WHERE ID=4");
    EXPECT_EQ(answer(connection, "SELECT NAME FROM WOOD WHERE ID=14"), "'Arlex'");
    EXPECT_EQ(answer(connection, "INSERT INTO WOOD (ID) VALUES (1)"), "error 2627");
    connection->Execute("UPDATE W SET PIECES=B.PIECES FROM WOOD W INNER JOIN WOOD B ON B.ID=W.ID-10 WHERE W.ID=14");
    EXPECT_EQ(answer(connection, "SELECT PIECES FROM WOOD WHERE ID=14"), "3");
    EXPECT_EQ(connection->Execute("DELETE FROM WOOD WHERE NAME='ARLEX'"), 1);
    EXPECT_EQ(answer(connection, "IF EXISTS (SELECT 1 FROM WOOD WHERE ID=14) SELECT 'there' ELSE SELECT 'gone'"),
              "'gone'");
}

} // namespace
} // namespace tamarok::embedded::contract
