#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>
#include <map>
#include <memory>

#include "embedded/contract/contract.h"
#include "embedded/contract/server_session.h"
#include "odbc/support/tsql_database.h"
#include "support/tsql_server.h"

/// answers.txt, run on the T-SQL server of the tests, in a database of its own. Where the server's answer is not the
/// documented one, a file of known differences must say so: server_differences.txt, or the file of this folder that
/// TAMAROK_TSQL_DIFFERENCES names. Its blocks are reasons, their cases statements with the server's answer. A block
/// named "Setup" has statements to run at the beginning of each connection.
namespace tamarok::embedded::contract {
namespace {

std::string environment(const char* name, const char* otherwise)
{
    const char* value = std::getenv(name);
    return value != nullptr && *value != '\0' ? value : otherwise;
}

/// The differences that a file lists.
class Differences {
public:
    explicit Differences(const std::string& fileName) : fileName_{fileName}
    {
        for (const Block& block : readBlocks(fileName)) {
            for (const Case& row : block.cases) {
                if (block.name == "Setup") {
                    setup_.push_back(row.statement);
                } else {
                    known_[row.statement].push_back({row, false});
                }
            }
        }
    }

    const std::vector<std::string>& setup() const { return setup_; }

    bool isKnown(const std::string& statement, const std::string& answer)
    {
        const auto found = known_.find(statement);
        if (found == known_.end()) return false;
        const auto entry = std::ranges::find_if(found->second, [&](const Entry& e) { return e.row.answer == answer; });
        if (entry == found->second.end()) return false;
        entry->met = true;
        return true;
    }

    /// A listed difference that the run did not meet fails the test: the list stays exact.
    void expectAllMet() const
    {
        for (const auto& [statement, entries] : known_) {
            for (const Entry& entry : entries)
                EXPECT_TRUE(entry.met) << fileName_ << ":" << entry.row.line << " no longer differs\n" << statement;
        }
    }

private:
    struct Entry {
        Case row;
        bool met;
    };
    std::string fileName_;
    std::vector<std::string> setup_;
    std::map<std::string, std::vector<Entry>> known_;
};

/// A connection to the database of the test, in which the table WOOD alone stands.
std::unique_ptr<ServerSession> connect(const test::TsqlDatabase& database, const std::vector<std::string>& setup)
{
    auto session = std::make_unique<ServerSession>(database.connectionText());
    for (const std::string& statement : setup)
        session->run(statement);
    session->answer("DROP TABLE WOOD");
    for (const std::string& statement : woodStatements())
        session->run(statement);
    return session;
}

TEST(ServerContract, HasTheDocumentedAnswers)
{
    if (!test::tsqlServer()) GTEST_SKIP() << "no T-SQL server: the contract was not compared with one";
    Differences differences{environment("TAMAROK_TSQL_DIFFERENCES", "server_differences.txt")};
    const test::TsqlDatabase database{"contract"};
    std::size_t cases = 0;
    std::size_t known = 0;
    for (const Block& block : readBlocks("answers.txt")) {
        if (block.isEmbeddedOnly()) continue;
        const auto session = connect(database, differences.setup());
        for (const Case& row : block.cases) {
            ++cases;
            const std::string answer = session->answer(row.statement);
            if (answer == row.answer) continue;
            if (differences.isKnown(row.statement, answer)) {
                ++known;
                continue;
            }
            ADD_FAILURE() << "answers.txt:" << row.line << ": an answer that is not listed as a difference\n"
                          << row.statement << "\n=> " << answer << "\ndocumented: " << row.answer;
        }
    }
    differences.expectAllMet();
    std::cout << cases << " statements, " << known << " known differences\n";
}

} // namespace
} // namespace tamarok::embedded::contract
