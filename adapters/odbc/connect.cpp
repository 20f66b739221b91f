#include "tamarok_odbc/connect.h"

#include <memory>

#include "connection_text.h"
#include "date_order_setting.h"
#include "session.h"

namespace tamarok::odbc {

ado::ConnectionRef connectText(std::string_view connectionText)
{
    const ConnectionTarget target = parseConnectionText(connectionText);
    auto state = std::make_shared<SessionState>(target);
    applyDateOrder(state->link);
    return std::make_shared<ado::Connection>(std::make_unique<OdbcSession>(std::move(state)), target.shownText);
}

} // namespace tamarok::odbc
