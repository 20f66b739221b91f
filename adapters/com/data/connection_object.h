#pragma once

#include <memory>
#include <string>

#include "error_list.h"

#include "tamarok/ado.h"
#include "tamarok/members.h"

namespace tamarok::data {

/// The class Tamarok.Connection: a connection that is opened by its members, with the names and numbers of ADO.
class ConnectionObject final : public WithMembers<ConnectionObject>,
                               public std::enable_shared_from_this<ConnectionObject> {
public:
    static std::span<const Member<ConnectionObject>> members() noexcept;

    std::string_view typeName() const override { return "Connection"; }
    Variant defaultValue() const override { return connectionText(); } ///< ConnectionString
    bool hasDefaultValue() const noexcept override { return true; }

    /// Opens the connection by a text; an empty one stands for ConnectionString.
    /// Errors: 3705 if it is open, 5 for a text of another form, failures of the database.
    void open(const std::string& text, std::string_view user, std::string_view password);
    /// Error 3704 for a closed connection.
    void close();
    bool isOpen() const noexcept;

    /// The open connection. Error 3709 if it is closed.
    const ado::ConnectionRef& connection() const;
    const std::shared_ptr<ErrorList>& errors() const noexcept { return errors_; }

    std::string connectionText() const;
    /// Error 3705 while the connection is open.
    void connectionText(std::string text);
    std::int32_t commandTimeout() const noexcept { return commandTimeout_; }
    void commandTimeout(std::int32_t seconds);

    /// Where recordsets keep their rows: 2, the server; 3, the client, which makes each of them a static one.
    std::int32_t cursorLocation = 2;
    /// Kept for the caller; the back ends have times of their own for connecting.
    std::int32_t connectionTimeout = 15;

private:
    void requireClosed(std::string_view what) const;

    ado::ConnectionRef connection_; ///< null before the first opening
    std::string text_;
    std::int32_t commandTimeout_ = 30;
    std::shared_ptr<ErrorList> errors_ = std::make_shared<ErrorList>();
};

/// Returns the connection that an argument names: an object of this class, or a new one that is opened by a text.
/// Error 13 for any other value, 3709 for a closed connection.
std::shared_ptr<ConnectionObject> connectionOf(const Variant& value);

} // namespace tamarok::data
