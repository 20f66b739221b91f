#include <memory>

#include "child.h"
#include "test_database.h"

namespace tamarok::embedded::test {
namespace {

class Processes : public testing::Test {
protected:
    Processes() { run(connection_, "CREATE TABLE T (N INT, S NVARCHAR(4000)) INSERT INTO T (N) VALUES (0)"); }

    std::string file() const { return (folder_ / "a.db").string(); }

    Folder folder_;
    ado::ConnectionRef connection_ = create(folder_ / "a.db");
};

TEST_F(Processes, concurrentWritersLoseNothing)
{
    std::vector<std::unique_ptr<Child>> children;
    for (int i = 0; i < 6; ++i) {
        children.push_back(std::make_unique<Child>(
            std::vector<std::string>{"repeat", file(), "50 UPDATE T SET N = N + 1 INSERT INTO T (S) VALUES ('x')"}));
        ASSERT_EQ(children.back()->line(), "ready");
    }
    for (const auto& child : children) {
        child->tell("go");
    }
    for (const auto& child : children) {
        EXPECT_EQ(child->line(), "done");
        EXPECT_EQ(child->wait(), 0);
    }
    EXPECT_EQ(valueOf(connection_, "SELECT MAX(N) FROM T"), Variant{300});
    EXPECT_EQ(valueOf(connection_, "SELECT COUNT(*) FROM T"), Variant{301});
}

TEST_F(Processes, aKilledWriterLeavesAWholeDatabaseAndNoLock)
{
    Child child{{"transaction", file(), "INSERT INTO T (N,S) VALUES (1,REPLICATE('x',4000))"}};
    ASSERT_EQ(child.line(), "open");
    EXPECT_EQ(failureOf([&] { run(connection_, "UPDATE T SET N = 5", 1); }).number, errors::timeout);
    EXPECT_EQ(valueOf(connection_, "SELECT COUNT(*) FROM T"), Variant{1}) << "reading goes on meanwhile";
    child.kill();
    EXPECT_EQ(run(connection_, "UPDATE T SET N = 5", 1), 1);
    EXPECT_EQ(valueOf(connection_, "SELECT COUNT(*) FROM T"), Variant{1});
    connection_->Close();
    const auto again = connect(folder_ / "a.db");
    EXPECT_EQ(columnOf(again, "SELECT N FROM T"), std::vector<Variant>{5});
}

TEST_F(Processes, killedLastUserLeavesAWholeDatabase)
{
    connection_->Close();
    Child child{{"repeat", file(), "100000 INSERT INTO T (N) VALUES (1)"}};
    ASSERT_EQ(child.line(), "ready");
    child.tell("go");
    {
        const auto watcher = connect(folder_ / "a.db");
        while (valueOf(watcher, "SELECT COUNT(*) FROM T") == Variant{1}) {}
    }
    child.kill();
    const auto again = connect(folder_ / "a.db");
    const Variant before = valueOf(again, "SELECT COUNT(*) FROM T");
    EXPECT_GT(before.asLong(), 1);
    EXPECT_EQ(run(again, "INSERT INTO T (N) VALUES (2)"), 1);
    EXPECT_EQ(valueOf(again, "SELECT COUNT(*) FROM T"), Variant{before.asLong() + 1});
}

TEST_F(Processes, aFileThatCannotGrowFailsWithPathAndReasonAndLosesNothing)
{
    connection_->Close();
    Child child{{"fill", file(), "INSERT INTO T (N,S) VALUES (1,REPLICATE('x',4000))"}};
    const std::string written = child.line();
    const std::string description = child.line();
    EXPECT_NE(description.find(file()), std::string::npos) << description;
    EXPECT_NE(description.find("File too large"), std::string::npos) << description;
    EXPECT_EQ(child.wait(), 0);
    EXPECT_EQ(valueOf(connect(folder_ / "a.db"), "SELECT COUNT(*) FROM T"), Variant{std::stoi(written) + 1});
}

class Timeouts : public testing::Test {
protected:
    Timeouts()
    {
        run(connection_, "CREATE TABLE T (N INT) INSERT INTO T (N) VALUES (0)");
        for (int i = 0; i < 9; ++i) {
            run(connection_, "INSERT INTO T (N) SELECT N + 1 FROM T");
        }
    }
    static constexpr std::string_view endless = "SELECT COUNT(*) FROM T A, T B, T C, T D WHERE A.N + B.N + C.N = D.N";

    Folder folder_;
    ado::ConnectionRef connection_ = create(folder_ / "a.db");
};

TEST_F(Timeouts, aLongQueryEnds)
{
    const Error error = failureOf([&] { open(connection_, endless, 1)->next(); });
    EXPECT_EQ(error.number, errors::timeout);
    EXPECT_EQ(error.nativeError, -2);
    EXPECT_EQ(error.statement, endless);
    EXPECT_EQ(valueOf(connection_, "SELECT COUNT(*) FROM T"), Variant{512});
}

TEST_F(Timeouts, theSearchForALaterRowEndsToo)
{
    const auto cursor =
        open(connection_,
             "SELECT TOP 1 1 FROM T UNION ALL SELECT 2 FROM T A, T B, T C, T D WHERE A.N + B.N + C.N + D.N < 0", 1);
    ASSERT_TRUE(cursor->next());
    EXPECT_EQ(failureOf([&] { cursor->next(); }).number, errors::timeout);
    EXPECT_FALSE(cursor->next());
}

TEST_F(Timeouts, aLongWriteEndsAndLeavesNothing)
{
    const Error error =
        failureOf([&] { run(connection_, "INSERT INTO T (N) SELECT A.N FROM T A, T B, T C, T D WHERE A.N = B.N", 1); });
    EXPECT_EQ(error.number, errors::timeout);
    EXPECT_EQ(valueOf(connection_, "SELECT COUNT(*) FROM T"), Variant{512});
    EXPECT_EQ(run(connection_, "UPDATE T SET N = 0", 1), 512);
}

TEST_F(Timeouts, waitingForAnotherWriterEnds)
{
    const auto other = connect(folder_ / "a.db");
    other->session().begin();
    run(other, "DELETE FROM T WHERE N = 0");
    for (const std::string_view text : {"INSERT INTO T (N) VALUES (1)", "DELETE FROM T", "CREATE TABLE U (A INT)"}) {
        EXPECT_EQ(failureOf([&] { run(connection_, text, 1); }).number, errors::timeout) << text;
    }
    other->session().rollback();
    EXPECT_EQ(run(connection_, "DELETE FROM T", 1), 512);
}

} // namespace
} // namespace tamarok::embedded::test
