#include "statement_cache.h"
#include "stored_date.h"
#include "tamarok_embedded/connect.h"
#include "test_database.h"

namespace tamarok::embedded::test {
namespace {

class Cache : public testing::Test {
protected:
    Cache() { database_.run("CREATE TABLE T (A INT)"); }

    const CachedStep* stepOf(std::string_view text)
    {
        return cache_.batch(text)->step(0, false, catalog_, tsql::DateOrder::Mdy).get();
    }

    Database database_{tsql::DateOrder::Mdy};
    SchemaCatalog catalog_{database_};
    StatementCache cache_;
};

TEST_F(Cache, givesTheSameTranslationAgain)
{
    const CachedStep* const first = stepOf("SELECT A FROM T");
    stepOf("SELECT A + 1 FROM T");
    EXPECT_EQ(stepOf("SELECT A FROM T"), first);
    EXPECT_EQ(cache_.size(), 2U);
}

TEST_F(Cache, dropsWhatWasNotUsedForLongest)
{
    const auto kept = cache_.batch("SELECT 0");
    const std::weak_ptr<CachedBatch> dropped = cache_.batch("SELECT 1");
    for (std::size_t i = 2; i < StatementCache::capacity + 1; ++i) {
        cache_.batch("SELECT " + std::to_string(i));
        cache_.batch("SELECT 0");
    }
    EXPECT_EQ(cache_.size(), StatementCache::capacity);
    EXPECT_EQ(cache_.batch("SELECT 0"), kept);
    EXPECT_TRUE(dropped.expired());
}

TEST_F(Cache, keepsNoHugeTexts)
{
    cache_.batch("SELECT '" + std::string(StatementCache::longestText, 'x') + "'");
    EXPECT_EQ(cache_.size(), 0U);
}

/// A script runs each of its statements once; their translations together would be many times as large as its text.
TEST_F(Cache, keepsOneStepOfABatchOfMany)
{
    std::string text;
    for (std::size_t i = 0; i < CachedBatch::mostKept + 1; ++i)
        text += "SELECT " + std::to_string(i) + ";";
    const auto many = cache_.batch(text);
    const auto step = [&](std::size_t index) -> const std::shared_ptr<CachedStep>& {
        return many->step(index, false, catalog_, tsql::DateOrder::Mdy);
    };
    const std::weak_ptr<CachedStep> first = step(0);
    EXPECT_EQ(step(0), first.lock());
    EXPECT_EQ(step(1)->step.text, "SELECT 1");
    EXPECT_TRUE(first.expired());
    const auto few = cache_.batch("SELECT 1; SELECT 2");
    const std::weak_ptr<CachedStep> kept = few->step(0, false, catalog_, tsql::DateOrder::Mdy);
    few->step(1, false, catalog_, tsql::DateOrder::Mdy);
    EXPECT_FALSE(kept.expired());
}

TEST_F(Cache, translatesAnewAfterASchemaChange)
{
    const auto columns = [this] { return stepOf("SELECT * FROM T")->layout->columns.size(); };
    EXPECT_EQ(columns(), 1U);
    database_.run("ALTER TABLE T ADD COLUMN B INT");
    catalog_.forget();
    EXPECT_EQ(columns(), 2U);
}

TEST_F(Cache, aLoanComesBackForTheNextOne)
{
    const auto step = cache_.batch("SELECT A FROM T")->step(0, false, catalog_, tsql::DateOrder::Mdy);
    sqlite3_stmt* first = nullptr;
    {
        const Lease lease{step, database_};
        const Lease second{step, database_};
        first = lease.get();
        EXPECT_NE(first, second.get());
    }
    const Lease again{step, database_};
    EXPECT_EQ(again.get(), first);
}

TEST(StoredDates, bothWays)
{
    for (const auto& [text, days] : {std::pair{"1899-12-30 00:00:00.000", 0.0},
                                     {"1899-12-31 12:00:00.000", 1.5},
                                     {"1899-12-29 06:00:00.000", -1.25},
                                     {"2024-02-29 00:00:00.000", 45351.0},
                                     {"2000-03-01 00:00:00.000", 36586.0},
                                     {"1900-02-28 18:00:00.000", 60.75}}) {
        Date date;
        ASSERT_TRUE(parseStoredDate(text, date)) << text;
        EXPECT_EQ(date.days, days) << text;
        EXPECT_EQ(storedDate(date), text);
    }
    for (int day = -657434; day < 2958466; day += 97) {
        Date date;
        ASSERT_TRUE(parseStoredDate(storedDate(Date{static_cast<double>(day)}), date)) << day;
        ASSERT_EQ(date.days, day);
    }
    Date date;
    for (const char* const bad : {"", "2024-02-29", "2024-13-01 00:00:00.000", "2024-02-29T00:00:00.000",
                                  "2024-02-29 00:00:00.00x", "0000-01-01 00:00:00.000"}) {
        EXPECT_FALSE(parseStoredDate(bad, date)) << bad;
    }
}

} // namespace
} // namespace tamarok::embedded::test
