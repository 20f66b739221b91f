#pragma once

#include <string>

namespace tamarok::embedded {

/// The path of a database file. SQLite's log and the row locks lie beside the real file, so that all who reach it by
/// symbolic links meet there.
struct DatabasePath {
    std::string shown; ///< absolute, as the caller gave it; for messages
    std::string real;  ///< without symbolic links; for opening
};

/// Makes a path absolute and follows its symbolic links. Error 0x80004005 for a path with a NUL character, one that
/// cannot be made absolute, and links that lead nowhere. The file itself may be missing.
DatabasePath resolvePath(const std::string& file);

/// The folder of a real path.
std::string folderOf(const std::string& path);

} // namespace tamarok::embedded
