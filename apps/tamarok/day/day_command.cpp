#include "day/day_command.h"

#include <string>

#include "connections.h"
#include "day/steps.h"
#include "host_platform.h"
#include "session.h"

namespace tamarok::cli {

int runDay(const DayOptions& options, Output& output)
{
    const ado::ConnectionRef connection = openDatabase(options.database);
    ServerTexts servers;
    if (options.database.odbc) servers.remember(*connection, *options.database.odbc);
    Platform platform = commandPlatform(options.locale);
    platform.makeConnection = [&servers](std::string_view text) { return servers.open(text); };
    const PlatformScope scope{platform};
    const TmkVar session = commandSession(connection);
    std::size_t number = 0;
    for (const day::Step& step : day::steps()) {
        if (number > 0) output.write("\n");
        ++number;
        output.write(std::to_string(number) + ". " + std::string{step.title} + "\n\n");
        step.run({session, output, options.database});
        output.flush();
    }
    return 0;
}

} // namespace tamarok::cli
