#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "sql_batches.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_database/server_scripts.h"
#include "tamarok_embedded/connect.h"

#include "tamarok/text.h"

namespace tamarok::database {
namespace {

const std::vector<ServerScript>& scripts()
{
    static const std::vector<ServerScript> all = [] {
        const ado::ConnectionRef master = embedded::connectInMemory();
        createMasterDatabase(*master);
        return serverScripts(master);
    }();
    return all;
}

std::string contentOf(const std::string& file)
{
    std::ifstream stream{file, std::ios::binary};
    return {std::istreambuf_iterator<char>{stream}, {}};
}

TEST(ServerScripts, OfTheTreeAreCurrent)
{
    ASSERT_EQ(scripts().size(), 4U);
    for (const ServerScript& script : scripts()) {
        const bool same = contentOf(TAMAROK_SERVER_SCRIPTS "/" + script.name) == script.text;
        EXPECT_TRUE(same) << script.name << " is out of date: ninja -C build/release server_scripts";
    }
}

TEST(ServerScripts, UseNothingThatAServerOf2012DoesNotKnow)
{
    for (const ServerScript& script : scripts())
        for (const char* word : {"IF EXISTS", "CREATE OR ALTER", "STRING_AGG", " NTEXT", "_BIN ", "$(", "\xEF\xBB\xBF"})
            EXPECT_EQ(text::findNoCase(script.text, word), 0) << script.name << ": " << word;
}

/// The function of session contexts may stand in a text alone, which a server before 2016 does not read.
TEST(ServerScripts, NameTheSessionContextInATextAlone)
{
    const std::string& procedures = scripts().at(1).text;
    const std::size_t at = procedures.find("SESSION_CONTEXT(");
    ASSERT_NE(at, std::string::npos);
    EXPECT_EQ(procedures.find("SESSION_CONTEXT(", at + 1), std::string::npos);
    const std::size_t line = procedures.rfind('\n', at);
    EXPECT_NE(procedures.substr(line, at - line).find("N'"), std::string::npos);
}

TEST(ServerScripts, EveryBatchOfTablesAndRowsAsksFirst)
{
    for (const ServerScript& script : scripts()) {
        if (script.name == "02_procedures.sql") continue;
        std::vector<std::string_view> batches = splitBatches(script.text);
        batches.erase(batches.begin()); // the settings
        for (const std::string_view batch : batches) {
            const bool asks = batch.find("IF OBJECT_ID(") != std::string_view::npos ||
                              batch.find("NOT EXISTS (SELECT 1 FROM dbo.") != std::string_view::npos;
            EXPECT_TRUE(asks) << script.name << ": " << batch.substr(0, 200);
        }
    }
}

TEST(ServerScripts, NoStatementHasMoreThan1000Rows)
{
    for (const ServerScript& script : scripts()) {
        for (const std::string_view batch : splitBatches(script.text)) {
            for (std::size_t at = batch.find("VALUES\n"); at != std::string_view::npos;) {
                const std::size_t next = std::min(batch.find("VALUES\n", at + 1), batch.size());
                const std::string_view rows = batch.substr(at, next - at);
                EXPECT_LE(std::ranges::count(rows, '\n'), 1000) << script.name;
                at = next == batch.size() ? std::string_view::npos : next;
            }
        }
    }
}

} // namespace
} // namespace tamarok::database
