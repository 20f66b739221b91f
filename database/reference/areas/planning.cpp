#include "areas/areas.h"

namespace tamarok::database {

void writePlanning(ado::Connection& /*connection*/, const ReferenceOptions& /*options*/) {}

} // namespace tamarok::database
