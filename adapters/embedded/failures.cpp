#include "failures.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <new>
#include <optional>
#include <sqlite3.h>
#include <system_error>

#include "system_files.h"
#include "tamarok_embedded/shown_text.h"
#include "translation/step.h"

namespace tamarok::embedded {

namespace {

/// What an error takes with it on the server, and whether SET XACT_ABORT ON changes that.
enum class Scope : std::uint8_t {
    Reported,   ///< its statement, whatever XACT_ABORT says: RAISERROR
    Statement,  ///< its statement; with XACT_ABORT batch and transaction
    Refused,    ///< the batch, whatever XACT_ABORT says: what the server finds while it compiles a statement
    Batch,      ///< the batch; with XACT_ABORT the transaction as well
    Transaction ///< batch and transaction
};

/// What an error number of the server means to callers: the error of the recordset model, the SQLSTATE, and what
/// the error ends.
struct Kind {
    std::int32_t nativeError;
    std::int32_t number;
    std::string_view sqlState;
    Scope scope;
};

using errors::constraintViolated;
using errors::providerFailure;
using errors::statementRefused;

// Every number that is not listed is a refused statement without a more exact state. The numbers from 1428 to 1898 are
// Oracle's; a failure there never ends more than its statement.
constexpr std::array kinds{
    Kind{native::timeout, errors::timeout, "HYT00", Scope::Batch},
    Kind{105, statementRefused, "42000", Scope::Refused},
    Kind{native::parameterMissing, statementRefused, "42000", Scope::Statement},
    Kind{207, statementRefused, "42S22", Scope::Refused},
    Kind{208, statementRefused, "42S02", Scope::Batch},
    Kind{220, statementRefused, "22003", Scope::Statement},
    Kind{232, statementRefused, "22003", Scope::Statement},
    Kind{235, statementRefused, "42000", Scope::Transaction},
    Kind{241, statementRefused, "22007", Scope::Transaction},
    Kind{242, statementRefused, "22007", Scope::Statement},
    Kind{244, statementRefused, "42000", Scope::Transaction},
    Kind{245, statementRefused, "22018", Scope::Transaction},
    Kind{248, statementRefused, "22003", Scope::Transaction},
    Kind{295, statementRefused, "22007", Scope::Transaction},
    Kind{512, statementRefused, "21000", Scope::Statement},
    Kind{native::nullNotAllowed, constraintViolated, "23000", Scope::Statement},
    Kind{517, statementRefused, "42000", Scope::Statement},
    Kind{535, statementRefused, "42000", Scope::Statement},
    Kind{536, statementRefused, "42000", Scope::Statement},
    Kind{537, statementRefused, "42000", Scope::Statement},
    Kind{native::identityGiven, statementRefused, "23000", Scope::Statement},
    Kind{native::identityMissing, statementRefused, "23000", Scope::Statement},
    Kind{native::checkFailed, constraintViolated, "23000", Scope::Statement},
    Kind{native::outOfMemory, providerFailure, "HY001", Scope::Transaction},
    Kind{native::readWriteFailed, providerFailure, "HY000", Scope::Transaction},
    Kind{native::corrupt, providerFailure, "HY000", Scope::Transaction},
    Kind{native::diskFull, providerFailure, "HY000", Scope::Transaction},
    Kind{1428, statementRefused, "42000", Scope::Statement},
    Kind{1481, statementRefused, "42000", Scope::Statement},
    Kind{1722, statementRefused, "42000", Scope::Statement},
    Kind{1821, statementRefused, "42000", Scope::Statement},
    Kind{1843, statementRefused, "42000", Scope::Statement},
    Kind{1861, statementRefused, "42000", Scope::Statement},
    Kind{1898, statementRefused, "42000", Scope::Statement},
    Kind{native::duplicateInIndex, constraintViolated, "23000", Scope::Statement},
    Kind{native::duplicateKey, constraintViolated, "23000", Scope::Statement},
    Kind{2628, statementRefused, "22001", Scope::Statement},
    Kind{2714, statementRefused, "42S01", Scope::Transaction},
    Kind{native::procedureUnknown, statementRefused, "42000", Scope::Statement},
    Kind{3623, statementRefused, "42000", Scope::Transaction},
    Kind{3701, statementRefused, "42S02", Scope::Reported},
    Kind{native::commitWithoutBegin, providerFailure, "25000", Scope::Statement},
    Kind{native::rollbackWithoutBegin, providerFailure, "25000", Scope::Statement},
    Kind{native::readOnlyDatabase, providerFailure, "HY000", Scope::Batch},
    Kind{native::cannotOpen, providerFailure, "08001", Scope::Batch},
    Kind{8106, statementRefused, "42000", Scope::Transaction},
    Kind{native::identityInsertInUse, statementRefused, "42000", Scope::Transaction},
    Kind{8114, statementRefused, "22018", Scope::Transaction},
    Kind{8115, statementRefused, "22003", Scope::Statement},
    Kind{8134, statementRefused, "22012", Scope::Statement},
    Kind{native::tooManyArguments, statementRefused, "42000", Scope::Statement},
    Kind{native::argumentUnknown, statementRefused, "42000", Scope::Statement},
    Kind{8152, statementRefused, "22001", Scope::Statement},
    Kind{8169, statementRefused, "22018", Scope::Transaction},
    Kind{native::userDefined, statementRefused, "42000", Scope::Reported},
};
static_assert(std::ranges::is_sorted(kinds, {}, &Kind::nativeError));

Kind kindOf(std::int32_t nativeError) noexcept
{
    const auto found = std::ranges::lower_bound(kinds, nativeError, {}, &Kind::nativeError);
    if (found != kinds.end() && found->nativeError == nativeError) {
        return *found;
    }
    return {nativeError, statementRefused, "42000", Scope::Refused};
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

/// A second Null in a unique key, reported as "index 'NAME'" by the index that `oneNullIndexName` names.
Error duplicateNull(std::string_view index)
{
    index.remove_suffix(index.ends_with('\'') ? 1 : 0);
    const std::string_view rest = behind(index, oneNullPrefix).value_or(index);
    const std::size_t point = rest.find('.');
    const bool created = rest.substr(0, point) == "index";
    const std::string_view table = rest.substr(point + 1, rest.rfind('.') - point - 1);
    return failure(created ? native::duplicateInIndex : native::duplicateKey,
                   std::string{"Violation of a "} + (created ? "unique index" : "UNIQUE constraint") +
                       ": cannot insert a second Null key in table '" + std::string{table} + "'.");
}

Error duplicate(sqlite3* database, std::string_view columns, bool primary)
{
    if (const auto index = behind(columns, "index '")) {
        return duplicateNull(*index);
    }
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

/// The system's number of the last failure of one file; 0 if there was none.
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
    return code != 0 ? systemErrorOf(code).message() : std::string{otherwise};
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
    if (tellsFullDisk(systemErrorOf(code))) {
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
    Limit{"at most 64 tables", 106,
          "Too many table names in the query. The maximum allowable is 64 with those of its views."},
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

bool endsBatch(const Error& error, bool xactAbort) noexcept
{
    const Scope scope = kindOf(error.nativeError).scope;
    return scope != Scope::Reported && (scope != Scope::Statement || xactAbort);
}

bool rollsBack(const Error& error, bool xactAbort) noexcept
{
    const Scope scope = kindOf(error.nativeError).scope;
    return scope == Scope::Transaction || (xactAbort && (scope == Scope::Statement || scope == Scope::Batch));
}

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
        error.number = providerFailure;
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

void nameCancelled(Error& error) noexcept
{
    error.number = errors::cancelled;
    error.nativeError = 0;
    try {
        error.sqlState = "HY008";
        error.description = "The statement was cancelled.";
    } catch (const std::bad_alloc&) { // NOLINT(bugprone-empty-catch): the number says it
    }
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
