#pragma once

#include <cstdint>
#include <utility>

namespace tamarok::embedded {

/// An open file that is closed at the end.
class FileHandle {
public:
    /// A descriptor, or on Windows a handle as a number.
    using Native = std::intptr_t;

    explicit FileHandle(Native native = none) noexcept : native_{native} {}
    FileHandle(FileHandle&& other) noexcept : native_{std::exchange(other.native_, none)} {}
    FileHandle& operator=(FileHandle&& other) noexcept
    {
        std::swap(native_, other.native_);
        return *this;
    }
    ~FileHandle() { close(); }

    Native get() const noexcept { return native_; }
    bool isOpen() const noexcept { return native_ != none; }
    void close() noexcept
    {
        if (isOpen()) {
            closeNative(std::exchange(native_, none));
        }
    }

private:
    static constexpr Native none = -1; ///< of all systems
    static void closeNative(Native native) noexcept;

    Native native_;
};

} // namespace tamarok::embedded
