#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#pragma GCC visibility push(default)

/// The file operations of a platform.
///
/// In a path "/" and "\" are separators on every system. Every failure is an Error with the platform's usual number and
/// a description that names the path and the system's reason: 53 file not found, 57 device I/O error, 58 file already
/// exists, 61 disk full or limit of the file size, 67 too many open files, 70 permission denied, 75 path/file access
/// error, 76 path not found. An empty path, a path with a NUL byte, and a path that leads to something else than a
/// file are error 75.
namespace tamarok {

/// An open file; the destructor closes it.
class File {
public:
    virtual ~File() = default;

    /// Returns the present size in bytes; 0 for a device.
    virtual std::uint64_t size() const = 0;

    /// Reads from a byte position on until `buffer` is full or the file ends.
    /// @return number of bytes read; 0 for a device
    virtual std::size_t readAt(std::uint64_t position, std::span<char> buffer) const = 0;

    /// Adds bytes at the end of the file, with one call of the system where it takes them all. If there is no room for
    /// all, none stay.
    virtual void write(std::string_view bytes) = 0;

    /// Tells whether nobody else has the file open for appending. If so, others that open it wait until this file is
    /// closed, but not longer than a fraction of a second. True where the file system cannot tell.
    virtual bool isOnlyWriter() = 0;

    /// Waits until what was written is on the disk.
    virtual void sync() = 0;
};

/// Opens, makes and replaces files.
class FileSystem {
public:
    virtual ~FileSystem() = default;

    /// Tells whether there is a file of that name. A folder is none.
    virtual bool exists(std::string_view path) const = 0;

    /// Makes an empty file, never through a symbolic link. A file that is there already stays as it is.
    virtual void create(std::string_view path) = 0;

    /// Opens a regular file for reading.
    virtual std::shared_ptr<File> openInput(std::string_view path) = 0;

    /// Opens a regular file or a character device for reading and for writing at its end.
    virtual std::shared_ptr<File> openAppend(std::string_view path) = 0;

    /// Makes a new file that is to replace `model`, with its owner, group and mode as far as the account may give them.
    /// `model` must be writable. A regular file that has the name is removed before if it belongs to the caller or to
    /// the owner of `model`, or if others may write it and so may the caller; a file of anyone else is error 70. Error
    /// 75 for anything else of that name, such as a link or a folder: nothing is removed then.
    virtual std::shared_ptr<File> createBeside(std::string_view path, std::string_view model) = 0;

    /// Makes the content of file `to` that of file `from`, which must be on the disk (`File::sync`). Owner, group,
    /// mode, access list, and hard and symbolic links of `to` stay. At each instant `to` is whole, the old or the new
    /// one, except where it cannot be replaced by another file without losing one of these: then it is overwritten in
    /// place, after room was reserved, and until it is done `from` alone is sure to be whole.
    virtual void copyOver(std::string_view from, std::string_view to) = 0;

    /// Removes a file if that is possible.
    virtual void remove(std::string_view path) noexcept = 0;
};

/// The files that are open under a number. A copy shares the open files, but has a table of its own.
class FileNumbers {
public:
    /// Opens a file under a number.
    /// @param path  path of the file, for messages
    /// @param open  called only if the number is free
    /// Error 55, which names the file that holds the number, if it is in use.
    std::shared_ptr<File> open(std::int16_t number, std::string_view path,
                               const std::function<std::shared_ptr<File>()>& open);

    bool isOpen(std::int16_t number) const { return entries_.contains(number); }
    /// Sets a number free. One that is free already stays so.
    void close(std::int16_t number) { entries_.erase(number); }
    /// Sets all numbers free.
    void closeAll() { entries_.clear(); }

private:
    struct Entry {
        std::string path;
        std::shared_ptr<File> file;
    };
    std::map<std::int16_t, Entry> entries_;
};

} // namespace tamarok

#pragma GCC visibility pop
