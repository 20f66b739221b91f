#include <gtest/gtest.h>

#include "embedded/functions/scratch_database.h"

namespace tamarok::embedded::functions {
namespace {

TEST(NumberFunctions, Rounding)
{
    constexpr Row rows[] = {
        {"ROUND(2.5,0)", "3.0"},
        {"ROUND(-2.5,0)", "-3.0"},
        {"ROUND(1.005,2)", "1.01"},
        {"ROUND(2.675,2)", "2.68"},
        {"ROUND(0.125,2)", "0.13"},
        {"ROUND(-0.125,2)", "-0.13"},
        {"ROUND(1234.5678,-2)", "1200.0"},
        {"ROUND(1250.0,-2)", "1300.0"},
        {"ROUND(1.23456789,4)", "1.2346"},
        {"ROUND(1250,-2)", "1300"},
        {"ROUND(-1250,-2)", "-1300"},
        {"ROUND(1249,-2)", "1200"},
        {"ROUND(750,-3)", "1000"},
        {"ROUND(499,-3)", "0"},
        {"ROUND(12,2)", "12"},
        {"ROUND(2.79,1,1)", "2.7"},
        {"ROUND(-2.79,1,1)", "-2.7"},
        {"ROUND(1299,-2,1)", "1200"},
        {"ROUND(0.29*100,0,1)", "29.0"},
        {"ROUND(NULL,2)", "NULL"},
        {"ROUND(1.5,NULL)", "NULL"},
        {"ROUND('1.255',2)", "1.26"},
        {"ROUND(2147483647,-1)", "2147483650"},
        {"ROUND(1e300,2)", "1e+300"},
        {"ROUND(1e-20,5)", "0.0"},
        {"ROUND(5e-324,2)", "0.0"},
        {"ROUND(0.5,0)", "1.0"},
        {"ROUND(0.49999999999999994,0)", "1.0"},
        {"ROUND(12345678.945,2)", "12345678.95"},
        {"ROUND(99.995,2)", "100.0"},
        {"ROUND(0.05,1)", "0.1"},
        {"ROUND(0.04,1)", "0.0"},
        {"ROUND(-0.04,1)", "0.0"},
        {"ROUND(4.35,-5)", "0.0"},
        {"ROUND(1.5,999999)", "1.5"},
        {"ROUND('x',1)", "error 8114"},
        {"ROUND(9223372036854775807,-1)", "error 8115"},
    };
    checkRows(rows);
}

TEST(NumberFunctions, TypeFollowsTheArgument)
{
    constexpr Row rows[] = {
        {"ABS(-5)", "5"},
        {"ABS(-5.5)", "5.5"},
        {"ABS('-5')", "5.0"},
        {"ABS(NULL)", "NULL"},
        {"ABS(-2147483648)", "2147483648"},
        {"SIGN(-3)", "-1"},
        {"SIGN(0)", "0"},
        {"SIGN(2.5)", "1.0"},
        {"FLOOR(-1.5)", "-2.0"},
        {"FLOOR(3)", "3"},
        {"CEILING(1.2)", "2.0"},
        {"CEILING(-1.2)", "-1.0"},
        {"CEILING(4)", "4"},
        {"POWER(2,10)", "1024"},
        {"POWER(2,-1)", "0"},
        {"POWER(2.0,-1)", "0.5"},
        {"POWER(10,2.5)", "316"},
        {"POWER(2,32)", "4294967296"},
        {"POWER(2,62)", "4611686018427387904"},
        {"POWER(-2,63)", "-9223372036854775808"},
        {"POWER(2,63)", "error 8115"},
        {"POWER(-3,2001)", "error 8115"},
        {"POWER(2.0,2000)", "error 8115"},
        {"POWER(-8.0,0.5)", "error 3623"},
        {"POWER(0.0,-1)", "error 8134"},
        {"SQRT(16)", "4.0"},
        {"SQRT(-1)", "error 3623:An invalid floating point operation occurred. Value: '-1'."},
        {"SQUARE(3)", "9.0"},
        {"EXP(0)", "1.0"},
        {"EXP(1000)", "error 8115"},
        {"LOG(1)", "0.0"},
        {"LOG(0)", "error 3623"},
        {"LOG(-1)", "error 3623"},
        {"LOG(8,2)", "3.0"},
        {"LOG(8,1)", "error 3623"},
        {"LOG10(1000)", "3.0"},
        {"LOG10(0)", "error 3623"},
        {"ROUND(PI(),4)", "3.1416"},
        {"SIN(0)", "0.0"},
        {"COS(0)", "1.0"},
        {"TAN(0)", "0.0"},
        {"ATAN(0)", "0.0"},
        {"ASIN(2)", "error 3623"},
        {"ATN2(0,1)", "0.0"},
        {"DEGREES(PI())", "180.0"},
        {"DEGREES(9223372036854775807)", "error 8115"},
        {"DEGREES(-9223372036854775808)", "error 8115"},
        {"DEGREES(160000000000000000)", "9167324722093171712"},
        {"DEGREES(1e308)", "error 8115"},
        {"RADIANS(-9223372036854775808) < -160978210179491600", "1"},
        {"RADIANS(1e308) > 1.7e306", "1"},
        {"SQRT('x')", "error 8114"},
        {"SQRT(NULL)", "NULL"},
    };
    checkRows(rows);
}

TEST(NumberFunctions, Operators)
{
    constexpr Row rows[] = {
        {"tm_iadd(2,3)", "5"},
        {"tm_iadd(2147483647,1)", "error 8115"},
        {"tm_isub(-2147483648,1)", "error 8115"},
        {"tm_imul(65536,65536)", "error 8115"},
        {"tm_imul('6',7)", "42"},
        {"tm_idiv(7,2)", "3"},
        {"tm_idiv(-7,2)", "-3"},
        {"tm_idiv(7,0)", "error 8134:Divide by zero error encountered."},
        {"tm_idiv(-2147483648,-1)", "error 8115"},
        {"tm_imod(7,3)", "1"},
        {"tm_imod(-7,3)", "-1"},
        {"tm_imod(7,0)", "error 8134"},
        {"tm_imod(-2147483648,-1)", "0"},
        {"tm_iadd(NULL,1)", "NULL"},
        {"tm_idiv(NULL,0)", "NULL"},
        {"tm_badd(2147483647,1)", "2147483648"},
        {"tm_badd(9223372036854775807,1)", "error 8115"},
        {"tm_bmul(9223372036854775807,2)", "error 8115"},
        {"tm_bdiv(-9223372036854775808,-1)", "error 8115"},
        {"tm_bsub(-9223372036854775808,1)", "error 8115"},
        {"tm_fdiv(7,2)", "3.5"},
        {"tm_fdiv(7,0)", "error 8134"},
        {"tm_fdiv(7,0.0)", "error 8134"},
        {"tm_fdiv(1e308,1e-308)", "error 8115"},
        {"tm_fmod(7.5,2)", "1.5"},
        {"tm_add('a','b')", "'ab'"},
        {"tm_add('a ','b')", "'a b'"},
        {"tm_add('5',3)", "8"},
        {"tm_add(3,'5')", "8"},
        {"tm_add('x',3)", "error 245:Conversion failed when converting the nvarchar value 'x' to data type int."},
        {"tm_add('1.5',3)", "error 245"},
        {"tm_add('1.5',3.0)", "4.5"},
        {"tm_add('x',3.0)", "error 8114"},
        {"tm_add(1,2)", "3"},
        {"tm_add(1,2.5)", "3.5"},
        {"tm_add(NULL,'a')", "NULL"},
        {"tm_add(2147483647,1)", "error 8115"},
        {"tm_add(2147483648,1)", "2147483649"},
        {"tm_add('2024-03-05 00:00:00.000',1)", "'2024-03-06 00:00:00.000'"},
        {"tm_add(0.5,'2024-03-05 00:00:00.000')", "'2024-03-05 12:00:00.000'"},
        {"tm_sub('2024-03-05 00:00:00.000',1)", "'2024-03-04 00:00:00.000'"},
        {"tm_sub('2024-03-05 00:00:00.000','2024-03-01 00:00:00.000')", "4.0"},
        {"tm_sub('5','3')", "error 8117"},
        {"tm_sub('5',3)", "2"},
        {"tm_mul('2',2.5)", "5.0"},
        {"tm_div(7,2)", "3"},
        {"tm_div(7,2.0)", "3.5"},
        {"tm_div(7,'0')", "error 8134"},
        {"tm_mod(7,4)", "3"},
        {"tm_compare('a','A ')", "0"},
        {"tm_compare('a','b')", "-1"},
        {"tm_compare('10',9)", "1"},
        {"tm_compare('10','9')", "-1"},
        {"tm_compare('x',9)", "error 245"},
        {"tm_compare('9.5',9.5)", "0"},
        {"tm_compare(1,1.5)", "-1"},
        {"tm_compare(NULL,1)", "NULL"},
        {"tm_compare('2024-03-05 00:00:00.000','05.03.2024')", "0"},
        {"tm_compare('2024-03-05 00:00:00.000','2024-03-04')", "1"},
        {"tm_compare('2024-03-05 00:00:00.000','holz')", "error 241"},
        {"tm_isnull(NULL,2)", "2"},
        {"tm_isnull('',2)", "''"},
        {"tm_isnull(NULL,NULL)", "NULL"},
    };
    checkRows(rows);
}

TEST(NumberFunctions, Aggregates)
{
    ScratchDatabase database;
    database.run("CREATE TABLE N (G INTEGER, X);"
                 "INSERT INTO N VALUES (1,1),(1,2),(1,4),(1,NULL),(2,2147483647),(2,1),(3,NULL),(4,-7),(4,2)");
    EXPECT_EQ(database.rows("SELECT tm_sum_int(X) FROM N WHERE G = 1"), "7");
    EXPECT_EQ(database.rows("SELECT tm_avg_int(X) FROM N WHERE G = 1"), "2");
    EXPECT_EQ(database.rows("SELECT tm_avg_int(X) FROM N WHERE G = 4"), "-2");
    EXPECT_EQ(database.rows("SELECT tm_sum_big(X) FROM N WHERE G = 2"), "2147483648");
    EXPECT_TRUE(database.rows("SELECT tm_sum_int(X) FROM N WHERE G = 2").starts_with("error 8115:"));
    EXPECT_EQ(database.rows("SELECT tm_sum_int(X) FROM N WHERE G = 3"), "NULL");
    EXPECT_EQ(database.rows("SELECT tm_avg_int(X) FROM N WHERE G = 9"), "NULL");
    EXPECT_EQ(database.rows("SELECT tm_stdev(X) FROM N WHERE G = 9"), "NULL");
    EXPECT_EQ(database.rows("SELECT round(tm_stdev(X), 6) FROM N WHERE G = 1"), "1.527525");
    EXPECT_EQ(database.rows("SELECT round(tm_var(X), 6) FROM N WHERE G = 1"), "2.333333");
    EXPECT_EQ(database.rows("SELECT round(tm_varp(X), 6) FROM N WHERE G = 1"), "1.555556");
    EXPECT_EQ(database.rows("SELECT tm_stdev(X) FROM N WHERE G = 1 AND X = 1"), "NULL");
    EXPECT_EQ(database.rows("SELECT tm_stdevp(X) FROM N WHERE G = 1 AND X = 1"), "0.0");
    EXPECT_EQ(database.rows("SELECT tm_sum_int(X) OVER (ORDER BY X ROWS BETWEEN 1 PRECEDING AND CURRENT ROW) "
                            "FROM N WHERE G = 1"),
              "NULL|1|3|6");
    EXPECT_TRUE(database.rows("SELECT tm_sum_big(9223372036854775807) FROM N").starts_with("error 8115:"));
}

} // namespace
} // namespace tamarok::embedded::functions
