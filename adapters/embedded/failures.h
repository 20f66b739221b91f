#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "tamarok/error.h"

struct sqlite3;

/// Failures of the embedded database as errors of the provider.
namespace tamarok::embedded {

inline constexpr std::string_view sourceName = "Tamarok embedded database";

/// Error numbers of the server that the engine raises.
namespace native {
inline constexpr std::int32_t timeout = -2;
inline constexpr std::int32_t parameterMissing = 201;
inline constexpr std::int32_t nullNotAllowed = 515;
inline constexpr std::int32_t identityGiven = 544;
inline constexpr std::int32_t identityMissing = 545;
inline constexpr std::int32_t checkFailed = 547;
inline constexpr std::int32_t outOfMemory = 701;
inline constexpr std::int32_t readWriteFailed = 823;
inline constexpr std::int32_t corrupt = 824;
inline constexpr std::int32_t diskFull = 1105;
inline constexpr std::int32_t duplicateInIndex = 2601;
inline constexpr std::int32_t duplicateKey = 2627;
inline constexpr std::int32_t procedureUnknown = 2812;
inline constexpr std::int32_t commitWithoutBegin = 3902;
inline constexpr std::int32_t rollbackWithoutBegin = 3903;
inline constexpr std::int32_t readOnlyDatabase = 3906;
inline constexpr std::int32_t cannotOpen = 5120;
inline constexpr std::int32_t identityUpdated = 8102;
inline constexpr std::int32_t identityInsertInUse = 8107;
inline constexpr std::int32_t tooManyArguments = 8144;
inline constexpr std::int32_t argumentUnknown = 8145;
inline constexpr std::int32_t userDefined = 50000;
} // namespace native

using errors::rowDeleted;

/// Whether an error ends its whole batch; after any other error the batch goes on with the next statement.
/// @param xactAbort  the setting XACT_ABORT of the session
bool endsBatch(const Error& error, bool xactAbort) noexcept;
/// Whether an error rolls back the open transaction. Such an error also ends the batch.
bool rollsBack(const Error& error, bool xactAbort) noexcept;

/// Error of one of the server's numbers: provider number and SQLSTATE follow from it.
Error failure(std::int32_t nativeError, std::string description);

/// Error for a result code that SQLite has just given on `database`.
/// @param path  the database file, for failures that are the file's; may be empty
Error failure(sqlite3* database, int code, std::string_view path);

/// SQLite's parser stack is full: the statement is nested too deeply.
struct NestingFailure : Error {
    NestingFailure(Error error, std::size_t where) : Error{std::move(error)}, position{where} {}

    std::size_t position; ///< in the SQLite text: the byte before which the parser gave up
};

/// Whether SQLite's last error on `database` is that its parser stack is full.
bool isNestingFailure(sqlite3* database);

/// The statement took longer than it may. @param what  what it waited for, or empty
Error timeoutFailure(std::string_view what);

/// Makes the failure of a statement that another thread has ended of that of one that took too long.
void nameCancelled(Error& error) noexcept;

/// The current row of an editable cursor on `table` has been deleted: Error 0x80040E23.
Error rowGoneFailure(std::string_view table);

/// Opening `path` failed for `reason`, a clause without full stop.
Error openFailure(std::string_view path, std::string_view reason);

/// Creating or replacing `path` failed for `reason`, a clause without full stop.
Error createFailure(std::string_view path, std::string_view reason);

} // namespace tamarok::embedded
