#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tamarok/ado.h"

namespace tamarok::rights {

/// All rows of a statement, taken at once; nothing where there is none.
std::vector<Variant> fetchFirstColumn(const ado::ConnectionRef& connection, std::string_view statement);

/// A field as it stands in a message or a statement: Null is the empty text.
std::string textOf(const Variant& value);

/// Sets a connection's CommandTimeout for its own lifetime.
class CommandTimeoutScope {
public:
    CommandTimeoutScope(const ado::ConnectionRef& connection, std::int32_t seconds);
    ~CommandTimeoutScope();
    CommandTimeoutScope(const CommandTimeoutScope&) = delete;
    CommandTimeoutScope& operator=(const CommandTimeoutScope&) = delete;

private:
    ado::ConnectionRef connection_;
    std::int32_t remembered_;
};

} // namespace tamarok::rights
