#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "embedded/translation/test_database.h"

#include "tamarok/error.h"

/// translations.txt, block by block: a batch and the SQLite text of each step, or the refusal.
namespace tamarok::embedded::translation {
namespace {

std::vector<std::string> translate(const TestDatabase& database, const std::string& text)
{
    std::vector<std::string> lines;
    try {
        const ParsedBatch batch(text);
        for (std::size_t i = 0; i < batch.steps().size(); ++i) {
            const Step step = translateStep(batch, i, database, DateOrder::Dmy);
            if (!step.text.empty()) lines.push_back(step.text);
            if (!step.lockProbe.empty()) lines.push_back("locks " + step.lockProbe);
        }
    } catch (const Error& error) {
        EXPECT_EQ(error.number, errors::statementRefused);
        EXPECT_EQ(error.source, "Tamarok embedded database");
        lines.push_back("error " + std::to_string(error.nativeError) + " " + error.description);
    }
    return lines;
}

TEST(Translations, EachBatchOfTheTableGivesItsText)
{
    const TestDatabase database;
    const std::vector<Fixture> fixtures = readFixtures("translations.txt");
    EXPECT_EQ(fixtures.size(), 185U);
    for (const Fixture& fixture : fixtures) {
        EXPECT_EQ(translate(database, fixture.given), fixture.expected) << "translations.txt:" << fixture.line << "\n"
                                                                        << fixture.given;
    }
}

TEST(Translations, SqliteAcceptsEachText)
{
    TestDatabase database;
    database.run("CREATE TABLE #T (A INT, B NVARCHAR(10))");
    for (const Fixture& fixture : readFixtures("translations.txt")) {
        for (const std::string& line : fixture.expected) {
            if (line.starts_with("error ") || line.starts_with("CREATE ")) continue;
            const std::string text = line.starts_with("locks ") ? line.substr(6) : line;
            EXPECT_EQ(database.prepareError(text), "") << "translations.txt:" << fixture.line << "\n" << text;
        }
    }
}

TEST(Translations, SqliteAcceptsEachDefinition)
{
    for (const Fixture& fixture : readFixtures("translations.txt")) {
        for (const std::string& line : fixture.expected) {
            if (!line.starts_with("CREATE ")) continue;
            TestDatabase database;
            EXPECT_NO_THROW(database.runStep(line)) << "translations.txt:" << fixture.line << "\n" << line;
        }
    }
}

} // namespace
} // namespace tamarok::embedded::translation
