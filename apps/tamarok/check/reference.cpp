#include "check/reference.h"

#include "tamarok_database/reference_database.h"
#include "tamarok_database/schema.h"
#include "tamarok_embedded/connect.h"

namespace tamarok::cli::check {

Reference::Reference() : database{embedded::connectInMemory()}
{
    database::createReferenceDatabase(*database, {.logs = 0, .records = 0});
    const ado::ConnectionRef withoutIndexes = embedded::connectInMemory();
    database::createTables(*withoutIndexes);
    tables = embeddedTables(*withoutIndexes);
}

} // namespace tamarok::cli::check
