#include "check/checks.h"

#include <array>

namespace tamarok::cli::check {

namespace {

/// A further check is one more line.
constexpr std::array table{
    Check{"server", Concerns::Server, &checkServer},
    Check{"login", Concerns::Server, &checkLogin},
    Check{"file", Concerns::File, &checkFile},
    Check{"date order", Concerns::Both, &checkDates},
    Check{"tables", Concerns::Both, &checkTables},
    Check{"procedures", Concerns::Both, &checkProcedures},
    Check{"texts", Concerns::Both, &checkTexts},
    Check{"key rows", Concerns::Both, &checkKeyRows},
    Check{"collation", Concerns::Both, &checkCollation},
    Check{"rights", Concerns::Server, &checkRights},
    Check{"readers beside writers", Concerns::Server, &checkReading},
    Check{"lists", Concerns::Both, &checkLists},
    Check{"selections", Concerns::Both, &checkSelections},
    Check{"options", Concerns::Both, &checkOptions},
    Check{"object lock", Concerns::Both, &checkLocks},
    Check{"row lock", Concerns::Both, &checkRowLock},
};

} // namespace

std::span<const Check> checks() noexcept
{
    return table;
}

} // namespace tamarok::cli::check
