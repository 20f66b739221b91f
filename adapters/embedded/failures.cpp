#include "failures.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <optional>
#include <sqlite3.h>
#include <system_error>

#include "tamarok_embedded/shown_text.h"

namespace tamarok::embedded {

namespace {

/// What an error number of the server means to callers: the error of the recordset model and the SQLSTATE.
struct Kind {
    std::int32_t nativeError;
    std::int32_t number;
    std::string_view sqlState;
};

// Every number that is not listed is a refused statement without a more exact state.
constexpr std::array kinds{
    Kind{native::timeout, errors::timeout, "HYT00"},
    Kind{105, errors::statementRefused, "42000"},
    Kind{207, errors::statementRefused, "42S22"},
    Kind{208, errors::statementRefused, "42S02"},
    Kind{220, errors::statementRefused, "22003"},
    Kind{232, errors::statementRefused, "22003"},
    Kind{241, errors::statementRefused, "22007"},
    Kind{242, errors::statementRefused, "22007"},
    Kind{245, errors::statementRefused, "22018"},
    Kind{248, errors::statementRefused, "22003"},
    Kind{295, errors::statementRefused, "22007"},
    Kind{native::nullNotAllowed, errors::constraintViolated, "23000"},
    Kind{native::checkFailed, errors::constraintViolated, "23000"},
    Kind{native::outOfMemory, errors::providerFailure, "HY001"},
    Kind{native::readWriteFailed, errors::providerFailure, "HY000"},
    Kind{native::corrupt, errors::providerFailure, "HY000"},
    Kind{native::diskFull, errors::providerFailure, "HY000"},
    Kind{native::duplicateInIndex, errors::constraintViolated, "23000"},
    Kind{native::duplicateKey, errors::constraintViolated, "23000"},
    Kind{2628, errors::statementRefused, "22001"},
    Kind{2714, errors::statementRefused, "42S01"},
    Kind{native::commitWithoutBegin, errors::providerFailure, "25000"},
    Kind{native::rollbackWithoutBegin, errors::providerFailure, "25000"},
    Kind{native::readOnlyDatabase, errors::providerFailure, "HY000"},
    Kind{native::cannotOpen, errors::providerFailure, "08001"},
    Kind{8114, errors::statementRefused, "22018"},
    Kind{8115, errors::statementRefused, "22003"},
    Kind{8134, errors::statementRefused, "22012"},
    Kind{8152, errors::statementRefused, "22001"},
    Kind{8169, errors::statementRefused, "22018"},
};
static_assert(std::ranges::is_sorted(kinds, {}, &Kind::nativeError));

Kind kindOf(std::int32_t nativeError)
{
    const auto found = std::ranges::lower_bound(kinds, nativeError, {}, &Kind::nativeError);
    if (found != kinds.end() && found->nativeError == nativeError) {
        return *found;
    }
    return {nativeError, errors::statementRefused, "42000"};
}

/// The text after `prefix`, if `text` begins with it.
std::optional<std::string_view> behind(std::string_view text, std::string_view prefix)
{
    if (!text.starts_with(prefix)) {
        return std::nullopt;
    }
    return text.substr(prefix.size());
}

/// Functions of the engine raise "NUMBER:text".
std::optional<Error> numberedFailure(std::string_view message)
{
    std::int32_t number = 0;
    const char* const last = message.data() + message.size();
    const auto [end, problem] = std::from_chars(message.data(), last, number);
    if (problem != std::errc{} || end == last || *end != ':') {
        return std::nullopt;
    }
    return failure(number, std::string{end + 1, last});
}

/// Splits "TABLE.COLUMN".
std::pair<std::string, std::string> tableAndColumn(std::string_view name)
{
    const std::size_t point = name.find('.');
    if (point == std::string_view::npos) {
        return {std::string{name}, {}};
    }
    return {std::string{name.substr(0, point)}, std::string{name.substr(point + 1)}};
}

/// True if the columns of a "UNIQUE constraint failed" are those of an index that was created as
/// such, not of a constraint of the table: the server has different errors for them.
bool isCreatedIndex(sqlite3* database, std::string_view columns)
{
    static constexpr const char* query =
        "SELECT EXISTS(SELECT 1 FROM pragma_index_list(?1) AS l WHERE l.\"unique\" AND l.origin='c' AND ?2="
        "(SELECT group_concat(?1||'.'||i.name,', ') FROM pragma_index_info(l.name) AS i))";
    const std::string table = tableAndColumn(columns).first;
    sqlite3_stmt* statement = nullptr;
    bool created = false;
    if (sqlite3_prepare_v2(database, query, -1, &statement, nullptr) == SQLITE_OK) {
        sqlite3_bind_text(statement, 1, table.data(), static_cast<int>(table.size()), SQLITE_STATIC);
        sqlite3_bind_text(statement, 2, columns.data(), static_cast<int>(columns.size()), SQLITE_STATIC);
        created = sqlite3_step(statement) == SQLITE_ROW && sqlite3_column_int(statement, 0) != 0;
    }
    sqlite3_finalize(statement);
    return created;
}

Error duplicate(sqlite3* database, std::string_view columns, bool primary)
{
    const auto [table, column] = tableAndColumn(columns);
    const bool created = !primary && isCreatedIndex(database, columns);
    const std::string what = created ? "unique index" : primary ? "PRIMARY KEY constraint" : "UNIQUE constraint";
    return failure(created ? native::duplicateInIndex : native::duplicateKey,
                   "Violation of a " + what + ": cannot insert a duplicate key in table '" + table + "' (" +
                       std::string{columns} + ").");
}

/// SQLite reports a violated constraint by text only; the beginning of its message tells which kind, the rest names the
/// columns.
Error constraintFailure(sqlite3* database, int code, const std::string& message)
{
    if (const auto columns = behind(message, "UNIQUE constraint failed: ")) {
        return duplicate(database, *columns, code == SQLITE_CONSTRAINT_PRIMARYKEY || code == SQLITE_CONSTRAINT_ROWID);
    }
    if (const auto name = behind(message, "NOT NULL constraint failed: ")) {
        const auto [table, column] = tableAndColumn(*name);
        return failure(native::nullNotAllowed, "Cannot insert the value NULL into column '" + column + "', table '" +
                                                   table + "'; the column does not allow nulls.");
    }
    if (const auto name = behind(message, "CHECK constraint failed: ")) {
        return failure(native::checkFailed,
                       "The statement conflicted with the CHECK constraint '" + std::string{*name} + "'.");
    }
    if (code == SQLITE_CONSTRAINT_FOREIGNKEY) {
        return failure(native::checkFailed, "The statement conflicted with a FOREIGN KEY constraint.");
    }
    Error error = failure(native::checkFailed, message + ".");
    error.nativeError = 0;
    return error;
}

/// Failures whose cause is the file or the machine: what happened, where, and why if it is known.
Error fileFailure(std::int32_t nativeError, std::string_view what, std::string_view path, std::string_view reason)
{
    std::string text{what};
    if (!path.empty()) {
        text.append(" '").append(shownText(path)).append("'");
    }
    if (!reason.empty()) {
        text.append(": ").append(reason);
    }
    text.append(".");
    return failure(nativeError, std::move(text));
}

/// The errno of the last failure of one file; 0 if there was none.
int lastSystemError(sqlite3_file* file)
{
    int code = 0;
    if (file != nullptr && file->pMethods != nullptr) {
        file->pMethods->xFileControl(file, SQLITE_FCNTL_LAST_ERRNO, &code);
    }
    return code;
}

/// The system's error number of a failed read or write, 0 if it is not known. A failure at the end of a transaction is
/// only known to the files: the log, then the database itself.
int systemError(sqlite3* database)
{
    int code = 0;
    if (database != nullptr) {
        code = sqlite3_system_errno(database);
        for (const int which : {SQLITE_FCNTL_JOURNAL_POINTER, SQLITE_FCNTL_FILE_POINTER}) {
            sqlite3_file* file = nullptr;
            if (code == 0 && sqlite3_file_control(database, "main", which, &file) == SQLITE_OK) {
                code = lastSystemError(file);
            }
        }
    }
    return code;
}

std::string systemReason(int code, std::string_view otherwise)
{
    return code != 0 ? std::system_category().message(code) : std::string{otherwise};
}

/// A refused write. Two of SQLite's codes have other reasons than the rights.
Error readOnlyFailure(int code, std::string_view path)
{
    if (code == SQLITE_READONLY_ROLLBACK) {
        return fileFailure(native::cannotOpen, "Cannot read the database", path,
                           "an interrupted change must be undone first; open it once for writing");
    }
    return fileFailure(native::readOnlyDatabase, "Cannot write to the database", path,
                       code == SQLITE_READONLY_DBMOVED ? "it has been moved, removed or replaced" : "it is read-only");
}

/// A failed read or write. A file that may not grow any more counts as a full disk.
Error readWriteFailure(sqlite3* database, std::string_view path, std::string_view message)
{
    const int code = systemError(database);
    if (code == EFBIG || code == EDQUOT || code == ENOSPC) {
        return fileFailure(native::diskFull, "Cannot write to the database", path, systemReason(code, message));
    }
    return fileFailure(native::readWriteFailed, "Cannot read or write the database", path, systemReason(code, message));
}

/// A limit of SQLite that a statement has met: the beginning of its message, and the server's error of that kind.
struct Limit {
    std::string_view message;
    std::int32_t nativeError;
    std::string_view description;
};

constexpr std::array limits{
    Limit{"parser stack overflow", 191,
          "Some part of your SQL statement is nested too deeply. Rewrite the query or break it up into smaller "
          "queries."},
    Limit{"Expression tree is too large", 8632,
          "An expression services limit has been reached: an expression of the statement has more than 1000 levels."},
    Limit{"too many columns", 1056,
          "The number of elements in the select list exceeds the maximum allowed number of 2000 elements."},
    Limit{"too many terms in", 8623,
          "The query processor ran out of internal resources: a clause of the statement has more than 2000 terms."},
    Limit{"at most 64 tables", 106, "Too many table names in the query. The maximum allowable is 64."},
    Limit{"too many arguments on function", 8623,
          "The query processor ran out of internal resources: a function has more than 127 arguments."},
};

/// A refused statement: an error of the engine's functions, or a name that SQLite does not find because another session
/// has changed the schema.
Error refusedFailure(const std::string& message)
{
    if (auto numbered = numberedFailure(message)) {
        return *std::move(numbered);
    }
    if (const auto table = behind(message, "no such table: ")) {
        return failure(208, "Invalid object name '" + std::string{*table} + "'.");
    }
    if (const auto column = behind(message, "no such column: ")) {
        return failure(207, "Invalid column name '" + std::string{*column} + "'.");
    }
    for (const Limit& limit : limits) {
        if (message.starts_with(limit.message)) return failure(limit.nativeError, std::string{limit.description});
    }
    return failure(0, message + ".");
}

} // namespace

bool isNestingFailure(sqlite3* database)
{
    return limits.front().message == sqlite3_errmsg(database);
}

/// The number decides on error and SQLSTATE.
Error failure(std::int32_t nativeError, std::string description)
{
    const Kind kind = kindOf(nativeError);
    Error error{kind.number, std::move(description), std::string{sourceName}};
    error.nativeError = nativeError;
    error.sqlState = kind.sqlState;
    return error;
}

/// The lower byte of SQLite's extended code is the kind of failure. Anything that has no counterpart on the server is a
/// failure of the provider with SQLite's own text.
Error failure(sqlite3* database, int code, std::string_view path)
{
    const std::string message = database != nullptr ? sqlite3_errmsg(database) : sqlite3_errstr(code);
    switch (code & 0xFF) {
    case SQLITE_BUSY: return timeoutFailure("another session is writing to the database");
    case SQLITE_INTERRUPT: return timeoutFailure({});
    case SQLITE_AUTH: return timeoutFailure("the statement was still being prepared"); // see onCompile
    case SQLITE_CONSTRAINT: return constraintFailure(database, code, message);
    case SQLITE_FULL: return fileFailure(native::diskFull, "Cannot write to the database", path, "the disk is full");
    case SQLITE_IOERR: return readWriteFailure(database, path, message);
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB: return fileFailure(native::corrupt, "The database is damaged", path, message);
    case SQLITE_READONLY:
    case SQLITE_PERM: return readOnlyFailure(code, path);
    case SQLITE_CANTOPEN:
        return fileFailure(native::cannotOpen, "Cannot open the database", path,
                           systemReason(systemError(database), message));
    case SQLITE_NOMEM: return fileFailure(native::outOfMemory, "Out of memory in the database", path, {});
    case SQLITE_ERROR:
    case SQLITE_MISMATCH:
    case SQLITE_RANGE:
    case SQLITE_TOOBIG: return refusedFailure(message);
    default: {
        Error error = failure(0, message + ".");
        error.number = errors::providerFailure;
        error.sqlState = "HY000";
        return error;
    }
    }
}

Error timeoutFailure(std::string_view what)
{
    std::string text = "Timeout expired";
    if (!what.empty()) {
        text.append(": ").append(what);
    }
    return failure(native::timeout, text + ".");
}

Error rowGoneFailure(std::string_view table)
{
    Error error = failure(0, "The row of table '" + std::string{table} + "' has been deleted.");
    error.number = rowDeleted;
    error.sqlState = "HY109";
    return error;
}

Error openFailure(std::string_view path, std::string_view reason)
{
    return fileFailure(native::cannotOpen, "Cannot open the database", path, reason);
}

Error createFailure(std::string_view path, std::string_view reason)
{
    return fileFailure(native::cannotOpen, "Cannot create the database", path, reason);
}

} // namespace tamarok::embedded
