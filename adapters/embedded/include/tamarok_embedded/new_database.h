#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>

#include "tamarok/ado.h"

#pragma GCC visibility push(default)

namespace tamarok::embedded {

/// A database that is being filled. It grows under a name of its own beside the wanted one and takes that when it is
/// complete. Whenever the process ends before, an existing database stays as it was, with everything that was
/// committed, and the next attempt removes what was left behind.
class NewDatabase {
public:
    /// What happens to a file that has the name already.
    enum class Existing : std::uint8_t {
        Refuse,
        Replace ///< its owner and mode pass to the new file; a symbolic link stays and leads to the new file
    };

    /// Begins an empty database. The transactions of its connection are not synchronised with the disk before
    /// `complete`.
    /// Errors: 58 where the file exists and `existing` is Refuse. 0x80004005 with the path and the reason: the name is
    /// that of a directory, or of something else than a file; another session has the existing database open; its
    /// owner cannot be kept; its log cannot be written into it; the log of a lost database lies beside; the folder
    /// cannot be written.
    explicit NewDatabase(const std::filesystem::path& file, Existing existing = Existing::Refuse);
    NewDatabase(const NewDatabase&) = delete;
    NewDatabase& operator=(const NewDatabase&) = delete;
    ~NewDatabase(); ///< removes what is not complete

    /// The connection that fills the database. Errors name the wanted file.
    const ado::ConnectionRef& connection() const noexcept;

    /// Closes the connection, forces the file to the disk and gives it its name. A replaced database is looked at
    /// anew: nobody may have it open. Errors: as the constructor.
    void complete();

private:
    class Work;
    std::unique_ptr<Work> work_;
};

} // namespace tamarok::embedded

#pragma GCC visibility pop
