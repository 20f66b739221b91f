#include "engine.h"

namespace tamarok::embedded {

/// A connection that only reads and does so without SQLite's locks sees changes by opening its file again. Open cursors
/// keep the rows from before; everything compiled belongs to the handle before.
void Engine::followFile()
{
    if (!database_->isOutdated() || database_->inTransaction()) {
        return;
    }
    bufferOpenCursors();
    statements_.clear();
    database_->reopen();
    begin_ = database_->compile("BEGIN IMMEDIATE", nullptr, true);
    commit_ = database_->compile("COMMIT", nullptr, true);
    catalog_.forget();
}

} // namespace tamarok::embedded
