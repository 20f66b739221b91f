#pragma once

#include <span>

#include "database.h"
#include "translation/step.h"

#include "tamarok/ado.h"

namespace tamarok::embedded {

/// Runs an UPDATE that assigns to a key so that only the keys which all rows have in the end can collide: reads the new
/// values, gives each row whose key changes a key that nothing else can have, then assigns the new values. @@ROWCOUNT
/// is that of the UPDATE. Needs a transaction or savepoint, which the caller rolls back after a failure. Errors: as the
/// UPDATE has them, with the keys checked at its end; 547 for a broken reference.
void moveKeys(const Database& database, const Step& update, std::span<const ado::Parameter> parameters);

} // namespace tamarok::embedded
