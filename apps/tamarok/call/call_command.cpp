#include <iostream>

#include "call/call_host.h"
#include "commands.h"
#include "session.h"

#include "tamarok/error.h"

namespace tamarok::cli {

int runCall(const CallOptions& options, Output& output)
{
    if (options.odbc) {
        throw Error{errors::providerFailure, "ODBC connections are not built into this program; use --db FILE"};
    }
    CallHost host{options.database ? openDatabase(*options.database) : nullptr, options.locale};
    host.run(std::cin, output);
    return 0;
}

} // namespace tamarok::cli
