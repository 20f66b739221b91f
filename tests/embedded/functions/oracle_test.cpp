#include <gtest/gtest.h>

#include "embedded/functions/scratch_database.h"

namespace tamarok::embedded::functions {
namespace {

TEST(Oracle, Texts)
{
    constexpr Row rows[] = {
        {"LPAD('12',5,'0')", "'00012'"},
        {"LPAD('0',4,'0')", "'0000'"},
        {"LPAD(0,LENGTH('1203'),0)", "'0000'"},
        {"LPAD('ab',5)", "'   ab'"},
        {"LPAD('abc',2,'x')", "'ab'"},
        {"LPAD('a',6,'xyz')", "'xyzxya'"},
        {"LPAD('ä',3,'ö')", "'ööä'"},
        {"LPAD('a',0,'x')", "NULL"},
        {"LPAD('a',3,'')", "NULL"},
        {"LPAD(NULL,3)", "NULL"},
        {"RPAD('ab',5,'.')", "'ab...'"},
        {"INSTR('abcabc','c')", "3"},
        {"INSTR('abcabc','C')", "0"},
        {"INSTR('abcabc','c',4)", "6"},
        {"INSTR('abcabc','c',-1)", "6"},
        {"INSTR('abcabc','b',-3)", "2"},
        {"INSTR('abcabc','c',1,2)", "6"},
        {"INSTR('abcabc','c',1,0)", "error 1428"},
        {"SUBSTR('abcdef',2,3)", "'bcd'"},
        {"SUBSTR('abcdef',0,2)", "'ab'"},
        {"SUBSTR('abcdef',-3,2)", "'de'"},
        {"SUBSTR('abcdef',4)", "'def'"},
        {"SUBSTR('abcdef',2,0)", "NULL"},
        {"SUBSTR('abc',-9,2)", "NULL"},
        {"LENGTH('abc  ')", "5"},
        {"LENGTH('')", "NULL"},
        {"LENGTH(1234)", "4"},
        {"CHR(65)", "'A'"},
    };
    checkRows(rows);
}

TEST(Oracle, Numbers)
{
    constexpr Row rows[] = {
        {"TRUNC(2.79)", "2.0"},
        {"TRUNC(-2.79,1)", "-2.7"},
        {"TRUNC(1299,-2)", "1200"},
        {"TRUNC('2024-03-05 10:15:00.000')", "'2024-03-05 00:00:00.000'"},
        {"TRUNC('2024-03-05 10:15:00.000','MM')", "'2024-03-01 00:00:00.000'"},
        {"TRUNC('2024-06-05 10:15:00.000','Q')", "'2024-04-01 00:00:00.000'"},
        {"TRUNC('2024-03-05 10:15:00.000','YYYY')", "'2024-01-01 00:00:00.000'"},
        {"TRUNC('2024-03-05 10:15:00.000','XX')", "error 1898"},
        {"MOD(7,3)", "1"},
        {"MOD(-7,3)", "-1"},
        {"MOD(7,0)", "7"},
        {"MOD(7.5,2)", "1.5"},
        {"TO_NUMBER('1.5')", "1.5"},
        {"TO_NUMBER('1,234.5','9,999.9')", "1234.5"},
        {"TO_NUMBER('abc')", "error 1722"},
    };
    checkRows(rows);
}

TEST(Oracle, NumberMasks)
{
    constexpr Row rows[] = {
        {"TO_CHAR(12)", "'12'"},
        {"TO_CHAR(0.5)", "'.5'"},
        {"TO_CHAR(-1.25)", "'-1.25'"},
        {"TO_CHAR(1234.5,'9999.99')", "' 1234.50'"},
        {"TO_CHAR(-1234.5,'9999.99')", "'-1234.50'"},
        {"TO_CHAR(12,'0000')", "' 0012'"},
        {"TO_CHAR(12,'FM0000')", "'0012'"},
        {"TO_CHAR(1234567,'FM9,999,999')", "'1,234,567'"},
        {"TO_CHAR(12345,'999')", "'####'"},
        {"TO_CHAR(0.5,'0.00')", "' 0.50'"},
        {"TO_CHAR(0.5,'FM9.00')", "'.50'"},
        {"TO_CHAR(12,'S999')", "' +12'"},
        {"TO_CHAR(-12,'999S')", "' 12-'"},
        {"TO_CHAR(12,'x')", "error 1481"},
    };
    checkRows(rows);
}

TEST(Oracle, DateMasks)
{
    constexpr Row rows[] = {
        {"TO_CHAR('2024-03-05 14:05:09.000','DD.MM.YYYY')", "'05.03.2024'"},
        {"TO_CHAR('2024-03-05 14:05:09.000','YYYYMMDD HH24:MI:SS')", "'20240305 14:05:09'"},
        {"TO_CHAR('2024-03-05 14:05:09.000','HH:MI AM')", "'02:05 PM'"},
        {"TO_CHAR('2024-03-05 14:05:09.000','DD-MON-YY')", "'05-MAR-24'"},
        {"TO_CHAR('2024-03-05 14:05:09.000','Mon')", "'Mar'"},
        {"TO_CHAR('2024-03-05 14:05:09.000','Month')", "'March    '"},
        {"TO_CHAR('2024-03-05 14:05:09.000','FMDay DD')", "'Tuesday 5'"},
        {"TO_CHAR('2024-03-05 14:05:09.000','DDD Q IW D')", "'065 1 10 3'"},
        {"TO_CHAR('2024-03-05 14:05:09.000','YYYY\"-\"MM')", "'2024-03'"},
        {"TO_CHAR('2024-03-05 14:05:09.000')", "'05-MAR-24'"},
        {"TO_CHAR('2024-03-05 14:05:09.000','XYZ')", "error 1821"},
        {"TO_DATE('05.03.2024','DD.MM.YYYY')", "'2024-03-05 00:00:00.000'"},
        {"TO_DATE('05-MAR-2024 2:05 PM','DD-MON-YYYY HH:MI AM')", "'2024-03-05 14:05:00.000'"},
        {"TO_DATE('20240305','YYYYMMDD')", "'2024-03-05 00:00:00.000'"},
        {"TO_DATE('2024-03-05 14:05:09','YYYY-MM-DD HH24:MI:SS')", "'2024-03-05 14:05:09.000'"},
        {"TO_DATE('31.02.2024','DD.MM.YYYY')", "error 1843"},
        {"TO_DATE('abc','DD.MM.YYYY')", "error 1861"},
        {"TO_DATE('05.03.2024 x','DD.MM.YYYY')", "error 1861"},
        {"TO_DATE(NULL,'DD.MM.YYYY')", "NULL"},
    };
    checkRows(rows);
}

TEST(Server, NamesAndIdentifiers)
{
    ScratchDatabase database;
    const std::string id = database.evaluate("NEWID()");
    EXPECT_EQ(id.size(), 38U);
    EXPECT_EQ(database.evaluate("tm_like(NEWID(),"
                                "'________-____-4___-[89ab]___-____________','')"),
              "1");
    EXPECT_NE(database.evaluate("NEWID()"), id);
    EXPECT_EQ(database.rows("SELECT count(DISTINCT x) FROM (SELECT NEWID() AS x UNION ALL SELECT NEWID())"), "2");
    EXPECT_EQ(database.evaluate("DB_NAME()"), "'memory'");
    EXPECT_EQ(database.evaluate("LEN(SUSER_SNAME()) > 0"), "1");
}

} // namespace
} // namespace tamarok::embedded::functions
