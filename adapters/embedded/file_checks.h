#pragma once

#include <cstdint>
#include <string>

#include "database_path.h"

struct sqlite3;

/// Checks of a database file before anything is changed. All functions throw
/// Error 0x80004005 with the path and the reason.
namespace tamarok::embedded {

/// Checks that the file exists, is a regular file with one name and not empty, and that file and folder permit the
/// opening.
void checkDatabaseFile(const DatabasePath& path, bool readOnly);

/// Checks that an existing file that is to be replaced is a regular file with one name.
void checkReplaceable(const DatabasePath& path);

/// Checks that no log or journal of a lost database lies beside a new one, since SQLite would write it into the new
/// file.
void checkNoLogBeside(const DatabasePath& path);

/// The header of a file that SQLite has just opened and not yet read: that it is a database of this
/// system, of a layout known here, and writable unless `readOnly`. The header is read through
/// SQLite's own file handle: a second one, when closed, would drop the locks of all other
/// connections of this process.
/// @return true if the file is in the mode with a write-ahead log
bool checkHeader(sqlite3* database, const std::string& path, bool readOnly);

/// True if a file that SQLite has just opened begins as a database.
bool isDatabase(sqlite3* database);

void checkLayout(std::int64_t application, std::int64_t layout, const std::string& path);

/// Creates a new, empty database under `path`, completely or not at all.
void createDatabaseFile(const DatabasePath& path);

/// Makes an empty file an empty database of this system without a write-ahead log.
void writeEmptyDatabase(const DatabasePath& path);

} // namespace tamarok::embedded
