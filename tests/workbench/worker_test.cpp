#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <gtest/gtest.h>
#include <mutex>
#include <string>
#include <vector>

#include "lists/record_list.h"
#include "tamarok_embedded/connect.h"
#include "work/worker.h"

#include "tamarok/error.h"

namespace tamarok::workbench {
namespace {

/// Stands for the loop of a window's thread.
class Loop {
public:
    Worker::Deliver deliver()
    {
        return [this](std::function<void()> action) {
            const std::scoped_lock lock{mutex_};
            actions_.push_back(std::move(action));
            wake_.notify_all();
        };
    }
    /// Waits for the next action and carries it out.
    void runOne()
    {
        std::unique_lock lock{mutex_};
        wake_.wait(lock, [this] { return !actions_.empty(); });
        const std::function<void()> action = std::move(actions_.front());
        actions_.pop_front();
        lock.unlock();
        action();
    }
    bool isEmpty()
    {
        const std::scoped_lock lock{mutex_};
        return actions_.empty();
    }

private:
    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<std::function<void()>> actions_;
};

class WorkerTest : public testing::Test {
protected:
    Worker::Open open = [this] {
        ++opened;
        return embedded::connectInMemory();
    };
    /// A job that tells the window a word.
    Worker::Job tell(const std::string& word)
    {
        return [this, word](const ado::ConnectionRef&, const std::stop_token&, const Worker::Tell& tell) {
            tell([this, word] { told.push_back(word); });
        };
    }
    Worker::Failed failed = [this](const std::string& reason) { told.push_back("failed: " + reason); };

    Yard yard;
    Loop loop;
    int opened = 0;
    std::vector<std::string> told;
};

TEST_F(WorkerTest, CarriesJobsOutInTheirOrderOnOneConnection)
{
    Worker worker{open, Platform::current(), loop.deliver(), yard};
    worker.post(tell("one"), failed);
    worker.post(tell("two"), failed);
    loop.runOne();
    loop.runOne();
    EXPECT_EQ(told, (std::vector<std::string>{"one", "two"}));
    EXPECT_EQ(opened, 1);
}

TEST_F(WorkerTest, FailureIsToldAndALostConnectionIsOpenedAnew)
{
    Worker worker{open, Platform::current(), loop.deliver(), yard};
    worker.post([](const ado::ConnectionRef& connection, const std::stop_token&,
                   const Worker::Tell&) { connection->Execute("NONSENSE"); },
                failed);
    loop.runOne();
    ASSERT_EQ(told.size(), 1U);
    EXPECT_TRUE(told[0].starts_with("failed: ")) << told[0];
    worker.post(
        [](const ado::ConnectionRef&, const std::stop_token&, const Worker::Tell&) {
            throw Error{errors::providerFailure, "Gone."};
        },
        failed);
    loop.runOne();
    EXPECT_EQ(told[1], "failed: Gone.");
    worker.post(tell("again"), failed);
    loop.runOne();
    EXPECT_EQ(told[2], "again");
    EXPECT_EQ(opened, 2);
}

TEST_F(WorkerTest, ConnectionThatCannotBeOpenedIsToldForEachJob)
{
    Worker worker{[]() -> ado::ConnectionRef {
                      throw Error{errors::providerFailure, "No way."};
                  },
                  Platform::current(), loop.deliver(), yard};
    worker.post(tell("one"), failed);
    loop.runOne();
    EXPECT_EQ(told, (std::vector<std::string>{"failed: No way."}));
}

/// Fills a table, tells the window, and runs a statement that would take hours.
void runForHours(const ado::ConnectionRef& connection, const std::function<void()>& begun)
{
    connection->CommandTimeout(0);
    connection->Execute("CREATE TABLE N (I INT NOT NULL)");
    connection->Execute("INSERT INTO N (I) VALUES (1)");
    for (int doubling = 0; doubling < 11; ++doubling)
        connection->Execute("INSERT INTO N (I) SELECT I FROM N");
    begun();
    connection->Execute("DELETE FROM N WHERE I < (SELECT COUNT(*) FROM N A, N B, N C, N D)");
}

TEST_F(WorkerTest, EndsWhileAStatementRuns)
{
    {
        Worker worker{open, Platform::current(), loop.deliver(), yard};
        worker.post([this](const ado::ConnectionRef& connection, const std::stop_token&,
                           const Worker::Tell&) { runForHours(connection, [this] { loop.deliver()([] {}); }); },
                    failed);
        worker.post(tell("never"), failed);
        loop.runOne();
    }
    EXPECT_TRUE(loop.isEmpty()) << "who stops is told of no failure";
    EXPECT_TRUE(told.empty());
}

TEST_F(WorkerTest, StopDropsWhatWaitsAndLetsLaterJobsRun)
{
    Worker worker{open, Platform::current(), loop.deliver(), yard};
    worker.post(
        [this](const ado::ConnectionRef&, const std::stop_token& stop, const Worker::Tell&) {
            loop.deliver()([] {});
            while (!stop.stop_requested())
                std::this_thread::yield();
            throw Stopped{};
        },
        failed);
    worker.post(tell("dropped"), failed);
    loop.runOne();
    worker.stop();
    worker.post(tell("later"), failed);
    loop.runOne();
    EXPECT_EQ(told, (std::vector<std::string>{"later"}));
}

TEST_F(WorkerTest, LeavesAStatementThatCannotBeEndedToTheYard)
{
    std::atomic<bool> goOn = false;
    {
        Worker worker{open, Platform::current(), loop.deliver(), yard};
        worker.post(
            [&goOn, this](const ado::ConnectionRef&, const std::stop_token&, const Worker::Tell& tell) {
                tell([] {});
                while (!goOn)
                    std::this_thread::yield();
                tell([this] { told.emplace_back("too late"); });
            },
            failed);
        loop.runOne();
    }
    EXPECT_FALSE(yard.isEmptyWithin(std::chrono::milliseconds{0}));
    goOn = true;
    EXPECT_TRUE(yard.isEmptyWithin(std::chrono::seconds{20}));
    EXPECT_TRUE(loop.isEmpty());
}

} // namespace
} // namespace tamarok::workbench
