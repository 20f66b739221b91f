#include "session.h"

#include "cursor.h"
#include "date_order_setting.h"
#include "editable_cursor.h"
#include "failures.h"

namespace tamarok::odbc {

// The escape sequence calls a procedure on every server; T-SQL drivers send it as a remote call, with typed parameters.
std::string statementText(const ado::Statement& statement)
{
    if (!statement.procedure) return std::string{statement.text};
    std::string text = "{CALL " + std::string{statement.text};
    for (std::size_t i = 0; i < statement.parameters.size(); ++i)
        text += i == 0 ? "(?" : ",?";
    return text + (statement.parameters.empty() ? "}" : ")}");
}

std::string_view OdbcSession::name() const
{
    return sourceName;
}

/// The procedures of the system read dates in the regional order of the caller.
void OdbcSession::prepare(const ado::Statement& statement)
{
    if (statement.procedure) tellRegionalOrder(state_->link, regionalOrder_);
}

// Only a statement text has a base table that could be changed: of a procedure's result nothing is known.
std::unique_ptr<ado::Cursor> OdbcSession::open(const ado::Statement& statement)
{
    prepare(statement);
    const bool editable = statement.lockType != ado::LockType::ReadOnly;
    if (!editable || statement.procedure) {
        auto cursor = std::make_unique<StreamCursor>(state_, statement);
        cursor->start();
        return cursor;
    }
    auto cursor = std::make_unique<EditableCursor>(state_, statement);
    cursor->start();
    return cursor;
}

std::int64_t OdbcSession::execute(const ado::Statement& statement)
{
    prepare(statement);
    const std::string text = statementText(statement);
    return state_->link.runToEnd({text, statement.parameters, statement.timeoutSeconds});
}

} // namespace tamarok::odbc
