#include <gtest/gtest.h>
#include <string>

#include "embedded/functions/scratch_database.h"
#include "functions/like.h"

namespace tamarok::embedded::functions {
namespace {

TEST(Like, Table)
{
    constexpr Row rows[] = {
        {"tm_like('Fichte','f%','')", "1"},
        {"tm_like('Fichte','%TE','')", "1"},
        {"tm_like('Fichte','_ichte','')", "1"},
        {"tm_like('Fichte','ichte','')", "0"},
        {"tm_like('Fichte','%ch%','')", "1"},
        {"tm_like('','%','')", "1"},
        {"tm_like('','','')", "1"},
        {"tm_like('a','','')", "0"},
        {"tm_like('Ärle','ä%','')", "1"},
        {"tm_like('Arle','ä%','')", "0"},
        {"tm_like('b','[a-g]','')", "1"},
        {"tm_like('H','[a-g]','')", "0"},
        {"tm_like('D','[a-g]','')", "1"},
        {"tm_like('ä','[a-g]','')", "1"},
        {"tm_like('h','[^a-g]','')", "1"},
        {"tm_like('c','[^a-g]','')", "0"},
        {"tm_like('5','[0-9]','')", "1"},
        {"tm_like('x','[xyz]','')", "1"},
        {"tm_like('-','[-ab]','')", "1"},
        {"tm_like('-','[ab-]','')", "1"},
        {"tm_like('b','[a-ce-g]','')", "1"},
        {"tm_like('d','[a-ce-g]','')", "0"},
        {"tm_like('[','[[]','')", "1"},
        {"tm_like(']',']','')", "1"},
        {"tm_like('5%','5[%]','')", "1"},
        {"tm_like('5x','5[%]','')", "0"},
        {"tm_like('_n','[_]n','')", "1"},
        {"tm_like('an','[_]n','')", "0"},
        {"tm_like('a','[]','')", "0"},
        {"tm_like('a','a[','')", "0"},
        {"tm_like('a[','a[','')", "0"},
        {"tm_like('50%','50!%','!')", "1"},
        {"tm_like('50x','50!%','!')", "0"},
        {"tm_like('a_b','a\\_b','\\')", "1"},
        {"tm_like('axb','a\\_b','\\')", "0"},
        {"tm_like('a!b','a!!b','!')", "1"},
        {"tm_like('ab','a!b','!')", "1"},
        {"tm_like('a!','a!','!')", "0"},
        {"tm_like(']','[!]]','!')", "1"},
        {"tm_like('a','a','xy')", "error 506:The invalid escape character \"xy\" was specified in a LIKE predicate."},
        {"tm_like('abc  ','abc','')", "1"},
        {"tm_like('abc','abc ','')", "0"},
        {"tm_like('abc  ','%c','')", "1"},
        {"tm_nlike('abc  ','abc','')", "0"},
        {"tm_nlike('abc  ','abc%','')", "1"},
        {"tm_like('ß','ss','')", "1"},
        {"tm_like('ss','ß','')", "1"},
        {"tm_like('Straße','%SS%','')", "1"},
        {"tm_like('Straße','%s_e','')", "0"},
        {"tm_like('Straße','stra_e','')", "1"},
        {"tm_like('Straße','stras%','')", "0"},
        {"tm_like('Straße','%se','')", "0"},
        {"tm_like('sße','%ße','')", "1"},
        {"tm_like('ßß','s%s','')", "0"},
        {"tm_like('æß','aeß','')", "1"},
        {"tm_like('ß','[s]','')", "0"},
        {"tm_like(NULL,'a','')", "NULL"},
        {"tm_like('a',NULL,'')", "NULL"},
        {"tm_like(1203,'12%','')", "1"},
        {"tm_like('aab','%ab','')", "1"},
        {"tm_like('abab','%ab','')", "1"},
        {"tm_like('abcabd','%ab_d%','')", "0"},
        {"tm_like('xaxbxc','%a%b%c','')", "1"},
        {"tm_like('xaxcxb','%a%b%c','')", "0"},
    };
    checkRows(rows);
}

TEST(Like, ManyWildcardsOnALongText)
{
    std::string pattern;
    for (int index = 0; index < 200; ++index)
        pattern += "%a";
    pattern += "%b";
    const LikePattern compiled{pattern, 0};
    EXPECT_FALSE(compiled.matches(std::string(20'000, 'a'), true));
    EXPECT_TRUE(compiled.matches(std::string(20'000, 'a') + "b", true));
}

TEST(Like, PatternThatChangesFromRowToRow)
{
    ScratchDatabase database;
    EXPECT_EQ(
        database.rows("SELECT tm_like(v, p, e) FROM (SELECT 'a%' AS v, 'a%' AS p, '' AS e UNION ALL "
                      "SELECT 'b', 'a%', '' UNION ALL SELECT 'ax', 'a!%', '!' UNION ALL SELECT 'a%', 'a!%', '!')"),
        "1|0|0|1");
    EXPECT_EQ(database.rows("SELECT tm_like(v, 'a!%', e) FROM (SELECT 'ax' AS v, '!' AS e UNION ALL "
                            "SELECT 'a!x', '' UNION ALL SELECT 'a%', '!')"),
              "0|1|1");
}

} // namespace
} // namespace tamarok::embedded::functions
