#pragma once

#include <cstdint>
#include <string>

struct sqlite3;

/// Checks of a database file before anything is changed. All functions throw
/// Error 0x80004005 with the path and the reason.
namespace tamarok::embedded {

/// The file exists, is a file, and its folder allows what an opening needs.
void checkDatabaseFile(const std::string& path, bool readOnly);

/// The header of a file that SQLite has just opened and not yet read: that it is a database of this
/// system, of a layout known here, and writable unless `readOnly`. The header is read through
/// SQLite's own file handle: a second one, when closed, would drop the locks of all other
/// connections of this process.
void checkHeader(sqlite3* database, const std::string& path, bool readOnly);

void checkLayout(std::int64_t application, std::int64_t layout, const std::string& path);

/// Makes a new, empty database under `path`; it comes into being complete or not at all.
void createDatabaseFile(const std::string& path);

/// Name to open `path` with for reading only: as unchangeable where the folder cannot be written, since
/// SQLite could not keep its own files there.
std::string readOnlyName(const std::string& path);

} // namespace tamarok::embedded
