#include <gtest/gtest.h>

#include "embedded/functions/scratch_database.h"

namespace tamarok::embedded::functions {
namespace {

TEST(Conversions, WholeNumbers)
{
    constexpr Row rows[] = {
        {"tm_int(NULL)", "NULL"},
        {"tm_int(7)", "7"},
        {"tm_int(2.9)", "2"},
        {"tm_int(-2.9)", "-2"},
        {"tm_int(2.5)", "2"},
        {"tm_int('42')", "42"},
        {"tm_int('  -42  ')", "-42"},
        {"tm_int('+5')", "5"},
        {"tm_int('')", "0"},
        {"tm_int('   ')", "0"},
        {"tm_int('-')", "0"},
        {"tm_int('007')", "7"},
        {"tm_int('abc')", "error 245:Conversion failed when converting the nvarchar value 'abc' to data type int."},
        {"tm_int('1.5')", "error 245:Conversion failed when converting the nvarchar value '1.5' to data type int."},
        {"tm_int('1e3')", "error 245"},
        {"tm_int('1 2')", "error 245"},
        {"tm_int('1,000')", "error 245"},
        {"tm_int('--1')", "error 245"},
        {"tm_int('2147483647')", "2147483647"},
        {"tm_int('-2147483648')", "-2147483648"},
        {"tm_int('2147483648')",
         "error 248:The conversion of the nvarchar value '2147483648' overflowed an int column."},
        {"tm_int('99999999999999999999999')", "error 248"},
        {"tm_int(2147483648)",
         "error 8115:Arithmetic overflow error converting expression to data type int. Value: '2147483648'."},
        {"tm_int(-3e9)", "error 8115"},
        {"tm_int(1e300)", "error 8115"},
        {"tm_smallint(32767)", "32767"},
        {"tm_smallint(32768)", "error 220:Arithmetic overflow error for data type smallint, value = 32768."},
        {"tm_smallint('40000')", "error 244:The conversion of the nvarchar value '40000' overflowed an INT2 column. "
                                 "Use a larger integer column."},
        {"tm_tinyint(255)", "255"},
        {"tm_tinyint(256)", "error 220"},
        {"tm_tinyint(-1)", "error 220"},
        {"tm_tinyint(-0.5)", "0"},
        {"tm_bigint('9223372036854775807')", "9223372036854775807"},
        {"tm_bigint('9223372036854775808')", "error 8115"},
        {"tm_bigint('x')", "error 8114:Error converting data type nvarchar to bigint. Value: 'x'."},
        {"tm_bigint(9e18)", "9000000000000000000"},
        {"tm_bigint(9.3e18)", "error 8115"},
    };
    checkRows(rows);
}

TEST(Conversions, Bits)
{
    constexpr Row rows[] = {{"tm_bit(0)", "0"},
                            {"tm_bit(5)", "1"},
                            {"tm_bit(-1)", "1"},
                            {"tm_bit(0.3)", "1"},
                            {"tm_bit(0.0)", "0"},
                            {"tm_bit('true')", "1"},
                            {"tm_bit(' FALSE ')", "0"},
                            {"tm_bit('10')", "1"},
                            {"tm_bit('00')", "0"},
                            {"tm_bit('')", "0"},
                            {"tm_bit('1.5')", "error 245"},
                            {"tm_bit('yes')", "error 245:Conversion failed when converting the nvarchar value 'yes' "
                                              "to data type bit."},
                            {"tm_bit(NULL)", "NULL"}};
    checkRows(rows);
}

TEST(Conversions, FloatsDecimalsAndMoney)
{
    constexpr Row rows[] = {
        {"tm_float('1.5')", "1.5"},
        {"tm_float(' -1.5E2 ')", "-150.0"},
        {"tm_float('1d2')", "100.0"},
        {"tm_float('.5')", "0.5"},
        {"tm_float('5.')", "5.0"},
        {"tm_float('+3')", "3.0"},
        {"tm_float('')", "0.0"},
        {"tm_float(3)", "3.0"},
        {"tm_float('abc')", "error 8114:Error converting data type nvarchar to float. Value: 'abc'."},
        {"tm_float('1,5')", "error 8114"},
        {"tm_float('1e')", "error 8114"},
        {"tm_float('e5')", "error 8114"},
        {"tm_float('inf')", "error 8114"},
        {"tm_float('nan')", "error 8114"},
        {"tm_float('0x10')", "error 8114"},
        {"tm_float('.')", "error 8114"},
        {"tm_float('1e999')", "error 8114"},
        {"tm_real(0.1)", "0.10000000149011612"},
        {"tm_real(1e39)", "error 8115"},
        {"tm_decimal(1.005,10,2)", "1.01"},
        {"tm_decimal(-1.005,10,2)", "-1.01"},
        {"tm_decimal(2.675,10,2)", "2.68"},
        {"tm_decimal(0.125,10,2)", "0.13"},
        {"tm_decimal('12.345',10,1)", "12.3"},
        {"tm_decimal('12.35',10,1)", "12.4"},
        {"tm_decimal(28.999999999999996,38,2)", "29.0"},
        {"tm_decimal(1234,5,2)", "error 8115"},
        {"tm_decimal(999.995,5,2)", "error 8115"},
        {"tm_decimal(999.99,5,2)", "999.99"},
        {"tm_decimal('',10,2)", "error 8114"},
        {"tm_decimal('1e5',10,2)", "error 8114:Error converting data type nvarchar to numeric. Value: '1e5'."},
        {"tm_decimal('12345.6',5,2)",
         "error 8115:Arithmetic overflow error converting nvarchar to data type numeric. Value: '12345.6'."},
        {"tm_decimal(NULL,5,2)", "NULL"},
        {"tm_decimal_cut(2.0/3,8,6)", "0.666666"},
        {"tm_decimal_cut(-2.0/3,8,6)", "-0.666666"},
        {"tm_decimal_cut(0.1*3,8,6)", "0.3"},
        {"tm_decimal_cut(1000.5,5,2)", "error 8115"},
        {"tm_money('$1,234.56')", "1234.56"},
        {"tm_money('€ 5')", "5.0"},
        {"tm_money('-$5')", "-5.0"},
        {"tm_money('- 5')", "-5.0"},
        {"tm_money('1 000')", "error 235"},
        {"tm_money('')", "0.0"},
        {"tm_money(1.23456)", "1.2346"},
        {"tm_money(1.23455)", "1.2346"},
        {"tm_money('abc')", "error 235"},
        {"tm_money(1e15)", "error 8115"},
    };
    checkRows(rows);
}

TEST(Conversions, NumbersToText)
{
    constexpr Row rows[] = {
        {"tm_nvarchar(12,-1)", "'12'"},
        {"tm_nvarchar(12345,3)", "error 8115"},
        {"tm_varchar(12345,3)", "'*'"},
        {"tm_varchar(12345,5)", "'12345'"},
        {"tm_nvarchar('Fichte',3)", "'Fic'"},
        {"tm_nvarchar('äöü',2)", "'äö'"},
        {"tm_nvarchar(NULL,3)", "NULL"},
        {"tm_nvarchar(1.5,10)", "'1.5'"},
        {"tm_nvarchar(3.0,10)", "'3'"},
        {"tm_nvarchar(0.1,-1)", "'0.1'"},
        {"tm_nvarchar(123456.0,-1)", "'123456'"},
        {"tm_nvarchar(1234567.0,-1)", "'1.23457e+006'"},
        {"tm_nvarchar(1000000.0,-1)", "'1e+006'"},
        {"tm_nvarchar(0.0001,-1)", "'0.0001'"},
        {"tm_nvarchar(0.00001,-1)", "'1e-005'"},
        {"tm_nvarchar(3.14159265,-1)", "'3.14159'"},
        {"tm_nvarchar(-0.0,-1)", "'0'"},
        {"tm_nvarchar(1e300,-1)", "'1e+300'"},
        {"tm_nvarchar(1234567.0,5)", "error 8115"},
        {"tm_floattext(1234567.0,0,-1)", "'1.23457e+006'"},
        {"tm_floattext(1234567.0,1,-1)", "'1.2345670e+006'"},
        {"tm_floattext(1234567.0,2,-1)", "'1.234567000000000e+006'"},
        {"tm_floattext(0.0,1,-1)", "'0.0000000e+000'"},
        {"tm_floattext(1.5,9,-1)", "error 281"},
        {"tm_nchar('ab',4)", "'ab  '"},
        {"tm_nchar('abcdef',4)", "'abcd'"},
        {"tm_nchar(12,4)", "'12  '"},
        {"tm_char(12345,4)", "'*'"},
        {"tm_decimaltext(1.5,2,-1)", "'1.50'"},
        {"tm_decimaltext(-0.004,2,-1)", "'0.00'"},
        {"tm_decimaltext(-0.005,2,-1)", "'-0.01'"},
        {"tm_decimaltext(12,3,-1)", "'12.000'"},
        {"tm_decimaltext(1234567.125,2,-1)", "'1234567.13'"},
        {"tm_decimaltext(1e20,0,-1)", "'100000000000000000000'"},
        {"tm_decimaltext(0.5,0,-1)", "'1'"},
        {"tm_decimaltext(12.5,2,4)", "error 8115"},
        {"tm_decimaltext(NULL,2,4)", "NULL"},
        {"tm_moneytext(1234567.891,0,-1)", "'1234567.89'"},
        {"tm_moneytext(1234567.891,1,-1)", "'1,234,567.89'"},
        {"tm_moneytext(-123.5,1,-1)", "'-123.50'"},
        {"tm_moneytext(1234.5,2,-1)", "'1234.5000'"},
    };
    checkRows(rows);
}

TEST(Conversions, StoringTexts)
{
    constexpr Row rows[] = {{"tm_store_text('abc',3)", "'abc'"},
                            {"tm_store_text('abc  ',3)", "'abc'"},
                            {"tm_store_text('äöü',3)", "'äöü'"},
                            {"tm_store_text('abcd',3)", "error 2628:String or binary data would be truncated at 3 "
                                                        "characters. Truncated value: 'abc'."},
                            {"tm_store_text('abcd',-1)", "'abcd'"},
                            {"tm_store_text(NULL,3)", "NULL"},
                            {"tm_store_text(12,3)", "'12'"}};
    checkRows(rows);
}

TEST(Conversions, NumericTexts)
{
    constexpr Row rows[] = {
        {"ISNUMERIC('1')", "1"},     {"ISNUMERIC('-1.5')", "1"},   {"ISNUMERIC(' 12 ')", "1"},
        {"ISNUMERIC('+')", "1"},     {"ISNUMERIC('-')", "1"},      {"ISNUMERIC('.')", "1"},
        {"ISNUMERIC(',')", "1"},     {"ISNUMERIC('$')", "1"},      {"ISNUMERIC('€')", "1"},
        {"ISNUMERIC('£')", "1"},     {"ISNUMERIC('\\')", "1"},     {"ISNUMERIC('$1,234.56')", "1"},
        {"ISNUMERIC('1e5')", "1"},   {"ISNUMERIC('1d5')", "1"},    {"ISNUMERIC('1E-5')", "1"},
        {"ISNUMERIC('1,2,3')", "1"}, {"ISNUMERIC('-$5')", "1"},    {"ISNUMERIC('$-5')", "1"},
        {"ISNUMERIC(CHAR(9))", "1"}, {"ISNUMERIC(CHAR(13))", "1"}, {"ISNUMERIC(CHAR(160))", "1"},
        {"ISNUMERIC('')", "0"},      {"ISNUMERIC(' ')", "0"},      {"ISNUMERIC('abc')", "0"},
        {"ISNUMERIC('1.2.3')", "0"}, {"ISNUMERIC('1 2')", "0"},    {"ISNUMERIC('--1')", "0"},
        {"ISNUMERIC('0x1F')", "0"},  {"ISNUMERIC('e5')", "0"},     {"ISNUMERIC('(1)')", "0"},
        {"ISNUMERIC('1%')", "0"},    {"ISNUMERIC(NULL)", "0"},     {"ISNUMERIC(7)", "1"},
        {"ISNUMERIC(7.5)", "1"},     {"ISNUMERIC('5-')", "0"},     {"ISNUMERIC('2024-03-05 00:00:00.000')", "0"},
        {"ISNUMERIC('$$1')", "0"},
    };
    checkRows(rows);
}

} // namespace
} // namespace tamarok::embedded::functions
