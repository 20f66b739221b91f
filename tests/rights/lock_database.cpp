#include "rights/lock_database.h"

#include <filesystem>
#include <stdexcept>

namespace tamarok::test {

namespace fs = std::filesystem;

std::unique_ptr<ChildProcess> LockDatabase::station(int user) const
{
    return start(LOCK_CHILD, {}, user);
}

std::unique_ptr<ChildProcess> LockDatabase::stationOfNobody(int user) const
{
    // The account may not reach the folder in which the program was built.
    const std::string program = folder_ / "station";
    fs::copy_file(LOCK_CHILD, program, fs::copy_options::skip_existing);
    fs::permissions(program, fs::perms{0755});
    return start("/usr/bin/setpriv", {"--reuid", "65534", "--regid", "65534", "--clear-groups", program}, user);
}

void LockDatabase::openToAll() const
{
    fs::permissions(folder_.path(), fs::perms{0777});
    for (const char* const side : {"", "-wal", "-shm", "-locks"})
        if (fs::exists(file() + side)) fs::permissions(file() + side, fs::perms{0666});
}

std::unique_ptr<ChildProcess> LockDatabase::start(const std::string& program, std::vector<std::string> arguments,
                                                  int user) const
{
    arguments.insert(arguments.end(), {file(), std::to_string(user), folder_.path()});
    auto child = std::make_unique<ChildProcess>(program, arguments, StandardError::Inherited);
    // A station that runs begins with the number of its process.
    const std::string greeting = child->line();
    if (greeting.empty() || greeting.find_first_not_of("0123456789") != std::string::npos)
        throw std::runtime_error{"the workstation did not start: " + greeting};
    return child;
}

} // namespace tamarok::test
