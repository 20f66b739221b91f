#pragma once

namespace tamarok::odbc {

class Link;

/// Gives the server the date order of the connection, once, when it is opened, and reads a date back. A server that
/// takes SET DATEFORMAT without effect is told in its own way. Error 0x80004005, which names the remedy, where the date
/// is still read in another order: no statement may swap day and month silently.
///
/// A server with session contexts is also told the order of the machine's short dates, which the stored procedures of
/// the system read there.
void applyDateOrder(Link& link);

} // namespace tamarok::odbc
