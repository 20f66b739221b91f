#include "rights/lock_database.h"

namespace tamarok::testing {

std::unique_ptr<embedded::test::Child> LockDatabase::station(int user) const
{
    std::vector<std::string> arguments;
    for (const std::string& argument : {file(), std::to_string(user), folder_.string()})
        arguments.push_back(argument);
    auto child = std::make_unique<embedded::test::Child>(std::move(arguments));
    const std::string hello = child->line();
    if (hello.empty() || hello.find_first_not_of("0123456789") != std::string::npos)
        throw std::runtime_error{"no workstation: " + hello};
    return child;
}

std::string ask(embedded::test::Child& station, const std::string& command)
{
    station.tell(command);
    return station.line();
}

} // namespace tamarok::testing
