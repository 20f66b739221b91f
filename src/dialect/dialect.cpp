#include "dialect/dialect.h"

#include "tamarok/tmkvar.h"

namespace tamarok::dialect {

const Dialect& of(const TmkVar& session) noexcept
{
    return session.bolOracle ? oracle : sqlServer;
}

} // namespace tamarok::dialect
