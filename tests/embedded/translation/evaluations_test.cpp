#include <gtest/gtest.h>
#include <stdexcept>

#include "embedded/translation/test_database.h"

#include "tamarok/error.h"

/// evaluations.txt: batches with the rows that the server gives, or its error number.
namespace tamarok::embedded::translation {
namespace {

std::vector<std::string> evaluate(TestDatabase& database, const std::string& batch)
{
    try {
        return database.run(batch);
    } catch (const Error& error) {
        return {"error " + std::to_string(error.nativeError)};
    } catch (const std::runtime_error& error) {
        const std::string text = error.what();
        return {"error " + text.substr(0, text.find(':'))};
    }
}

TEST(Evaluations, EachBatchOfTheTableGivesTheServersRows)
{
    TestDatabase database;
    const std::vector<Fixture> fixtures = readFixtures("evaluations.txt");
    EXPECT_GE(fixtures.size(), 100U);
    for (const Fixture& fixture : fixtures) {
        EXPECT_EQ(evaluate(database, fixture.given), fixture.expected) << "evaluations.txt:" << fixture.line << "\n"
                                                                       << fixture.given;
    }
}

} // namespace
} // namespace tamarok::embedded::translation
