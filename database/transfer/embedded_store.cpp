#include <utility>

#include "tamarok_database/transfer.h"
#include "tamarok_embedded/table_definitions.h"

namespace tamarok::database {
namespace {

class EmbeddedStore final : public Store {
public:
    explicit EmbeddedStore(ado::ConnectionRef connection) : Store{std::move(connection)} {}

    tsql::SchemaDefinition schema() override { return embedded::schemaDefinition(*connection()); }

    void requireReadable(const tsql::TableDefinition&) override {} // it holds what the library reads

    std::int64_t lastIdentity(const tsql::TableDefinition& table) override
    {
        return embedded::lastIdentity(*connection(), table.name);
    }

    void raiseIdentity(const tsql::TableDefinition& table, std::int64_t number, std::int64_t) override
    {
        embedded::raiseIdentity(*connection(), table.name, number);
    }

    RowForm rowForm() const noexcept override { return RowForm::Parameters; }
    void finish() override {} // its procedures are native code
};

} // namespace

std::unique_ptr<Store> embeddedStore(ado::ConnectionRef connection)
{
    embedded::schemaDefinition(*connection); // refuses a connection of another kind
    return std::make_unique<EmbeddedStore>(std::move(connection));
}

} // namespace tamarok::database
