#include "areas/areas.h"

namespace tamarok::database {

void writePeople(ado::Connection& /*connection*/, const ReferenceOptions& /*options*/) {}

} // namespace tamarok::database
