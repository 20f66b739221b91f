#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "tamarok_embedded/procedures.h"
#include "tamarok_tsql/date_order.h"

#include "tamarok/ado.h"

#pragma GCC visibility push(default)

/// The embedded database: one file, opened by any number of connections of any number of processes
/// of one machine. SQLite keeps two files with the suffixes "-wal" and "-shm" beside it while the database is
/// open. The file with the suffix "-locks" holds no data: its bytes represent rows, and a row lock is a lock on a byte.
/// It has the mode and the owner of the database, and may be deleted whenever no connection is open. All of them lie
/// beside the real file, wherever a symbolic link to it lies.
namespace tamarok::embedded {

enum class OpenMode : std::uint8_t {
    OpenExisting, ///< for reading and writing
    Create,       ///< makes a new, empty database; fails where the file exists
    Build,        ///< an existing database for a single writer that deletes the file if its work fails: the journal is
                  ///< kept in memory and writes are not synchronised with the disk; see NewDatabase
    ReadOnly      ///< creates and changes nothing, beside the file neither; see connect
};

struct OpenOptions {
    OpenMode mode = OpenMode::OpenExisting;
    /// Order of day, month and year in date texts, with slashes, points and hyphens alike; SET DATEFORMAT changes it.
    tsql::DateOrder dateOrder = tsql::DateOrder::Dmy;
    ProcedureRegistry procedures = builtInProcedures();
};

/// Mark and layout version that a database file of this system carries (application_id and
/// user_version of SQLite's header).
inline constexpr std::int32_t applicationId = 0x544D4B31; // "TMK1"
inline constexpr std::int32_t layoutVersion = 2;

/// Opens a database file.
///
/// ReadOnly also works on a file or in a folder that cannot be written, and on a full disk. A database without a log
/// beside it is read as a file that nobody changes. A session that writes so much meanwhile that SQLite empties its log
/// (about 4 MB) does change it: a statement that is reading then fails with 0x80004005. The next statement sees the new
/// state in any case. If the log cannot be used where it lies, a private copy is read.
///
/// Errors: 0x80004005 with the path and the reason: the file is missing, a directory, empty, no
/// database, a database of another program, of a newer layout, damaged, not permitted, has a second name (hard link);
/// in mode Create, that it exists already. A failed opening changes no file and leaves none behind.
ado::ConnectionRef connect(const std::filesystem::path& file, const OpenOptions& options = {});

/// Opens what a connection text names: "Provider=Tamarok.Embedded;Data Source=FILE", and if wanted
/// "Date Order=MDY" (DMY, which is the default, MDY, YMD, YDM, MYD, DYM) and "Mode=Read" or "Mode=Create". Names
/// compare without regard to case; a value may be quoted. Errors: 5 for a text of another form, else as `connect`.
ado::ConnectionRef connectText(std::string_view connectionText);

/// A new, empty database in memory, for tests and short work. No other connection can see it, so
/// row locks have no effect.
ado::ConnectionRef connectInMemory(const OpenOptions& options = {});

/// SQLite text of each step of `statement`, one a line, as the connection would run it now; steps that
/// are not SQL (EXEC, SET, jumps) as a comment. Errors: 5 where the connection is not of this kind,
/// 3709 closed, 0x80040E14 as for running it.
std::string translate(ado::Connection& connection, std::string_view statement);

} // namespace tamarok::embedded

#pragma GCC visibility pop
