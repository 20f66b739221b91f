#pragma once

#include <string>
#include <string_view>

namespace tamarok::odbc {

class Link;

/// Gives the server the date order of the connection, once, when it is opened, and reads a date back. A server that
/// takes SET DATEFORMAT without effect is told in its own way. Error 0x80004005, which names the remedy, where the date
/// is still read in another order: no statement may swap day and month silently.
void applyDateOrder(Link& link);

/// Reads a date back that is written in a date format of the session record. Error 0x80004005 where it is another day.
void checkDateFormat(Link& link, std::string_view strDateFormat);

/// Tells a T-SQL server the order of the short dates of this thread's regional settings, under the name by which the
/// stored procedures of the system read it from the session context. A server without session contexts, before SQL
/// Server 2016, is not told; the procedures then go by the form of a date.
/// @param told  the order that the server was told last; empty for none
void tellRegionalOrder(Link& link, std::string& told);

} // namespace tamarok::odbc
