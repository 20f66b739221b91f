#include "list/columns_command.h"

#include "connections.h"
#include "host_platform.h"
#include "list/column_labels.h"
#include "list/list_query.h"
#include "session.h"

#include "tamarok/comm_csel.h"
#include "tamarok/list_catalogue.h"
#include "tamarok/loc_service.h"
#include "tamarok/platform.h"

namespace tamarok::cli {

namespace {

TmkVar readingSession(const DatabaseChoice& database, const std::string& language)
{
    TmkVar session = commandSession(openForReading(database));
    session.strLanguage = language;
    return session;
}

} // namespace

int runColumns(const ColumnsOptions& options, Output& output)
{
    const PlatformScope scope{commandPlatform({})};
    const TmkVar session = readingSession(options.database, options.language);
    requireListType(options.type);
    const ColumnLabels labels{options.type, session};
    const Comm_CSel csel;
    for (const catalogue::ColumnInfo& column : catalogue::columnsOf(options.type)) {
        const std::string expression = columnExpression(options.type, column.id, options.version, session);
        if (expression.empty()) continue; // Two rows of the log list are empty.
        output.write(std::to_string(column.id) + "\t" + labels.label(column.id) + "\t" +
                     csel.GetFormat(options.type, column.id, session) + "\t" + std::string{column.measure} + "\t" +
                     expression + "\n");
    }
    output.flush();
    return 0;
}

int runTypes(const TypesOptions& options, Output& output)
{
    const PlatformScope scope{commandPlatform({})};
    const TmkVar session = readingSession(options.database, options.language);
    const auto texts = Platform::locService();
    for (const std::string_view key : catalogue::listTypeKeys()) {
        const catalogue::ListTypeInfo type = catalogue::listTypeInfo(key);
        const std::string_view table = type.base.substr(0, type.base.find(' '));
        output.write(std::string{key} + "\t" + texts->GetText(type.label, session) + "\t" + std::string{table} + "\t" +
                     std::to_string(type.columns) + "\n");
    }
    output.flush();
    return 0;
}

} // namespace tamarok::cli
