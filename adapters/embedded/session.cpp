#include "session.h"

#include "failures.h"

namespace tamarok::embedded {

/// All operations are the engine's; this class only has the interface that recordsets expect.
EmbeddedSession::EmbeddedSession(std::unique_ptr<Engine> engine) : engine_{std::move(engine)} {}

std::string_view EmbeddedSession::name() const
{
    return sourceName;
}

std::unique_ptr<ado::Cursor> EmbeddedSession::open(const ado::Statement& statement)
{
    return engine_->open(statement);
}

std::int64_t EmbeddedSession::execute(const ado::Statement& statement)
{
    return engine_->execute(statement);
}

void EmbeddedSession::cancel() noexcept
{
    engine_->database().deadline().cancel();
}

void EmbeddedSession::begin()
{
    engine_->begin();
}

void EmbeddedSession::commit()
{
    engine_->commit();
}

void EmbeddedSession::rollback()
{
    engine_->rollback();
}

} // namespace tamarok::embedded
