#pragma once

#include <exception>
#include <memory>
#include <string>
#include <vector>

#include "link.h"
#include "result_set.h"
#include "row_spool.h"

#include "tamarok/ado_backend.h"

namespace tamarok::odbc {

struct SessionState;

/// The rows of a statement, read forward from the server, or from the spool where the connection was needed for another
/// statement in between.
class StreamCursor : public ado::Cursor, private OpenResult {
public:
    StreamCursor(std::shared_ptr<SessionState> session, const ado::Statement& statement);
    StreamCursor(const StreamCursor&) = delete;
    StreamCursor& operator=(const StreamCursor&) = delete;
    ~StreamCursor() override;

    const std::vector<ado::ColumnInfo>& columns() const override { return columns_; }
    bool next() override;
    Variant value(std::size_t column) const override;
    void restart() override;
    void nameBases(std::vector<ado::ColumnInfo>& columns) override;

    /// Runs the statement.
    virtual void start();

protected:
    SessionState& session() const noexcept { return *session_; }
    Link& link() const noexcept;
    const std::string& text() const noexcept { return text_; }
    std::int32_t timeoutSeconds() const noexcept { return timeoutSeconds_; }
    std::span<const ado::Parameter> parameters() const noexcept { return parameters_; }
    std::vector<ado::ColumnInfo>& columnInfos() noexcept { return columns_; }
    void spool() noexcept override;

private:
    void abandon() noexcept override;
    bool nextLive();
    bool nextSpooled();
    void endLive() noexcept;
    void rethrow() const;

    std::shared_ptr<SessionState> session_;
    std::string text_;
    std::vector<ado::Parameter> parameters_;
    std::int32_t timeoutSeconds_;
    std::vector<ado::ColumnInfo> columns_;
    std::unique_ptr<ResultSet> live_; ///< while rows come from the server
    bool onRow_ = false;
    RowSpool spool_;
    std::vector<Variant> row_;   ///< the current row when it no longer stands in `live_`
    std::exception_ptr failure_; ///< met while spooling
};

} // namespace tamarok::odbc
