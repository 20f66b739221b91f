#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "apps/program.h"

namespace tamarok::test {
namespace {

TEST(Select, PrintsTheStatementWithoutADatabase)
{
    const Outcome server = run({"select", "FARBE_VALID", "rt"});
    EXPECT_EQ(server.status, 0) << server.errors;
    EXPECT_EQ(server.output,
              "SELECT ID,FARBE,FARBE_LANG AS \"LONG\" FROM FARBE WHERE ISNULL(DISABLE,0)=0 AND FARBE = 'rt'\n");
    const Outcome oracle = run({"select", "FARBE_VALID", "rt", "--oracle"});
    EXPECT_NE(oracle.output.find("NVL(DISABLE,0)=0"), std::string::npos);
}

TEST(Select, ListsAllKeys)
{
    const Outcome outcome = run({"select"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(std::ranges::count(outcome.output, '\n'), 777);
    EXPECT_TRUE(outcome.output.starts_with("AAKOPF\n"));
}

TEST(Select, RunsTheStatement)
{
    const ScratchFolder folder;
    const std::string database = makeDatabase(folder);
    const Outcome list = run({"select", "BBSTKL_GRID", "20", "30", "1", "--run", "--format", "csv", "--db", database});
    EXPECT_EQ(list.status, 0) << list.errors;
    EXPECT_EQ(list.output, "STKL,DM_VON,DM_BIS\n2a,20,24.99\n2b,25,29.99\n");
    const Outcome empty = run({"select", "VERTRAG_GRID10", "", "--run", "--format", "csv", "--db", database});
    EXPECT_TRUE(empty.output.starts_with("NAME,DATE,ADRESSE,ZUSATZTEXT\nW2024-0001,")) << empty.output;
}

TEST(Select, RefusesAnUnknownKeyAndMissingFields)
{
    const Outcome unknown = run({"select", "farbe_valid", "rt"});
    EXPECT_EQ(unknown.status, 1);
    EXPECT_NE(unknown.errors.find("'farbe_valid'"), std::string::npos) << unknown.errors;
    const Outcome missing = run({"select", "PA_KOPF_VALID", "1", "2"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_NE(missing.errors.find("field 2"), std::string::npos) << missing.errors;
    EXPECT_EQ(missing.output, "");
}

} // namespace
} // namespace tamarok::test
