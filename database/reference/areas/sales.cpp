#include "areas/areas.h"

namespace tamarok::database {

void writeSales(ado::Connection& /*connection*/, const ReferenceOptions& /*options*/) {}

} // namespace tamarok::database
