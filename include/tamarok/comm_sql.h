#pragma once

#include <cstdint>

#include "tamarok/tmkvar.h"

namespace tamarok {

/// Answers that one fixed statement gives. The class has no state.
class Comm_SQL {
public:
    /// Whether models may be changed globally: the number of property CHANGE_MODELS, 1 where the
    /// property has no row or no value. Makes no row.
    /// Errors: 6 for a number beyond 16 bits, failures of the database.
    std::int16_t OPTIONEN_glbModel(const TmkVar& tmkVar) const;
};

} // namespace tamarok
