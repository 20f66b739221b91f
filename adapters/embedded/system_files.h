#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <system_error>

#include "file_handle.h"

/// The file operations of the system. Each system has its own source of them: `posix` and `windows`. Paths are UTF-8.
/// A failure is told by an error code that compares with std::errc; a missing file is no_such_file_or_directory, a
/// symbolic link in the place of a file too_many_symbolic_link_levels.
namespace tamarok::embedded {

enum class FileKind : std::uint8_t { Regular, Directory, Link, Other };

/// What tells a file from all others, whatever its name.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t number = 0;
    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

struct FileStatus {
    FileKind kind = FileKind::Other;
    std::uint64_t names = 0; ///< number of hard links
    std::int64_t size = 0;
    std::int64_t modified = 0; ///< time of the last change, in the finest unit of the system
    FileIdentity identity;
};

/// The status of what a path leads to, through symbolic links.
std::optional<FileStatus> statusOf(const std::string& path, std::error_code& failed) noexcept;
/// The status of what lies under the path itself, which may be a link; none for any failure.
std::optional<FileStatus> entryOf(const std::string& path) noexcept;
std::optional<FileStatus> statusOf(const FileHandle& file, std::error_code& failed) noexcept;

/// True if the path leads to the open file, and is no symbolic link.
bool hasName(const FileHandle& file, const std::string& path) noexcept;

/// The path of an existing file or folder without symbolic links.
std::string realPath(const std::string& path, std::error_code& failed);

/// Tells whether this account may read the file, and write it if `writing`; no error means that it may.
std::error_code checkAccess(const std::string& path, bool writing) noexcept;
/// Tells whether this account may make files in a folder.
std::error_code checkFolderAccess(const std::string& folder) noexcept;

// Opening. None follows a symbolic link in the last part of the path, and no child process inherits the file. The
// handle is not open where the system refuses.

/// An existing file for reading and writing. Opening a pipe does not wait for its other end.
FileHandle openFile(const std::string& path, std::error_code& failed) noexcept;
FileHandle openForReading(const std::string& path, std::error_code& failed) noexcept;
/// A new file; file_exists where the name is taken.
FileHandle createFile(const std::string& path, std::error_code& failed) noexcept;
/// A new file with the rights of another one, as far as this account may give them.
FileHandle createFileLike(const std::string& path, const std::string& model, std::error_code& failed) noexcept;
/// A new or emptied file for this account alone.
FileHandle createPrivateFile(const std::string& path, std::error_code& failed) noexcept;
/// A new folder for this account alone, in that for temporary files. Throws std::system_error.
std::string makePrivateFolder();

/// Gives a file the owner and group of another one.
std::error_code giveOwner(const FileHandle& file, const std::string& model) noexcept;
/// Gives a file the permissions of another one.
std::error_code givePermissions(const FileHandle& file, const std::string& model) noexcept;
/// Gives a file the present permissions of the file that it serves, if it belongs to this account, is empty and has one
/// name, as no foreign file does.
void followPermissions(const FileHandle& file, const std::string& model) noexcept;

/// Reads from the beginning of the file; returns the number of bytes. Throws std::system_error.
std::size_t readBeginning(const FileHandle& file, std::span<char> bytes);
/// Reads on; 0 at the end. Throws std::system_error.
std::size_t readNext(const FileHandle& file, std::span<char> bytes);
/// Writes all bytes. Throws std::system_error.
void writeNext(const FileHandle& file, std::span<const char> bytes);
/// Waits until the file is on the disk.
std::error_code syncFile(const FileHandle& file) noexcept;

void removeFile(const std::string& path) noexcept;
/// Renames a file; file_exists where the new name is taken.
std::error_code renameToNew(const std::string& from, const std::string& to) noexcept;
/// Renames a file in one step over another one.
std::error_code renameOver(const std::string& from, const std::string& to) noexcept;
/// Forces the entries of a folder to the disk, where the system needs that after a renaming.
void syncFolder(const std::string& folder) noexcept;
/// True if a file can be renamed, replaced and removed while it is open. Otherwise the system refuses that, so that who
/// has a file open keeps its name.
bool openFilesCanLoseNames() noexcept;

/// The code of an error's number as SQLite tells it.
std::error_code systemErrorOf(int number) noexcept;
/// True if there is no room for what is to be written: on the disk, in the account's share of it, or in the file.
bool tellsFullDisk(std::error_code code) noexcept;

/// Fills with random bytes. Throws std::system_error.
void fillRandom(std::span<unsigned char> bytes);

} // namespace tamarok::embedded
