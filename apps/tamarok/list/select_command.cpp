#include "list/select_command.h"

#include <string_view>
#include <vector>

#include "connections.h"
#include "host_platform.h"
#include "session.h"

#include "tamarok/comm_set.h"
#include "tamarok/error.h"
#include "tamarok/selection_book.h"
#include "tamarok/spelling.h"

namespace tamarok::cli {

namespace {

int listKeys(Output& output)
{
    for (const selections::Selection& selection : selections::all())
        output.write(std::string{selection.key} + "\n");
    output.flush();
    return 0;
}

[[noreturn]] void refuseKey(const std::string& key)
{
    std::vector<std::string_view> known;
    for (const selections::Selection& selection : selections::all())
        known.push_back(selection.key);
    std::string help = spelling::suggestion(key, known);
    if (help.empty()) help = "; capitals count, and 'tamarok select' lists all keys.";
    throw Error{errors::invalidArgument, "No base selection has the key '" + key + "'" + help};
}

std::string tabbed(const std::vector<std::string>& fields)
{
    std::string vector;
    for (const std::string& field : fields)
        vector.append(&field == fields.data() ? "" : "\t").append(field);
    return vector;
}

} // namespace

int runSelect(const SelectOptions& options, Output& output)
{
    if (options.key.empty()) return listKeys(output);
    const PlatformScope scope{commandPlatform(options.locale)};
    TmkVar session = commandSession(options.run ? openForReading(options.database) : ado::ConnectionRef{});
    session.bolOracle = options.oracle;
    const std::string statement = Comm_Set{}.CreateSQL(session, options.key, tabbed(options.fields));
    if (statement.empty()) refuseKey(options.key);
    if (!options.run) {
        output.write(statement + "\n");
        output.flush();
        return 0;
    }
    ado::Recordset records;
    records.Open(statement, session.db_ADO);
    const auto printer = makeListPrinter(options.format, output, fieldNames(records));
    printRows(records, *printer);
    return 0;
}

} // namespace tamarok::cli
