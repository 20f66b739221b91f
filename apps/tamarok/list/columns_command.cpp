#include "list/columns_command.h"

#include <limits>

#include "connections.h"
#include "host_platform.h"
#include "list/column_headers.h"
#include "list/list_query.h"
#include "session.h"

namespace tamarok::cli {

namespace {

/// No list type numbers its columns higher.
constexpr std::int16_t lastColumn = 2000;

} // namespace

int runColumns(const ColumnsOptions& options, Output& output)
{
    const PlatformScope scope{commandPlatform({})};
    const TmkVar session = commandSession(openForReading(options.database));
    requireListType(options.type, session);
    std::int64_t count = 0;
    for (std::int16_t id = 1; id <= lastColumn; ++id) {
        const std::string expression = columnExpression(options.type, id, options.version, session);
        if (expression.empty()) continue;
        output.write(std::to_string(id) + "\t" + columnHeader(options.type, id, session) + "\t" + expression + "\n");
        ++count;
    }
    output.flush();
    if (count == 0) throw UnknownColumn{"the columns of list type '" + options.type + "' are not in the catalogue"};
    return 0;
}

} // namespace tamarok::cli
