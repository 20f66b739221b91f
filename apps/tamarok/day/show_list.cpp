#include "day/show_list.h"

#include <utility>

#include "list/column_labels.h"
#include "print/list_printer.h"

#include "tamarok/ado.h"
#include "tamarok/comm_conv.h"
#include "tamarok/comm_csel.h"
#include "tamarok/convert.h"

namespace tamarok::cli::day {

namespace {

/// Prints rows by another printer and sums some of their columns.
class SummingPrinter final : public ListPrinter {
public:
    SummingPrinter(ListPrinter& target, const std::vector<std::size_t>& columns) :
        target_{target}, columns_{columns}, sums_(columns.size(), 0.0)
    {}

    void row(const std::vector<Variant>& values) override
    {
        for (std::size_t index = 0; index < columns_.size(); ++index) {
            const Variant& value = values[columns_[index]];
            if (!value.isNull()) sums_[index] += convert::toDouble(value);
        }
        target_.row(values);
    }

    void finish() override { target_.finish(); }

    const std::vector<double>& sums() const noexcept { return sums_; }

private:
    ListPrinter& target_;
    const std::vector<std::size_t>& columns_;
    std::vector<double> sums_;
};

std::string dateLiteral(Date date, const TmkVar& session)
{
    return "'" + convert::toText(Comm_Conv{}.TransDate(date, session.strDateFormat)) + "'";
}

} // namespace

std::vector<double> showList(const Context& context, const ListRequest& request, const std::vector<std::size_t>& totals)
{
    const std::string statement = composeList(request, context.session).statement(context.session, request.limit);
    context.output.write(statement + "\n\n");
    ado::Recordset records;
    records.Open(statement, context.session.db_ADO);
    const auto table =
        makeListPrinter(ListFormat::Table, context.output, columnHeaders(request.type, request.ids, context.session),
                        columnPatterns(request.type, request.ids, context.session));
    SummingPrinter summing{*table, totals};
    printRows(records, summing);
    return summing.sums();
}

std::string measuredWithinPeriod(const TmkVar& session)
{
    const Comm_CSel columns;
    const std::string from = "LOGS.LISTDATUM >= " + dateLiteral(session.DateFrom, session);
    const std::string to = "LOGS.LISTDATUM <= " + dateLiteral(session.DateTo, session);
    return columns.InsertToWhere(columns.InsertToWhere(from, to), "LOGS.STKL <> ''");
}

} // namespace tamarok::cli::day
