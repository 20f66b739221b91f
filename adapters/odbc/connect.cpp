#include "tamarok_odbc/connect.h"

#include <memory>

#include "connection_text.h"
#include "date_order_setting.h"
#include "failures.h"
#include "session.h"

namespace tamarok::odbc {

// The date order is set before the first statement of the caller; a server that does not take it is refused here.
ado::ConnectionRef connectText(std::string_view connectionText)
{
    const ConnectionTarget target = parseConnectionText(connectionText);
    auto state = std::make_shared<SessionState>(target);
    applyDateOrder(state->link);
    return std::make_shared<ado::Connection>(std::make_unique<OdbcSession>(std::move(state)), target.shownText);
}

// The session is known by its type: a connection may belong to any back end.
void requireDateFormat(ado::Connection& connection, std::string_view strDateFormat)
{
    auto* const session = dynamic_cast<OdbcSession*>(&connection.session());
    if (session == nullptr)
        throw Error{errors::invalidArgument, "The connection is not one of the ODBC back end.",
                    std::string{sourceName}};
    checkDateFormat(session->link(), strDateFormat);
}

} // namespace tamarok::odbc
