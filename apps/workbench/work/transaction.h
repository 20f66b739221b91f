#pragma once

#include "tamarok/ado.h"

namespace tamarok::workbench {

/// A transaction that is rolled back at its end unless it was committed.
class Transaction {
public:
    explicit Transaction(ado::Connection& connection) : connection_{connection} { connection_.BeginTrans(); }
    ~Transaction()
    {
        if (committed_) return;
        try {
            connection_.RollbackTrans();
        } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): a connection that failed has rolled back
        }
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void commit()
    {
        connection_.CommitTrans();
        committed_ = true;
    }

private:
    ado::Connection& connection_;
    bool committed_ = false;
};

} // namespace tamarok::workbench
