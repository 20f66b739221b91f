#pragma once

#include <memory>

#include "connection_object.h"
#include "forwarding_object.h"

#include "tamarok/ado.h"
#include "tamarok/members.h"

namespace tamarok::data {

/// The class Tamarok.Command: the library's command, which runs on a Tamarok.Connection. Its results are discarded; the
/// rows of a query are read by a recordset.
class CommandObject final : public WithForwarding<CommandObject> {
public:
    static std::span<const Member<CommandObject>> members() noexcept;

    std::string_view typeName() const override { return "Command"; }

    ado::Command& command() const noexcept { return *command_; }
    /// The connection to run on; null for none.
    void connect(std::shared_ptr<ConnectionObject> connection);
    const std::shared_ptr<ConnectionObject>& connection() const noexcept { return connection_; }

protected:
    Object& target() const override { return *command_; }
    std::shared_ptr<ErrorList> failures() const override { return connection_ ? connection_->errors() : nullptr; }

private:
    std::shared_ptr<ado::Command> command_ = std::make_shared<ado::Command>();
    std::shared_ptr<ConnectionObject> connection_;
};

} // namespace tamarok::data
