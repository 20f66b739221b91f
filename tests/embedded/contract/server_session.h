#pragma once

#include <memory>
#include <string>
#include <string_view>

/// A T-SQL server behind ODBC, as far as the contract needs it.
namespace tamarok::embedded::contract {

/// One connection. Members throw std::runtime_error where the driver fails in another way than by refusing a statement.
class ServerSession {
public:
    /// @param connectionText  as ODBC reads it
    explicit ServerSession(const std::string& connectionText);
    ~ServerSession();
    ServerSession(const ServerSession&) = delete;
    ServerSession& operator=(const ServerSession&) = delete;

    /// All rows of a statement as answers spell them, or "error N".
    std::string answer(const std::string& statement);

    /// Runs a statement that must not fail; `statement` is part of the message if it does.
    void run(const std::string& statement);

private:
    struct Handles;
    std::unique_ptr<Handles> handles_;
};

} // namespace tamarok::embedded::contract
