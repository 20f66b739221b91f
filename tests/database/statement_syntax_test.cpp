#include <algorithm>
#include <array>
#include <cctype>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "library_statements.h"
#include "resources.h"
#include "sql_batches.h"
#include "support/platforms.h"
#include "support/surroundings.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_loc/loc_service.h"

#include "tamarok/error.h"
#include "tamarok/text.h"

/// What the library sends is T-SQL that SQL Server 2012 accepts, as far as the front end can tell.
namespace tamarok::database {
namespace {

using test::FixedStatement;

Platform quietPlatform()
{
    Platform platform = tamarok::test::platformOf("de-AT");
    platform.makeLocService = loc::makeLocService;
    platform.messageBox = std::make_shared<tamarok::test::RecordingMessageBox>();
    return platform;
}

class StatementSyntax : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        const PlatformScope scope{quietPlatform()};
        const ado::ConnectionRef sample = embedded::connectInMemory();
        createReferenceDatabase(*sample, {.logs = 50, .records = 20});
        for (const std::string& statement : test::callersTables())
            sample->Execute(statement);
        for (const auto& some :
             {test::fixedStatements(sample), test::selectionStatements(sample), test::listStatements(sample),
              test::logStatements(sample), test::operationStatements(sample)})
            all_.insert(all_.end(), some.begin(), some.end());
    }
    static void TearDownTestSuite() { all_.clear(); }

    static const std::vector<FixedStatement>& all() { return all_; }

private:
    static inline std::vector<FixedStatement> all_;
};

/// The empty reference schema, its columns of nvarchar(max) of another type.
ado::ConnectionRef schemaWithLongTexts(const std::string& type)
{
    ado::ConnectionRef connection = embedded::connectInMemory();
    for (const Resource& file : resources("schema"))
        for (const std::string_view batch : splitBatches(file.text))
            connection->Execute(text::replaceAll(batch, "NVARCHAR(MAX)", type));
    for (const std::string& statement : test::callersTables())
        connection->Execute(statement);
    return connection;
}

/// The definitions of columns of type ntext, text and image in a script.
std::string oldLongTypes(std::string_view script)
{
    std::string found;
    std::istringstream lines{std::string{script}};
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words{text::toUpper(line)};
        std::string name;
        std::string type;
        words >> name >> type;
        type.erase(std::min(type.find(','), type.size()));
        if (!name.starts_with("--") && (type == "NTEXT" || type == "TEXT" || type == "IMAGE")) found += line + "\n";
    }
    return found;
}

/// The names of the statements that the front end refuses for sorting, grouping, comparing or combining a long text.
std::set<std::string> refusedForLongTexts(const std::vector<FixedStatement>& statements,
                                          const ado::ConnectionRef& connection)
{
    constexpr std::array numbers{306, 402, 421, 5335, 8117};
    std::set<std::string> refused;
    for (const FixedStatement& statement : statements) {
        if (!statement.text.starts_with("SELECT ")) continue;
        try {
            ado::Recordset rows;
            rows.Open(statement.text, connection);
        } catch (const Error& error) {
            if (std::ranges::find(numbers, error.nativeError) != numbers.end()) refused.insert(statement.name);
        }
    }
    return refused;
}

/// SQL Server sorts, groups and compares nvarchar(max), but neither ntext, text nor image: the reference schema has
/// none of these.
TEST_F(StatementSyntax, NoLongTextIsSortedOrGrouped)
{
    for (const Resource& file : resources("schema"))
        EXPECT_EQ(oldLongTypes(file.text), "") << file.name;
    EXPECT_EQ(refusedForLongTexts(all(), schemaWithLongTexts("NVARCHAR(MAX)")), std::set<std::string>{});
    // The check would notice: a database whose long texts are still ntext refuses one column, the list's remark
    // grouped.
    EXPECT_EQ(refusedForLongTexts(all(), schemaWithLongTexts("NTEXT")), std::set<std::string>{"LOG R 970 aggregated"});
}

/// The names that stand before an opening parenthesis, outside of texts and brackets, in upper case.
std::set<std::string> calledNames(std::string_view statement)
{
    std::set<std::string> names;
    std::string word;
    char closing = 0;
    for (const char character : statement) {
        if (closing != 0) {
            if (character == closing) closing = 0;
            continue;
        }
        if (character == '\'' || character == '"') closing = character;
        if (character == '[') closing = ']';
        if (std::isalnum(static_cast<unsigned char>(character)) != 0 || character == '_') {
            word += character;
            continue;
        }
        if (character == '(' && !word.empty()) names.insert(text::toUpper(word));
        word.clear();
    }
    return names;
}

/// Functions that the front end knows and SQL Server 2012 does not: of Oracle, and of later versions.
constexpr std::array foreignFunctions{"CEIL",       "CHR",    "CONCAT_WS", "GREATEST", "INSTR",   "LEAST",
                                      "LENGTH",     "LPAD",   "MOD",       "NVL",      "RPAD",    "STDDEV",
                                      "STRING_AGG", "SUBSTR", "SYSDATE",   "TO_CHAR",  "TO_DATE", "TO_NUMBER",
                                      "TRANSLATE",  "TRIM",   "TRUNC"};

TEST_F(StatementSyntax, NoFunctionIsNewerThanTheServer)
{
    std::size_t calls = 0;
    for (const FixedStatement& statement : all()) {
        const std::set<std::string> names = calledNames(statement.text);
        calls += names.size();
        for (const std::string& name : names)
            EXPECT_EQ(std::ranges::find(foreignFunctions, name), foreignFunctions.end())
                << name << " in " << statement.name;
        const std::string upper = text::toUpper(statement.text);
        for (const std::string_view words : {"DROP TABLE IF EXISTS", "CREATE OR ALTER", " FROM DUAL", " LIMIT ", "||"})
            EXPECT_EQ(upper.find(words), std::string::npos) << words << " in " << statement.name;
    }
    EXPECT_GT(calls, all().size());
}

} // namespace
} // namespace tamarok::database
