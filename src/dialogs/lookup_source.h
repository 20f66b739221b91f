#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "lookup_rows.h"

#include "tamarok/tmkvar.h"

namespace tamarok::dialogs {

/// The data control of a lookup: a statement, the recordset over it, and its rows.
class LookupSource {
public:
    explicit LookupSource(const TmkVar& session) : session_{session} {}

    const std::string& statement() const noexcept { return statement_; }

    /// Opens a statement in place of the present one. A statement with "#" names a temporary table and runs on the
    /// session's connection; any other runs on a connection of the lookup's own, opened from the session's connection
    /// text. After a failure the former statement and its rows stay.
    /// Errors: those of the database; 91 if the platform opens no connections.
    void open(std::string statement);

    bool isOpen() const noexcept { return recordset_ != nullptr; }
    /// Error 91 before a statement was opened.
    ado::Recordset& recordset() const;
    const LookupRows& rows() const noexcept { return rows_; }

    /// Returns the index of the current row, nothing without one.
    std::optional<std::size_t> current() const;
    /// Moves to the row of that index.
    void moveTo(std::size_t row);
    /// Reads the current row from the database again. Returns false if others have deleted it: then it has gone from
    /// the rows, and none is current.
    bool reload();
    /// Reads the rows again from the recordset, after it was changed.
    void readRows() { rows_.read(recordset()); }

    /// Returns the text of a field of the current row, "" for Null and for a column that is not there.
    std::string currentText(std::size_t column) const;
    /// Returns the names of the fields, and those of their columns in the tables.
    std::vector<std::string> names() const;
    std::vector<std::string> baseColumns() const;

private:
    std::shared_ptr<ado::Recordset> openTemporary(const std::string& statement) const;
    std::shared_ptr<ado::Recordset> openOwn(const std::string& statement);

    const TmkVar& session_;
    std::string statement_;
    ado::ConnectionRef connection_; ///< the lookup's own, once it was needed; declared before its recordset
    std::shared_ptr<ado::Recordset> recordset_;
    LookupRows rows_;
};

} // namespace tamarok::dialogs
