#include <gtest/gtest.h>

#include "embedded/contract/contract.h"

namespace tamarok::embedded::contract {
namespace {

TEST(ExpressionContract, Arithmetic)
{
    constexpr Row rows[] = {
        {"7/2", "3"},
        {"-7/2", "-3"},
        {"7%3", "1"},
        {"-7%3", "-1"},
        {"7/2.0", "3.5"},
        {"7.0/2", "3.5"},
        {"1/3.0", "0.333333"},
        {"2.0/3", "0.666666"},
        {"CAST(7 AS float)/2", "3.5"},
        {"1/0", "error 8134"},
        {"1.0/0", "error 8134"},
        {"1%0", "error 8134"},
        {"CAST(1 AS float)/0", "error 8134"},
        {"2147483647+1", "error 8115"},
        {"65536*65536", "error 8115"},
        {"-2147483647-2", "error 8115"},
        {"CAST(2147483647 AS bigint)+1", "2147483648"},
        {"1+2*3", "7"},
        {"(1+2)*3", "9"},
        {"NULL+1", "NULL"},
        {"1.10+2.20", "3.3"},
        {"0.1+0.2", "0.3"},
        {"1.1*1.1", "1.21"},
        {"5.0/3", "1.666666"},
        {"2+CAST(1 AS bit)", "3"},
        {"-(-5)", "5"},
    };
    checkExpressions(rows);
}

TEST(ExpressionContract, PlusOfTextsAndNumbers)
{
    constexpr Row rows[] = {
        {"'a'+'b'", "'ab'"},
        {"'a '+'b'", "'a b'"},
        {"'5'+3", "8"},
        {"3+'5'", "8"},
        {"'x'+3", "error 245"},
        {"'1.5'+1", "error 245"},
        {"'1.5'+1.0", "2.5"},
        {"'a'+NULL", "NULL"},
        {"'a'+CAST(5 AS nvarchar(10))", "'a5'"},
        {"NAME+'!' FROM WOOD WHERE ID=1", "'Fichte!'"},
        {"NAME+PIECES FROM WOOD WHERE ID=1", "error 245"},
        {"CODE+'-'+NAME FROM WOOD WHERE ID=5", "NULL"},
    };
    checkExpressions(rows);
}

TEST(ExpressionContract, FailedConversions)
{
    constexpr Row rows[] = {
        {"CAST('abc' AS int)", "error 245"},
        {"CAST('1.5' AS int)", "error 245"},
        {"CAST(' 42 ' AS int)", "42"},
        {"CAST('' AS int)", "0"},
        {"CAST(2.9 AS int)", "2"},
        {"CAST(-2.9 AS int)", "-2"},
        {"CAST(0.29*100 AS int)", "29"},
        {"CONVERT(int,'12')", "12"},
        {"CONVERT(int,NULL)", "NULL"},
        {"CAST('99999999999' AS int)", "error 248"},
        {"CAST(99999999999 AS int)", "error 8115"},
        {"CAST('abc' AS float)", "error 8114"},
        {"CAST('1e3' AS float)", "1000.0"},
        {"CAST('1,5' AS float)", "error 8114"},
        {"CAST('abc' AS decimal(10,2))", "error 8114"},
        {"CAST('abc' AS datetime)", "error 241"},
        {"CAST('2024-02-30' AS datetime)", "error 242"},
        {"CAST('abc' AS bit)", "error 245"},
        {"CAST(300 AS tinyint)", "error 220"},
        {"CAST(40000 AS smallint)", "error 220"},
    };
    checkExpressions(rows);
}

TEST(ExpressionContract, Texts)
{
    constexpr Row rows[] = {
        {"LEN('abc  ')", "3"},
        {"LEN('  abc')", "5"},
        {"LEN('')", "0"},
        {"LEN(NULL)", "NULL"},
        {"LEN(N'größe')", "5"},
        {"DATALENGTH(N'abc ')", "8"},
        {"SUBSTRING('abcdef',2,3)", "'bcd'"},
        {"SUBSTRING('abcdef',0,3)", "'ab'"},
        {"SUBSTRING('abcdef',-1,3)", "'a'"},
        {"SUBSTRING('abcdef',4,99)", "'def'"},
        {"SUBSTRING('abcdef',2,-1)", "error 537"},
        {"LEFT('Fichte',3)", "'Fic'"},
        {"RIGHT('Fichte',3)", "'hte'"},
        {"LEFT('ab',-1)", "error 537"},
        {"RIGHT('ab',-1)", "error 536"},
        {"CHARINDEX('B','abc')", "2"},
        {"CHARINDEX('a','abca',2)", "4"},
        {"CHARINDEX('','abc')", "0"},
        {"PATINDEX('%[0-9]%','ab12')", "3"},
        {"STUFF('abcdef',2,3,'XY')", "'aXYef'"},
        {"STUFF('abcdef',9,1,'X')", "NULL"},
        {"REPLACE('Abcabc','A','x')", "'xbcxbc'"},
        {"REPLICATE(0,LEN('1203'))", "'0000'"},
        {"REPLICATE('a',-1)", "NULL"},
        {"REPLICATE('ab',2)+'c'", "'ababc'"},
        {"'['+SPACE(2)+']'", "'[  ]'"},
        {"REVERSE('abc')", "'cba'"},
        {"UPPER('größe')", "'GRÖßE'"},
        {"LOWER('ÄÖÜ')", "'äöü'"},
        {"LTRIM('  a ')+'|'", "'a |'"},
        {"RTRIM('  a ')+'|'", "'  a|'"},
        {"CHAR(65)", "'A'"},
        {"CHAR(228)", "'ä'"},
        {"CHAR(256)", "NULL"},
        {"CHAR(13)+CHAR(10)", "'\r\n'"},
        {"NCHAR(8364)", "'€'"},
        {"ASCII('A')", "65"},
        {"STR(123.456,8,2)", "'  123.46'"},
        {"STR(5)", "'         5'"},
        {"LTRIM(STR(7))+'x'", "'7x'"},
        {"CONCAT('a',NULL,1)", "'a1'"},
        {"ISNULL(NULL,'x')", "'x'"},
        {"COALESCE(NULL,NULL,'y')", "'y'"},
        {"NULLIF('a','A')", "NULL"},
        {"NULLIF('a','b')", "'a'"},
    };
    checkExpressions(rows);
}

TEST(ExpressionContract, CastsToText)
{
    constexpr Row rows[] = {
        {"CAST('Fichte' AS nvarchar(3))", "'Fic'"},
        {"CAST('Fichte' AS varchar(3))", "'Fic'"},
        {"CONVERT(nvarchar(2),'abc')", "'ab'"},
        {"CAST('ab' AS nchar(4))+'|'", "'ab  |'"},
        {"CAST(12 AS nvarchar)", "'12'"},
        {"CAST(12345 AS varchar(3))", "'*'"},
        {"CAST(12345 AS nvarchar(3))", "error 8115"},
        {"CAST(1.50 AS nvarchar(10))", "'1.50'"},
        {"CAST(CAST(1.5 AS decimal(10,3)) AS nvarchar(10))", "'1.500'"},
        {"CAST(CAST(1.5 AS float) AS nvarchar(10))", "'1.5'"},
        {"CAST(CAST(1234567 AS float) AS nvarchar(20))", "'1.23457e+006'"},
        {"CONVERT(nvarchar(30),CAST(1234567 AS float),1)", "'1.2345670e+006'"},
        {"CONVERT(nvarchar(30),CAST(1234567 AS float),2)", "'1.234567000000000e+006'"},
        {"CAST(CAST(1 AS bit) AS nvarchar(5))", "'1'"},
        {"CAST(CAST('2024-03-05 10:15' AS datetime) AS nvarchar(30))", "'Mar  5 2024 10:15AM'"},
        {"CAST(CAST('2024-03-05' AS date) AS nvarchar(30))", "'2024-03-05'"},
        {"CAST(NULL AS nvarchar(5))", "NULL"},
        {"LEN(CAST(LENGTH_M AS nvarchar(20))) FROM WOOD WHERE ID=1", "4"},
    };
    checkExpressions(rows);
}

TEST(ExpressionContract, Numbers)
{
    constexpr Row rows[] = {
        {"ROUND(2.5,0)", "3.0"},
        {"ROUND(-2.5,0)", "-3.0"},
        {"ROUND(2.675,2)", "2.68"},
        {"ROUND(1.005,2)", "1.01"},
        {"ROUND(1250,-2)", "1300"},
        {"ROUND(1249.99,-2)", "1200.0"},
        {"ROUND(2.79,1,1)", "2.7"},
        {"ROUND(NULL,1)", "NULL"},
        {"CAST(1.005 AS decimal(10,2))", "1.01"},
        {"CAST(-1.005 AS decimal(10,2))", "-1.01"},
        {"CAST(2.5 AS decimal(10,0))", "3.0"},
        {"CAST('12.345' AS decimal(10,1))", "12.3"},
        {"CAST(1234.5 AS decimal(5,2))", "error 8115"},
        {"CAST(5 AS bit)", "true"},
        {"CAST(0 AS bit)", "false"},
        {"CAST('true' AS bit)", "true"},
        {"CAST(0.5 AS bit)", "true"},
        {"CAST(1.23456 AS money)", "1.2346"},
        {"ABS(-5)", "5"},
        {"ABS(-5.5)", "5.5"},
        {"SIGN(-3)", "-1"},
        {"FLOOR(-1.5)", "-2.0"},
        {"CEILING(1.2)", "2.0"},
        {"POWER(2,10)", "1024"},
        {"POWER(2,-1)", "0"},
        {"POWER(2,32)", "error 232"},
        {"SQRT(16)", "4.0"},
        {"SQRT(-1)", "error 3623"},
        {"SQUARE(3)", "9.0"},
        {"LOG(1)", "0.0"},
        {"LOG(0)", "error 3623"},
        {"EXP(0)", "1.0"},
        {"ROUND(PI(),4)", "3.1416"},
    };
    checkExpressions(rows);
}

TEST(ExpressionContract, Dates)
{
    constexpr Row rows[] = {
        {"CAST('2024-05-08 12:35:29.998' AS smalldatetime)", "2024-05-08 12:35:00"},
        {"CAST('2024-05-08 12:35:29.999' AS smalldatetime)", "2024-05-08 12:36:00"},
        {"CAST('2024-12-31 23:59:45' AS smalldatetime)", "2025-01-01"},
        {"CAST('2079-06-07' AS smalldatetime)", "error 242"},
        {"CAST('2024-03-05 10:15:30.126' AS datetime)", "2024-03-05 10:15:30.127"},
        {"CAST(0 AS datetime)", "1900-01-01"},
        {"CAST(1.5 AS datetime)", "1900-01-02 12:00:00"},
        {"CAST('05.03.2024' AS datetime)", "2024-03-05"},
        {"CAST('05/03/2024' AS datetime)", "2024-03-05"},
        {"CAST('20240305' AS datetime)", "2024-03-05"},
        {"CONVERT(nvarchar(10),CAST('2024-03-05' AS datetime),101)", "'03/05/2024'"},
        {"CONVERT(nvarchar(10),CAST('2024-03-05' AS datetime),103)", "'05/03/2024'"},
        {"CONVERT(nvarchar(10),CAST('2024-03-05' AS datetime),104)", "'05.03.2024'"},
        {"CONVERT(nvarchar(10),CAST('2024-03-05' AS datetime),112)", "'20240305'"},
        {"CONVERT(nvarchar(30),CAST('2024-03-05 10:15:30' AS datetime),120)", "'2024-03-05 10:15:30'"},
        {"CONVERT(nvarchar(10),CAST('2024-03-05 10:15:30' AS datetime),120)", "'2024-03-05'"},
        {"CONVERT(nvarchar(30),CAST('2024-03-05 10:15:30' AS datetime),121)", "'2024-03-05 10:15:30.000'"},
        {"CONVERT(nvarchar(8),CAST('2024-03-05 10:15:30' AS datetime),108)", "'10:15:30'"},
        {"CONVERT(datetime,'03/05/2024',101)", "2024-03-05"},
        {"CONVERT(datetime,'03/05/2024',103)", "2024-05-03"},
        {"CONVERT(smalldatetime,'01.01.2050',104)", "2050-01-01"},
        {"CONVERT(datetime,'20240305',112)", "2024-03-05"},
        {"CONVERT(datetime,'2024-03-05 10:15:30',120)", "2024-03-05 10:15:30"},
        {"CONVERT(datetime,'2024-03-05 10:15:30.127',121)", "2024-03-05 10:15:30.127"},
        {"CONVERT(datetime,'13/05/2024',101)", "error 242"},
        {"CONVERT(datetime,'holz',104)", "error 241"},
        {"CONVERT(date,CAST('2024-03-05 10:15' AS datetime))", "2024-03-05"},
        {"DATEDIFF(year,'2023-12-31','2024-01-01')", "1"},
        {"DATEDIFF(month,'2024-01-31','2024-02-01')", "1"},
        {"DATEDIFF(day,'2024-01-01 23:59:59','2024-01-02')", "1"},
        {"DATEDIFF(dd,'2024-01-02','2024-01-01')", "-1"},
        {"DATEDIFF(wk,'2024-03-02','2024-03-03')", "1"},
        {"DATEDIFF(hh,'2024-01-01 10:59','2024-01-01 11:00')", "1"},
        {"DATEDIFF(n,'2024-01-01','2024-01-02')", "1440"},
        {"DATEDIFF(q,'2024-03-31','2024-04-01')", "1"},
        {"DATEADD(month,1,'2024-01-31')", "2024-02-29"},
        {"DATEADD(day,-1,CAST('2024-03-01' AS datetime))", "2024-02-29"},
        {"DATEADD(yy,1,'2024-02-29')", "2025-02-28"},
        {"DATEPART(dw,'2024-03-03')", "1"},
        {"DATEPART(week,'2024-01-07')", "2"},
        {"DATENAME(month,'2024-03-05')", "'March'"},
        {"YEAR('2024-03-05')", "2024"},
        {"MONTH('05.03.2024')", "3"},
        {"CAST('2024-03-05' AS datetime)+1", "2024-03-06"},
        {"CAST('2024-03-05' AS datetime)-1.5", "2024-03-03 12:00:00"},
        {"CAST('2024-03-06' AS datetime)-CAST('2024-03-05' AS datetime)", "1900-01-02"},
        {"DATEDIFF(dd,GETDATE(),GETDATE())", "0"},
        {"ISDATE('2024-02-30')", "0"},
        {"ISDATE('05.03.2024')", "1"},
        {"EOMONTH('2024-02-10')", "2024-02-29"},
    };
    checkExpressions(rows);
}

TEST(ExpressionContract, NumericTexts)
{
    constexpr Row rows[] = {
        {"ISNUMERIC('12')", "1"},    {"ISNUMERIC('-1.5')", "1"},  {"ISNUMERIC('1e5')", "1"}, {"ISNUMERIC('1d5')", "1"},
        {"ISNUMERIC('+')", "1"},     {"ISNUMERIC('-')", "1"},     {"ISNUMERIC('.')", "1"},   {"ISNUMERIC(',')", "1"},
        {"ISNUMERIC('$')", "1"},     {"ISNUMERIC('€')", "1"},     {"ISNUMERIC('1,2')", "1"}, {"ISNUMERIC('')", "0"},
        {"ISNUMERIC(' ')", "0"},     {"ISNUMERIC('abc')", "0"},   {"ISNUMERIC(NULL)", "0"},  {"ISNUMERIC(7)", "1"},
        {"ISNUMERIC('1.2.3')", "0"}, {"ISNUMERIC(CHAR(9))", "1"},
    };
    checkExpressions(rows);
}

TEST(ExpressionContract, Conditions)
{
    constexpr Row rows[] = {
        {"CASE WHEN 'a'='A' THEN 1 ELSE 0 END", "1"},
        {"CASE WHEN 'a'='a  ' THEN 1 ELSE 0 END", "1"},
        {"CASE WHEN 'a'='ä' THEN 1 ELSE 0 END", "0"},
        {"CASE WHEN 'Ä'='ä' THEN 1 ELSE 0 END", "1"},
        {"CASE WHEN 'a'<'ä' AND 'ä'<'b' THEN 1 ELSE 0 END", "1"},
        {"CASE WHEN 'B' BETWEEN 'a' AND 'c' THEN 1 ELSE 0 END", "1"},
        {"CASE WHEN 'FICHTE ' IN ('buche','fichte') THEN 1 ELSE 0 END", "1"},
        {"CASE WHEN 10>'9' THEN 1 ELSE 0 END", "1"},
        {"CASE WHEN '10'>'9' THEN 1 ELSE 0 END", "0"},
        {"CASE WHEN '007'=7 THEN 1 ELSE 0 END", "1"},
        {"CASE WHEN 'x'=7 THEN 1 ELSE 0 END", "error 245"},
        {"CASE WHEN '1.5'=1.5 THEN 1 ELSE 0 END", "1"},
        {"CASE WHEN 1 IN (2,NULL) THEN 1 ELSE 0 END", "0"},
        {"CASE WHEN 1 NOT IN (2,NULL) THEN 1 ELSE 0 END", "0"},
        {"CASE WHEN NULL=NULL THEN 1 ELSE 0 END", "0"},
        {"CASE WHEN NULL IS NULL THEN 1 ELSE 0 END", "1"},
        {"CASE 'fi' WHEN 'FI' THEN 'yes' ELSE 'no' END", "'yes'"},
        {"CASE WHEN 'Fichte' LIKE 'f%' THEN 1 ELSE 0 END", "1"},
        {"CASE WHEN 'd' LIKE '[a-g]' THEN 1 ELSE 0 END", "1"},
        {"CASE WHEN 'h' LIKE '[a-g]' THEN 1 ELSE 0 END", "0"},
        {"CASE WHEN 'h' LIKE '[^a-g]%' THEN 1 ELSE 0 END", "1"},
        {"CASE WHEN 'a_c' LIKE 'a[_]c' THEN 1 ELSE 0 END", "1"},
        {"CASE WHEN 'abc' LIKE 'a[_]c' THEN 1 ELSE 0 END", "0"},
        {"CASE WHEN '50%' LIKE '50!%' ESCAPE '!' THEN 1 ELSE 0 END", "1"},
        {"CASE WHEN '50x' LIKE '50!%' ESCAPE '!' THEN 1 ELSE 0 END", "0"},
        {"CASE WHEN 'abc ' LIKE 'abc' THEN 1 ELSE 0 END", "1"},
        {"CASE WHEN N'abc ' LIKE N'abc' THEN 1 ELSE 0 END", "0"},
        {"CASE WHEN 'abc' LIKE 'abc ' THEN 1 ELSE 0 END", "0"},
        {"CASE WHEN 'Ärle' NOT LIKE 'a%' THEN 1 ELSE 0 END", "1"},
        {"CASE WHEN 1203 LIKE '12%' THEN 1 ELSE 0 END", "1"},
    };
    checkExpressions(rows);
}

} // namespace
} // namespace tamarok::embedded::contract
