#include "areas/areas.h"

namespace tamarok::database {

void writeHunting(ado::Connection& /*connection*/, const ReferenceOptions& /*options*/) {}

} // namespace tamarok::database
