#include "dialect/dialect.h"

#include "tamarok/tmkvar.h"

namespace tamarok::dialect {

// The one place of the core, besides the session record, that reads the flag.
const Dialect& of(const TmkVar& session) noexcept
{
    return session.bolOracle ? oracle : sqlServer;
}

} // namespace tamarok::dialect
