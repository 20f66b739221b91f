#include "row_locks.h"

#include "failures.h"
#include "link.h"

namespace tamarok::odbc {

namespace {

/// The statement that takes a row in an open transaction.
std::string holdText(const Link& link, const RowName& row)
{
    const std::string table = link.quoted(row.table);
    const std::string where = " WHERE " + keyCondition(link, row.keyColumns);
    switch (link.traits().rowHold) {
    case RowHold::UpdateLock: return "SELECT 1 FROM " + table + " WITH (UPDLOCK, ROWLOCK)" + where;
    case RowHold::SelfUpdate: {
        if (row.plainColumn.empty())
            throw unsupported("The rows of table '" + row.table +
                              "' cannot be locked: it has no column besides its key.");
        const std::string column = link.quoted(row.plainColumn);
        return "UPDATE " + table + " SET " + column + "=" + column + where;
    }
    case RowHold::ForUpdate: return "SELECT 1 FROM " + table + where + " FOR UPDATE";
    case RowHold::None: break;
    }
    throw unsupported("Rows cannot be locked on " + std::string{link.traits().name} + ".");
}

} // namespace

std::string keyCondition(const Link& link, std::span<const std::string> columns)
{
    std::string text;
    for (const std::string& column : columns)
        text += (text.empty() ? "" : " AND ") + link.quoted(column) + "=?";
    return text;
}

void RowLocks::requireSupport() const
{
    if (link_.traits().rowHold == RowHold::None)
        throw unsupported("Rows cannot be locked on " + std::string{link_.traits().name} + ".");
}

// The transaction begins before the row is taken, so that it holds the row from then on; it ends again if the row
// cannot be had. The proof comes with the first row, since only a row that exists can be proven to be held.
bool RowLocks::hold(const RowName& row, std::int32_t timeoutSeconds)
{
    if (heldSince_ != link_.rollbacks()) held_ = 0; // a rollback has freed them
    link_.beginHold();
    bool taken = false;
    try {
        taken = take(link_, row, timeoutSeconds);
        if (taken && !proven_) prove(row);
    } catch (...) {
        link_.endHold();
        throw;
    }
    if (!taken) {
        link_.endHold();
        return false;
    }
    proven_ = true;
    heldSince_ = link_.rollbacks();
    ++held_;
    return true;
}

// After a rollback there is nothing left to release.
void RowLocks::release()
{
    const bool stillHeld = held_ > 0 && heldSince_ == link_.rollbacks();
    if (held_ > 0) --held_;
    if (stillHeld) link_.endHold();
}

/// Takes the row, or waits for it within the limit. @return false for a row that has gone
bool RowLocks::take(Link& link, const RowName& row, std::int32_t timeoutSeconds) const
{
    const std::string text = holdText(link, row);
    const Request request{text, row.key, timeoutSeconds};
    if (link.traits().rowHold == RowHold::SelfUpdate) return link.changeRows(request) > 0;
    return !link.read(request).empty();
}

/// The second connection waits for the row for a moment alone. Its other limit stays long: a slow server must not look
/// like one that holds rows.
void RowLocks::prove(const RowName& row) const
{
    Link other{link_.target()};
    constexpr std::int32_t limit = 30;
    other.runToEnd({.text = other.traits().probeTimeout, .timeoutSeconds = limit});
    other.begin();
    try {
        take(other, row, limit);
    } catch (const Error& error) {
        if (error.number == errors::timeout) return;
        throw;
    }
    throw unsupported("The server does not hold rows: a second connection has got a row that this one holds. "
                      "Pessimistic locks are refused.");
}

} // namespace tamarok::odbc
