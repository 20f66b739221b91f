#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "tamarok/ado.h"

namespace tamarok::odbc {

class Link;

/// A row by the key of its table.
struct RowName {
    std::string table;
    std::vector<std::string> keyColumns;
    std::vector<ado::Parameter> key;
    std::string plainColumn; ///< a column that can be written to itself: not of the key and not numbered by the server
};

/// Holds rows in the server, each within a transaction around it. The rows of one connection are free when the last of
/// them is released, since the server frees rows at the end of the transaction alone.
///
/// The first row that a session holds proves that the server holds rows at all: a second connection tries to get it.
class RowLocks {
public:
    explicit RowLocks(Link& link) : link_{link} {}
    RowLocks(const RowLocks&) = delete;
    RowLocks& operator=(const RowLocks&) = delete;

    /// Error 3251 for a server that cannot hold rows.
    void requireSupport() const;

    /// Holds a row; the end of the process frees it too. @return false for a row that has gone
    /// Errors: 0x80040E31 after the time-out, 3251 where another connection gets the row all the same.
    bool hold(const RowName& row, std::int32_t timeoutSeconds);
    void release();

private:
    bool take(Link& link, const RowName& row, std::int32_t timeoutSeconds) const;
    void prove(const RowName& row) const;

    Link& link_;
    bool proven_ = false;
    std::uint64_t heldSince_ = 0; ///< number of rollbacks when the last row was taken
    std::int32_t held_ = 0;
};

/// "[A]=? AND [B]=?"
std::string keyCondition(const Link& link, std::span<const std::string> columns);

} // namespace tamarok::odbc
