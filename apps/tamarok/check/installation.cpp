#include "check/installation.h"

#include "session.h"
#include "tamarok_embedded/connect.h"

#include "tamarok/error.h"

namespace tamarok::cli::check {

namespace {

/// Seconds that a statement of the checks may wait for other sessions.
constexpr std::int32_t patience = 10;

} // namespace

Installation::Installation(const DatabaseChoice& database, const std::string& dateFormat) :
    choice{database}, session{commandSession(openToCheck(database))}
{
    session.strDateFormat = dateFormat;
    connection()->CommandTimeout(patience);
    knowsOptionProcedure = isFile();
    trial = isFile() ? embedded::connectInMemory() : connection();
}

bool Installation::answers() const
{
    try {
        connection()->Execute("SELECT 1");
        return true;
    } catch (const Error&) {
        return false;
    }
}

} // namespace tamarok::cli::check
