#include <fstream>
#include <gtest/gtest.h>

#include "apps/program.h"
#include "transfer/server_database.h"

/// `tamarok init --odbc` and `tamarok copy` as a user types them.
namespace tamarok::test {
namespace {

class ServerProgram : public OnServer {};

TEST_F(ServerProgram, MakesADatabaseAndCopiesItBack)
{
    const ServerDatabase database;
    const ScratchFolder folder;
    const std::string file = folder / "back.db";
    const Outcome made = run({"init", "--odbc", database.text(), "--logs", "30", "--records", "3", "--seed", "5"});
    ASSERT_EQ(made.status, 0) << made.errors;
    EXPECT_NE(made.output.find("30 logs in "), std::string::npos) << made.output;
    const Outcome copied = run({"copy", "--db", file, "--odbc", database.text(), "--from-odbc", "--format", "csv"});
    ASSERT_EQ(copied.status, 0) << copied.errors;
    EXPECT_NE(copied.output.find("Rows of source"), std::string::npos);
    EXPECT_NE(copied.output.find("LOGS,30,"), std::string::npos) << copied.output;
    EXPECT_NE(copied.errors.find("both sides are the same"), std::string::npos) << copied.errors;
    EXPECT_EQ(folder.fileCount(), 1U);

    // The rows of a file that was made with the same numbers.
    const std::string own = folder / "own.db";
    ASSERT_EQ(run({"init", own, "--logs", "30", "--records", "3", "--seed", "5"}).status, 0);
    const ServerDatabase second;
    const Outcome there = run({"copy", "--db", own, "--odbc", second.text(), "--format", "csv"});
    ASSERT_EQ(there.status, 0) << there.errors;
    const auto lineOf = [](const std::string& output) {
        const std::size_t at = output.find("LOGS,30,");
        return output.substr(at, output.find('\n', at) - at);
    };
    EXPECT_EQ(lineOf(copied.output), lineOf(there.output));

    const Outcome again = run({"copy", "--db", own, "--odbc", second.text()});
    EXPECT_EQ(again.status, 1);
    EXPECT_NE(again.errors.find("is not empty"), std::string::npos) << again.errors;
    const Outcome exists = run({"copy", "--db", own, "--odbc", second.text(), "--from-odbc"});
    EXPECT_EQ(exists.status, 1);
    EXPECT_NE(exists.errors.find("Name a new file."), std::string::npos) << exists.errors;
}

TEST_F(ServerProgram, AFailedCopyLeavesNoFile)
{
    const ServerDatabase database;
    database.connect()->Execute("CREATE TABLE STRANGE (B XML)");
    const ScratchFolder folder;
    const Outcome refused = run({"copy", "--db", folder / "a.db", "--odbc", database.text(), "--from-odbc"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.errors.find("STRANGE"), std::string::npos) << refused.errors;
    EXPECT_EQ(folder.fileCount(), 0U);
}

} // namespace
} // namespace tamarok::test
