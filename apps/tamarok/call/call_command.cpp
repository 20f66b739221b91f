#include "call/call_command.h"

#include <cerrno>
#include <cstdio>
#include <iostream>
#include <system_error>
#include <utility>

#include "call/call_host.h"
#include "connections.h"

#include "tamarok/error.h"

namespace tamarok::cli {

namespace {

constexpr std::int32_t deviceError = 57;

ado::ConnectionRef openWanted(const CallOptions& options)
{
    if (options.odbc) return openOdbc(*options.odbc);
    return options.database ? openDatabase(*options.database) : nullptr;
}

} // namespace

int runCall(const CallOptions& options, Output& output)
{
    const ado::ConnectionRef connection = openWanted(options);
    ServerTexts servers;
    if (options.odbc) servers.remember(*connection, *options.odbc);
    CallHost host{connection, options.locale, std::move(servers)};
    host.run(std::cin, output);
    // The stream does not distinguish a failed read from the end of the input; the file below it does.
    const int reason = errno;
    const bool failed = std::ferror(stdin) != 0;
    host.finish();
    if (failed) {
        throw Error{deviceError, "cannot read standard input: " + std::generic_category().message(reason)};
    }
    return 0;
}

} // namespace tamarok::cli
