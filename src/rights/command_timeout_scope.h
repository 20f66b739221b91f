#pragma once

#include <cstdint>

#include "tamarok/ado.h"

namespace tamarok::rights {

/// Gives a connection another CommandTimeout for the lifetime of the object, and then puts the former
/// one back, also when an error passes.
class CommandTimeoutScope {
public:
    /// @param seconds  limit of each statement. Error 91 without a connection
    CommandTimeoutScope(const ado::ConnectionRef& connection, std::int32_t seconds);
    ~CommandTimeoutScope();
    CommandTimeoutScope(const CommandTimeoutScope&) = delete;
    CommandTimeoutScope& operator=(const CommandTimeoutScope&) = delete;

private:
    ado::ConnectionRef connection_;
    std::int32_t formerSeconds_;
};

} // namespace tamarok::rights
