#include <chrono>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <thread>

#include "tamarok_embedded/connect.h"

#include "tamarok/ado.h"
#include "tamarok/error.h"

// A statement that another thread ends.

namespace tamarok::embedded {
namespace {

/// Calls Connection::Cancel until it is destroyed: the moment at which the statement begins is not known.
class Canceller {
public:
    explicit Canceller(const ado::Connection& connection) :
        thread_{[&connection](const std::stop_token& stop) {
            while (!stop.stop_requested()) {
                connection.Cancel();
                std::this_thread::sleep_for(std::chrono::milliseconds{1});
            }
        }}
    {}

private:
    std::jthread thread_;
};

class Cancel : public testing::Test {
protected:
    Cancel()
    {
        connection->Execute("CREATE TABLE N (I INT NOT NULL)");
        connection->Execute("INSERT INTO N (I) VALUES (1)");
        for (int doubling = 0; doubling < 11; ++doubling)
            connection->Execute("INSERT INTO N (I) SELECT I FROM N");
    }

    /// Runs for hours unless it is ended.
    void runLong() const { connection->Execute("DELETE FROM N WHERE I < (SELECT COUNT(*) FROM N A, N B, N C, N D)"); }

    std::int64_t count() const
    {
        ado::Recordset rows;
        rows.Open("SELECT COUNT(*) FROM N", connection);
        return rows.Fields().Item(0).Value().asLong();
    }

    ado::ConnectionRef connection = connectInMemory();
};

TEST_F(Cancel, EndsAStatementThatRuns)
{
    connection->CommandTimeout(0);
    std::optional<Error> failure;
    {
        const Canceller canceller{*connection};
        try {
            runLong();
        } catch (const Error& error) {
            failure = error;
        }
    }
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->number, errors::cancelled);
    EXPECT_EQ(failure->sqlState, "HY008");
    EXPECT_EQ(failure->description, "The statement was cancelled.");
    EXPECT_EQ(count(), 2048) << "nothing of the statement stays";
}

TEST_F(Cancel, ConcernsNoLaterStatement)
{
    connection->Cancel();
    EXPECT_EQ(count(), 2048);
}

} // namespace
} // namespace tamarok::embedded
