#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "engine.h"

#include "tamarok/ado_backend.h"

namespace tamarok::embedded {

/// A connection's session. Ending it ends its cursors and drops its locks.
class EmbeddedSession final : public ado::Session {
public:
    explicit EmbeddedSession(std::unique_ptr<Engine> engine);

    std::string_view name() const override;
    std::unique_ptr<ado::Cursor> open(const ado::Statement& statement) override;
    std::int64_t execute(const ado::Statement& statement) override;
    void cancel() noexcept override;
    void begin() override;
    void commit() override;
    void rollback() override;

    Engine& engine() noexcept { return *engine_; }

private:
    std::unique_ptr<Engine> engine_;
};

} // namespace tamarok::embedded
