#include "rights/lock_database.h"

#include <stdexcept>

namespace tamarok::test {

std::unique_ptr<ChildProcess> LockDatabase::station(int user) const
{
    const std::vector<std::string> arguments{file(), std::to_string(user), folder_.path()};
    auto child = std::make_unique<ChildProcess>(LOCK_CHILD, arguments, StandardError::Inherited);
    // A station that runs begins with the number of its process.
    const std::string greeting = child->line();
    if (greeting.empty() || greeting.find_first_not_of("0123456789") != std::string::npos)
        throw std::runtime_error{"the workstation did not start: " + greeting};
    return child;
}

} // namespace tamarok::test
