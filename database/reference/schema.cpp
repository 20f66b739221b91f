#include "tamarok_database/schema.h"

#include <cstdint>
#include <string>
#include <string_view>

#include "resources.h"
#include "sql_batches.h"

#include "tamarok/error.h"

namespace tamarok::database {
namespace {

enum class BatchKind : std::uint8_t { Table, Index };

BatchKind kindOf(std::string_view batch)
{
    const bool isIndex = batch.starts_with("CREATE INDEX ") || batch.starts_with("CREATE UNIQUE INDEX ");
    return isIndex ? BatchKind::Index : BatchKind::Table;
}

void runBatches(ado::Connection& connection, BatchKind kind)
{
    for (const Resource& file : resources("schema")) {
        try {
            for (const std::string_view batch : splitBatches(file.text))
                if (kindOf(batch) == kind) connection.Execute(batch);
        } catch (Error& error) {
            throw error.addContext("Schema " + std::string{file.name});
        }
    }
}

} // namespace

void createTables(ado::Connection& connection)
{
    runBatches(connection, BatchKind::Table);
}

void createIndexes(ado::Connection& connection)
{
    runBatches(connection, BatchKind::Index);
}

} // namespace tamarok::database
