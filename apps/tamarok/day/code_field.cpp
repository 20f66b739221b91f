#include <string>
#include <string_view>
#include <vector>

#include "day/steps.h"
#include "print/list_printer.h"

#include "tamarok/comm_set.h"

namespace tamarok::cli::day {

namespace {

/// Prints the rows that a lookup grid offers when the user opens the field.
void offer(const Context& context, std::string_view key, std::string_view fields)
{
    const std::string statement = Comm_Set{}.CreateSQL(context.session, key, fields);
    context.output.write(std::string{key} + ":\n" + statement + "\n\n");
    ado::Recordset rows;
    rows.Open(statement, context.session.db_ADO);
    const auto table = makeListPrinter(ListFormat::Table, context.output, fieldNames(rows));
    printRows(rows, *table);
    context.output.write("\n");
}

/// Checks a typed code as leaving the field does: a row means that the code is valid.
void check(const Context& context, std::string_view key, std::string_view assortment, std::string_view code)
{
    const std::string fields = std::string{assortment}.append("\t").append(code);
    ado::Recordset rows;
    rows.Open(Comm_Set{}.CreateSQL(context.session, key, fields), context.session.db_ADO);
    context.output.write(
        std::string{key} + ": " + std::string{code} +
        (rows.AtEOF() ? " is not allowed for " + std::string{assortment} : std::string{" is accepted"}) + "\n");
}

} // namespace

/// The fields of assortment and quality of a measured line: the assortment limits the qualities.
void showCodeField(const Context& context)
{
    constexpr std::string_view sawLogs = "BL";
    offer(context, "HOLZSORTE_GRID", "1\t");
    offer(context, "GUETEKLASSE_HS_GRID", sawLogs);
    check(context, "GUETEKLASSE_HS_LOGS_VALID", sawLogs, "c");
    check(context, "GUETEKLASSE_HS_LOGS_VALID", sawLogs, "F");
    check(context, "HOLZART_HS_LOGS_VALID", sawLogs, "fi");
    check(context, "HOLZART_HS_LOGS_VALID", "FU", "fi");
}

} // namespace tamarok::cli::day
