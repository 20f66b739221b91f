#include "command_timeout_scope.h"

namespace tamarok::rights {

CommandTimeoutScope::CommandTimeoutScope(const ado::ConnectionRef& connection, std::int32_t seconds) :
    connection_{connection}, formerSeconds_{ado::require(connection).CommandTimeout()}
{
    connection_->CommandTimeout(seconds);
}

CommandTimeoutScope::~CommandTimeoutScope()
{
    connection_->CommandTimeout(formerSeconds_);
}

} // namespace tamarok::rights
