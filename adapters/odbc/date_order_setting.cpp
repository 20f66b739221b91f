#include "date_order_setting.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "failures.h"
#include "link.h"
#include "tamarok_tsql/date_order.h"

#include "tamarok/comm_conv.h"
#include "tamarok/convert.h"
#include "tamarok/date.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

namespace tamarok::odbc {

namespace {

/// 5 March 2024 in each order, and the order in PostgreSQL's words, which has three.
struct ProbeRow {
    DateOrder order;
    std::string_view text;
    std::string_view style;
};

constexpr std::array probeRows{
    ProbeRow{DateOrder::Mdy, "3.5.2024", "ISO, MDY"}, ProbeRow{DateOrder::Dmy, "5.3.2024", "ISO, DMY"},
    ProbeRow{DateOrder::Ymd, "2024.3.5", "ISO, YMD"}, ProbeRow{DateOrder::Ydm, "2024.5.3", ""},
    ProbeRow{DateOrder::Myd, "3.2024.5", ""},         ProbeRow{DateOrder::Dym, "5.2024.3", ""},
};

constexpr std::string_view probedDay = "20240305";

/// Whether the server reads a text as 5 March 2024.
bool readsRight(Link& link, std::string_view probe)
{
    // CAST as the implicit conversions do it: the open server's CONVERT without style does not follow its setting.
    const std::string date = "'" + text::replaceAll(probe, "'", "''") + "'";
    const std::string text = link.traits().nestsTransactions
                                 ? "SELECT CONVERT(VARCHAR(8), CAST(" + date + " AS DATETIME), 112)"
                                 : "SELECT to_char(CAST(" + date + " AS DATE), 'YYYYMMDD')";
    try {
        const auto rows = link.read({.text = text});
        return !rows.empty() && convert::toText(rows[0][0]) == probedDay;
    } catch (const Error&) {
        if (link.isLost()) throw;
        return false; // a text that is no date in the server's order
    }
}

void applyToTsql(Link& link, const ProbeRow& probe)
{
    const std::string order{tsql::dateOrderName(probe.order)};
    link.runToEnd({.text = "SET DATEFORMAT " + order});
    if (readsRight(link, probe.text)) return;
    if (link.server() == Server::OpenTsql && !probe.style.empty()) {
        link.runToEnd({.text = "SELECT set_config('DateStyle', '" + std::string{probe.style} + "', false)"});
        if (readsRight(link, probe.text)) return;
    }
    throw providerFailure("The server does not read dates in the order " + order + ", which this connection needs: '" +
                          std::string{probe.text} +
                          "' is not 5 March 2024 to it. Name an order that it takes with 'Date Order' in the "
                          "connection text (DMY, MDY and YMD work everywhere).");
}

/// The order of day, month and year in a date pattern such as "dd.MM.yyyy"; texts in quotes do not count. Empty for a
/// pattern that lacks one of them or has the year in the middle.
std::string orderOf(std::string_view pattern)
{
    std::string order;
    bool quoted = false;
    for (const char letter : pattern) {
        if (letter == '\'') quoted = !quoted;
        const char part = letter == 'M' ? 'm' : letter;
        const bool isPart = part == 'd' || part == 'm' || part == 'y';
        if (!quoted && isPart && order.find(part) == std::string::npos) order.push_back(part);
    }
    return order.size() == 3 && order[1] != 'y' ? order : std::string{};
}

} // namespace

void checkDateFormat(Link& link, std::string_view strDateFormat)
{
    // Of the servers with dates, these two are known to read them by an order.
    if (!link.traits().nestsTransactions && link.server() != Server::PostgreSql) return;
    const std::string probe = convert::toText(Comm_Conv{}.TransDate(makeDate(2024, 3, 5), strDateFormat));
    if (readsRight(link, probe)) return;
    throw providerFailure(
        "The session's date format '" + std::string{strDateFormat} +
        "' does not fit the connection: the server does not read '" + probe +
        "' as 5 March 2024. Name the order of the format with 'Date Order' in the connection text, or "
        "give the session a format in the order of the connection, such as DD.MM.YYYY for DMY.");
}

void tellRegionalOrder(Link& link, std::string& told)
{
    const std::string order = orderOf(Platform::current().regional.shortDate);
    if (!link.traits().nestsTransactions || order == told) return;
    const std::string value = order.empty() ? "NULL" : "N'" + order + "'";
    try {
        link.runToEnd({.text = "EXEC sp_set_session_context N'tamarok_date_order', " + value});
    } catch (const Error& error) {
        constexpr std::int32_t procedureUnknown = 2812;
        if (error.nativeError != procedureUnknown) throw;
    }
    told = order;
}

void applyDateOrder(Link& link)
{
    const DateOrder order = link.target().dateOrder;
    const auto* const probe = std::ranges::find(probeRows, order, &ProbeRow::order);
    if (link.traits().nestsTransactions) {
        applyToTsql(link, *probe);
    } else if (link.server() == Server::PostgreSql) {
        if (probe->style.empty())
            throw providerFailure("PostgreSQL reads dates in the orders DMY, MDY and YMD alone; name one of them with "
                                  "'Date Order' in the connection text.");
        link.runToEnd({.text = "SET DateStyle TO '" + std::string{probe->style} + "'"});
    }
}

} // namespace tamarok::odbc
