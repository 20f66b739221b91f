#pragma once

#include <exception>

#include "tamarok/ado.h"

#pragma GCC visibility push(default)

namespace tamarok::ado {

/// A transaction of a connection that is rolled back at its end unless it was committed.
class Transaction {
public:
    /// Begins the transaction. @param connection  outlives it
    /// Errors: 3709 for a closed connection, failures of the database.
    explicit Transaction(Connection& connection) : connection_{connection} { connection_.BeginTrans(); }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    ~Transaction()
    {
        if (committed_) return;
        try {
            connection_.RollbackTrans();
        } catch (const std::exception&) { // NOLINT(bugprone-empty-catch)
            // The exception that led here is the caller's to see; the database rolls back when the session ends.
        }
    }

    /// Errors as BeginTrans; the transaction is then rolled back.
    void commit()
    {
        connection_.CommitTrans();
        committed_ = true;
    }

private:
    Connection& connection_;
    bool committed_ = false;
};

} // namespace tamarok::ado

#pragma GCC visibility pop
