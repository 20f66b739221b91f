#pragma once

#include <string>

#include "database_path.h"

namespace tamarok::embedded {

/// A copy of a database with a write-ahead log, in a private temporary folder. The log is written into the copy, so
/// that the copy alone holds everything that was committed. For reading where SQLite cannot make the files that the
/// log needs beside the database.
class PrivateCopy {
public:
    /// Error 0x80004005 if the database, its log or the temporary folder cannot be used.
    explicit PrivateCopy(const DatabasePath& source);
    PrivateCopy(const PrivateCopy&) = delete;
    PrivateCopy& operator=(const PrivateCopy&) = delete;
    ~PrivateCopy(); ///< removes the folder; a file still open stays readable

    const std::string& file() const noexcept { return file_; }

private:
    bool copyBoth() const;
    void foldLog() const;
    void remove() const noexcept;
    [[noreturn]] void fail(const std::string& reason) const;

    DatabasePath source_;
    std::string folder_;
    std::string file_;
};

} // namespace tamarok::embedded
