#pragma once

#include <unistd.h>
#include <utility>

namespace tamarok::embedded {

/// A file descriptor that is closed at the end.
class FileHandle {
public:
    explicit FileHandle(int descriptor = -1) noexcept : descriptor_{descriptor} {}
    FileHandle(FileHandle&& other) noexcept : descriptor_{std::exchange(other.descriptor_, -1)} {}
    FileHandle& operator=(FileHandle&& other) noexcept
    {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    ~FileHandle() { close(); }

    int get() const noexcept { return descriptor_; }
    bool isOpen() const noexcept { return descriptor_ >= 0; }
    void close() noexcept
    {
        if (isOpen()) {
            ::close(std::exchange(descriptor_, -1));
        }
    }

private:
    int descriptor_;
};

} // namespace tamarok::embedded
