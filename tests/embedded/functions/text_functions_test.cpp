#include <gtest/gtest.h>

#include "embedded/functions/scratch_database.h"

namespace tamarok::embedded::functions {
namespace {

TEST(TextFunctions, Lengths)
{
    constexpr Row rows[] = {
        {"LEN('abc  ')", "3"},
        {"LEN('  abc')", "5"},
        {"LEN('')", "0"},
        {"LEN('   ')", "0"},
        {"LEN('äöü')", "3"},
        {"LEN(NULL)", "NULL"},
        {"LEN(1234)", "4"},
        {"LEN(1.5)", "3"},
        {"DATALENGTH('abc ')", "8"},
        {"DATALENGTH('ä')", "2"},
        {"DATALENGTH('🌲')", "4"},
        {"DATALENGTH(1)", "4"},
        {"DATALENGTH(1.5)", "8"},
        {"DATALENGTH('')", "0"},
        {"DATALENGTH(NULL)", "NULL"},
        {"LEN(CAST(x'41004200' AS TEXT))", "4"},
    };
    checkRows(rows);
}

TEST(TextFunctions, Parts)
{
    constexpr Row rows[] = {
        {"\"LEFT\"('Fichte',3)", "'Fic'"},
        {"\"LEFT\"('äöü',2)", "'äö'"},
        {"\"LEFT\"('ab',9)", "'ab'"},
        {"\"LEFT\"('ab',0)", "''"},
        {"\"LEFT\"('ab',-1)",
         "error 537:Invalid length parameter passed to the LEFT or SUBSTRING function. Value: '-1'."},
        {"\"LEFT\"(NULL,1)", "NULL"},
        {"\"LEFT\"(12345,2)", "'12'"},
        {"\"RIGHT\"('Fichte',3)", "'hte'"},
        {"\"RIGHT\"('Fichte',0)", "''"},
        {"\"RIGHT\"('Fichte',-2)", "error 536:Invalid length parameter passed to the right function. Value: '-2'."},
        {"SUBSTRING('abcdef',2,3)", "'bcd'"},
        {"SUBSTRING('abcdef',0,3)", "'ab'"},
        {"SUBSTRING('abcdef',-1,3)", "'a'"},
        {"SUBSTRING('abcdef',-5,3)", "''"},
        {"SUBSTRING('abcdef',3,99)", "'cdef'"},
        {"SUBSTRING('abcdef',7,1)", "''"},
        {"SUBSTRING('abcdef',2,0)", "''"},
        {"SUBSTRING('abcdef',2,-1)", "error 537"},
        {"SUBSTRING('abc',2,2147483647)", "'bc'"},
        {"SUBSTRING('größe',3,2)", "'öß'"},
        {"SUBSTRING(NULL,1,1)", "NULL"},
        {"STUFF('abcdef',2,3,'XY')", "'aXYef'"},
        {"STUFF('abcdef',1,0,'X')", "'Xabcdef'"},
        {"STUFF('abcdef',6,9,'X')", "'abcdeX'"},
        {"STUFF('abcdef',7,1,'X')", "NULL"},
        {"STUFF('abcdef',0,1,'X')", "NULL"},
        {"STUFF('abcdef',2,-1,'X')", "NULL"},
        {"STUFF('abcdef',2,3,NULL)", "'aef'"},
        {"STUFF(NULL,2,3,'x')", "NULL"},
        {"STUFF('',1,1,'x')", "NULL"},
        {"STUFF('äöü',2,1,'-')", "'ä-ü'"},
        {"REVERSE('abc')", "'cba'"},
        {"REVERSE('Bäume')", "'emuäB'"},
        {"LTRIM('  a ')", "'a '"},
        {"RTRIM('  a ')", "'  a'"},
        {"TRIM('  a ')", "'a'"},
        {"LTRIM(CHAR(9)||'a')", "'\ta'"},
    };
    checkRows(rows);
}

TEST(TextFunctions, Search)
{
    constexpr Row rows[] = {
        {"CHARINDEX('b','abc')", "2"},       {"CHARINDEX('B','abc')", "2"},
        {"CHARINDEX('x','abc')", "0"},       {"CHARINDEX('','abc')", "0"},
        {"CHARINDEX('a','abca',2)", "4"},    {"CHARINDEX('a','abca',-5)", "1"},
        {"CHARINDEX('a','abca',9)", "0"},    {"CHARINDEX('Ö','größe')", "3"},
        {"CHARINDEX('o','größe')", "0"},     {"CHARINDEX(NULL,'abc')", "NULL"},
        {"CHARINDEX('a',NULL)", "NULL"},     {"CHARINDEX('b ','ab c')", "2"},
        {"CHARINDEX('b ','ab')", "0"},       {"CHARINDEX(2,123)", "2"},
        {"PATINDEX('%b%','abc')", "2"},      {"PATINDEX('b%','abc')", "0"},
        {"PATINDEX('a%','abc')", "1"},       {"PATINDEX('%c','abc')", "3"},
        {"PATINDEX('%[0-9]%','ab12')", "3"}, {"PATINDEX('%[^a-z]%','ab1')", "3"},
        {"PATINDEX('%x%','abc')", "0"},      {"PATINDEX('%B_D%','abcd')", "2"},
        {"PATINDEX('abc','abc')", "1"},      {"PATINDEX('%a%',NULL)", "NULL"},
        {"PATINDEX('%ß%','groß')", "4"},     {"REPLACE('Abcabc','A','x')", "'xbcxbc'"},
        {"REPLACE('abc','','x')", "'abc'"},  {"REPLACE('abc','b','')", "'ac'"},
        {"REPLACE('aaa','aa','b')", "'ba'"}, {"REPLACE('ÄÖ','ä','ae')", "'aeÖ'"},
        {"REPLACE('abc','b',NULL)", "NULL"}, {"REPLACE('1.5','.',',')", "'1,5'"},
    };
    checkRows(rows);
}

TEST(TextFunctions, Building)
{
    constexpr Row rows[] = {
        {"REPLICATE('ab',3)", "'ababab'"},
        {"REPLICATE(0,4)", "'0000'"},
        {"REPLICATE(0,LEN('1203'))", "'0000'"},
        {"REPLICATE('a',0)", "''"},
        {"REPLICATE('a',-1)", "NULL"},
        {"REPLICATE(NULL,2)", "NULL"},
        {"LEN(REPLICATE('a',10000))", "8000"},
        {"LEN(REPLICATE('abc',9000))", "8000"},
        {"LEN(REPLICATE('a',2000000000))", "8000"},
        {"'['||SPACE(3)||']'", "'[   ]'"},
        {"SPACE(0)", "''"},
        {"SPACE(-1)", "NULL"},
        {"UPPER('größe é')", "'GRÖßE É'"},
        {"LOWER('ÄÖÜ ABC Ž')", "'äöü abc ž'"},
        {"UPPER(NULL)", "NULL"},
        {"CONCAT('a',NULL,1,2.5)", "'a12.5'"},
        {"CONCAT(NULL,NULL)", "''"},
        {"STR(123.45)", "'       123'"},
        {"STR(123.5)", "'       124'"},
        {"STR(-2.5,4)", "'  -3'"},
        {"STR(123.456,8,2)", "'  123.46'"},
        {"STR(123.456,6,2)", "'123.46'"},
        {"STR(123.456,5,2)", "'123.5'"},
        {"STR(123.456,3,2)", "'123'"},
        {"STR(123456,3)", "'***'"},
        {"STR(0.5,4,1)", "' 0.5'"},
        {"STR(7,2)", "' 7'"},
        {"STR(7,0)", "NULL"},
        {"STR(NULL)", "NULL"},
        {"STR('12.5',5,1)", "' 12.5'"},
    };
    checkRows(rows);
}

TEST(TextFunctions, Characters)
{
    constexpr Row rows[] = {
        {"CHAR(65)", "'A'"},   {"CHAR(228)", "'ä'"},    {"CHAR(128)", "'€'"},     {"CHAR(150)", "'–'"},
        {"CHAR(256)", "NULL"}, {"CHAR(-1)", "NULL"},    {"CHAR(NULL)", "NULL"},   {"LEN(CHAR(0))", "1"},
        {"CHAR('65')", "'A'"}, {"NCHAR(8364)", "'€'"},  {"NCHAR(65536)", "NULL"}, {"NCHAR(55296)", "'\uFFFD'"},
        {"ASCII('A')", "65"},  {"ASCII('ä')", "228"},   {"ASCII('€')", "128"},    {"ASCII('Ω')", "63"},
        {"ASCII('')", "NULL"}, {"ASCII(NULL)", "NULL"}, {"UNICODE('€')", "8364"}, {"UNICODE('')", "NULL"},
        {"ASCII(12)", "49"},
    };
    checkRows(rows);
}

/// The whole of code page 1252 survives the way there and back.
TEST(TextFunctions, EveryCharacterOfTheCodePageReturns)
{
    ScratchDatabase database;
    for (int code = 1; code < 256; ++code) {
        const std::string number = std::to_string(code);
        EXPECT_EQ(database.evaluate("ASCII(CHAR(" + number + "))"), number);
    }
}

TEST(TextFunctions, BrokenUtf8DoesNoHarm)
{
    ScratchDatabase database;
    for (const std::string_view function :
         {"LEN(%)", "REVERSE(%)", "UPPER(%)", "LOWER(%)", "REPLACE(%,'b','c')", "CHARINDEX('b',%)", "\"LEFT\"(%,2)",
          "SUBSTRING(%,2,2)", "STUFF(%,2,1,%)", "tm_like(%,'%b%','')", "PATINDEX('%b%',%)", "ISNUMERIC(%)", "ISDATE(%)",
          "CONCAT(%,%)", "ASCII(%)", "UNICODE(%)", "TRIM(%)", "DATALENGTH(%)", "tm_like('b',%,'')"}) {
        for (const std::string_view bytes : {"C3", "E282", "FF00FE", "6100C362", "F09F8C", "80808080", "EDA080"}) {
            std::string expression{function};
            const std::string value = "CAST(x'" + std::string{bytes} + "' AS TEXT)";
            const bool like = expression.find("'%b%'") != std::string::npos;
            for (std::size_t at = expression.find('%'); at != std::string::npos; at = expression.find('%', at)) {
                const bool inPattern = like && at > 0 && (expression[at - 1] == '\'' || expression[at + 1] == '\'');
                if (inPattern) {
                    ++at;
                    continue;
                }
                expression.replace(at, 1, value);
                at += value.size();
            }
            EXPECT_FALSE(database.evaluate(expression).starts_with("error ")) << expression;
        }
    }
}

/// A match begins and ends with whole characters.
TEST(TextFunctions, FindExpansionsAsTheirLetters)
{
    constexpr Row rows[] = {
        {"CHARINDEX('ss','Straße')", "5"},    {"CHARINDEX('ß','Strasse')", "5"},
        {"CHARINDEX('s','ß')", "0"},          {"CHARINDEX('sss','sßs')", "1"},
        {"CHARINDEX('ssss','asßßs')", "3"},   {"CHARINDEX('ßs','asßss')", "2"},
        {"CHARINDEX('ßß','ssssß')", "1"},     {"CHARINDEX('ss','ßß',2)", "2"},
        {"CHARINDEX('æß','xAESS')", "2"},     {"REPLACE('ssßss','ßs','-')", "'s-ss'"},
        {"REPLACE('sßs','ss','-')", "'s-s'"}, {"REPLACE('Chloe','œ','o')", "'Chlo'"},
        {"PATINDEX('%ß','Strass')", "5"},     {"PATINDEX('%ss','aßß')", "3"},
        {"PATINDEX('%s_','Gaßs')", "0"},      {"PATINDEX('%ss%','Straße')", "5"},
        {"PATINDEX('%ße%','Strasse')", "5"},  {"PATINDEX('%ssss','xßß')", "2"},
        {"PATINDEX('%_ss','xyß')", "2"},
    };
    checkRows(rows);
}

} // namespace
} // namespace tamarok::embedded::functions
