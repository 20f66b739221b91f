#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tamarok/connection_text.h"
#include "tamarok/date_order.h"

namespace tamarok::odbc {

/// What a connection text asks for.
struct ConnectionTarget {
    std::vector<ado::ConnectionProperty> properties; ///< for the driver manager, under its names
    std::string shownText;                           ///< as given, without password
    std::string password;                            ///< empty for none
    DateOrder dateOrder = DateOrder::Dmy;
};

/// Reads a connection text of either style; see connect.h. A text of ADO style without Driver and DSN has neither
/// afterwards. Error 5 for a text of another form; the message names the place in the text, never its content.
ConnectionTarget parseConnectionText(std::string_view text);

/// Composes a text for the driver manager. Values with special characters are put in braces.
std::string composeDriverText(const std::vector<ado::ConnectionProperty>& properties);

/// The value of a property, compared without regard to case; nullptr where there is none.
const std::string* findProperty(const std::vector<ado::ConnectionProperty>& properties, std::string_view name);

} // namespace tamarok::odbc
