#include <string>
#include <string_view>

#include "check/checks.h"
#include "check/procedure_text.h"
#include "check/remedies.h"
#include "check/rows.h"
#include "tamarok_database/scripts.h"
#include "tamarok_embedded/procedures.h"
#include "tamarok_tsql/table_definition.h"

namespace tamarok::cli::check {

namespace {

constexpr std::string_view optionProcedure = "tmk_OPTIONEN_INS";

std::string remedy()
{
    return "run " + std::string{proceduresScript} + " again";
}

void checkOnServer(Context& context, const database::ProcedureScript& procedure)
{
    const ado::ConnectionRef& connection = context.installation.connection();
    const std::string name{procedure.name};
    const std::string what = "procedure " + name;
    if (readText(connection, "SELECT OBJECT_ID('" + name + "')").empty()) {
        context.report.add(State::Missing, what, remedy() + ", or grant the login the right to execute it");
        return;
    }
    const std::string text = readText(connection, "SELECT OBJECT_DEFINITION(OBJECT_ID('" + name + "'))");
    if (text.empty())
        context.report.add(State::Skipped, what,
                           "its text cannot be read: it was made WITH ENCRYPTION, or the login lacks the right; "
                           "GRANT VIEW DEFINITION ON " +
                               tsql::bracketed(name) + " gives it");
    else if (sameProcedure(name, text, procedure.text)) {
        context.report.add(State::Ok, what, "its text is that of this version");
        if (name == optionProcedure) context.installation.knowsOptionProcedure = true;
    } else
        context.report.add(State::Different, what, "its text is another than that of this version: " + remedy());
}

} // namespace

/// The embedded database has the procedures as its own code.
void checkProcedures(Context& context)
{
    const embedded::ProcedureRegistry builtIn = embedded::builtInProcedures();
    for (const database::ProcedureScript& procedure : database::procedureScripts()) {
        if (!context.installation.isFile())
            checkOnServer(context, procedure);
        else if (builtIn.find(procedure.name) != nullptr)
            context.report.add(State::Ok, "procedure " + std::string{procedure.name}, "built in");
        else
            context.report.add(State::Missing, "procedure " + std::string{procedure.name},
                               "this program does not have it built in: install the present version");
    }
}

} // namespace tamarok::cli::check
