#include "dialogs/master_data_home.h"
#include "support/scratch_folder.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/backend.h"
#include "tamarok_embedded/new_database.h"

#include "tamarok/backend_registry.h"

// The tests of master data on the embedded database.

namespace tamarok::dialogs {

namespace {

class EmbeddedHome final : public MasterDataHome {
public:
    EmbeddedHome()
    {
        embedded::registerBackend(backends_);
        embedded::NewDatabase building{folder_ / "sample.db"};
        database::createReferenceDatabase(*building.connection(), {.logs = 0, .records = 20});
        building.connection()->Execute(entryTable);
        building.complete();
    }
    std::string connectionText() const override
    {
        return "Provider=Tamarok.Embedded;Data Source=" + (folder_ / "sample.db").string();
    }
    ado::ConnectionRef open(std::string_view connectionText) const override { return backends_.open(connectionText); }

private:
    test::ScratchFolder folder_;
    ado::BackendRegistry backends_;
};

} // namespace

std::unique_ptr<MasterDataHome> makeMasterDataHome()
{
    return std::make_unique<EmbeddedHome>();
}

} // namespace tamarok::dialogs
