#include <fcntl.h>
#include <filesystem>
#include <string>
#include <system_error>
#include <unistd.h>

#include "check/checks.h"
#include "tamarok_embedded/shown_text.h"

namespace tamarok::cli::check {

namespace {

namespace fs = std::filesystem;

/// Whether the account may do this with a file. The file system may be mounted for reading only too.
bool allows(const fs::path& file, int right)
{
    return ::faccessat(AT_FDCWD, file.c_str(), right, AT_EACCESS) == 0;
}

std::string shown(const fs::path& file)
{
    return "'" + embedded::shownText(file.string()) + "'";
}

constexpr const char* rightsRemedy = "; give the account, or a group of it, the right to write (chmod, chown)";

} // namespace

/// What a session that works with the file needs: it writes the file, and SQLite's own files and the file of the row
/// locks beside it.
void checkFile(Context& context)
{
    std::error_code unreachable;
    const fs::path named = context.installation.choice.file;
    const fs::path real = fs::canonical(named, unreachable);
    const fs::path file = unreachable ? named : real;
    context.report.add(State::Ok, "file " + shown(named), "opened for reading only");
    if (!allows(file, W_OK))
        context.report.add(State::Missing, "right to write the file",
                           "this account can only read " + shown(file) + rightsRemedy);
    if (!allows(file.parent_path(), W_OK | X_OK))
        context.report.add(State::Missing, "right to write the folder",
                           "this account can make no file in " + shown(file.parent_path()) +
                               ", and a session that writes needs some beside the database" + rightsRemedy);
    const fs::path locks = file.string() + "-locks";
    if (allows(locks, F_OK) && !allows(locks, R_OK | W_OK))
        context.report.add(State::Missing, "right to the file of row locks",
                           "this account cannot use " + shown(locks) + rightsRemedy);
}

} // namespace tamarok::cli::check
