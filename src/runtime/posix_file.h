#pragma once

#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "tamarok/files.h"

namespace tamarok {

/// A file descriptor that is closed at the end.
class Descriptor {
public:
    explicit Descriptor(int number = -1) noexcept : number_{number} {}
    Descriptor(Descriptor&& other) noexcept : number_{std::exchange(other.number_, -1)} {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor()
    {
        if (isOpen()) ::close(number_);
    }

    int get() const noexcept { return number_; }
    bool isOpen() const noexcept { return number_ >= 0; }

private:
    int number_;
};

/// Opens a file.
/// @return a descriptor that is not open, with errno set, if the system refuses it
Descriptor openDescriptor(const std::string& path, int flags, mode_t mode = 0);

/// Returns the status of an open file. @param path  for messages
struct stat statusOf(const Descriptor& file, std::string_view path);

/// Returns the path as the system has it: each backslash is a separator. Error 75 for an empty path and for one with a
/// NUL byte.
std::string systemPath(std::string_view path);

/// Waits until a file is on the disk. A file that cannot be forced to the disk, such as a device, counts as there.
void syncDescriptor(const Descriptor& file, std::string_view path);

/// A file of the machine.
class PosixFile final : public File {
public:
    /// @param path  for messages
    PosixFile(std::string path, Descriptor file);

    std::uint64_t size() const override;
    std::size_t readAt(std::uint64_t position, std::span<char> buffer) const override;
    void write(std::string_view bytes) override;
    bool isOnlyWriter() override;
    void sync() override { syncDescriptor(file_, path_); }

    /// Counts the file as opened for appending.
    void joinWriters() noexcept;

private:
    void takeBack(std::size_t written) const noexcept;

    std::string path_;
    Descriptor file_; ///< opened with O_APPEND where it is written
    bool isRegular_;
};

} // namespace tamarok
