#pragma once

#include <cstdint>
#include <string>

struct sqlite3;

/// Checks of a database file before anything is changed. All functions throw
/// Error 0x80004005 with the path and the reason.
namespace tamarok::embedded {

/// Checks that the file exists, is a regular file and not empty, and that file and folder permit the opening.
void checkDatabaseFile(const std::string& path, bool readOnly);

/// The header of a file that SQLite has just opened and not yet read: that it is a database of this
/// system, of a layout known here, and writable unless `readOnly`. The header is read through
/// SQLite's own file handle: a second one, when closed, would drop the locks of all other
/// connections of this process.
void checkHeader(sqlite3* database, const std::string& path, bool readOnly);

void checkLayout(std::int64_t application, std::int64_t layout, const std::string& path);

/// Creates a new, empty database under `path`, completely or not at all.
void createDatabaseFile(const std::string& path);

/// Name under which SQLite opens `path` for reading only. In a folder that cannot be written the file is opened as
/// immutable, since SQLite cannot create the files of its log there.
std::string readOnlyName(const std::string& path);

} // namespace tamarok::embedded
