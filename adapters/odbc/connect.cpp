#include "tamarok_odbc/connect.h"

#include <memory>

#include "connection_text.h"
#include "date_order_setting.h"
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

} // namespace tamarok::odbc
