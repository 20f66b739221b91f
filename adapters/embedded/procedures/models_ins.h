#pragma once

#include "tamarok_embedded/procedures.h"

namespace tamarok::embedded {

/// tmk_MODELS_INS @RELATION, @NAME, @MODEL, @STANDARD, @ID_USER, @NICHT_ANDERBAR, @ID_ACCESS_LEVELS: writes one model
/// of MODELS, in the row of that relation and name, or else in a new one. A user or level 0 is stored as Null. An empty
/// relation or name is an error (native 50000) and nothing is written.
///
/// Texts are cut to 60, 80 and 1000 characters, as the server cuts them to its parameters. A model that has 1000 or
/// more loses what follows its last comma, since a cut may have left half a number there.
Procedure modelsIns();

} // namespace tamarok::embedded
