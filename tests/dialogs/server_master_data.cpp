#include <optional>

#include "dialogs/master_data_home.h"
#include "server_sample.h"
#include "support/tsql_server.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_odbc/connect.h"

// The tests of master data on the T-SQL server.

namespace tamarok::dialogs {

namespace {

class ServerHome final : public MasterDataHome {
public:
    ServerHome()
    {
        const ado::ConnectionRef original = embedded::connectInMemory();
        database::createReferenceDatabase(*original, {.logs = 0, .records = 20});
        sample_.emplace(original);
        sample_->connect()->Execute(entryTable);
    }
    std::string connectionText() const override { return sample_->connectionText(); }
    ado::ConnectionRef open(std::string_view connectionText) const override
    {
        return odbc::connectText(connectionText);
    }

private:
    std::optional<database::test::ServerSample> sample_;
};

} // namespace

std::unique_ptr<MasterDataHome> makeMasterDataHome()
{
    return test::tsqlServer() ? std::make_unique<ServerHome>() : nullptr;
}

} // namespace tamarok::dialogs
