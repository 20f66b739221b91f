#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace tamarok::odbc {

/// A temporary file that no other process can open and that goes with this object, also when the process is killed.
/// Each system has its own source of it: `posix` and `windows`. All failures are Error 57.
class RowFile {
public:
    RowFile() = default;
    RowFile(const RowFile&) = delete;
    RowFile& operator=(const RowFile&) = delete;
    ~RowFile() { close(); }

    bool isOpen() const noexcept { return native_ != none; }
    /// Makes the file, for this account alone.
    void open();
    void close() noexcept;
    /// Returns the number of bytes read, at least one.
    std::size_t readAt(std::size_t position, std::span<char> bytes) const;
    /// Writes all bytes.
    void writeAt(std::size_t position, std::span<const char> bytes);

private:
    static constexpr std::intptr_t none = -1; ///< of all systems

    std::intptr_t native_ = none;
};

} // namespace tamarok::odbc
