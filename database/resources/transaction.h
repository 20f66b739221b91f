#pragma once

#include <exception>

#include "tamarok/ado.h"

namespace tamarok::database {

/// Rolls back at its end unless it was committed.
class Transaction {
public:
    explicit Transaction(ado::Connection& connection) : connection_{connection} { connection_.BeginTrans(); }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    ~Transaction()
    {
        if (committed_) return;
        try {
            connection_.RollbackTrans();
        } catch (const std::exception&) {
            // The exception that led here is the caller's to see; the database rolls back when the session ends.
        }
    }

    void commit()
    {
        connection_.CommitTrans();
        committed_ = true;
    }

private:
    ado::Connection& connection_;
    bool committed_ = false;
};

} // namespace tamarok::database
